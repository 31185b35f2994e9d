// The names of a reader's features.
#ifndef OXA_SAX_XML_READER_OPTIONS_H
#define OXA_SAX_XML_READER_OPTIONS_H

/// Boolean features for OXAISAXXMLReader::SetFeature.
class OXASAXXMLReaderOptions {
public:
    /// Documents are checked against the loaded schemas, or against their own DTD. At first false.
    static constexpr const char* ValidationFeature = "http://xml.org/sax/features/validation";

    /// Namespaces are processed: elements and attributes have a URI and a local name. At first true; schemas
    /// need it. Without it names have neither.
    static constexpr const char* NamespacesFeature = "http://xml.org/sax/features/namespaces";

    /// Declarations of namespaces are reported as attributes too. At first false.
    static constexpr const char* NamespacePrefixFeature = "http://xml.org/sax/features/namespace-prefixes";
};

#endif
