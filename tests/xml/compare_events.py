# SPDX-License-Identifier: Apache-2.0
"""How the framework's reader and expat compare on a document, and where they differ with reason."""

import re

import expat_events

EQUAL = "equal"
BOTH_REFUSE = "refused by both"

# Characters of names beyond ASCII, by the fifth edition of XML 1.0: those that begin one, and the others.
NAME_START = re.compile("[\u00c0-\u00d6\u00d8-\u00f6\u00f8-\u02ff\u0370-\u037d\u037f-\u1fff\u200c\u200d\u2070-\u218f"
                        "\u2c00-\u2fef\u3001-\ud7ff\uf900-\ufdcf\ufdf0-\ufffd\U00010000-\U000effff]")
NAME_OTHER = re.compile("[\u00b7\u0300-\u036f\u203f\u2040]")

SYSTEM_ID = re.compile(r"""(?:SYSTEM|PUBLIC\s*(?:"[^"]*"|'[^']*'))\s*("[^"]*"|'[^']*')""")
NO_CHARACTER = re.compile("[\x01-\x08\x0b\x0c\x0e-\x1f\ufffe\uffff]")
VERSION = re.compile(r"""<\?xml\s+version\s*=\s*(["'])1\.0\1""")
COLON_IN_NAME = re.compile(r"[&%][^\s;<>&]*:|<\?[^\s?]*:")


def with_old_names(text):
    """The text with a character in each character's place that all editions allow at the same places of names."""
    return NAME_OTHER.sub("\u00b7", NAME_START.sub("\u00e9", text))


def equal_with_old_names(path, text, ours):
    """Expat keeps to the names of the fourth edition; the framework reads those of the fifth."""
    with open(path + ".old", "w", encoding="utf-8", newline="") as file:
        file.write(with_old_names(text))
    expat = expat_events.events_of(path + ".old")
    return expat[-1][0] == "ok" and expat[:-1] == [tuple(map(with_old_names, event)) for event in ours[:-1]]


def has_spaced_namespace(ours):
    """Expat, or xml.sax, splits what it tells of names at white space."""
    return any(event[0] == "prefix" and re.search(r"\s", event[2]) for event in ours)


def has_odd_system_id(text):
    """The framework does not look at the characters of a system identifier."""
    return any(NO_CHARACTER.search(system_id) for system_id in SYSTEM_ID.findall(text))


def has_colon_outside_elements(text):
    """Where names have no namespaces, in a DTD and of entities and instructions, only expat forbids colons."""
    return ":" in text.partition("<!DOCTYPE")[2].partition("]>")[0] or COLON_IN_NAME.search(text)


def has_letters_of_expat(expat):
    """In ISO 8859-1 expat takes these for letters, which no edition does."""
    return any(re.search("[\u00aa\u00b5\u00ba]", field) for event in expat for field in event[1:]
               if event[0] in ("start", "instruction"))


def names_of_elements(events):
    return [event[:4] for event in events if event[0] in ("start", "end")]


def compare(path, ours, expat):
    """EQUAL, BOTH_REFUSE, the name of a difference with reason, or None for one without."""
    if ours[-1][0] == "contradiction":
        return None
    we_read = ours[-1][0] == "ok"
    expat_reads = expat[-1][0] == "ok"
    if not we_read and not expat_reads:
        return BOTH_REFUSE
    with open(path, encoding="utf-8-sig", newline="", errors="replace") as file:
        text = file.read()
    # Expat does not look at the version, the framework not at its minor number.
    if text.startswith("<?xml") and not VERSION.match(text):
        return "a version other than 1.0"
    if we_read and has_spaced_namespace(ours):
        return "white space in a namespace"
    if we_read and not expat_reads:
        if has_odd_system_id(text):
            return "a forbidden character in a system identifier"
        if has_colon_outside_elements(text):
            return "a colon in a name without a namespace"
        if equal_with_old_names(path, text, ours):
            return "a name of the fifth edition"
    if not we_read and "neither UTF-8 nor one of 8 bits" in ours[-1][4]:
        # Python knows more names of encodings.
        return "an encoding that only Python knows"
    if not we_read and re.search("encoding=.ISO-8859-1", text, re.IGNORECASE) and has_letters_of_expat(expat):
        return "a letter by expat"
    if not we_read or not expat_reads:
        return None

    invalid = ours[-1][1] != "0"
    skipped = expat[-1][1:]
    # An entity that a document with a DTD does not declare is an error for one, to be skipped for the other.
    if skipped and not invalid:
        return None
    if ours[:-1] == expat[:-1]:
        return EQUAL
    if invalid and names_of_elements(ours) == names_of_elements(expat):
        # Expat ignores what is declared behind a parameter entity that it does not know.
        if any(name.startswith("%") for name in skipped):
            return "an unknown parameter entity"
        # The framework leaves text out where the DTD allows none.
        if without_text(ours) == without_text(expat):
            return "text where the DTD allows none"
    return None


def without_text(events):
    return [event for event in events[:-1] if event[0] != "text"]
