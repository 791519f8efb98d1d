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
    accounts: str = "accounts"  # which of a class's parts looks accounts up
    operations: dict = field(default_factory=dict)  # attributes by name
    properties: dict = field(default_factory=dict)


def load_frames(paths, records, problems):
    """All frames, by name."""
    frames = {}
    sources = [Source(path, problems) for path in sorted(paths)]
    for stands_on_another in (False, True):
        for source in sources:
            if ("like" in source.tables.get("frame", {})) == stands_on_another:
                frame = read_frame(source, records, frames)
                frames[frame.name] = frame
    return frames


def read_frame(source, records, frames):
    """A frame; one that is like another has that one's members too, but for those that it tells itself."""
    source.check_tables(("frame", "operations", "properties"))
    source.check_entries("frame", ("name", "like", "type", "header", "part", "construct", "file",
                                   "record", "rows", "accounts"))
    source.check_names_differ("operations", "properties")
    head = source.tables.get("frame", {})
    for entry in ("record", "rows"):
        if entry in head and head[entry] not in records:
            source.complain("frame", entry, f"unknown record \"{head[entry]}\"")
    for table in ("operations", "properties"):
        for name, value in source.tables.get(table, {}).items():
            source.check_attributes(table, name, value, (
                "type", "args", "returns", "doc", "field", "row", "converted", "access"))
    other = frames.get(head.get("like"), Frame("", "", "", "", ""))
    if "like" in head and not other.name:
        source.complain("frame", "like", f"unknown frame \"{head['like']}\"")
    return Frame(
        *(source.check_text("frame", entry, head, entry)
          for entry in ("name", "type", "header", "part")),
        head.get("construct", ""), head.get("file", other.file), records.get(head.get("record"), other.record),
        records.get(head.get("rows"), other.rows), head.get("accounts", other.accounts),
        other.operations | source.tables.get("operations", {}),
        other.properties | source.tables.get("properties", {}))
