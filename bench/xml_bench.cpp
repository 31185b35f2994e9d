// SPDX-License-Identifier: Apache-2.0
// Reading XML, beside the bare parser with an empty handler, and beside expat with strtof; and arrays of
// numbers beside strtof alone.
#include <cstdio>
#include <cstdlib>
#include <expat.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vSAXReader.h>
#include <vector>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "paired.h"
#include "xml_sample.h"

namespace {

using bench::CpuClock;
using bench::Document;
using bench::kArrayLength;
using bench::Numbers;

class EmptyHandler : public vSAXDefaultHandler {
public:
    void Reset() override {}
    HRESULT GetStatus() const override { return S_OK; }
    HRESULT OnStartElement(const OXAUnicodeString&, const OXAUnicodeString&,
                           const OXAISAXAttributes_var&) override {
        return S_OK;
    }
    HRESULT OnEndElement(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&) override {
        return S_OK;
    }
};

class BufferingHandler : public EmptyHandler {
public:
    BufferingHandler() { buffer = new vSAXDefaultBuffer; }
};

class ArrayHandler : public BufferingHandler {
public:
    std::vector<float> values = std::vector<float>(kArrayLength);

    HRESULT OnEndElement(const OXAUnicodeString&, const OXAUnicodeString&, const OXAUnicodeString&) override {
        buffer->GetFloatArray(values.data(), static_cast<int>(values.size()));
        return S_OK;
    }
};

// Reads the numbers of a text, of which there must be room for.
void read_with_strtof(const char* text, float* values) {
    for (;;) {
        char* end = nullptr;
        const float value = std::strtof(text, &end);
        if (end == text) return;
        *values++ = value;
        text = end;
    }
}

// The parser that the reader uses, set up as the reader does it, with handlers that do nothing.
class BareParser {
public:
    BareParser() {
        using xercesc::XMLUni;
        parser_.setFeature(XMLUni::fgSAX2CoreValidation, true);
        parser_.setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
        parser_.setFeature(XMLUni::fgSAX2CoreNameSpacePrefixes, true);
        parser_.setFeature(XMLUni::fgXercesDynamic, true);
        parser_.setFeature(XMLUni::fgXercesSchema, true);
        parser_.setFeature(XMLUni::fgXercesLoadSchema, false);
        parser_.setFeature(XMLUni::fgXercesHandleMultipleImports, true);
        parser_.setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
        parser_.setContentHandler(&handler_);
        parser_.setDTDHandler(&handler_);
        parser_.setLexicalHandler(&handler_);
        parser_.setDeclarationHandler(&handler_);
        parser_.setErrorHandler(&handler_);
    }

    void parse_file(const char* path) {
        parser_.parse(path);
        if (parser_.getErrorCount() != 0) std::abort();
    }

    /// Takes a copy of the text first, as LoadBuffer does by contract: that is what the source does.
    void parse_text(const std::string& xml) {
        const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(xml.data()), xml.size(), "");
        parser_.parse(source);
        if (parser_.getErrorCount() != 0) std::abort();
    }

private:
    struct Platform {
        Platform() { xercesc::XMLPlatformUtils::Initialize(); }
        ~Platform() { xercesc::XMLPlatformUtils::Terminate(); }
    };

    Platform platform_;
    xercesc::DefaultHandler handler_;
    xercesc::SAX2XMLReaderImpl parser_;
};

// Reads the arrays of a document with expat and strtof.
class ExpatArrays {
public:
    std::vector<float> values = std::vector<float>(kArrayLength);

    void parse_file(const char* path) {
        constexpr int kPiece = 65'536;
        const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate(nullptr),
                                                                                  XML_ParserFree);
        XML_SetUserData(parser.get(), this);
        XML_SetElementHandler(parser.get(), start, end);
        XML_SetCharacterDataHandler(parser.get(), characters);
        std::FILE* const file = std::fopen(path, "rb");
        for (bool last = false; !last;) {
            const std::size_t length = std::fread(XML_GetBuffer(parser.get(), kPiece), 1, kPiece, file);
            last = length < kPiece;
            if (XML_ParseBuffer(parser.get(), static_cast<int>(length), last) != XML_STATUS_OK) std::abort();
        }
        std::fclose(file);
    }

private:
    static ExpatArrays& self(void* data) { return *static_cast<ExpatArrays*>(data); }

    static void XMLCALL start(void* data, const char*, const char**) { self(data).text_.clear(); }
    static void XMLCALL end(void* data, const char*) {
        read_with_strtof(self(data).text_.c_str(), self(data).values.data());
    }
    static void XMLCALL characters(void* data, const char* text, int length) {
        self(data).text_.append(text, static_cast<std::size_t>(length));
    }

    std::string text_;
};

// A document in a file, while it lives.
class DocumentFile {
public:
    DocumentFile(Document document, std::size_t bytes)
        : path_((std::filesystem::temp_directory_path() / "pelto_bench.xml").string()) {
        const std::string xml = bench::make_document(document, bytes);
        size_ = xml.size();
        std::ofstream(path_, std::ios::binary).write(xml.data(), static_cast<std::streamsize>(size_));
    }
    ~DocumentFile() { std::filesystem::remove(path_); }
    DocumentFile(const DocumentFile&) = delete;
    DocumentFile& operator=(const DocumentFile&) = delete;

    const char* path() const { return path_.c_str(); }
    std::size_t size() const { return size_; }

private:
    std::string path_;
    std::size_t size_;
};

template <class Handler>
void load_file(benchmark::State& state, std::size_t bytes, Document document) {
    const DocumentFile file(document, bytes);
    const auto handler = OXAVar<Handler>::Adopt(new Handler);
    vSAXReader reader;
    reader.SetDocumentHandler(handler.Get());
    BareParser parser;
    bench::paired<CpuClock>(
        state, file.size(),
        [&](std::size_t) {
            if (reader.LoadFile(file.path()) != S_OK) std::abort();
        },
        [&](std::size_t) { parser.parse_file(file.path()); });
}

template <class Handler>
void load_buffer(benchmark::State& state, std::size_t bytes, Document document) {
    const std::string xml = bench::make_document(document, bytes);
    const auto handler = OXAVar<Handler>::Adopt(new Handler);
    vSAXReader reader;
    reader.SetDocumentHandler(handler.Get());
    BareParser parser;
    bench::paired<CpuClock>(
        state, xml.size(),
        [&](std::size_t) {
            if (reader.LoadBuffer(xml.c_str()) != S_OK) std::abort();
        },
        [&](std::size_t) { parser.parse_text(xml); });
}

void load_arrays(benchmark::State& state, std::size_t bytes) {
    const DocumentFile file(Document::kArrays, bytes);
    const auto handler = OXAVar<ArrayHandler>::Adopt(new ArrayHandler);
    vSAXReader reader;
    reader.SetDocumentHandler(handler.Get());
    ExpatArrays expat;
    bench::paired<CpuClock>(
        state, file.size(),
        [&](std::size_t) {
            if (reader.LoadFile(file.path()) != S_OK) std::abort();
        },
        [&](std::size_t) { expat.parse_file(file.path()); });
    if (handler->values != expat.values) std::abort();
}

// Reads arrays of `length` numbers, as many as make kNumbers.
void get_float_array(benchmark::State& state, std::size_t length, Numbers numbers) {
    constexpr std::size_t kNumbers = 90'000;
    std::string text;
    bench::NumberSource().append(text, length, numbers);
    vSAXDefaultBuffer buffer;
    buffer.SetBuffer(text.c_str());
    std::vector<float> values(length);
    std::vector<float> limit_values(length);
    const std::size_t reads = kNumbers / length;
    bench::paired<CpuClock>(
        state, text.size() * reads,
        [&](std::size_t) {
            for (std::size_t i = 0; i < reads; ++i) {
                buffer.GetFloatArray(values.data(), static_cast<int>(length));
            }
        },
        [&](std::size_t) {
            for (std::size_t i = 0; i < reads; ++i) read_with_strtof(text.c_str(), limit_values.data());
        });
    if (values != limit_values) std::abort();
}

template <class... Arguments>
void add(const std::string& name, Arguments... arguments) {
    benchmark::RegisterBenchmark(name.c_str(), arguments...)->UseManualTime()->MinTime(2.0);
}

void add_document(const std::string& name, Document document, std::size_t megabytes) {
    const std::size_t bytes = megabytes * bench::kMB;
    const std::string kind = name + '/' + std::to_string(megabytes) + "MB";
    add("LoadFile/empty_handler/" + kind, load_file<EmptyHandler>, bytes, document);
    add("LoadFile/buffer/" + kind, load_file<BufferingHandler>, bytes, document);
    add("LoadBuffer/empty_handler/" + kind, load_buffer<EmptyHandler>, bytes, document);
    add("LoadBuffer/buffer/" + kind, load_buffer<BufferingHandler>, bytes, document);
}

const bool registered = [] {
    add_document("arrays", Document::kArrays, 50);
    add_document("arrays", Document::kArrays, 1);
    add_document("small_elements", Document::kSmallElements, 4);
    add("LoadFile/GetFloatArray/arrays/50MB", load_arrays, 50 * bench::kMB);
    add("GetFloatArray/short", get_float_array, std::size_t{90'000}, Numbers::kShort);
    add("GetFloatArray/full", get_float_array, std::size_t{90'000}, Numbers::kFull);
    add("GetFloatArray/scientific", get_float_array, std::size_t{90'000}, Numbers::kScientific);
    add("GetFloatArray/full/three_numbers", get_float_array, std::size_t{3}, Numbers::kFull);
    add("GetFloatArray/full/one_number", get_float_array, std::size_t{1}, Numbers::kFull);
    return true;
}();

}  // namespace
