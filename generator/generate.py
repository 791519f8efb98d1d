#!/usr/bin/env python3
"""Turns the data dictionary into C++.

    generate.py --source SRC --output GENERATED

SRC is the folder `src` of the project; under GENERATED come `include/` for clients and `src/` for the
library itself. A mistake in the dictionary is told as "file:line: what is wrong", and nothing is
written then. Prints the files it made, one a line, so that a build knows them.
"""

import argparse
import sys
from pathlib import Path

from larkgen import emit_automation, emit_classes, emit_records
from larkgen.classes import load_classes
from larkgen.file_names import load_file_names
from larkgen.frames import load_frames
from larkgen.numbers import MemberNumbers
from larkgen.records import load_records
from larkgen.source import NameLists, Problems
from larkgen.writer import write_if_different

RECORDS = Path("engine/records")
LISTS = Path("engine/lists")
FILE_NAMES = Path("engine/file_names.toml")
NUMBERS = Path("automation/member_numbers.tsv")


class Dictionary:
    """Everything that the dictionary under a source folder says."""

    def __init__(self, source):
        self.source = source
        self.problems = Problems()
        self.file_names = load_file_names(source / FILE_NAMES, self.problems)
        lists = NameLists((source / LISTS).glob("*.toml"), self.problems)
        self.records = load_records((source / RECORDS).glob("*.toml"), self.file_names, lists,
                                    self.problems)
        frames = load_frames(source.glob("*/frames/*.toml"), self.records, self.file_names,
                             self.problems)
        self.classes = load_classes(class_paths(source), frames, self.records, self.file_names, lists,
                                    self.problems)


def class_paths(source):
    """The class descriptions: one folder a subsystem, one file a class."""
    return [path for path in sorted(source.glob("*/*.toml")) if path.parent.name != "engine"]


def outputs(dictionary, numbers):
    """Text by path, relative to the output folder."""
    files = {}
    records = sorted(dictionary.records.values(), key=lambda record: record.name.lower())
    folder = "src" / RECORDS
    for record in records:
        path = f"src/{RECORDS}/{record.stem}.toml"
        files[folder / f"{record.stem}.h"] = emit_records.record_header(record, path)
        files[folder / f"{record.stem}.gen.cpp"] = emit_records.record_source(
            record, dictionary.file_names[record.file], path)
    files[folder / "all_records.h"] = emit_records.all_records_header(f"src/{RECORDS}")
    files[folder / "all_records.gen.cpp"] = emit_records.all_records_source(records, f"src/{RECORDS}")
    files[Path("src/engine/tovrin_file_names.h")] = emit_records.file_names_header(
        dictionary.file_names, f"src/{FILE_NAMES}")
    for cls in dictionary.classes:
        path = f"src/{cls.subsystem}/{cls.stem}.toml"
        folder = Path("src") / cls.subsystem
        files[Path("include/larkmoor") / cls.subsystem / f"{cls.stem}.h"] = emit_classes.class_header(
            cls, path)
        if not cls.own_parts:
            files[folder / f"{cls.stem}_parts.h"] = emit_classes.parts_header(cls, path)
        files[folder / f"{cls.stem}.gen.cpp"] = emit_classes.class_source(cls, path)
        files[Path("src/automation") / f"{cls.stem}.gen.cpp"] = emit_automation.automation_source(
            cls, numbers, path)
    files[Path("src/automation/all_classes.gen.cpp")] = emit_automation.all_classes_source(
        dictionary.classes)
    files[Path("include/larkmoor/larkmoor.h")] = emit_classes.umbrella_header(dictionary.classes)
    return files


def main(arguments=None):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--source", type=Path, required=True)
    parser.add_argument("--output", type=Path, required=True)
    options = parser.parse_args(arguments)

    dictionary = Dictionary(options.source)
    if dictionary.problems:
        print("\n".join(dictionary.problems.lines), file=sys.stderr)
        return 1
    numbers = MemberNumbers(options.source / NUMBERS)
    added = numbers.give(dictionary.classes)
    if added:
        named = ", ".join(added[:5]) + (" and so on" if len(added) > 5 else "")
        print(f"{options.source / NUMBERS}: numbers for {len(added)} new members ({named}); commit the "
              "file with your change", file=sys.stderr)
    write_all(options.output, outputs(dictionary, numbers.numbers))
    return 0


def write_all(folder, files):
    """Writes the files that differ, and takes away what an earlier dictionary left."""
    for path, text in files.items():
        write_if_different(folder / path, text)
        print(folder / path)
    for path in folder.rglob("*"):
        if path.is_file() and path.relative_to(folder) not in files:
            path.unlink()


if __name__ == "__main__":
    sys.exit(main())
