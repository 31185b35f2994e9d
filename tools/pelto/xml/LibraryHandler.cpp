// SPDX-License-Identifier: Apache-2.0

#include "xml/LibraryHandler.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <system_error>
#include <utility>

#include "arguments/choices.h"
#include "texture/BasisUsage.h"

namespace {

const std::vector<std::string> kKinds = {"2d", "cube", "volume"};
constexpr std::size_t kTintChannels = 3;
constexpr double kMostTint = 3.4028235e38;  // the largest float, as it is written
constexpr std::size_t kLevelLimits = 2;

std::string attribute(const OXAISAXAttributes_var& attributes, const char* name) {
    OXAUnicodeString value;
    attributes->GetValue(OXAUnicodeString(name), value);
    return value.ConvertToChar();
}

std::string text_of(const vSAXDefaultBuffer& buffer) {
    std::string text;
    buffer.GetString(text);
    return text;
}

std::vector<std::string> words_of(const vSAXDefaultBuffer& buffer) {
    vArray<TOZ::vString> words;
    buffer.GetVStringArray(words);
    std::vector<std::string> strings;
    for (const TOZ::vString& word : words) strings.emplace_back(word.CStr());
    return strings;
}

// The whole word, which may have a plus sign.
template <class Number>
std::optional<Number> number_of(const std::string& word) {
    Number number = 0;
    const char* const end = word.data() + word.size();
    const char* const begin = word.data() + (word.starts_with('+') ? 1 : 0);
    const auto [stop, error] = std::from_chars(begin, end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

bool read_slice(const std::string& text, unsigned int& slice) {
    const std::optional<std::uint32_t> number = number_of<std::uint32_t>(text);
    if (number) slice = *number;
    return number.has_value();
}

bool read_tint(const std::vector<std::string>& words, std::vector<float>& tint) {
    std::vector<float> channels;
    for (const std::string& word : words) {
        const std::optional<double> number = number_of<double>(word);
        if (!number || !(std::abs(*number) <= kMostTint)) return false;
        constexpr double kMost = std::numeric_limits<float>::max();
        channels.push_back(static_cast<float>(std::clamp(*number, -kMost, kMost)));
    }
    if (channels.size() != kTintChannels) return false;
    tint = std::move(channels);
    return true;
}

bool read_levels(const std::vector<std::string>& words, std::vector<int>& levels) {
    std::vector<int> limits;
    for (const std::string& word : words) {
        const std::optional<std::uint8_t> number = number_of<std::uint8_t>(word);
        if (!number) return false;
        limits.push_back(*number);
    }
    if (limits.size() != kLevelLimits) return false;
    levels = std::move(limits);
    return true;
}

bool read_name(const std::string& text, const std::vector<std::string>& names, std::string& value) {
    if (std::find(names.begin(), names.end(), text) == names.end()) return false;
    value = text;
    return true;
}

}  // namespace

void LibraryHandler::Reset() {
    textures.clear();
    problems.clear();
    elementStack.clear();
    material_.clear();
    children_.clear();
    child_refused_ = false;
    at_last_tag_ = at_element_start_ = 0;
}

HRESULT LibraryHandler::StartElement(const OXAUnicodeString& uri, const OXAUnicodeString& localName,
                                     const OXAUnicodeString& qName, const OXAISAXAttributes_var& attributes) {
    if (elementStack.empty()) check_root(uri, localName);
    return ProblemKeeper::StartElement(uri, localName, qName, attributes);
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
        children_.clear();
        child_refused_ = false;
    }
    if (parentName == "texture") {
        children_.insert(name.ConvertToChar());
        child_refused_ = child_refused_ || problems.size() > at_last_tag_;
    }
    at_last_tag_ = at_element_start_ = problems.size();
    return S_OK;
}

HRESULT LibraryHandler::OnEndElement(const OXAUnicodeString& name, const OXAUnicodeString& parentName,
                                     const OXAUnicodeString&) {
    if (parentName == "texture" && !textures.empty()) read_value(name.ConvertToChar());
    if (name == "texture" && parentName == "material") end_texture();
    at_last_tag_ = problems.size();
    return S_OK;
}

// A schema that declares no such root has no better words for it.
void LibraryHandler::check_root(const OXAUnicodeString& uri, const OXAUnicodeString& name) {
    if (name == "library" && uri == kLibraryNamespace) return;
    std::erase_if(problems, [&](const XMLProblem& problem) { return problem.path == document; });
    const std::string found =
        uri.IsEmpty() ? "no namespace" : std::string("the namespace ") + uri.ConvertToChar();
    complain(std::string("is no library: its root element is <") + name.ConvertToChar() + "> in " + found +
             ", not <library xmlns=\"" + kLibraryNamespace + "\">");
    throw NotALibrary();
}

void LibraryHandler::read_value(const std::string& element) {
    LibraryTexture& texture = textures.back();
    const std::string text = text_of(*buffer);
    const auto expect = [&](bool good, const std::string& what) {
        if (!good) complain_instead(at_element_start_, element + " is '" + text + "', not " + what);
    };
    if (element == "file") {
        if (text.empty()) complain_instead(at_element_start_, "file is empty");
        texture.file = text;
    } else if (element == "kind") {
        expect(read_name(text, kKinds, texture.kind), any_of(kKinds));
    } else if (element == "flip") {
        expect(buffer->GetBoolean(texture.flip), "true or false");
    } else if (element == "slice") {
        expect(read_slice(text, texture.slice), "a whole number from 0 to 4294967295");
    } else if (element == "usage") {
        expect(read_name(text, usage_names(), texture.usage), any_of(usage_names()));
    } else if (element == "tint") {
        expect(read_tint(words_of(*buffer), texture.tint), "three finite numbers");
    } else if (element == "levels") {
        expect(read_levels(words_of(*buffer), texture.levels), "two whole numbers from 0 to 255");
    } else if (element == "tags") {
        texture.tags = words_of(*buffer);
    }
}

// What a schema says of the content as a whole comes just before the end tag. It repeats what it has said of
// a start tag, and of what is missing it gives no name.
void LibraryHandler::end_texture() {
    const bool refused = problems.size() > at_last_tag_;
    const std::string name = textures.back().material + "/" + textures.back().name;
    if (refused && child_refused_) problems.resize(at_last_tag_);
    if (children_.count("file") == 0) {
        complain_instead(at_last_tag_, name + " has no <file>");
    } else if (refused && children_.count("kind") == 0) {
        complain_instead(at_last_tag_, name + " has no <kind>: " + any_of(kKinds));
    }
}

void LibraryHandler::complain(const std::string& message) {
    XMLProblem problem{document, 0, 0, Severity::kError, message};
    if (locator) {
        locator->GetLineNumber(problem.line);
        locator->GetColumnNumber(problem.column);
    }
    problems.push_back(std::move(problem));
}

// In the place of what a schema has said since there were `first` problems.
void LibraryHandler::complain_instead(std::size_t first, const std::string& message) {
    problems.resize(first);
    complain(message);
}
