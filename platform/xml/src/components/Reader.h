// SPDX-License-Identifier: Apache-2.0
// The parser of the interface.
#ifndef READER_H
#define READER_H

#include <memory>

#include "OXAISAXXMLReader.h"
#include "OXAIXMLSchemaLoader.h"
#include "components/TearOff.h"
#include "limits/ParseLocator.h"
#include "parser/XercesParser.h"
#include "parser/XercesPlatform.h"
#include "schemas/SchemaSet.h"

namespace sax {

class Reader final : public OXAISAXXMLReader {
public:
    explicit Reader(std::shared_ptr<const XercesPlatform> platform);

    HRESULT QueryInterface(const GUID& classId, void** object) override;
    OXABaseUnknown* QueryInterface(const char* className) override;

    HRESULT SetFeature(const OXAUnicodeString& name, bool value) override;
    HRESULT GetFeature(const OXAUnicodeString& name, bool& value) override;
    HRESULT SetContentHandler(const OXAISAXContentHandler_var& handler) override;
    HRESULT SetErrorHandler(const OXAISAXErrorHandler_var& handler) override;
    HRESULT Parse(const OXAISAXInputSource_var& source) override;

private:
    class SchemaLoader final : public TearOff<OXAIXMLSchemaLoader> {
    public:
        explicit SchemaLoader(Reader& reader) : TearOff(reader), reader_(reader) {}
        HRESULT LoadGrammar(const OXAUnicodeString& key, const OXAISAXInputSource_var& source) override {
            return reader_.load_schema(key, source);
        }
        HRESULT ClearCache() override { return reader_.clear_schemas(); }

    private:
        Reader& reader_;
    };

    bool* feature(const OXAUnicodeString& name);
    HRESULT load_schema(const OXAUnicodeString& key, const OXAISAXInputSource_var& source);
    HRESULT clear_schemas();

    template <class Read>
    HRESULT read(const OXAISAXInputSource_var& source, Read read);

    std::shared_ptr<const XercesPlatform> platform_;
    SchemaLoader schema_loader_;
    Features features_;
    OXAISAXContentHandler_var content_;
    OXAISAXErrorHandler_var errors_;
    OXAVar<ParseLocator> locator_;
    SchemaSet schemas_;
    bool is_reading_ = false;
};

}  // namespace sax

#endif
