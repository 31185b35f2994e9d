// SPDX-License-Identifier: Apache-2.0

#include "xml/parser.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace xml_tests {

OXAIXMLSAX2Factory_var make_factory() {
    OXAIXMLSAX2Factory_var factory;
    EXPECT_EQ(CreateOXAIXMLSAX2Factory(factory, CLSID_XML4C_SAX), S_OK);
    return factory;
}

Parser::Parser() : handler(OXAVar<RecordingHandler>::Adopt(new RecordingHandler)), factory_(make_factory()) {
    EXPECT_EQ(factory_->CreateXMLReader(reader), S_OK);
    for (const char* feature :
         {OXASAXXMLReaderOptions::ValidationFeature, OXASAXXMLReaderOptions::NamespacesFeature,
          OXASAXXMLReaderOptions::NamespacePrefixFeature}) {
        EXPECT_EQ(reader->SetFeature(feature, true), S_OK);
    }
    reader->SetContentHandler(OXAISAXContentHandler_var(handler));
    reader->SetErrorHandler(OXAISAXErrorHandler_var(handler));
}

HRESULT Parser::parse_text(std::string_view text) {
    forget();
    OXAISAXInputSource_var source;
    EXPECT_EQ(factory_->CreateInputSourceFromText(OXAUnicodeString(text.data(), text.size()), "", source),
              S_OK);
    return reader->Parse(source);
}

HRESULT Parser::parse_file(const std::string& path) {
    forget();
    OXAISAXInputSource_var source;
    factory_->CreateInputSourceFromFile(path.c_str(), "", source);
    return reader->Parse(source);
}

HRESULT Parser::load_schema(const std::string& key, const std::string& path) {
    forget();
    OXAISAXInputSource_var source;
    factory_->CreateInputSourceFromFile(path.c_str(), "", source);
    return OXAIXMLSchemaLoader_var(reader)->LoadGrammar(key.c_str(), source);
}

HRESULT Parser::load_schema_text(const std::string& key, std::string_view text) {
    forget();
    OXAISAXInputSource_var source;
    factory_->CreateInputSourceFromText(OXAUnicodeString(text.data(), text.size()), "", source);
    return OXAIXMLSchemaLoader_var(reader)->LoadGrammar(key.c_str(), source);
}

int Parser::count(std::string_view severity) const {
    const auto is_such = [&](const Problem& problem) { return problem.severity == severity; };
    return static_cast<int>(std::count_if(problems().begin(), problems().end(), is_such));
}

Problem Parser::fatal_error() const {
    EXPECT_EQ(count("fatal"), 1) << said();
    for (const Problem& problem : problems()) {
        if (problem.severity == "fatal") return problem;
    }
    return {};
}

std::string Parser::said() const {
    std::string all;
    for (const Problem& problem : problems()) {
        all += problem.severity + " " + std::to_string(problem.line) + ":" + std::to_string(problem.column) +
               " " + problem.message + "\n";
    }
    return all;
}

void Parser::forget() {
    handler->events.clear();
    handler->problems.clear();
}

}  // namespace xml_tests
