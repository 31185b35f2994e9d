// SPDX-License-Identifier: Apache-2.0
// Loads a texture made in memory, hears from the log, and reads a document.
#include <OXASAX.h>
#include <PeltoKernelTools/vDDSImage.h>
#include <cstring>
#include <string>
#include <vDDSImage.h>
#include <vLogger.h>

namespace {

bool is_well_formed(const char* text) {
    OXAIXMLSAX2Factory_var factory;
    OXAISAXXMLReader_var reader;
    OXAISAXInputSource_var source;
    if (FAILED(CreateOXAIXMLSAX2Factory(factory, CLSID_XML4C_SAX))) return false;
    if (FAILED(factory->CreateXMLReader(reader))) return false;
    if (FAILED(factory->CreateInputSourceFromText(text, "", source))) return false;
    return reader->Parse(source) == S_OK;
}

}  // namespace

int main() {
    std::string file(128 + 8, '\0');
    const auto put = [&](std::size_t offset, unsigned value) { std::memcpy(&file[offset], &value, 4); };
    std::memcpy(&file[0], "DDS ", 4);
    put(12, 4);  // height
    put(16, 4);  // width
    put(80, 4);  // a FourCC follows
    std::memcpy(&file[84], "DXT1", 4);

    vDDSImage image;
    if (!image.loadFromBuffer(file.data(), static_cast<int>(file.size()), true, false)) return 1;
    if (image.get_size() != 8 || image.get_format() != TOZ::SUPPORTED_FORMAT::DXT1) return 2;

    std::string logged;
    TOZ::vLogger::SetSink([&](const TOZ::vLogRecord& record) { logged = record.text; });
    put(80, 0);
    if (image.loadFromBuffer(file.data(), static_cast<int>(file.size()), true, false)) return 3;
    if (logged != "DDS Format not supported.") return 4;

    return is_well_formed("<scene/>") && !is_well_formed("<scene>") ? 0 : 5;
}
