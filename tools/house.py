#!/usr/bin/env python3
"""Holds the sources against the rules of the house; docs/ARCHITECTURE.md tells the reasons."""

import re
import subprocess
import sys
from pathlib import Path, PurePosixPath

ROOT = Path(__file__).resolve().parent.parent

# What a folder may include of the others. Subsystems do not know each other.
BELOW = {
    "platform": {"include"},
    "fendrel": {"platform", "include"},
    "include": set(),
    "framework": {"platform", "include"},
    "frame": {"framework", "platform", "include"},
    **dict.fromkeys(["network", "http", "config", "encoding", "shell"], {"framework", "platform", "include"}),
    "hosts": {"include"},
}
# The only files that use more, and what.
BESIDES = {
    "network/DNSResolver.cpp": {"frame"},
    "config/SystemInfo.cpp": {"frame"},
    "frame/LoadTimeObjects.cpp": {"network", "http", "shell"},  # builds what they declare, in one order
}
# Headers in angle brackets, beside the standard library's, which have no dot and no folder. The hosts are no part
# of the library: what they ask of the system stands in a folder for each.
LIBRARIES = {"encoding": "immintrin.h", "fendrel": "spdlog/", "hosts": "CLI/"}
OF_ONE_SYSTEM = ("hosts/zvu/linux/", "hosts/zvu/windows/")
# Where a header in quotes is found, beside the folder of who includes it.
INCLUDE_ROOTS = [ROOT, ROOT / "include", ROOT / "platform/linux/api/include", ROOT / "platform/windows/api/include", ROOT / "platform/linux/api"]
EXPORT_MACROS = {"include/ZevrinUtils/Export.h", "include/Fendrel/Trace.h"}

PLATFORM_CONDITION = re.compile(r"^\s*#\s*(el)?if.*(WIN32|__linux__|__unix__|__MINGW)")
INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]')
NOTE = re.compile(r"\b(TODO|FIXME|XXX|HACK)\b")
MOST_LINES = 400


def files(*patterns):
    names = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard", *patterns],
        cwd=ROOT, check=True, capture_output=True, text=True,
    ).stdout.splitlines()
    return sorted(name for name in names if (ROOT / name).exists())


def platform_calls():
    names = set()
    for header in files("platform/*.h"):
        names |= set(re.findall(r"^\s*PLATFORM_CALL\((\w+)\)", (ROOT / header).read_text(), re.M))
    return names


def room_of(included, room):
    first = included.split("/")[0]
    if first in ("ZevrinUtils", "Fendrel"):
        return "include"
    if first == "win32":
        return "platform"
    return first if "/" in included and first in BELOW else room


def check_include(name, room, bracket, included):
    if bracket == "<":
        if name.startswith(OF_ONE_SYSTEM):
            return
        known = LIBRARIES.get(room)
        if ("." in included or "/" in included) and not (known and included.startswith(known)):
            yield f"<{included}> is not for {room}/"
    elif not any((folder / included).is_file() for folder in [(ROOT / name).parent, *INCLUDE_ROOTS]):
        yield f'"{included}" is no header of the house'
    elif room in BELOW:
        other = room_of(included, room)
        if included.startswith("../") and room != "hosts":
            yield f'"{included}" goes round the folders'
        if other != room and other not in BELOW[room] | BESIDES.get(name, set()):
            yield f"{room}/ does not include {other}/"


def check_line(name, line, direct_call):
    room = name.split("/")[0]
    if NOTE.search(line):
        yield "a note to self"
    if room == "platform":
        return
    if PLATFORM_CONDITION.match(line) and name not in EXPORT_MACROS:
        yield "a platform condition outside platform/"
    if included := INCLUDE.match(line):
        if room not in ("tests", "benchmarks", "fuzz"):  # which talk to the system themselves
            yield from check_include(name, room, *included.groups())
    elif room not in ("tests", "benchmarks", "fuzz", "hosts") and direct_call.search(line.split("//")[0]):
        yield "a call of the system that goes round its table"


def check_file(name, build_files, direct_call):
    text = (ROOT / name).read_text()
    lines = text.splitlines()
    for number, line in enumerate(lines, 1):
        for fault in check_line(name, line, direct_call):
            yield f"{name}:{number}: {fault}"
    if len(lines) > MOST_LINES:
        yield f"{name}: {len(lines)} lines; a piece of it wants a name of its own"
    if name.endswith(".h") and "#pragma once" not in text:
        yield f"{name}: no #pragma once"
    if name.endswith(".cpp") and not any(
        re.search(rf"(^|[\s/>]){re.escape(PurePosixPath(name).name)}\b|zevrin_sources", build_files[folder])
        for folder in map(str, PurePosixPath(name).parents)
        if folder in build_files
    ):
        yield f"{name}: in no CMakeLists.txt"


def main():
    build_files = {str(PurePosixPath(name).parent): (ROOT / name).read_text() for name in files("*CMakeLists.txt")}
    # A platform call by its bare name; through a table it stands behind a dot. Behind a type it is declared: a
    # class may have an operation of that name.
    direct_call = re.compile(rf"(?<![\w.:>\"])(?<!void )(::)?\b({'|'.join(sorted(platform_calls()))})\(")
    faults = [fault for name in files("*.cpp", "*.h") for fault in check_file(name, build_files, direct_call)]
    print("\n".join(faults) if faults else "the house is in order")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
