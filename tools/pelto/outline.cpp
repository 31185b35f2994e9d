// SPDX-License-Identifier: Apache-2.0

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vSAXReader.h>
#include <vector>

#include "output/complain.h"
#include "output/print_json.h"
#include "output/printable.h"
#include "output/table.h"
#include "subcommands.h"
#include "xml/OutlineHandler.h"
#include "xml/readable_document.h"
#include "xml/xml_problems.h"

namespace {

struct Options {
    std::string document;
    bool json = false;
};

using Handler = ProblemKeeper<OutlineHandler>;

std::string attributes_text(const OutlineElement& element) {
    std::string text;
    for (const auto& [name, value] : element.attributes) {
        if (!text.empty()) text += ' ';
        text.append(name).append("=\"").append(value).append("\"");
    }
    return text;
}

void print_tree(const std::vector<OutlineElement>& elements) {
    std::vector<std::vector<std::string>> rows;
    for (const OutlineElement& element : elements) {
        rows.push_back({std::to_string(element.line),
                        std::string(2 * element.depth, ' ') + printable(element.name),
                        element.depth == 0 ? "-" : printable(element.parent),
                        printable(attributes_text(element)), printable(element.text)});
    }
    print_table(std::cout, {{"line", Align::kRight}, {"element"}, {"parent"}, {"attributes"}, {"text"}},
                rows);
}

nlohmann::ordered_json json_of(const OutlineElement& element) {
    nlohmann::ordered_json object;
    object["line"] = element.line;
    object["depth"] = element.depth;
    object["name"] = element.name;
    object["parent"] = nullptr;
    if (element.depth > 0) object["parent"] = element.parent;
    object["attributes"] = nlohmann::ordered_json::object();
    for (const auto& [name, value] : element.attributes) object["attributes"][name] = value;
    object["text"] = element.text;
    return object;
}

ExitStatus outline(const Options& options) {
    if (const std::optional<std::string> reason = why_unreadable(options.document)) {
        complain(options.document, *reason);
        return kExitFailure;
    }
    const auto handler = OXAVar<Handler>::Adopt(new Handler);
    handler->document = options.document;
    vSAXReader reader;
    reader.SetDocumentHandler(handler.Get());
    const HRESULT result = reader.LoadFile(options.document.c_str());

    if (options.json) {
        nlohmann::ordered_json elements = nlohmann::ordered_json::array();
        for (const OutlineElement& element : handler->elements()) elements.push_back(json_of(element));
        print_json(elements);
    } else if (!handler->elements().empty()) {
        print_tree(handler->elements());
    }
    print_problems(std::cerr, handler->problems);
    return SUCCEEDED(result) && !has_errors(handler->problems) ? kExitSuccess : kExitFailure;
}

}  // namespace

void add_outline(CLI::App& app, ExitStatus& status) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command = app.add_subcommand(
        "outline", "Show the elements of an XML document as a tree, with attributes and text");
    command->add_option("DOC", options->document, "The XML document")->required()->type_name("");
    command->add_flag("--json", options->json, "Print a JSON array of objects, one for each element");
    command->footer(
        "Shows the text of elements without children, and, if there is an error, everything before it.\n"
        "Exit status: 0 success, 1 the document has errors or cannot be read, 2 wrong usage.");
    command->callback([options, &status] { status = outline(*options); });
}
