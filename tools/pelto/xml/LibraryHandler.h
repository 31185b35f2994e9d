// SPDX-License-Identifier: Apache-2.0
// A library document read: materials and their textures, as schemas/texture-library.xsd describes them.
#ifndef PELTO_TOOL_XML_LIBRARY_HANDLER_H
#define PELTO_TOOL_XML_LIBRARY_HANDLER_H

#include <cstddef>
#include <set>
#include <string>
#include <vSAXDefaultHandler.h>
#include <vector>

#include "xml/xml_problems.h"

/// Of the root element and all others.
inline constexpr char kLibraryNamespace[] = "urn:pelto:texture-library";

/// Ends the parse of a document whose root element is not a library's.
struct NotALibrary {};

struct LibraryTexture {
    int line = 0;  // of the document
    int column = 0;
    std::string material;
    std::string name;
    std::string file;  // as the document has it: relative to the document's folder
    std::string kind;  // "2d", "cube", "volume", or nothing
    bool flip = false;
    unsigned int slice = 0;  // of a .basis file
    std::string usage = "bc3";
    std::vector<float> tint;
    std::vector<int> levels;  // the first and the last that may be used
    std::vector<std::string> tags;
};

/// Values that cannot be read are problems, and stay as they were: also where no schema has refused them,
/// since a document may name a DTD instead, and a schema may be anybody's. Each cause is one problem.
class LibraryHandler : public ProblemKeeper<vSAXDefaultHandler> {
public:
    LibraryHandler() { buffer = new vSAXDefaultBuffer; }

    std::vector<LibraryTexture> textures;

    void Reset() override;
    HRESULT GetStatus() const override { return has_errors(problems) ? E_FAIL : S_OK; }
    HRESULT StartElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                         const OXAUnicodeString& qName, const OXAISAXAttributes_var& attributes) override;
    HRESULT OnStartElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                           const OXAISAXAttributes_var& attributes) override;
    HRESULT OnEndElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                         const OXAUnicodeString& qName) override;

protected:
    ~LibraryHandler() override = default;

private:
    void check_root(const OXAUnicodeString& uri, const OXAUnicodeString& name);
    void read_value(const std::string& element);
    void end_texture();
    void complain(const std::string& message);
    void complain_instead(std::size_t first, const std::string& message);

    std::string material_;
    std::set<std::string> children_;  // of the texture, so far
    bool child_refused_ = false;      // one of its start tags has problems
    std::size_t at_last_tag_ = 0;     // how many problems there were
    std::size_t at_element_start_ = 0;
};

#endif
