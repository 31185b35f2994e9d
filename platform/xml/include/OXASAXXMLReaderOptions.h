// SPDX-License-Identifier: Apache-2.0
// The names of a reader's features.
#ifndef OXA_SAX_XML_READER_OPTIONS_H
#define OXA_SAX_XML_READER_OPTIONS_H

/// Boolean features for OXAISAXXMLReader::SetFeature.
class OXASAXXMLReaderOptions {
public:
    /// Validate documents against the loaded schemas, or against their DTD. Default: false.
    static constexpr const char* ValidationFeature = "http://xml.org/sax/features/validation";

    /// Process namespaces: give elements and attributes a URI and a local name. Default: true; schemas need
    /// it.
    static constexpr const char* NamespacesFeature = "http://xml.org/sax/features/namespaces";

    /// Also report namespace declarations as attributes. Default: false.
    static constexpr const char* NamespacePrefixFeature = "http://xml.org/sax/features/namespace-prefixes";
};

#endif
