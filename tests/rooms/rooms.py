"""Checks the sources against the order of rooms.toml. Prints each problem on a line, and fails when there is any."""

import collections
import os
import pathlib
import re
import sys
import tomllib

ROOT = pathlib.Path(__file__).resolve().parents[2]
TREES = ["src", "board", "catalog", "testing", "text", "command_line", "toml_file", "program_log", "serving", "storage", "call", "audit", "configuration", "front", "fleet", "sim", "ponctl"]
TESTS = ["tests", "bench", "examples"]  # these include what they test, wherever it stands

MOST_FILES = 26  # in a folder

# The library's subsystems may include these, beside themselves and the header and libraries on which they are built.
SHARED_BY_SUBSYSTEMS = ["src/frame", "include", "board/include/board"]

INCLUDE = re.compile(r'\s*#\s*include\s*"([^"]+)"')


def sources(trees):
    for tree in trees:
        for file in sorted((ROOT / tree).rglob("*")):
            if file.suffix in (".h", ".cpp"):
                yield file.relative_to(ROOT)


class Rooms:
    def __init__(self, listed):
        rooms = listed["rooms"]
        self.order = {room["path"]: place for place, room in enumerate(rooms)}
        self.with_folders = {room["path"] for room in rooms if room.get("with_folders")}
        self.trees = listed["trees"]
        self.offered = listed["offered"]
        self.built = listed["built"]

    def room_of(self, file):
        """Returns the path of the room that a file is in, or None when it is in none."""
        folder = file.parent
        if str(folder) in self.order:
            return str(folder)
        return next((str(above) for above in folder.parents if str(above) in self.with_folders), None)

    def find(self, included, file):
        """Returns the file that an include finds. Returns None when the file is neither in the repository nor made from
        it.
        """
        trees = [tree for tree in self.trees if file.is_relative_to(tree)]
        for folder in [file.parent, *trees, *self.offered]:
            found = pathlib.Path(os.path.normpath(pathlib.Path(folder, included)))
            if (ROOT / found).is_file() or str(found) in self.built:
                return found
        return None


def wrong_include(rooms, file, included):
    """Returns what is wrong with an include, or None when nothing is wrong."""
    found = rooms.find(included, file)
    if found is None:
        return f"{included} is not found in the repository"
    here, there = rooms.room_of(file), rooms.room_of(found)
    if there is None:
        return f"{included} is in {found.parent}, which is no room"
    if here is None:
        return None  # this is reported for the file itself
    if rooms.order[there] > rooms.order[here]:
        return f"{included} runs upward, from {here} to {there}"
    if file.is_relative_to("src") and found.parent != file.parent:
        if str(found.parent) not in SHARED_BY_SUBSYSTEMS:
            return f"{included} is neither of {file.parent} nor of what all of src may include"
    return None


def problems():
    with open(pathlib.Path(__file__).with_name("rooms.toml"), "rb") as file:
        rooms = Rooms(tomllib.load(file))
    for file in sources(TREES):
        for number, line in enumerate((ROOT / file).read_text().splitlines(), 1):
            if include := INCLUDE.match(line):
                if problem := wrong_include(rooms, file, include[1]):
                    yield f"{file}:{number}: {problem}"
        if rooms.room_of(file) is None:
            yield f"{file}:1: {file.parent} is no room"
    for folder, count in collections.Counter(file.parent for file in sources(TREES + TESTS)).items():
        if count > MOST_FILES:
            yield f"{folder}: {count} files, where {MOST_FILES} are the most"


if __name__ == "__main__":
    found = list(problems())
    print("\n".join(found))
    sys.exit(1 if found else 0)
