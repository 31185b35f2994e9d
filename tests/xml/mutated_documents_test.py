# SPDX-License-Identifier: Apache-2.0
"""mutated_documents_test.py PRINT_EVENTS FOLDER: changes documents of this file and small ones of the folder: the
framework's reader refuses what expat refuses, and reports the same events for the rest."""

import os
import random
import sys
import tempfile
from collections import Counter

import compare_events
import expat_events
import framework_events

MUTATED = 2000
SMALL = range(300, 3000)
SMALL_PER_PACKAGE = 4

DTD = "<!ELEMENT a (b|c)*><!ELEMENT b (#PCDATA)><!ENTITY far 'from the DTD'>"

OWN = [
    "<?xml version='1.0' encoding='UTF-8'?>\n"
    "<!DOCTYPE a SYSTEM 'a.dtd' [<!ENTITY e 'x&#38;lt;'><!ENTITY % p '<!ELEMENT c (#PCDATA|b)*>'>%p;\n"
    "<!ATTLIST a d CDATA #FIXED '1' i ID #IMPLIED><!NOTATION n PUBLIC 'n'>]>\n"
    "<a xmlns:p='u' i='one'>\n  <b p:q='\u00e9'>1 2.5 -3e4</b><!-- note --><?t data?>\n"
    "  <p:c>&e;&far;&amp;&#x1F600;<![CDATA[<&]]>\u4e8c</p:c>\n</a>\n",
    "<a><b c='1' d=\"2\"/>text<b>&lt;&gt;&#10;</b>\n<!-- a - b --><![CDATA[]]]]></a>",
    "<x:a xmlns:x='urn:x' xmlns='urn:d'><b x:c='1' c='2'/><x:b xmlns:x='urn:y' xmlns=''><c/></x:b></x:a>",
    "<!DOCTYPE a [<!ELEMENT a ANY><!ELEMENT b ANY><!ENTITY e '<b>&f;</b>'><!ENTITY f 'f\u00fc'>\n"
    "<!ATTLIST a t NMTOKENS #IMPLIED u (v|w) 'v' x CDATA ' &f; '>]>\n"
    "<a t=' m  n ' x='a\tb\r\nc'>&e;\r\n&f;\r</a><?end?>",
    "<!DOCTYPE a [<!NOTATION gif SYSTEM 'viewer'><!ENTITY pic SYSTEM 'a.gif' NDATA gif>"
    "<!ATTLIST a p ENTITY #IMPLIED><!ENTITY far SYSTEM 'http://localhost/far.xml'>]><a p='pic'>&far;</a>",
    "<\u00e9l\u00e9ment \u4e8c='\U0001f600'>\u0416\u044f \u20ac \U00010400</\u00e9l\u00e9ment>\n<!-- \u00e9 -->\n",
]

PIECES = [piece.encode() for piece in [
    "<", ">", "&", ";", "'", '"', "/", "=", ":", "!", "?", "%", "#", "[", "]", " ", "\n", "\t", "\r", "--", "]]>",
    "<!--", "-->", "<![CDATA[", "?>", "<?", "&lt;", "&e;", "%p;", "&#0;", "&#x1F600;", "&#xD800;", "&#1114112;",
    "p:", "xmlns:p='u'", " xmlns=''", "\0", "\x01", "\x7f", "\x85", "\u2028", "\ufeff", "\ufffe"]]
NO_TEXT = [b"\0", b"\xff", b"\x80", b"\xc3", b"\xe4\xba", b"\xf0\x9f\x98", b"\xc0\xaf", b"\xed\xa0\x80",
           b"\xf4\x90\x80\x80"]


def mutated(document, rng):
    """The document with one to three changes."""
    data = bytearray(document)
    for _ in range(rng.randint(1, 3)):
        at = rng.randrange(len(data) + 1)
        end = min(at + rng.randint(1, 30), len(data))
        change = rng.choice(["flip", "erase", "insert", "replace", "repeat", "cut", "spoil"])
        if change == "flip" and at < end:
            data[at] ^= 1 << rng.randrange(8)
        elif change == "erase":
            del data[at:end]
        elif change == "insert":
            data[at:at] = rng.choice(PIECES)
        elif change == "replace":
            data[at:at + 1] = rng.choice(PIECES)
        elif change == "repeat":
            to = rng.randrange(len(data) + 1)
            data[to:to] = data[at:end]
        elif change == "cut" and rng.randrange(3) == 0:
            del data[at:]
        elif change == "spoil" and rng.randrange(3) == 0:
            # Behind the root a parser is tempted to take it for the end.
            at = rng.choice([at, len(data)])
            data[at:at] = rng.choice(NO_TEXT)
    return bytes(data)


def small_documents(folder):
    """A few of the smallest documents of each package."""
    documents = []
    for package in sorted(os.listdir(folder)) if os.path.isdir(folder) else []:
        paths = [os.path.join(at, name) for at, _, names in os.walk(os.path.join(folder, package)) for name in names]
        small = sorted((os.path.getsize(path), path) for path in paths
                       if not os.path.islink(path) and os.path.getsize(path) in SMALL)
        texts = [open(path, "rb").read() for _, path in small]
        documents += [text for text in texts if text.startswith(b"<?xml")][:SMALL_PER_PACKAGE]
    return documents


class Bench:
    """Reads documents with both parsers, from files beside the DTD."""

    def __init__(self, print_events, folder):
        self.print_events = print_events
        self.folder = folder
        with open(os.path.join(folder, "a.dtd"), "w") as file:
            file.write(DTD)

    def compare(self, documents):
        """Of each document the result, its events by the framework, and those by expat."""
        paths = [os.path.join(self.folder, f"{number}.xml") for number in range(len(documents))]
        for path, document in zip(paths, documents):
            with open(path, "wb") as file:
                file.write(document)
        for path, ours in zip(paths, framework_events.events_of(self.print_events, paths)):
            expat = expat_events.events_of(path)
            yield compare_events.compare(path, ours, expat), ours, expat


def has_place(fatal):
    return fatal[0] == "fatal" and int(fatal[1]) > 0 and int(fatal[2]) > 0 and fatal[3] != ""


def main():
    print_events, folder = sys.argv[1:]
    rng = random.Random(1)
    with tempfile.TemporaryDirectory() as work:
        bench = Bench(print_events, work)
        own = [text.encode() for text in OWN]
        for document, (result, ours, expat) in zip(own, bench.compare(own)):
            assert result == compare_events.EQUAL, (document, ours, expat)
        real = small_documents(folder)
        real = [document for document, compared in zip(real, bench.compare(real))
                if compared[0] == compare_events.EQUAL]
        assert len(real) >= 30, f"{len(real)} small documents in {folder}; 'scripts/setup test' fetches them"

        documents = [mutated(rng.choice(rng.choice([own, real])), rng) for _ in range(MUTATED)]
        results = Counter()
        wrong = []
        for document, (result, ours, expat) in zip(documents, bench.compare(documents)):
            results[result] += 1
            if result is None:
                wrong.append(f"{document}\n    framework: {ours}\n    expat: {expat}")
            if ours[-1][0] != "ok" and not has_place(ours[-1]):
                wrong.append(f"{document}\n    no place: {ours[-1]}")
    print(f"{MUTATED} documents: {dict(results)}")
    if wrong:
        sys.exit("\n".join(wrong))
    # The changes leave enough of both kinds, and differences with reason are few.
    assert results[compare_events.EQUAL] > MUTATED / 10
    assert results[compare_events.BOTH_REFUSE] > MUTATED / 4
    assert results.total() - results[compare_events.EQUAL] - results[compare_events.BOTH_REFUSE] < MUTATED / 50


main()
