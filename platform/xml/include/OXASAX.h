// SPDX-License-Identifier: Apache-2.0
// The XML framework: a validating SAX2 parser as components.
//
//     OXAIXMLSAX2Factory_var factory;
//     OXAISAXXMLReader_var reader;
//     OXAISAXInputSource_var source;
//     CreateOXAIXMLSAX2Factory(factory, CLSID_XML4C_SAX);
//     factory->CreateXMLReader(reader);
//     // `handler` is of your class, which derives from OXASAXDefaultHandler.
//     reader->SetContentHandler(OXAISAXContentHandler_var(handler));
//     reader->SetErrorHandler(OXAISAXErrorHandler_var(handler));
//     factory->CreateInputSourceFromFile("scene.xml", "", source);
//     HRESULT result = reader->Parse(source);
//
// Threads: use a reader, with its handlers, sources and schemas, on one thread at a time; readers on
// different threads are independent.
#ifndef OXA_SAX_H
#define OXA_SAX_H

#include "OXAISAXAttributes.h"
#include "OXAISAXContentHandler.h"
#include "OXAISAXErrorHandler.h"
#include "OXAISAXInputSource.h"
#include "OXAISAXLocator.h"
#include "OXAISAXXMLReader.h"
#include "OXAIXMLSAX2Factory.h"
#include "OXAIXMLSchemaLoader.h"
#include "OXASAXDefaultHandler.h"
#include "OXASAXParseException.h"
#include "OXASAXXMLReaderOptions.h"

#endif
