// A library document read: materials and their textures, as samples/library/library.xsd describes them.
#ifndef PELTO_TOOL_LIBRARY_HANDLER_H
#define PELTO_TOOL_LIBRARY_HANDLER_H

#include <string>
#include <vSAXDefaultHandler.h>
#include <vector>

#include "xml_problems.h"

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

/// Values that cannot be read are problems, and stay as they were.
class LibraryHandler : public ProblemKeeper<vSAXDefaultHandler> {
public:
    LibraryHandler() { buffer = new vSAXDefaultBuffer; }

    std::vector<LibraryTexture> textures;

    void Reset() override;
    HRESULT GetStatus() const override { return has_errors(problems) ? E_FAIL : S_OK; }
    HRESULT OnStartElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                           const OXAISAXAttributes_var& attributes) override;
    HRESULT OnEndElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                         const OXAUnicodeString& qName) override;

protected:
    ~LibraryHandler() override = default;

private:
    void read_value(const std::string& element, LibraryTexture& texture);
    void complain(const std::string& message);

    std::string material_;
};

#endif
