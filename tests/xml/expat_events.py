# SPDX-License-Identifier: Apache-2.0
"""What a document says by Python's xml.sax, whose parser is expat, in the notation of print_events."""

import io
import os
import re
from xml.sax import SAXParseException, expatreader, handler, xmlreader

XMLNS = "http://www.w3.org/2000/xmlns/"


def with_line_feeds(text):
    """Expat leaves the line ends of system identifiers as they are."""
    return re.sub("\r\n?", "\n", text or "")


class Refused(Exception):
    """The document asks for another file that is not read, by the rules of the framework."""


class Names(handler.ContentHandler, handler.DTDHandler):
    """Every start tag as the document has it: its name, and its attributes with the declarations of
    namespaces. With namespaces on, xml.sax tells neither."""

    def __init__(self):
        super().__init__()
        self.starts = []

    def startElement(self, name, attrs):
        self.starts.append((name, list(attrs.items())))


class Events(handler.ContentHandler, handler.DTDHandler):
    """All events, with namespaces on."""

    def __init__(self, starts):
        super().__init__()
        self.starts = iter(starts)
        self.open_names = []
        self.events = []
        self.text = []
        self.skipped = []

    def report(self, *fields):
        self.end_text()
        self.events.append(fields)

    def end_text(self):
        if self.text:
            self.events.append(("text", "".join(self.text)))
            self.text = []

    def startElementNS(self, name, qname, attrs):
        qname, attributes = next(self.starts)
        self.open_names.append(qname)
        fields = []
        for attribute, value in attributes:
            if attribute == "xmlns":
                uri, local = "", attribute
            elif attribute.startswith("xmlns:"):
                uri, local = XMLNS, attribute.removeprefix("xmlns:")
            else:
                uri, local = attrs.getNameByQName(attribute)
            fields += [attribute, uri or "", local, value]
        self.report("start", name[0] or "", name[1], qname, *fields)

    def endElementNS(self, name, qname):
        self.report("end", name[0] or "", name[1], self.open_names.pop())

    def characters(self, content):
        self.text.append(content)

    def processingInstruction(self, target, data):
        self.report("instruction", target, data)

    def startPrefixMapping(self, prefix, uri):
        self.report("prefix", prefix or "", uri or "")

    def endPrefixMapping(self, prefix):
        self.report("end prefix", prefix or "")

    def skippedEntity(self, name):
        self.skipped.append(name)

    def notationDecl(self, name, publicId, systemId):
        self.report("notation", name, publicId or "", with_line_feeds(systemId))

    def unparsedEntityDecl(self, name, publicId, systemId, ndata):
        self.report("unparsed", name, publicId or "", with_line_feeds(systemId), ndata or "")


class Parser(expatreader.ExpatParser):
    """Reads a DTD and what it includes from files of the document's own folder and below. What has a URL is
    taken for empty; all else is refused."""

    def __init__(self, path, namespaces):
        super().__init__()
        self.folder = os.path.realpath(os.path.dirname(path))
        self.setFeature(handler.feature_namespaces, namespaces)
        self.setFeature(handler.feature_external_ges, True)
        self.setEntityResolver(self)

    def resolveEntity(self, publicId, systemId):
        if ":" not in systemId:
            return systemId
        source = xmlreader.InputSource(systemId)
        source.setByteStream(io.BytesIO())
        return source

    def external_entity_ref(self, context, base, sysid, pubid):
        if ":" in sysid:
            return super().external_entity_ref(context, base, sysid, pubid)
        here = os.path.dirname(self._source.getSystemId())
        path = os.path.realpath(os.path.join(here, sysid))
        if context is not None or not path.startswith(self.folder + os.sep) or not os.path.isfile(path):
            raise Refused(sysid)
        return super().external_entity_ref(context, base, sysid, pubid)


def read(path, namespaces, content):
    parser = Parser(path, namespaces)
    parser.setContentHandler(content)
    parser.setDTDHandler(content)
    source = xmlreader.InputSource(path)
    with open(path, "rb") as file:
        source.setByteStream(file)
        parser.parse(source)


def events_of(path):
    """The events of the document. The last one is ("ok", skipped entities...) or ("refused", why)."""
    # An encoding that Python does not know is a LookupError or ValueError.
    try:
        names = Names()
        read(path, False, names)
        events = Events(names.starts)
        read(path, True, events)
    except (Refused, SAXParseException, LookupError, ValueError) as problem:
        return [("refused", str(problem))]
    events.end_text()
    return events.events + [("ok", *events.skipped)]
