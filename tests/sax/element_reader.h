// SPDX-License-Identifier: Apache-2.0
// A handler derived as a user would derive one, that writes its hooks' calls down.
#ifndef TESTS_SAX_ELEMENT_READER_H
#define TESTS_SAX_ELEMENT_READER_H

#include <functional>
#include <string>
#include <vector>

#include "vSAXDefaultHandler.h"

namespace sax {

/// Says when it is destroyed, and shows its members.
class WatchedBuffer : public vSAXDefaultBuffer {
public:
    explicit WatchedBuffer(int* destroyed = nullptr) : destroyed_(destroyed) {}
    ~WatchedBuffer() override {
        if (destroyed_ != nullptr) ++*destroyed_;
    }
    int current_line() const { return line; }
    std::string text() const { return buffer.ConvertToChar(); }

private:
    int* destroyed_;
};

class ElementReader : public vSAXDefaultHandler {
public:
    ElementReader() { ++live; }

    /// Takes the buffer over.
    explicit ElementReader(WatchedBuffer* owned) : ElementReader() {
        watched = owned;
        buffer = owned;
    }

    using vSAXDefaultHandler::buffer;
    using vSAXDefaultHandler::elementStack;
    using vSAXDefaultHandler::locator;
    using vSAXDefaultHandler::nbErrors;

    WatchedBuffer* watched = nullptr;
    std::vector<std::string> calls;  // "<name parent", ">name parent qName text"
    HRESULT start_result = S_OK;
    HRESULT end_result = S_OK;
    std::function<void()> at_start;
    std::function<void()> at_end;
    std::vector<std::string> errors;  // "error" or "fatal", then the message

    static inline int live = 0;

    HRESULT Error(OXASAXParseException* exception) override {
        if (exception) errors.push_back(std::string("error ") + exception->GetMessageW().ConvertToChar());
        return vSAXDefaultHandler::Error(exception);
    }
    HRESULT FatalError(OXASAXParseException* exception) override {
        if (exception) errors.push_back(std::string("fatal ") + exception->GetMessageW().ConvertToChar());
        return vSAXDefaultHandler::FatalError(exception);
    }
    void Reset() override { calls.push_back("reset"); }
    HRESULT GetStatus() const override { return S_OK; }

    HRESULT OnStartElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                           const OXAISAXAttributes_var& attributes) override {
        std::string call = std::string("<").append(text(name)).append(" ").append(text(parentName));
        unsigned int count = 0;
        if (!attributes.IsNull()) attributes->GetLength(count);
        for (unsigned int i = 0; i < count; ++i) {
            OXAUnicodeString key;
            OXAUnicodeString value;
            attributes->GetQName(i, key);
            attributes->GetValue(i, value);
            call.append(" ").append(text(key)).append("=").append(text(value));
        }
        calls.push_back(call);
        if (at_start) at_start();
        return start_result;
    }

    HRESULT OnEndElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                         const OXAUnicodeString& qName) override {
        std::string call = std::string(">").append(text(name)).append(" ").append(text(parentName));
        call.append(" ").append(text(qName));
        if (watched != nullptr) call.append(" ").append(watched->text());
        calls.push_back(call);
        if (at_end) at_end();
        return end_result;
    }

protected:
    ~ElementReader() override { --live; }

private:
    static std::string text(const OXAUnicodeString& string) { return string.ConvertToChar(); }
};

using ElementReader_var = OXAVar<ElementReader>;

inline ElementReader_var make_reader() {
    return ElementReader_var::Adopt(new ElementReader(new WatchedBuffer));
}

inline unsigned int references_of(OXABaseUnknown& object) {
    object.AddRef();
    return object.Release();
}

/// Answers with a fixed position.
class FixedLocator : public OXAISAXLocator {
public:
    FixedLocator(int line, int column) : line_(line), column_(column) { ++live; }
    static inline int live = 0;

    std::vector<std::string> asked;

    HRESULT GetLineNumber(int& line) override {
        asked.push_back("line");
        line = line_;
        return S_OK;
    }
    HRESULT GetColumnNumber(int& column) override {
        asked.push_back("column");
        column = column_;
        return S_OK;
    }
    HRESULT GetPublicId(OXAUnicodeString&) override { return S_OK; }
    HRESULT GetSystemId(OXAUnicodeString&) override { return S_OK; }

protected:
    ~FixedLocator() override { --live; }

private:
    int line_;
    int column_;
};

inline OXAVar<FixedLocator> make_locator(int line, int column) {
    return OXAVar<FixedLocator>::Adopt(new FixedLocator(line, column));
}

}  // namespace sax

#endif
