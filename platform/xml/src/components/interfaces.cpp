// SPDX-License-Identifier: Apache-2.0
// The framework's interfaces: their names, and their destructors, which keep their tables in this library.
#include "OXASAX.h"
#include "components/meta_class.h"

OXA_DEFINE_META_CLASS(OXAISAXAttributes, OXABaseUnknown)
OXA_DEFINE_META_CLASS(OXAISAXContentHandler, OXABaseUnknown)
OXA_DEFINE_META_CLASS(OXAISAXErrorHandler, OXABaseUnknown)
OXA_DEFINE_META_CLASS(OXAISAXInputSource, OXABaseUnknown)
OXA_DEFINE_META_CLASS(OXAISAXLocator, OXABaseUnknown)
OXA_DEFINE_META_CLASS(OXAISAXXMLReader, OXABaseUnknown)
OXA_DEFINE_META_CLASS(OXAIXMLSAX2Factory, OXABaseUnknown)
OXA_DEFINE_META_CLASS(OXAIXMLSchemaLoader, OXABaseUnknown)

OXAISAXAttributes::~OXAISAXAttributes() = default;
OXAISAXContentHandler::~OXAISAXContentHandler() = default;
OXAISAXErrorHandler::~OXAISAXErrorHandler() = default;
OXAISAXInputSource::~OXAISAXInputSource() = default;
OXAISAXLocator::~OXAISAXLocator() = default;
OXAISAXXMLReader::~OXAISAXXMLReader() = default;
OXAIXMLSAX2Factory::~OXAIXMLSAX2Factory() = default;
OXAIXMLSchemaLoader::~OXAIXMLSchemaLoader() = default;
