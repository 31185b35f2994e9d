// SPDX-License-Identifier: Apache-2.0
// A reader of XML documents: writes the element tree down.
#ifndef PELTO_TOOL_XML_OUTLINE_HANDLER_H
#define PELTO_TOOL_XML_OUTLINE_HANDLER_H

#include <cstddef>
#include <string>
#include <utility>
#include <vSAXDefaultHandler.h>
#include <vector>

struct OutlineElement {
    int line = 0;           // of the document, where the start tag ends
    std::size_t depth = 0;  // open elements around it
    std::string name;
    std::string parent;  // empty for the root
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string text;  // of an element without children, without the whitespace at its ends
};

class OutlineHandler : public vSAXDefaultHandler {
public:
    OutlineHandler() { buffer = new vSAXDefaultBuffer; }

    /// In document order.
    const std::vector<OutlineElement>& elements() const { return elements_; }

    void Reset() override;
    HRESULT GetStatus() const override { return GetNbErrors() == 0 ? S_OK : E_FAIL; }

    HRESULT OnStartElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                           const OXAISAXAttributes_var& attributes) override;
    HRESULT OnEndElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                         const OXAUnicodeString& qName) override;
    HRESULT EndDocument() override;

protected:
    ~OutlineHandler() override = default;

private:
    std::vector<OutlineElement> elements_;
    bool at_leaf_ = false;  // no child began since the last element did
};

#endif
