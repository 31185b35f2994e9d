#include "library_handler.h"

#include <stdexcept>
#include <utility>

namespace {

std::string attribute(const OXAISAXAttributes_var& attributes, const char* name) {
    OXAUnicodeString value;
    attributes->GetValue(OXAUnicodeString(name), value);
    return value.ConvertToChar();
}

std::vector<std::string> words_of(const vSAXDefaultBuffer& buffer) {
    vArray<TOZ::vString> words;
    buffer.GetVStringArray(words);
    std::vector<std::string> strings;
    for (const TOZ::vString& word : words) strings.emplace_back(word.CStr());
    return strings;
}

// A number has a word of its own, so there are no more numbers than words.
template <class Number, class Read>
std::vector<Number> numbers_of(const vSAXDefaultBuffer& buffer, Read read) {
    std::vector<Number> numbers(words_of(buffer).size());
    (buffer.*read)(numbers.data(), static_cast<int>(numbers.size()));
    return numbers;
}

}  // namespace

void LibraryHandler::Reset() {
    textures.clear();
    problems.clear();
    elementStack.clear();
    material_.clear();
}

HRESULT LibraryHandler::OnStartElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                                       const OXAISAXAttributes_var& attributes) {
    if (name == "material") material_ = attribute(attributes, "name");
    if (name == "texture" && parentName == "material") {
        LibraryTexture texture;
        if (locator) {
            locator->GetLineNumber(texture.line);
            locator->GetColumnNumber(texture.column);
        }
        texture.material = material_;
        texture.name = attribute(attributes, "name");
        textures.push_back(std::move(texture));
    }
    return S_OK;
}

HRESULT LibraryHandler::OnEndElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                                     const OXAUnicodeString&) {
    if (parentName == "texture" && !textures.empty()) read_value(name.ConvertToChar(), textures.back());
    return S_OK;
}

void LibraryHandler::read_value(const std::string& element, LibraryTexture& texture) {
    try {
        if (element == "file") buffer->GetString(texture.file);
        if (element == "kind") buffer->GetString(texture.kind);
        if (element == "flip" && !buffer->GetBoolean(texture.flip))
            complain("flip is neither true nor false");
        if (element == "slice" && !buffer->GetUint32(texture.slice)) complain("slice is not a number");
        if (element == "usage") buffer->GetString(texture.usage);
        if (element == "tint") texture.tint = numbers_of<float>(*buffer, &vSAXDefaultBuffer::GetFloatArray);
        if (element == "levels") texture.levels = numbers_of<int>(*buffer, &vSAXDefaultBuffer::GetIntArray);
        if (element == "tags") texture.tags = words_of(*buffer);
    } catch (const std::logic_error& not_a_number) {
        complain(element + " holds what is no number: " + not_a_number.what());
    }
}

// A schema has said so already, where there is one.
void LibraryHandler::complain(const std::string& message) {
    XMLProblem problem{document, 0, 0, Severity::kError, message};
    if (locator) {
        locator->GetLineNumber(problem.line);
        locator->GetColumnNumber(problem.column);
    }
    if (!problems.empty() && problems.back().line == problem.line) return;
    problems.push_back(std::move(problem));
}
