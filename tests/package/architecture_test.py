# SPDX-License-Identifier: Apache-2.0
"""architecture_test.py SOURCE_FOLDER: ARCHITECTURE.md names the folders that exist, and every #include follows its tables.

The tables are found by their headings. A row names folders, or sources, in `code`; a row of "stands on" also covers
whatever the named folders stand on themselves.
"""

import collections
import fnmatch
import pathlib
import re
import sys

ROOMS = ["src", "platform", "tools/pelto"]  # whose includes are checked
FOLDERS_OF = ["", "src", "platform", "tools", "tools/pelto"]  # each folder in them is named
BUILT = {"build", "node_modules"}
# Where an include is looked up, after the folder of the source itself.
PUBLIC = ["include", "platform/kernel/include", "platform/component/include", "platform/xml/include"]
PRIVATE = ["src", "platform/kernel/src", "platform/component/src", "platform/xml/src", "tools/pelto"]


def table(page, left, right):
    """[(names in the left column, names in the right column)] of the table with this heading."""
    match = re.search(rf"^\| {left} \| {right} \|\n\|[ |-]+\|\n((?:\|.*\n)+)", page, re.M)
    assert match, f"there is no table '{left} | {right}'"
    columns = [line.strip("|").split("|", 1) for line in match[1].splitlines()]
    return [tuple(re.findall(r"`([^`]+)`", column) for column in row) for row in columns]


def check_folders(root, page):
    named = {name.rstrip("/") for names, _ in table(page, "folder", "what lives there") for name in names}
    for name in sorted(named):
        if not (root / name).is_dir():
            yield f"the table names the folder {name}/, which does not exist"
    for parent in FOLDERS_OF:
        for path in sorted((root / parent).iterdir()):
            name = path.relative_to(root).as_posix()
            covered = name in named or any(other.startswith(name + "/") for other in named)
            if path.is_dir() and path.name not in BUILT and not path.name.startswith(".") and not covered:
                yield f"the table does not name the folder {name}/"


def sources(root):
    found = [root / "include", *(root / room for room in ROOMS)]
    return sorted(path.relative_to(root) for folder in found for path in folder.rglob("*")
                  if path.suffix in (".h", ".cpp"))


def resolve(root, source, header):
    """The file of the project that the source includes, or None."""
    library = next((folder for folder in PRIVATE if source.as_posix().startswith(folder + "/")), None)
    for folder in [source.parent.as_posix(), *([library] if library else []), *PUBLIC]:
        if (root / folder / header).is_file():
            return pathlib.PurePath(folder, header)
    return None


def everything_below(rooms):
    """For each room: itself and all that it stands on, directly or not. A circle is an assertion."""
    below = {}

    def visit(room, path):
        assert room not in path, f"the table has a circle: {' -> '.join([*path, room])}"
        assert room in rooms, f"the table says that something stands on {room}, which has no row"
        if room not in below:
            below[room] = {room}.union(*(visit(other, [*path, room]) for other in rooms[room]))
        return below[room]

    for room in rooms:
        visit(room, [])
    return below


def room_of(path, rooms):
    return path.as_posix() if path.as_posix() in rooms else path.parent.as_posix()


def check_includes(root, page):
    rooms = {name: on for names, on in table(page, "folder", "stands on") for name in names}
    outside = {name: who for names, who in table(page, "header from outside", "who includes it") for name in names}
    below = everything_below(rooms)
    for name in rooms:
        if not (root / name).exists():
            yield f"the table has a row for {name}, which does not exist"
    used = collections.Counter()
    for source in sources(root):
        room = room_of(source, rooms)
        if room not in rooms:
            yield f"{source}: the table has no row for {room}"
            continue
        for header in re.findall(r'^\s*#\s*include\s*[<"]([^">]+)[">]', (root / source).read_text(), re.M):
            target = resolve(root, source, header)
            if target:
                used[room, room_of(target, rooms)] += 1
                if room_of(target, rooms) not in below[room]:
                    yield f"{source} includes {target}: {room} does not stand on {room_of(target, rooms)}"
            elif "." in header:  # the standard library's have none
                pattern = next((name for name in outside if fnmatch.fnmatch(header, name)), None)
                who = outside.get(pattern, [])
                matching = [name for name in who if fnmatch.fnmatch(source.as_posix(), name)]
                if not matching:
                    yield f"{source} includes {header}, which the table allows to {', '.join(who) or 'none'}"
                used.update([pattern, *((pattern, name) for name in matching)])
    for room, on in rooms.items():
        for other in on:
            if not used[room, other]:
                yield f"the table says that {room} stands on {other}, and no include does"
    for pattern, who in outside.items():
        if not used[pattern]:
            yield f"the table names the header {pattern}, and no source includes it"
    for name in {name for who in outside.values() for name in who}:
        if not any(used[pattern, name] for pattern in outside):
            yield f"the table lets {name} include headers from outside, and it includes none"


def main(root):
    page = (root / "ARCHITECTURE.md").read_text()
    assert len(sources(root)) > 100, f"{root} has hardly a source"
    try:
        faults = [*check_folders(root, page), *check_includes(root, page)]
    except AssertionError as error:
        faults = [str(error)]
    for fault in faults:
        print(f"ARCHITECTURE.md: {fault}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
