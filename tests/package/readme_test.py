# SPDX-License-Identifier: Apache-2.0
"""readme_test.py SOURCE_FOLDER WORK_FOLDER COMMAND: every snippet of README.md works as it is written.

The shell commands run in the order of the README, in a folder that looks like the project: among them are those that
build and install the library. Each program is then built against that library by the README's lines of CMake, run
beside the files that its text speaks of, and must print the block "text" that follows it.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys

CMAKE_HEAD = """cmake_minimum_required(VERSION 3.25)
project(readme LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 17)
add_compile_options(-Wall -Wextra -Wno-unused-parameter -Werror)
"""


def blocks(readme, language):
    return re.findall(rf"^```{language}\n(.*?)^```$", readme, re.M | re.S)


def programs(readme):
    """[(source, what it prints)] of all C++ blocks; each is followed by a block of text."""
    found = []
    for source, behind in re.findall(r"^```cpp\n(.*?)^```$(.*?)(?=^```cpp$|\Z)", readme, re.M | re.S):
        printed = blocks(behind, "text")
        assert printed, f"README.md does not say what this prints:\n{source}"
        found.append((source, printed[0]))
    return found


def check_options(readme, source):
    """The README's table has the build's options, with their defaults, and no others."""
    lists = (source / "CMakeLists.txt").read_text()
    options = dict(re.findall(r'^option\((\w+) "[^"]*" (\S+)\)', lists, re.M))
    options = {name: default.replace("${PROJECT_IS_TOP_LEVEL}", "ON, but OFF in a subdirectory")
               for name, default in options.items()}
    options["BASISU_SOURCE_DIR"] = ""
    table = {}
    for name, default, text in re.findall(r"^\| `(\w+)` \| (?:`(\w+)`)? ?\| (.*) \|$", readme, re.M):
        table[name] = default + (", but OFF in a subdirectory" if text.endswith("`OFF` in a subdirectory") else "")
    assert table == options, f"README.md's options:\n{table}\nthe build's:\n{options}"


def check_links(readme, source):
    headings = {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")
                for heading in re.findall(r"^#+ (.*)$", readme, re.M)}
    for link in re.findall(r"\]\(([^)]+)\)|src=\"([^\"]+)\"", readme):
        target = "".join(link)
        known = target[1:] in headings if target.startswith("#") else (source / target).exists()
        assert known, f"README.md points to {target}, which is not there"


def make_project(source, folder):
    """A folder with all that the project has, but for builds; its scripts that install or run for long do nothing."""
    folder.mkdir()
    for item in source.iterdir():
        if item.name not in ("build", "scripts", "samples") and not item.name.startswith("."):
            (folder / item.name).symlink_to(item)
    shutil.copytree(source / "samples", folder / "samples")
    (folder / "scripts").mkdir()
    for script in (source / "scripts").iterdir():
        stand_in = folder / "scripts" / script.name
        stand_in.write_text("#!/bin/sh\n")
        stand_in.chmod(script.stat().st_mode)


def make_files(readme, samples, folder):
    """The files that the snippets speak of."""
    folder.mkdir()
    wall = (samples / "textures/bc1_mips.dds").read_bytes()
    (folder / "wall.dds").write_bytes(wall)
    (folder / "download.dds").write_bytes(wall[:5000])
    shutil.copy(samples / "textures/etc1s_mips.basis", folder / "wall.basis")
    shutil.copy(samples.parent / "schemas/texture-library.xsd", folder / "library.xsd")
    [document] = blocks(readme, "xml")
    (folder / "library.xml").write_text(document)


def main(source, work, command):
    readme = (source / "README.md").read_text()
    check_options(readme, source)
    check_links(readme, source)
    if work.exists():
        shutil.rmtree(work)
    work.mkdir()
    make_project(source, work / "project")
    make_files(readme, source / "samples", work / "files")

    cache = os.environ.get("XDG_CACHE_HOME") or f"{os.environ['HOME']}/.cache"
    environment = {**os.environ, "HOME": str(work), "XDG_CACHE_HOME": cache,
                   "PATH": f"{command.parent}:{os.environ['PATH']}"}

    def run(arguments, folder, **more):
        return subprocess.run(arguments, cwd=folder, env=environment, check=True, **more)

    for commands in blocks(readme, "sh"):
        # What is compiled here is linked and run: it need not be fast.
        run(["sh", "-eux", "-c", commands.replace("=Release", "=Debug")], work / "project")

    [cmake] = blocks(readme, "cmake")
    for number, (program, promised) in enumerate(programs(readme)):
        folder = work / f"program{number}"
        folder.mkdir()
        (folder / "main.cpp").write_text(program)
        (folder / "CMakeLists.txt").write_text(CMAKE_HEAD + "add_executable(renderer main.cpp)\n" + cmake)
        run(["cmake", "-S", folder, "-B", folder / "build", f"-DCMAKE_PREFIX_PATH={work}/pelto"], folder)
        run(["cmake", "--build", folder / "build"], folder)
        printed = run([folder / "build/renderer"], work / "files", stdout=subprocess.PIPE, text=True).stdout
        assert printed == promised, f"This program printed\n{printed}instead of\n{promised}{program}"
    shutil.rmtree(work)


if __name__ == "__main__":
    main(*[pathlib.Path(argument) for argument in sys.argv[1:]])
