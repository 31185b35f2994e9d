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
#include "subcommands.h"
#include "xml/readable_document.h"
#include "xml/xml_problems.h"

namespace {

struct Options {
    std::vector<std::string> documents;
    std::string schema;
    bool json = false;
};

// The content is the parser's affair alone.
class ContentIgnorer : public vSAXDefaultHandler {
public:
    void Reset() override { elementStack.clear(); }
    HRESULT GetStatus() const override { return S_OK; }
    HRESULT OnStartElement(const OXAUnicodeString&, const OXAUnicodeString&,
                           const OXAISAXAttributes_var&) override {
        return S_OK;
    }
    HRESULT OnEndElement(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&) override {
        return S_OK;
    }

protected:
    ~ContentIgnorer() override = default;
};

using Handler = ProblemKeeper<ContentIgnorer>;

struct Verdict {
    std::string path;
    std::optional<std::string> unreadable;
    std::vector<XMLProblem> problems;

    bool good() const { return !unreadable && !has_errors(problems); }
};

// Reads a file with `read`, a call of the reader's.
template <class Read>
Verdict verdict_on(const std::string& path, Handler& handler, const Read& read) {
    Verdict verdict{path, why_unreadable(path), {}};
    if (verdict.unreadable) return verdict;
    handler.Reset();
    handler.document = path;
    handler.problems.clear();
    const HRESULT result = read();
    verdict.problems = handler.problems;
    if (FAILED(result) && verdict.good()) verdict.unreadable = "cannot be read";
    return verdict;
}

// Of the schema alone where that is no good.
std::vector<Verdict> verdicts(const Options& options) {
    const auto handler = OXAVar<Handler>::Adopt(new Handler);
    vSAXReader reader;
    reader.SetDocumentHandler(handler.Get());
    std::vector<Verdict> all;
    if (!options.schema.empty()) {
        const char* const schema = options.schema.c_str();
        Verdict verdict =
            verdict_on(options.schema, *handler.Get(), [&] { return reader.SetXSDSchema(schema, schema); });
        const bool good = verdict.good();
        if (!good || !verdict.problems.empty()) all.push_back(std::move(verdict));
        if (!good) return all;
    }
    for (const std::string& document : options.documents) {
        all.push_back(
            verdict_on(document, *handler.Get(), [&] { return reader.LoadFile(document.c_str()); }));
    }
    return all;
}

nlohmann::ordered_json json_of(const Verdict& verdict) {
    nlohmann::ordered_json object;
    object["path"] = verdict.path;
    if (verdict.unreadable) {
        object["error"] = *verdict.unreadable;
        return object;
    }
    object["valid"] = verdict.good();
    object["problems"] = json_of(verdict.problems);
    return object;
}

void print(const Verdict& verdict) {
    print_problems(std::cout, verdict.problems);
    if (verdict.good()) std::cout << printable(verdict.path) << ": no errors\n";
}

ExitStatus validate(const Options& options) {
    ExitStatus status = kExitSuccess;
    nlohmann::ordered_json objects = nlohmann::ordered_json::array();
    for (const Verdict& verdict : verdicts(options)) {
        if (verdict.unreadable) complain(verdict.path, *verdict.unreadable);
        if (!verdict.good()) status = kExitFailure;
        if (options.json) {
            objects.push_back(json_of(verdict));
        } else {
            print(verdict);
        }
    }
    if (options.json) print_json(objects);
    return status;
}

}  // namespace

void add_validate(CLI::App& app, ExitStatus& status) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command = app.add_subcommand(
        "validate", "List the problems of XML documents as path:line:column: severity: message");
    command->add_option("DOC", options->documents, "XML documents")->required()->option_text("...");
    command
        ->add_option("--xsd", options->schema,
                     "An XML Schema for the documents; a document with a DTD follows its DTD instead")
        ->option_text("FILE.xsd");
    command->add_flag("--json", options->json, "Print a JSON array of objects, one for each document");
    command->footer(
        "It uses neither the network nor files outside a document's folder.\n"
        "Exit status: 0 no errors (perhaps warnings), 1 errors, or a file that cannot be read, 2 wrong "
        "usage.");
    command->callback([options, &status] { status = validate(*options); });
}
