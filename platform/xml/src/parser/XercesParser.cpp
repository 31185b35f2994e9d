// SPDX-License-Identifier: Apache-2.0

#include "parser/XercesParser.h"

#include <xercesc/util/XMLUni.hpp>

namespace sax {

using xercesc::XMLUni;

XercesParser::XercesParser(Document& document, const Features& features, SchemaPool* schemas,
                           xercesc::XMLEntityResolver& resolver)
    : document_(document),
      errors_(document),
      parser_(&document.inputs().memory(), schemas ? &schemas->grammars() : nullptr),
      counting_(document.inputs().memory(), document.cost(), document.locator()) {
    if (schemas) counting_schemas_.emplace(schemas->memory(), document.cost(), document.locator());

    parser_.setFeature(XMLUni::fgSAX2CoreValidation, features.validation);
    parser_.setFeature(XMLUni::fgSAX2CoreNameSpaces, features.namespaces);
    parser_.setFeature(XMLUni::fgSAX2CoreNameSpacePrefixes, features.namespace_prefixes);
    // Where nothing was loaded, a document without a DTD has nothing to be checked against.
    parser_.setFeature(XMLUni::fgXercesDynamic, schemas == nullptr);
    parser_.setFeature(XMLUni::fgXercesSchema, true);
    parser_.setFeature(XMLUni::fgXercesUseCachedGrammarInParse, schemas != nullptr);
    parser_.setFeature(XMLUni::fgXercesLoadSchema, false);
    parser_.setFeature(XMLUni::fgXercesHandleMultipleImports, true);
    parser_.setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
    parser_.setErrorHandler(&errors_);
    parser_.setXMLEntityResolver(&resolver);
}

// The locator must not follow a parser beyond its life.
XercesParser::~XercesParser() { document_.locator().leave(); }

void XercesParser::parse(ContentRelay& content) {
    parser_.setContentHandler(&content);
    parser_.setDTDHandler(&content);
    parser_.setLexicalHandler(&content);
    parser_.setDeclarationHandler(&content);
    parser_.parse(document_.input());
}

void XercesParser::load_schema() {
    parser_.loadGrammar(document_.input(), xercesc::Grammar::SchemaGrammarType, true);
}

}  // namespace sax
