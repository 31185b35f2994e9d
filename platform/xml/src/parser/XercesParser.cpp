#include "parser/XercesParser.h"

#include <xercesc/util/XMLUni.hpp>

namespace sax {

using xercesc::XMLUni;

XercesParser::XercesParser(const Features& features, SchemaPool* schemas, ParserMemory& memory,
                           ErrorRelay& errors, xercesc::XMLEntityResolver& resolver, ParseLocator& locator,
                           DocumentCost& cost)
    : memory_(memory),
      errors_(errors),
      cost_before_(errors.count_for(&cost)),
      schemas_(schemas),
      locator_(locator),
      parser_(&memory, schemas ? &schemas->grammars() : nullptr) {
    memory_.begin(cost, locator);
    if (schemas) schemas->memory().begin(cost, locator);

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
    parser_.setErrorHandler(&errors);
    parser_.setXMLEntityResolver(&resolver);
}

XercesParser::~XercesParser() {
    locator_.leave();
    errors_.count_for(cost_before_);
    memory_.end();
    if (schemas_) schemas_->memory().end();
}

void XercesParser::parse(const xercesc::InputSource& source, ContentRelay& content) {
    content.begin(schemas_ != nullptr);
    parser_.setContentHandler(&content);
    parser_.setDTDHandler(&content);
    parser_.setLexicalHandler(&content);
    parser_.setDeclarationHandler(&content);
    parser_.parse(source);
}

void XercesParser::load_schema(const xercesc::InputSource& source) {
    parser_.loadGrammar(source, xercesc::Grammar::SchemaGrammarType, true);
}

}  // namespace sax
