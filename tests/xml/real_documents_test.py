# SPDX-License-Identifier: Apache-2.0
"""real_documents_test.py PRINT_EVENTS FOLDER: the framework's reader reports the same events as expat for every
XML document of the folder and below."""

import os
import sys
from collections import Counter

import compare_events
import expat_events
import framework_events

# Fewer would tell little: the folder is not what "scripts/setup test" has fetched.
LEAST_EQUAL = 300
XML_SUFFIXES = (".xml", ".ui", ".qrc")


def is_document(path):
    if os.path.islink(path) or not os.path.isfile(path):
        return False
    with open(path, "rb") as file:
        start = file.read(1024).removeprefix(b"\xef\xbb\xbf").lstrip()
    return start.startswith(b"<?xml") or (path.endswith(XML_SUFFIXES) and start.startswith(b"<"))


def documents_in(folder):
    paths = [os.path.join(at, name) for at, _, names in os.walk(folder) for name in names]
    return sorted(filter(is_document, paths))


def main():
    print_events, folder = sys.argv[1:]
    paths = documents_in(folder)
    results = Counter()
    differing = []
    for path, ours in zip(paths, framework_events.events_of(print_events, paths)):
        result = compare_events.compare(path, ours, expat_events.events_of(path))
        results[result] += 1
        if result not in (compare_events.EQUAL, compare_events.BOTH_REFUSE):
            differing.append(f"{path}: {result}")
    print(f"{len(paths)} documents in {folder}: {dict(results)}")
    if differing:
        sys.exit("\n".join(["The events differ:", *differing]))
    if results[compare_events.EQUAL] < LEAST_EQUAL:
        sys.exit(f"Fewer than {LEAST_EQUAL} documents were compared; 'scripts/setup test' fetches them.")


main()
