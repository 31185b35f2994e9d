// SPDX-License-Identifier: Apache-2.0

#include "xml/xml_problems.h"

#include <algorithm>

#include "output/printable.h"

namespace {

const char* name_of(Severity severity) {
    switch (severity) {
        case Severity::kWarning:
            return "warning";
        case Severity::kError:
            return "error";
        case Severity::kFatalError:
            break;
    }
    return "fatal error";
}

}  // namespace

XMLProblem make_problem(Severity severity, const OXASAXParseException& exception,
                        const std::string& document) {
    const OXAUnicodeString path = exception.GetSystemId();
    return {path.IsEmpty() ? document : path.ConvertToChar(), exception.GetLineNumber(),
            exception.GetColumnNumber(), severity, exception.GetMessageW().ConvertToChar()};
}

bool has_errors(const std::vector<XMLProblem>& problems) {
    return std::any_of(problems.begin(), problems.end(),
                       [](const XMLProblem& problem) { return problem.severity != Severity::kWarning; });
}

void print_problems(std::ostream& out, const std::vector<XMLProblem>& problems) {
    for (const XMLProblem& problem : problems) {
        out << printable(problem.path);
        if (problem.line > 0) out << ':' << problem.line << ':' << problem.column;
        out << ": " << name_of(problem.severity) << ": " << printable(problem.message) << '\n';
    }
}

nlohmann::ordered_json json_of(const std::vector<XMLProblem>& problems) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const XMLProblem& problem : problems) {
        array.push_back({{"path", problem.path},
                         {"line", problem.line},
                         {"column", problem.column},
                         {"severity", name_of(problem.severity)},
                         {"message", problem.message}});
    }
    return array;
}
