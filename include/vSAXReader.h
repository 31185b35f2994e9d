// SPDX-License-Identifier: Apache-2.0
// XML reading: validates a document from a file or from memory, and delivers it as callbacks of a handler.
//
//     auto handler = OXAVar<MaterialReader>::Adopt(new MaterialReader);
//     vSAXReader reader;
//     reader.SetDocumentHandler(handler.Get());
//     reader.SetXSDSchema("material.xsd", "urn:material");
//     const HRESULT result = reader.LoadFile("steel.xml");
//
// While it reads, the numeric C locale of the process is "C", so that numbers have a decimal dot; when a call
// returns or throws, it restores the previous locale.
//
// Errors are results: S_OK, or a failure from the XML framework. Problems of a document go to its handler; an
// invalid document is read to its end, with S_OK. What a handler throws leaves LoadFile and LoadBuffer, and
// the reader can be used again.
//
// Hostile documents: safe, by the rules of OXAISAXXMLReader (no network, no files outside the document's
// folder, limits on memory and time).
//
// Threads: use a reader on one thread at a time. The locale belongs to the whole process: do not parse on
// several threads at once, nor format numbers on another thread meanwhile.
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
    /// Makes a validating parser. If there is none, logs that (channel Mefx, level 5), and the operations
    /// below return E_FAIL.
    vSAXReader();
    virtual ~vSAXReader();

    vSAXReader(const vSAXReader&) = delete;
    vSAXReader& operator=(const vSAXReader&) = delete;

    /// Sends content and errors to the handler, to which the parser then holds references; null sends them
    /// nowhere. Releases the previous handler first.
    HRESULT SetDocumentHandler(vSAXDefaultHandler* handler);

    /// Loads the XML Schema in the file `xsdFile` under `schemaKey`, usually its target namespace, and
    /// validates every later document against it. Replaces what was loaded under the same key. Problems of
    /// the schema go to the handler; a file that cannot be read is logged at level 4.
    HRESULT SetXSDSchema(const char* xsdFile, const char* schemaKey);

    /// Forgets the loaded schemas.
    HRESULT ClearSchemaCache();

    /// Parses the file. A missing one is a fatal error for the handler, and a failure.
    HRESULT LoadFile(const char* path);

    /// Parses a copy of the zero-terminated document `xmlText`, in UTF-8.
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
