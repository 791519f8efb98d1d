"""Record descriptions: fields, keys and lengths, checked."""

import re
from dataclasses import dataclass, field

from .source import Source, is_of_kind

FIRST_RELEASE, LAST_RELEASE = 8.0, 19.0
MAX_KEY_WIDTH = 255

# Bytes of one element; Text and Fill tell their own.
WIDTHS = {
    "Byte": 1, "Boolean": 2, "Integer": 2, "Long": 4, "Single": 4, "Double": 8, "Currency": 8,
    "Date": 8, "Day": 4, "GUID": 16,
}
# How a field's bytes compare in a key.
SEGMENT_TYPES = {
    "Byte": "Byte", "Boolean": "Integer", "Integer": "Integer", "Long": "Long", "Double": "Double",
    "Date": "Date", "Day": "Day", "Text": "ZeroText", "GUID": "Guid",
}
# What a segment may be read as, and its width then.
SEGMENT_CASTS = {"Byte": 1, "Integer": 2, "Long": 4, "Text": None}

TYPE_PATTERN = re.compile(r"(\w+)(?:\((\d+)\))?(?:\[(\d+)\])?(?:\[(\d+)\])?$")
SEGMENT_PATTERN = re.compile(r"(\w+)(?:\[(\d+)\])?(?::(\w+))?$")


@dataclass
class Field:
    name: str
    type: str  # Text(40) and Text(40)[5] are both "Text"
    width: int
    count: int
    count2: int
    offset: int
    doc: str

    @property
    def size(self):
        return self.width * max(self.count, 1) * max(self.count2, 1)


@dataclass
class Segment:
    type: str
    offset: int
    width: int


@dataclass
class Key:
    number: int
    segments: list
    unique: bool = False
    modifiable: bool = True
    auto_increment: bool = False
    from_release: float = 0.0
    below: float = float("inf")

    @property
    def width(self):
        return sum(segment.width for segment in self.segments)

    @property
    def starts(self):
        """Where the segments start in the key buffer."""
        return [sum(s.width for s in self.segments[:i]) for i in range(len(self.segments))]

    def holds_in(self, low, high):
        """Whether the key holds for any release from `low` to below `high`."""
        return self.from_release < high and low < self.below


@dataclass
class Record:
    source: Source
    name: str
    doc: str
    file: str
    fields: list = field(default_factory=list)
    keys: list = field(default_factory=list)
    lengths: list = field(default_factory=list)  # (from release, bytes), ascending
    base: "Record | None" = None
    row: "tuple[Field, int] | None" = None

    @property
    def stem(self):
        return self.source.stem

    def find(self, name):
        return next((f for f in self.fields if f.name == name), None)

    def keys_numbered(self, number):
        return [key for key in self.keys if key.number == number]


def parse_type(text):
    """(type, width, count, count2) of "Text(40)[5]", or what is wrong with it."""
    match = TYPE_PATTERN.match(text)
    if not match:
        return f"\"{text}\" is no type"
    name, width, count, count2 = match[1], match[2], match[3], match[4]
    if name in ("Text", "Fill"):
        if not width or not 0 < int(width) < 65536:
            return f"{name} needs a width from 1 to 65535"
        if name == "Fill" and count:
            return "Fill does not repeat"
        size = int(width)
    elif name in WIDTHS:
        if width:
            return f"{name} takes no width"
        size = WIDTHS[name]
    else:
        return f"unknown type \"{name}\""
    counts = [int(c) for c in (count, count2) if c is not None]
    if any(not 0 < c < 65536 for c in counts):
        return "a repeating field has 1 to 65535 elements"
    return name, size, *(counts + [0, 0])[:2]


def load_records(paths, file_names, name_lists, problems):
    """All records of the dictionary by name, the ones over another's file completed from it."""
    sources = [Source(path, problems) for path in sorted(paths)]
    records = {}
    for stands_on_another in (False, True):
        for source in sources:
            head = source.tables.get("record", {})
            if bool({"over", "like"} & head.keys()) == stands_on_another:
                record = RecordReader(source, file_names, name_lists, records).read()
                if record.name.lower() in (name.lower() for name in records):
                    source.complain("record", "name", f"there is a record {record.name} already")
                records[record.name] = record
    return records


class RecordReader:
    """Turns one file into a Record, complaining of whatever does not hold."""

    def __init__(self, source, file_names, name_lists, records):
        self.source = source
        self.file_names = file_names
        self.name_lists = name_lists
        self.records = records

    def read(self):
        source = self.source
        source.check_tables(("record", "fields", "keys"))
        head = source.check_entries("record", {"name": str, "file": str, "doc": str, "length": object,
                                               "over": str, "row": object, "like": str})
        source.check_names_differ("fields")
        record = Record(source, source.check_text("record", "name", head, "name"),
                        source.check_text("record", "doc", head, "doc"), head.get("file", ""))
        if "row" in head and "over" not in head:
            source.complain("record", "row", "row goes with over")
        if "over" in head:
            self.read_base(record, head)
        elif "like" in head:
            return self.read_likeness(record, head)
        else:
            self.check_file(record)
        self.read_fields(record)
        if "over" in head:
            self.read_row_mark(record, head)
        else:
            self.read_lengths(record, head.get("length"))
        self.check_lengths(record)
        self.read_keys(record)
        return record

    def check_file(self, record):
        if record.file not in self.file_names:
            self.source.complain("record", "file", f"unknown file \"{record.file}\"; file_names.toml has "
                                 "their names")

    def read_base(self, record, head):
        record.base = self.records.get(head["over"])
        if record.base is None:
            self.source.complain("record", "over", f"unknown record \"{head['over']}\"")
            return
        if "like" in head:
            self.source.complain("record", "like", "like and over exclude each other")
        record.file = record.base.file
        record.fields = list(record.base.fields)
        record.lengths = record.base.lengths
        for entry in ("file", "length"):
            if entry in head:
                self.source.complain("record", entry, f"{entry} is that of {record.base.name}")
        if "keys" in self.source.tables:
            self.source.complain("keys", None, f"the keys are those of {record.base.name}")

    def read_likeness(self, record, head):
        """A record with the fields and keys of another, in a file of its own."""
        other = self.records.get(head["like"])
        if other is None:
            self.source.complain("record", "like", f"unknown record \"{head['like']}\"")
            return record
        self.check_file(record)
        if "length" in head:
            self.source.complain("record", "length", f"length is that of {other.name}")
        for table in ("fields", "keys"):
            if table in self.source.tables:
                self.source.complain(table, None, f"the {table} are those of {other.name}")
        record.fields, record.keys, record.lengths = other.fields, other.keys, other.lengths
        return record

    def read_row_mark(self, record, head):
        mark = head.get("row")
        if not (isinstance(mark, dict) and len(mark) == 1 and
                all(is_of_kind(value, int) for value in mark.values())):
            self.source.complain("record", "row", "row names one field and the value that marks "
                                 "the rows, as in { RowType = 4 }")
            return
        name, value = next(iter(mark.items()))
        marked = record.find(name)
        if marked is None or marked.type != "Integer" or marked.count:
            self.source.complain("record", "row", f"{name} is no Integer field of the base record")
        else:
            record.row = (marked, value)
            for other in self.records.values():
                if other.base is record.base and other.row == record.row:
                    self.source.complain("record", "row", f"{name} = {value} marks the rows of {other.name}")

    def read_fields(self, record):
        offset = sum(f.size for f in record.fields)
        for name, value in self.name_lists.expand(self.source, "fields").items():
            if not isinstance(value, dict):
                self.source.complain("fields", name, f"{name}: a field is {{ type, doc }}")
                continue
            value = self.source.check_attributes("fields", name, value, {"type": str, "doc": str})
            parsed = parse_type(self.source.check_text("fields", name, value, "type"))
            if isinstance(parsed, str):
                self.source.complain("fields", name, f"{name}: {parsed}")
                continue
            kind, width, count, count2 = parsed
            if record.find(name):
                self.source.complain("fields", name, f"{name}: the base record has this field")
            doc = value.get("doc", "")
            if not doc and kind != "Fill":
                self.source.complain("fields", name, f"{name}: doc is missing")
            record.fields.append(Field(name, kind, width, count, count2, offset, doc))
            offset += record.fields[-1].size

    def read_lengths(self, record, length):
        size = sum(f.size for f in record.fields)
        if length is None:
            record.lengths = [(0.0, size)]
        elif isinstance(length, int):
            record.lengths = [(0.0, length)]
        else:
            try:
                steps = sorted((float(release), int(n)) for release, n in length.items())
            except (AttributeError, TypeError, ValueError):
                self.source.complain("record", "length", "length is a number of bytes, or a table of "
                                     "them by release")
                steps = [(0.0, size)]
            record.lengths = [(0.0, steps[0][1])] + steps[1:]

    def check_lengths(self, record):
        if not record.lengths:
            return
        longest = max(n for _, n in record.lengths)
        for f in record.fields:
            if f.offset + f.size > longest:
                self.source.complain("fields", f.name, f"{f.name}: ends at byte {f.offset + f.size}, "
                                     f"beyond the record's length of {longest}")
                break

    def read_keys(self, record):
        if record.base is not None:
            record.keys = record.base.keys
            return
        for number, value in self.source.tables.get("keys", {}).items():
            if not re.fullmatch(r"\d{1,3}", number) or int(number) > 118:
                self.source.complain("keys", number, f"\"{number}\" is no key number (0 to 118)")
                continue
            for text in value if isinstance(value, list) else [value]:
                key = self.read_key(record, number, text)
                if key is not None:
                    self.check_key(record, key)
                    record.keys.append(key)
        if not any(key.holds_in(FIRST_RELEASE, LAST_RELEASE) for key in record.keys_numbered(0)):
            self.source.complain("keys", None, "every file has a key number 0")

    def read_key(self, record, number, text):
        parts = [part.strip() for part in str(text).split(",")]
        segments = [self.read_segment(record, number, part.strip())
                    for part in parts[0].split("+")]
        if None in segments:
            return None
        key = Key(int(number), segments)
        for flag in parts[1:]:
            release = re.fullmatch(r"(from|below) (\d+(?:\.\d+)?)", flag)
            if flag == "unique":
                key.unique = True
            elif flag == "not-modifiable":
                key.modifiable = False
            elif flag == "auto-increment":
                key.auto_increment = True
            elif release and release[1] == "from":
                key.from_release = float(release[2])
            elif release:
                key.below = float(release[2])
            else:
                self.source.complain("keys", number, f"key {number}: unknown flag \"{flag}\"")
        return key

    def read_segment(self, record, number, text):
        def complain(what):
            self.source.complain("keys", number, f"key {number}: {what}")

        match = SEGMENT_PATTERN.match(text)
        if not match:
            return complain(f"\"{text}\" is no segment")
        name, element, cast = match[1], match[2], match[3]
        found = record.find(name)
        if found is None or found.type == "Fill":
            return complain(f"there is no field {name}")
        if found.count2 or bool(found.count) != (element is not None):
            return complain(f"{name} is {'a repeating' if found.count else 'no repeating'} field")
        if element is not None and int(element) >= found.count:
            return complain(f"{name} has elements 0 to {found.count - 1}")
        if found.type not in SEGMENT_TYPES:
            return complain(f"a {found.type} field cannot be a key")
        kind, width = SEGMENT_TYPES[found.type], found.width
        if cast is not None:
            if cast not in SEGMENT_CASTS or (SEGMENT_CASTS[cast] or width) > width:
                return complain(f"{name} cannot be read as {cast}")
            kind, width = cast, SEGMENT_CASTS[cast] or width
        return Segment(kind, found.offset + int(element or 0) * found.width, width)

    def check_key(self, record, key):
        def complain(what):
            self.source.complain("keys", key.number, f"key {key.number}: {what}")

        if key.width > MAX_KEY_WIDTH:
            complain(f"{key.width} bytes wide, and a key has room for {MAX_KEY_WIDTH}")
        if key.auto_increment and (len(key.segments) != 1 or
                                   key.segments[0].type not in ("Integer", "Long")):
            complain("auto-increment takes one Integer or Long")
        for other in record.keys_numbered(key.number):
            if other.holds_in(key.from_release, key.below):
                complain("two of this number hold for the same release")
        end = max(segment.offset + segment.width for segment in key.segments)
        starts = [start for start, _ in record.lengths[1:]] + [float("inf")]
        for (start, length), stop in zip(record.lengths, starts):
            if end > length and key.holds_in(max(start, FIRST_RELEASE), stop):
                complain(f"lies beyond the record's {length} bytes in release {max(start, FIRST_RELEASE):g}")
