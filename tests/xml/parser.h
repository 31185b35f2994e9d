// SPDX-License-Identifier: Apache-2.0
// A reader with a recording handler, set up as users set theirs up.
#ifndef TESTS_XML_PARSER_H
#define TESTS_XML_PARSER_H

#include <string>
#include <string_view>
#include <vector>

#include "OXASAX.h"
#include "xml/recording_handler.h"

namespace xml_tests {

OXAIXMLSAX2Factory_var make_factory();

class Parser {
public:
    /// All features are on.
    Parser();

    HRESULT parse_text(std::string_view text);
    HRESULT parse_file(const std::string& path);
    HRESULT load_schema(const std::string& key, const std::string& path);
    HRESULT load_schema_text(const std::string& key, std::string_view text);

    OXAISAXXMLReader_var reader;
    OXAVar<RecordingHandler> handler;

    const std::vector<std::string>& events() const { return handler->events; }
    const std::vector<Problem>& problems() const { return handler->problems; }

    /// The problems of one severity.
    int count(std::string_view severity) const;

    /// The fatal error of the parse; fails the test unless there is just one.
    Problem fatal_error() const;

    /// All problems in one text, for messages of tests.
    std::string said() const;

    void forget();

private:
    OXAIXMLSAX2Factory_var factory_;
};

}  // namespace xml_tests

#endif
