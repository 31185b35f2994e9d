// SPDX-License-Identifier: Apache-2.0
// The schemas of a reader.
#ifndef OXA_I_XML_SCHEMA_LOADER_H
#define OXA_I_XML_SCHEMA_LOADER_H

#include "OXABaseUnknown.h"
#include "OXAISAXInputSource.h"
#include "OXAMetaClass.h"
#include "OXAUnicodeString.h"
#include "OXAVar.h"
#include "OXAXMLExport.h"

/// An interface of OXAISAXXMLReader. While a schema is loaded, a reader that validates compares every
/// document without a DTD with the schemas; a document whose root element none of them declares is invalid.
class PELTO_XML_API OXAIXMLSchemaLoader : public OXABaseUnknown {
public:
    /// Loads an XML Schema under `key`, usually its target namespace, and replaces what was loaded under that
    /// key. Keeps its content and that of the files it includes: to see a changed file, load the schema
    /// again.
    ///
    /// Schemas of one namespace under different keys complement each other: if several declare a name, the
    /// first declaration holds.
    ///
    /// Problems go to the reader's error handler. E_FAIL if there is an error among them; the schemas loaded
    /// before then stay. E_POINTER for a null source; E_FAIL within a callback of the reader.
    ///
    /// A schema may be hostile: the rules of OXAISAXXMLReader hold, with the schema's folder for the files
    /// that it includes or imports. A file that is missing or refused is a warning, and an error only if the
    /// schema needs something in it.
    ///
    /// No rule limits what checking a value costs: the parser matches patterns by backtracking, in a time
    /// that can double with each character, and repeated alternatives, (ab|cd)*, on a stack that some ten
    /// thousand characters exhaust, even beside a maxLength; it tries each member of nested unions. Load only
    /// schemas whose patterns and unions you know.
    virtual HRESULT LoadGrammar(const OXAUnicodeString& key, const OXAISAXInputSource_var& source) = 0;

    /// Forgets all schemas. E_FAIL within a callback of the reader, else S_OK.
    virtual HRESULT ClearCache() = 0;

    OXA_META_CLASS_MEMBERS

protected:
    ~OXAIXMLSchemaLoader() override;
};

using OXAIXMLSchemaLoader_var = OXAVar<OXAIXMLSchemaLoader>;

#endif
