# SPDX-License-Identifier: Apache-2.0
"""licence_lines_test.py SOURCE_FOLDER: every source names its licence, on its first line or right behind the line that
has to be first (#!, an XML declaration).
"""

import fnmatch
import os
import pathlib
import re
import sys

LINES = {  # comment that begins or makes up the line: for the files of these names; all others take the last
    "// SPDX-License-Identifier: Apache-2.0": ["*.cpp", "*.h"],
    "<!-- SPDX-License-Identifier: Apache-2.0 -->": ["*.xml", "*.xsd"],
    '.\\" SPDX-License-Identifier: Apache-2.0': ["*.1.in"],
    "# SPDX-License-Identifier: Apache-2.0": ["*"],
}
NOT_OURS = {".git", "build", "__pycache__", "CMakeUserPresets.json", "compile_commands.json"}
# Data, records, documents, and what has no comments.
NO_SOURCES = ["LICENSE", "NOTICE", "*.md", "*.json", "*.png", "*.abi", "samples/*.dds", "samples/*.basis",
              "samples/library/*.xml", "fuzz/seeds/*", "tests/mutants/*.patch"]


def sources(root):
    for folder, folders, files in os.walk(root):
        folders[:] = [name for name in folders if name not in NOT_OURS]
        for name in files:
            path = (pathlib.Path(folder) / name).relative_to(root)
            if name not in NOT_OURS and not any(fnmatch.fnmatch(str(path), pattern) for pattern in NO_SOURCES):
                yield path


def licence_line(path):
    return next(line for line, names in LINES.items() if any(fnmatch.fnmatch(path.name, name) for name in names))


def names_its_licence(text, line):
    lines = text.splitlines()
    if lines and re.match(r"#!|<\?xml", lines[0]):
        del lines[0]
    return lines[:1] == [line]


def main(root):
    found = sorted(sources(root))
    silent = [path for path in found if not names_its_licence((root / path).read_text(), licence_line(path))]
    for path in silent:
        print(f"{path}: lacks the line {licence_line(path)}")
    if not found:
        print(f"There are no sources in {root}")
    return 1 if silent or not found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
