"""Frames: what many classes are alike in, told once. A class names its frame, and lists as "frame" the
members that it takes from it."""

import string
from dataclasses import dataclass, field

from .members import PROPERTY_ATTRIBUTES, SHOWN_BY, TYPES, read_arguments
from .records import Record
from .source import Source

FRAME_ENTRIES = {
    "name": str, "like": str, "type": str, "header": str, "part": str, "construct": str, "file": str,
    "record": str, "rows": str, "lists": list, "accounts": str,
}
# What the constructor's arguments may name of the class.
OF_THE_CLASS = ("name", "journal", "file", "record")
OPERATION_ATTRIBUTES = {"args": str, "returns": str, "doc": str}
OF_A_PROPERTY = ("type", "args", "doc", "field", "row", "of_row", "converted", "access")


@dataclass
class Frame:
    name: str
    type: str  # the C++ class, which every class of this frame owns one of
    header: str
    part: str  # the name under which it is owned
    construct: str  # the constructor's arguments, with the class's own in braces
    file: str = ""
    record: "Record | None" = None
    rows: "Record | None" = None  # of a frame that shows a transaction
    lists: list = field(default_factory=list)  # of rows, where a transaction has several
    accounts: str = "accounts"  # which of a class's parts looks accounts up
    operations: dict = field(default_factory=dict)  # attributes by name
    properties: dict = field(default_factory=dict)
    mistaken: set = field(default_factory=set)  # members that are told already


NO_FRAME = Frame("", "", "", "", "")


def load_frames(paths, records, file_names, problems):
    """All frames, by name."""
    frames = {}
    sources = [Source(path, problems) for path in sorted(paths)]
    for source in sources:
        source.check_tables(("frame", "operations", "properties"))
    for stands_on_another in (False, True):
        for source in sources:
            if ("like" in source.tables.get("frame", {})) == stands_on_another:
                frame = FrameReader(source, records, file_names, frames).read()
                if frame.name in frames:
                    source.complain("frame", "name", f"there is a frame {frame.name} already")
                frames[frame.name] = frame
    return frames


class FrameReader:
    """Turns one file into a Frame, complaining of whatever does not hold."""

    def __init__(self, source, records, file_names, frames):
        self.source = source
        self.records = records
        self.file_names = file_names
        self.frames = frames

    def read(self):
        """A frame that is like another has that one's members too, but for those that it tells itself."""
        source = self.source
        source.check_names_differ("operations", "properties")
        head = source.check_entries("frame", FRAME_ENTRIES)
        other = self.frames.get(head.get("like"), NO_FRAME)
        self.check_head(head, other)
        frame = Frame(
            *(source.check_text("frame", entry, head, entry)
              for entry in ("name", "type", "header", "part")),
            head.get("construct", ""), head.get("file", other.file),
            self.records.get(head.get("record"), other.record),
            self.records.get(head.get("rows"), other.rows), head.get("lists", other.lists),
            head.get("accounts", other.accounts), dict(other.operations), dict(other.properties),
            set(other.mistaken))
        self.read_members(frame, "operations", frame.operations)
        self.read_members(frame, "properties", frame.properties)
        return frame

    def check_head(self, head, other):
        if "like" in head and other is NO_FRAME:
            self.source.complain("frame", "like", f"unknown frame \"{head['like']}\"")
        for entry in ("record", "rows"):
            if entry in head and head[entry] not in self.records:
                self.source.complain("frame", entry, f"unknown record \"{head[entry]}\"")
        if "file" in head and head["file"] not in self.file_names:
            self.source.complain("frame", "file", f"unknown file \"{head['file']}\"; file_names.toml has "
                                 "their names")
        if not all(isinstance(each, str) for each in head.get("lists", [])):
            self.source.complain("frame", "lists", "lists is the names of the lists of rows")
            del head["lists"]
        try:
            named = {name for _, name, _, _ in string.Formatter().parse(head.get("construct", ""))}
        except ValueError as error:
            self.source.complain("frame", "construct", f"construct: {error}")
            return
        for name in sorted(named - {None, *OF_THE_CLASS}):
            self.source.complain("frame", "construct", f"construct: a class has no {{{name}}}; it has "
                                 + ", ".join(f"{{{each}}}" for each in OF_THE_CLASS))

    def read_members(self, frame, table, members):
        for name, value in self.source.tables.get(table, {}).items():
            before = len(self.source.problems.others)
            members[name] = self.read_member(frame, table, name, value)
            frame.mistaken.discard(name)
            if len(self.source.problems.others) > before:
                frame.mistaken.add(name)

    def read_member(self, frame, table, name, value):
        """The attributes of a member, as far as they hold."""
        if not isinstance(value, dict):
            self.source.complain(table, name, f"{name}: a member of a frame is a table of attributes")
            return {}
        known = (OPERATION_ATTRIBUTES if table == "operations" else
                 {attribute: PROPERTY_ATTRIBUTES[attribute] for attribute in OF_A_PROPERTY})
        value = self.source.check_attributes(table, name, value, known)
        self.source.check_text(table, name, value, "doc")
        read_arguments(self.source, table, name, value.get("args", ""))
        told = value.get("returns", "Integer") if table == "operations" else value.get("type")
        if told not in (TYPES if table == "operations" else SHOWN_BY):
            self.source.complain(table, name, f"{name}: unknown type \"{told}\"")
        for attribute, record in (("field", frame.record), ("row", frame.rows)):
            if attribute in value and record and record.find(value[attribute]) is None:
                self.source.complain(table, name, f"{name}: there is no field {value[attribute]}")
        return value
