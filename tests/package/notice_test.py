# SPDX-License-Identifier: Apache-2.0
"""notice_test.py SOURCE_FOLDER COMMAND LIBRARY...: NOTICE names all third-party software that the build looks for,
includes, links and loads, as part of what uses it, and nothing else.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

SOURCES = {  # part of the product: its folders
    "libPeltoKernel": ["platform/kernel"],
    "libPeltoComponent": ["platform/component"],
    "libPeltoXML": ["platform/xml"],
    "libPeltoKernelTools": ["include", "src"],
    "pelto": ["tools/pelto", "samples/outline"],
}
BUILD_FILES = ["CMakeLists.txt", "cmake", *sum(SOURCES.values(), [])]
OWN_NAMES = {"PeltoKernelTools", "PeltoPlatform", "PkgConfig"}  # of CMake; the last is a tool
# C++'s own, and the system's.
SYSTEM_HEADERS = re.compile(
    r"[a-z_0-9]+|(linux|sys)/.*|(dlfcn|fcntl|io|poll|pthread|signal|termios|unistd|windows)\.h")
TOOL_LIBRARIES = re.compile(r"lib(asan|ubsan|tsan|clang_rt.*)\.so.*|ld-linux.*")  # of sanitizers, and the loader


def entries_of(notice):
    """{name: {field: [values]}} of the paragraphs that have a "Part of"."""
    entries = {}
    for paragraph in re.split(r"\n\n+", notice.split("\nLICENCES\n")[0].strip()):
        name, *lines = paragraph.splitlines()
        fields = dict(re.findall(r"^    ([A-Z][A-Za-z ]*): +(.*)$", "\n".join(lines), re.M))
        if "Part of" in fields:
            entries[name] = {field: re.split(r", *", text) for field, text in fields.items()}
    return entries


def values(entries, field):
    return {value for entry in entries.values() for value in entry.get(field, [])}


def names_in_cmake(source):
    found = set()
    for place in BUILD_FILES:
        path = source / place
        for file in [path] if path.is_file() else [*path.rglob("CMakeLists.txt"), *path.rglob("*.cmake")]:
            text = re.sub(r"#.*|\"[^\"]*\"", "", file.read_text())
            found.update(re.findall(r"\b(?:find_(?:package|path|file|library)|pkg_check_modules)\((\w+)", text))
            found.update(re.findall(r"\bset\((\w+)\s+CACHE\s+(?:FILE)?PATH", text))
    return found - OWN_NAMES


def third_party_headers(source):
    """{part: headers that its sources include and that are neither ours nor the system's}"""
    files = {part: [file for folder in folders for file in (source / folder).rglob("*.[ch]*")]
             for part, folders in SOURCES.items()}
    ours = {file.name for part in files.values() for file in part}
    found = {}
    for part, sources in files.items():
        included = set()
        for file in sources:
            included.update(re.findall(r"^\s*#\s*include\s+[<\"]([^>\"]+)", file.read_text(), re.M))
        found[part] = {header for header in included
                       if pathlib.PurePath(header).name not in ours and not SYSTEM_HEADERS.fullmatch(header)}
    return found


def linked_libraries(file):
    dynamic = subprocess.run(["readelf", "-dW", file], check=True, capture_output=True, text=True).stdout
    return {name for name in re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic)
            if not name.startswith("libPelto") and not TOOL_LIBRARIES.fullmatch(name)}


def loaded_at_run_time(command, texture):
    """Libraries that the command itself opens while it draws."""
    with tempfile.TemporaryDirectory() as folder:
        run = subprocess.run([command, "sheet", texture, "-o", f"{folder}/sheet.png"], check=True,
                             env={**os.environ, "LD_DEBUG": "files"}, capture_output=True, text=True)
    return set(re.findall(rf"file=(\S+) .*dynamically loaded by {re.escape(command)} ", run.stderr))


def belongs(library, names):
    return any(library.startswith((f"{name}.so", f"{name}-")) for name in names)


def differences(what, named, used):
    return ([f"NOTICE does not name {what} {name}" for name in sorted(used - named)] +
            [f"NOTICE names {what} {name}, which the build does not use" for name in sorted(named - used)])


def header_problems(entries, source):
    included = third_party_headers(source)
    known = tuple(values(entries, "Headers"))
    used = set().union(*included.values())
    strangers = {header for header in used if not header.startswith(known)}
    unused = {prefix for prefix in known if not any(header.startswith(prefix) for header in used)}
    problems = differences("the header", unused, strangers)
    for name, entry in entries.items():
        if "Headers" in entry:
            users = {part for part, headers in included.items()
                     if any(header.startswith(tuple(entry["Headers"])) for header in headers)}
            problems += differences(f"{name} as part of", set(entry["Part of"]), users)
    return problems


def library_problems(entries, source, files):
    linked = {pathlib.Path(file).name.split(".so")[0]: linked_libraries(file) for file in files}
    opened = loaded_at_run_time(files[0], str(source / "samples/textures/bc1_mips.dds"))
    used = opened.union(*linked.values())
    named = values(entries, "Library")
    problems = differences("the library", set(), {library for library in used if not belongs(library, named)})
    unused = {name for name in named if not any(belongs(library, [name]) for library in used)}
    problems += differences("the library", unused - {"libm", "libgcc_s"}, set())  # these are the compiler's choice
    for name, entry in entries.items():
        if "Library" in entry and "Headers" in entry:
            users = {part for part, libraries in linked.items()
                     if any(belongs(library, entry["Library"]) for library in libraries)}
            problems += differences(f"{name} as linked to", set(entry["Part of"]), users)
    return problems


def main(source, *files):
    entries = entries_of((source / "NOTICE").read_text())
    problems = (differences("the CMake name", values(entries, "CMake"), names_in_cmake(source)) +
                header_problems(entries, source) + library_problems(entries, source, files))
    for problem in problems:
        print(problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]), *sys.argv[2:]))
