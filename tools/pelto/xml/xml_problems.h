// SPDX-License-Identifier: Apache-2.0
// What a parser finds wrong with an XML document, kept for a report.
#ifndef PELTO_TOOL_XML_XML_PROBLEMS_H
#define PELTO_TOOL_XML_XML_PROBLEMS_H

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vSAXDefaultHandler.h>
#include <vector>

enum class Severity { kWarning, kError, kFatalError };

struct XMLProblem {
    std::string path;  // of the file with the problem
    int line = 0;      // from 1; 0 where there is no place
    int column = 0;
    Severity severity = Severity::kError;
    std::string message;
};

/// Of what the parser says about `document`, or a file that belongs to it.
XMLProblem make_problem(Severity severity, const OXASAXParseException& exception,
                        const std::string& document);

bool has_errors(const std::vector<XMLProblem>& problems);

/// A line each: "path:line:column: severity: message", without line and column where there is no place.
void print_problems(std::ostream& out, const std::vector<XMLProblem>& problems);

nlohmann::ordered_json json_of(const std::vector<XMLProblem>& problems);

/// A handler that keeps problems instead of logging them. `document` is set before each parse.
template <class Handler>
class ProblemKeeper : public Handler {
public:
    std::string document;
    std::vector<XMLProblem> problems;

    HRESULT Error(OXASAXParseException* exception) override { return keep(Severity::kError, exception); }
    HRESULT FatalError(OXASAXParseException* exception) override {
        return keep(Severity::kFatalError, exception);
    }
    HRESULT Warning(OXASAXParseException* exception) override { return keep(Severity::kWarning, exception); }

private:
    HRESULT keep(Severity severity, const OXASAXParseException* exception) {
        if (!exception) return E_FAIL;
        problems.push_back(make_problem(severity, *exception, document));
        return S_OK;
    }
};

#endif
