// SPDX-License-Identifier: Apache-2.0
// The base of XML readers: delivers a document as calls of two hooks, with the names of each element and of
// its parent.
//
//     class MaterialReader : public vSAXDefaultHandler {
//     public:
//         MaterialReader() { buffer = new vSAXDefaultBuffer; }
//         HRESULT OnStartElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
//                                const OXAISAXAttributes_var& attributes) override;
//         HRESULT OnEndElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
//                              const OXAUnicodeString& qName) override;   // reads the value: buffer->Get...
//         ...
//     };
//
// A handler is a component: made with new, it holds one reference; call Release, never delete it. vSAXReader
// installs it.
//
// Errors: callbacks return S_OK or E_FAIL; their results do not stop a parse. What a hook throws leaves the
// callback, the parser and the reader. Problems of the document are logged at level 5, with their position.
//
// Threads: one handler serves one parse, on that thread. The first use of the meta-class must not race with
// another.
#ifndef V_SAX_DEFAULT_HANDLER_H
#define V_SAX_DEFAULT_HANDLER_H

#include <cstdint>
#include <list>

#include "OXASAX.h"
#include "PeltoExport.h"
#include "vSAXDefaultBuffer.h"

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251)  // members of classes that are exported by themselves
#endif

class PELTO_API vSAXDefaultHandler : public OXASAXDefaultHandler {
public:
    enum class ELogType : std::int32_t { Error = 0, Warning = 1, FatalError = 2, Message = 3 };

    /// No open elements, no buffer, no locator, no errors.
    vSAXDefaultHandler();

    // The meta-class: class "vSAXDefaultHandler" of the framework "Talvik".

    static OXAMetaClass* MetaObject();
    static const GUID& ClassId();
    static const char* ClassName();
    /// Null: the class is abstract.
    static OXABaseUnknown* CreateItself();

    OXAMetaClass* GetMetaObject() const override;
    const char* IsA() const override;
    int IsAKindOf(const char* name) const override;

    /// Calls OnStartElement, whose result is ignored, and empties the buffer. Always S_OK.
    HRESULT StartElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                         const OXAUnicodeString& qName, const OXAISAXAttributes_var& attributes) override;

    /// Calls OnEndElement and returns its result. The end of the root element is not reported: S_OK.
    HRESULT EndElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                       const OXAUnicodeString& qName) override;

    /// Appends to the buffer, and sets its line if there is a locator. E_FAIL without a buffer.
    HRESULT Characters(const OXAUnicodeString& chars) override;

    /// Keeps the locator, which may outlive the parse. E_FAIL for null; the previous one then stays.
    HRESULT SetDocumentLocator(const OXAISAXLocator_var& documentLocator) override;

    // Log the parser's problem; Error and FatalError also count it. E_FAIL for null, which is counted and
    // logged too.

    HRESULT Error(OXASAXParseException* exception) override;
    HRESULT FatalError(OXASAXParseException* exception) override;
    HRESULT Warning(OXASAXParseException* exception) override;

    /// The number of calls of Error and FatalError since the handler was made, in all documents.
    unsigned int GetNbErrors() const;

    /// Writes to the kernel log at level 5: a message unchanged, anything else as "LABEL : line L column C
    /// TEXT" with the locator's position (0 without one). A message is the log's format text: write a percent
    /// sign as %%.
    virtual void Log(const char* message, ELogType type);

    /// For derived classes; nothing here calls it: forgets what was read, before another document. The
    /// elements that a failed parse leaves open stay in elementStack until then.
    virtual void Reset() = 0;
    /// For derived classes; nothing here calls it: how the reader judges what it read.
    virtual HRESULT GetStatus() const = 0;

    /// An element begins. `parentName` is the local name of the element around it; for the root "UNKNOWN".
    virtual HRESULT OnStartElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                                   const OXAISAXAttributes_var& attributes) = 0;

    /// An element other than the root ends; the buffer holds its text after the start of its last child.
    virtual HRESULT OnEndElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                                 const OXAUnicodeString& qName) = 0;

protected:
    /// Deletes the buffer, and releases the locator.
    ~vSAXDefaultHandler() override;

    std::list<OXAUnicodeString> elementStack;  ///< names of the open elements, the innermost first
    vSAXDefaultBuffer* buffer;                 ///< made by the derived class with new, then owned
    OXAISAXLocator_var locator;                ///< null before the first document
    unsigned int nbErrors;

private:
    static OXAMetaClass* meta_object;
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif

#endif
