// Reading XML: a document from a file or from memory, validated, as callbacks of a handler.
//
//     auto handler = OXAVar<MaterialReader>::Adopt(new MaterialReader);
//     vSAXReader reader;
//     reader.SetDocumentHandler(handler.Get());
//     reader.SetXSDSchema("material.xsd", "urn:material");
//     const HRESULT result = reader.LoadFile("steel.xml");
//
// While it reads, the numeric C locale of the process is "C", so that numbers have a decimal dot; the locale
// before is back when a call returns, also by an exception.
//
// Errors are results: S_OK, or a failure of the XML framework's. Problems of a document go to its handler; a
// document that is not valid is read to its end with S_OK. What a handler throws leaves LoadFile and
// LoadBuffer, and the reader can be used again.
//
// Hostile documents: safe, by the rules of OXAISAXXMLReader (no network, no files outside the document's own
// folder, bounds on memory and time).
//
// Threads: one reader is used by one thread at a time. The locale is the whole process's: parses on several
// threads, and numbers that another thread formats meanwhile, get in each other's way, so callers take turns.
#ifndef V_SAX_READER_H
#define V_SAX_READER_H

#include "OXASAX.h"
#include "PeltoExport.h"
#include "vSAXDefaultHandler.h"

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251)  // members of classes that are exported by themselves
#endif

class PELTO_API vSAXReader {
public:
    /// Makes a validating parser. When there is none the kernel log hears of it (channel Mefx, level 5), and
    /// the operations below return E_FAIL.
    vSAXReader();
    virtual ~vSAXReader();

    vSAXReader(const vSAXReader&) = delete;
    vSAXReader& operator=(const vSAXReader&) = delete;

    /// Sends content and errors to the handler, of which the parser holds references from now on; null sends
    /// them nowhere. The handler before is dropped first.
    HRESULT SetDocumentHandler(vSAXDefaultHandler* handler);

    /// Loads the XML Schema in the file `xsdFile` under `schemaKey`, usually its target namespace: every
    /// document from now on is validated against it. The same key replaces what was loaded under it. Problems
    /// of the schema go to the handler; that the file cannot be had, to the kernel log at level 4.
    HRESULT SetXSDSchema(const char* xsdFile, const char* schemaKey);

    /// Forgets the loaded schemas.
    HRESULT ClearSchemaCache();

    /// Parses the file. A missing one is a fatal error for the handler, and a failure.
    HRESULT LoadFile(const char* path);

    /// Parses the zero-terminated document `xmlText`, in UTF-8, of which a copy is taken.
    HRESULT LoadBuffer(const char* xmlText);

private:
    OXAISAXXMLReader_var reader;
    OXAIXMLSAX2Factory_var factory;
    HRESULT status;
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif

#endif
