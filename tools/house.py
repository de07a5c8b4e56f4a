#!/usr/bin/env python3
"""Holds the sources against the rules of the house; docs/ARCHITECTURE.md tells the reasons."""

import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# What a folder may include of the others. Subsystems do not know each other.
BELOW = {
    "platform": set(),
    "fendrel": {"platform"},
    "framework": {"platform"},
    "frame": {"framework", "platform"},
    "network": {"framework", "platform"},
    "http": {"framework", "platform"},
    "config": {"framework", "platform"},
    "encoding": {"framework", "platform"},
    "shell": {"framework", "platform"},
    "hosts": {"platform"},
    "include": {"framework"},
}
# The only files that use more, and what.
BESIDES = {
    "network/DNSResolver.cpp": {"frame"},
    "config/SystemInfo.cpp": {"frame"},
    "frame/LoadTimeObjects.cpp": {"network"},  # builds what belongs to several subsystems, in one order
}

EXPORT_MACROS = {"include/ZevrinUtils/Export.h", "include/Fendrel/Trace.h"}
PLATFORM_CONDITION = re.compile(r"^\s*#\s*(el)?if.*(_WIN32|__linux__|__unix__|__MINGW|WIN32)")
SYSTEM_HEADER = re.compile(
    r"^\s*#\s*include\s*<(windows|winsock2?|objbase|unistd|pthread|dlfcn|netdb|signal|fcntl|"
    r"sys/\w+|netinet/\w+|arpa/\w+)\.h>"
)
OWN_INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')
NOTE = re.compile(r"\b(TODO|FIXME|XXX|HACK)\b")
MOST_LINES = 400


def sources():
    names = subprocess.run(
        ["git", "ls-files", "*.cpp", "*.h"], cwd=ROOT, check=True, capture_output=True, text=True
    ).stdout.split()
    return sorted(name for name in names if (ROOT / name).exists())


def check_line(name, line):
    room = name.split("/")[0]
    if room not in ("platform", "tests"):
        if PLATFORM_CONDITION.match(line) and name not in EXPORT_MACROS:
            yield "a platform condition outside platform/"
        if SYSTEM_HEADER.match(line):
            yield "a system header outside platform/"
    if NOTE.search(line):
        yield "a note to self"
    included = OWN_INCLUDE.match(line)
    if included and room in BELOW:
        other = included.group(1).split("/")[0] if "/" in included.group(1) else room
        if other in BELOW and other != room and other not in BELOW[room] | BESIDES.get(name, set()):
            yield f"{room}/ does not include {other}/"


def check_file(name, build_files):
    text = (ROOT / name).read_text()
    lines = text.splitlines()
    for number, line in enumerate(lines, 1):
        for fault in check_line(name, line):
            yield f"{name}:{number}: {fault}"
    if len(lines) > MOST_LINES:
        yield f"{name}: {len(lines)} lines; a piece of it wants a name of its own"
    if name.endswith(".h") and "#pragma once" not in text:
        yield f"{name}: no #pragma once"
    if name.endswith(".cpp"):
        folder = Path(name)
        listed = any(
            str(folder.relative_to(parent)) in build_files.get(str(parent / "CMakeLists.txt"), "")
            or folder.name in build_files.get(str(parent / "CMakeLists.txt"), "")
            for parent in folder.parents
        )
        if not listed:
            yield f"{name}: in no CMakeLists.txt"


def main():
    build_files = {
        str(path.relative_to(ROOT)): path.read_text()
        for path in ROOT.rglob("CMakeLists.txt")
        if "build" not in path.relative_to(ROOT).parts
    }
    faults = [fault for name in sources() for fault in check_file(name, build_files)]
    print("\n".join(faults) if faults else "the house is in order")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
