#!/usr/bin/env python3
"""Holds the sources against the rules of the house; docs/ARCHITECTURE.md tells the reasons.

A room is a folder whose build file begins with what it is for and whom it may include: "# Purpose. Includes: a, b."
"""

import re
import subprocess
import sys
from functools import cache
from graphlib import CycleError, TopologicalSorter
from pathlib import Path, PurePosixPath

ROOT = Path(__file__).resolve().parent.parent

# Headers in angle brackets, beside the standard library's, which have no dot and no folder. The hosts are no part
# of the library: what they ask of the system stands in a folder for each.
LIBRARIES = {"encoding": "immintrin.h", "fendrel": "spdlog/", "hosts/zvu": "CLI/"}
OF_ONE_SYSTEM = ("platform/", "hosts/zvu/linux/", "hosts/zvu/windows/")
# Where a header in quotes is found, beside the folder of who includes it. The types of a system are found in its api/.
INCLUDE_ROOTS = ["", "include"] + [
    f"platform/{system}/api{folder}" for system in ("linux", "windows") for folder in ("", "/include")
]
EXPORT_MACROS = {"include/ZevrinUtils/Export.h", "include/Fendrel/Trace.h"}
WITHOUT_ROOMS = ("tests/", "benchmarks/", "fuzz/")  # which talk to the system themselves

PLATFORM_CONDITION = re.compile(r"^\s*#\s*(el)?if.*(WIN32|__linux__|__unix__|__MINGW)")
INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]')
NOTE = re.compile(r"\b(TODO|FIXME|XXX|HACK)\b")
ARCHITECTURE = "docs/ARCHITECTURE.md"
GLOBAL_STATE = "docs/global-state.md"
MOST_LINES = 400
MOST_SOURCES = 15


@cache
def files(*patterns):
    names = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard", *patterns],
        cwd=ROOT, check=True, capture_output=True, text=True,
    ).stdout.splitlines()
    return sorted({name for name in names if (ROOT / name).exists()})


@cache
def text_of(name):
    return (ROOT / name).read_text()


def parent(name):
    return str(PurePosixPath(name).parent)


@cache
def rooms():
    """Of each room the names of those that it may include. Rooms side by side know each other by their last names."""
    found = {"include": set()}
    for build_file in files("*CMakeLists.txt"):
        paragraph = re.match(r"(#[^\n]+\n)+", text_of(build_file))
        claim = paragraph and re.search(r"Includes: ([^.]+)\.", paragraph[0].replace("\n#", ""))
        if claim:
            found[parent(build_file)] = set(claim[1].split(", ")) - {"nothing"}
    for room, below in found.items():
        beside = {name: f"{parent(room)}/{name}" for name in below if f"{parent(room)}/{name}" in found}
        found[room] = {beside.get(name, name) for name in below}
    return found


def room_of(name):
    return next((folder for folder in map(str, PurePosixPath(name).parents) if folder in rooms()), "")


def find_included(name, included):
    """The names that a rule may have for the room of a header in quotes; none if there is no such header."""
    for root in [parent(name), *INCLUDE_ROOTS]:
        if (ROOT / root / included).is_file():
            room = room_of(str(PurePosixPath(root, included)))
            return {room, *(["include"] if root.endswith("/include") else []), *(["api"] if "/api" in root else [])}
    return set()


def check_include(name, bracket, included):
    room = room_of(name)
    if bracket == "<":
        known = LIBRARIES.get(room)
        foreign = "." in included or "/" in included
        if foreign and not name.startswith(OF_ONE_SYSTEM) and not (known and included.startswith(known)):
            yield f"<{included}> is not for {room}/"
        return
    found = find_included(name, included)
    if not found:
        yield f'"{included}" is no header of the house'
        return
    if included.startswith("../") and not room.startswith("hosts"):
        yield f'"{included}" goes round the folders'
    allowed = rooms()[room] | {room} | ({"api"} if rooms()[room] & {"platform/linux/api"} else set())
    if not found & allowed:
        yield f"{room}/ does not include {included}"


def check_line(name, line, direct_call):
    if NOTE.search(line):
        yield "a note to self"
    if included := INCLUDE.match(line):
        if not name.startswith(WITHOUT_ROOMS):
            yield from check_include(name, *included.groups())
    if name.startswith("platform/"):
        return
    if PLATFORM_CONDITION.match(line) and name not in EXPORT_MACROS:
        yield "a platform condition outside platform/"
    if not name.startswith((*WITHOUT_ROOMS, "hosts/")) and direct_call.search(line.split("//")[0]):
        yield "a call of the system that goes round its table"


def check_file(name, direct_call):
    lines = text_of(name).splitlines()
    for number, line in enumerate(lines, 1):
        for fault in check_line(name, line, direct_call):
            yield f"{name}:{number}: {fault}"
    if len(lines) > MOST_LINES:
        yield f"{name}: {len(lines)} lines; a piece of it wants a name of its own"
    if name.endswith(".h") and "#pragma once" not in text_of(name):
        yield f"{name}: no #pragma once"
    if name.endswith(".cpp") and not is_built(name):
        yield f"{name}: in no CMakeLists.txt"


def is_built(name):
    """Named in a build file at or above it, or taken by one with all of its folder's sources, or with its tests."""
    own = re.compile(rf"(^|[\s/>]){re.escape(PurePosixPath(name).name)}\b", re.M)
    taken = rf"zevrin_test\({parent(name).removeprefix('tests/')}\b" if name.endswith("Test.cpp") else "zevrin_sources"
    for folder in map(str, PurePosixPath(name).parents):
        build_file = f"{folder}/CMakeLists.txt" if folder != "." else "CMakeLists.txt"
        if build_file in files("*CMakeLists.txt"):
            text = text_of(build_file)
            pattern = str(PurePosixPath(name).relative_to(folder).with_name("*.cpp"))
            if own.search(text) or re.search(rf"(?<!\S){re.escape(pattern)}", text):
                return True
            if (folder == parent(name) or taken != "zevrin_sources") and re.search(taken, text):
                return True
    return False


def check_rooms():
    try:
        TopologicalSorter(rooms()).prepare()
    except CycleError as error:
        yield "rooms that include each other: " + " ".join(error.args[1])
    for room in rooms():
        sources = [name for name in files("*.cpp") if parent(name) == room]
        if len(sources) > MOST_SOURCES:
            yield f"{room}/ has {len(sources)} sources; a subject of it wants a room of its own"
    for name in files("*.cpp", "*.h"):
        if not room_of(name) and not name.startswith(WITHOUT_ROOMS):
            yield f"{name}: in a folder whose build file does not say what it is for"


def check_opening(name):
    if not re.match(r"//", text_of(name)):
        yield f"{name}: does not open with what it is for"


# A variable that outlives a call: by its prefix, or a member of a class. Texts and tables that never change are none.
LASTING = re.compile(r"\b([gst]_[a-z]+[A-Z]\w*)\b")
CLASS_WIDE = re.compile(r"^\s*static (?!const)[^()\n]*\b(m_\w+)[;[ ]", re.M)
CONSTANT = re.compile(r"\bconstexpr\b|const char\* const")


def check_global_state():
    page = text_of(GLOBAL_STATE)
    sources = [name for name in files("*.cpp", "*.h") if not name.startswith((*WITHOUT_ROOMS, "hosts/"))]
    lines = {name: [line.split("//")[0] for line in text_of(name).splitlines()] for name in sources}
    constant = {
        found for name in sources for line in lines[name] if CONSTANT.search(line) for found in LASTING.findall(line)
    }
    for name in sources:
        lasting = set(LASTING.findall("\n".join(lines[name]))) | set(CLASS_WIDE.findall(text_of(name)))
        for found in sorted(lasting - constant):
            if f"{found}`" not in page:
                yield f"{name}: {found} is missing in {GLOBAL_STATE}"
    for found in sorted(set(re.findall(r"`(?:\w+::)?([gstm]_\w+)`", page))):
        if not any(found in text_of(name) for name in files("*.cpp", "*.h")):
            yield f"{GLOBAL_STATE}: there is no {found} any more"


def check_architecture():
    page = text_of(ARCHITECTURE)
    for room in rooms():
        if f"{room}/" not in page and f"`{room.removeprefix('platform/linux/')}/`" not in page:
            yield f"{ARCHITECTURE}: says nothing of {room}/"
    for header in files("platform/*.h"):
        service = PurePosixPath(header).name
        if re.search(r"^\s*PLATFORM_CALL\(", text_of(header), re.M) and f"| `{service}`" not in page:
            yield f"{ARCHITECTURE}: has no row for the service of {header}"


def platform_calls():
    """Of each call of the seam the header that has it."""
    return {
        call: header
        for header in files("platform/*.h")
        for call in re.findall(r"^\s*PLATFORM_CALL\((\w+)\)", text_of(header), re.M)
    }


def check_contracts():
    """Each call is named in a contract test, where it is made or taken from its table."""
    tests = "\n".join(text_of(name) for name in files("tests/platform/*.cpp"))
    made = set(re.findall(r"(?<=[.:])\w+|\w+(?=\()", re.sub(r"//.*", "", tests)))
    for call, header in platform_calls().items():
        if call not in made:
            yield f"{header}: {call} is in no contract test"


def main():
    # A platform call by its bare name; through a table it stands behind a dot. Behind a type it is declared: a
    # class may have an operation of that name.
    direct_call = re.compile(rf"(?<![\w.:>\"])(?<!void )(::)?\b({'|'.join(sorted(platform_calls()))})\(")
    faults = [*check_rooms(), *check_architecture(), *check_contracts(), *check_global_state()]
    faults += [fault for name in files("*.cpp", "*.h") for fault in (*check_file(name, direct_call), *check_opening(name))]
    print("\n".join(faults) if faults else "the house is in order")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
