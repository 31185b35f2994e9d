// SPDX-License-Identifier: Apache-2.0

#include "events/Document.h"

#include <utility>

#include "input/InputError.h"
#include "limits/document_limits.h"

namespace sax {

Document::Document(const InputSource& source, ProblemReport& report, std::size_t most_in_model)
    : source_(source),
      report_(report),
      cost_(most_in_model),
      inputs_(cost_),
      input_(inputs_.add(source.open(), source.name())) {}

void Document::refuse(std::string message) { throw Refusal{std::move(message), locator().position()}; }

std::string Document::read_external_file(const std::string& path) {
    std::string bytes = read_file(path, kExternalBytes);
    if (const char* exceeded = cost_.external_file(bytes.size())) throw InputError(exceeded);
    return bytes;
}

}  // namespace sax
