// The schemas of a reader.
#ifndef OXA_I_XML_SCHEMA_LOADER_H
#define OXA_I_XML_SCHEMA_LOADER_H

#include "OXABaseUnknown.h"
#include "OXAISAXInputSource.h"
#include "OXAMetaClass.h"
#include "OXAUnicodeString.h"
#include "OXAVar.h"
#include "OXAXMLExport.h"

/// An interface of OXAISAXXMLReader. While a schema is loaded, and the reader validates, every document
/// without a DTD is checked against the schemas; one whose root element none of them declares is not valid.
class PELTO_XML_API OXAIXMLSchemaLoader : public OXABaseUnknown {
public:
    /// Loads an XML Schema under `key`, in the place of what was loaded under that key before; the target
    /// namespace is the usual key. Its content, and that of the files it includes, is kept: a file that
    /// changes later counts only when it is loaded again.
    ///
    /// Schemas of one namespace under different keys complement each other: of a name that several declare,
    /// the first declaration holds.
    ///
    /// Problems go to the reader's error handler. E_FAIL when there is an error among them: then the schemas
    /// loaded before stay as they were. E_POINTER for a null source; E_FAIL within a callback of the
    /// reader's.
    ///
    /// A schema may be hostile: the rules of OXAISAXXMLReader hold, with the schema's own folder for the
    /// files that it includes or imports. One that is missing or refused is a warning, and an error only
    /// where something of it is needed.
    ///
    /// No rule bounds what checking a value costs: a pattern is matched by backtracking, in a time that can
    /// double with each character, and, where alternatives are repeated as in (ab|cd)*, on a stack that some
    /// ten thousand characters exhaust, also where a maxLength stands beside it; of nested unions each member
    /// is tried. Load only schemas whose patterns and unions you know.
    virtual HRESULT LoadGrammar(const OXAUnicodeString& key, const OXAISAXInputSource_var& source) = 0;

    /// Forgets all schemas. E_FAIL within a callback of the reader's, else S_OK.
    virtual HRESULT ClearCache() = 0;

    OXA_META_CLASS_MEMBERS

protected:
    ~OXAIXMLSchemaLoader() override;
};

using OXAIXMLSchemaLoader_var = OXAVar<OXAIXMLSchemaLoader>;

#endif
