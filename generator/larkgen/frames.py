"""Frames: what many classes are alike in, told once. A class names its frame, and lists as "frame" the
members that it takes from it."""

from dataclasses import dataclass, field

from .records import Record
from .source import Source


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
    operations: dict = field(default_factory=dict)  # attributes by name
    properties: dict = field(default_factory=dict)


def load_frames(paths, records, problems):
    """All frames, by name."""
    frames = {}
    for source in (Source(path, problems) for path in sorted(paths)):
        frame = read_frame(source, records)
        frames[frame.name] = frame
    return frames


def read_frame(source, records):
    source.check_tables(("frame", "operations", "properties"))
    source.check_entries("frame", ("name", "type", "header", "part", "construct", "file", "record",
                                   "rows"))
    source.check_names_differ("operations", "properties")
    head = source.tables.get("frame", {})
    for entry in ("record", "rows"):
        if entry in head and head[entry] not in records:
            source.complain("frame", entry, f"unknown record \"{head[entry]}\"")
    for table in ("operations", "properties"):
        for name, value in source.tables.get(table, {}).items():
            source.check_attributes(table, name, value, (
                "type", "args", "returns", "doc", "field", "row", "converted", "access"))
    return Frame(
        *(source.check_text("frame", entry, head, entry)
          for entry in ("name", "type", "header", "part", "construct")),
        head.get("file", ""), records.get(head.get("record")), records.get(head.get("rows")),
        source.tables.get("operations", {}), source.tables.get("properties", {}))
