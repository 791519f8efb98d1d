"""Class descriptions: operations and properties, checked against the records."""

import re
from dataclasses import dataclass, field

from .frames import Frame
from .members import (OPERATION_ATTRIBUTES, PROPERTY_ATTRIBUTES, SHOWN_BY, TYPES, ill_matched,
                      read_arguments)
from .records import Record
from .source import KINDS, Source, is_of_kind, with_article

WHOLE_NUMBERS = ("Byte", "Integer", "Long")

CLASS_ENTRIES = {
    "name": str, "frame": str, "journal": int, "file": str, "record": str, "doc": str, "parts": str,
}
# Departures from the frame, in the order of its C++.
FRAME_FLAGS = ("close_keeps_open_mark", "open_sets_no_mark", "failed_open_keeps_file",
               "missing_account_reads_empty")

# What a property may tell of the file, and its public type.
OF_FILE = {"ActualLength": "Long", "RecordByte": "Byte", "FileVersion": "Double"}

READS = ("btGetEqual", "btGetGreaterThan", "btGetGreaterOrEqual", "btGetLessThan",
         "btGetLessOrEqual", "btGetFirst", "btGetLast", "btGetNext", "btGetPrevious")
# The argument type and the width of each key writer; texts tell their own width.
KEY_WRITERS = {
    "KeyByte": ("Byte", 1), "KeyWord": ("Integer", 2), "KeyLong": ("Long", 4),
    "KeyDouble": ("Double", 8), "KeyText": ("String", 0), "KeyString": ("String", 0),
    "KeyTerminated": ("String", 0),
}


@dataclass
class Operation:
    name: str
    kind: str  # frame, read, gives, by hand
    returns: str
    args: list
    doc: str
    key: "int | None" = None  # None: that of the last keyed read
    writers: list = field(default_factory=list)  # (writer, arguments as they stand)
    read: str = ""
    gives: int = 0
    forwards_to: str = ""  # the frame's name for it


@dataclass
class Property:
    name: str
    kind: str  # field, date, converted, account, of file, dead, frame, address, by hand
    type: str  # the public type; that of a date is Variant
    args: list
    doc: str
    access: str = "rw"
    field: "object | None" = None
    clamp: "tuple | None" = None
    dead: "object | None" = None
    by_hand: tuple = ()  # of "get", "let"
    of_row: bool = False  # belongs to one row of a transaction
    rows: str = ""  # the list of rows, of a transaction that has several
    address: str = ""  # the field of an address in memory
    release: "float | None" = None  # from which on there is that field
    below: "float | None" = None  # the release from which on there is no longer that field
    part: str = ""  # the part of the class whose record has the field, where not the class's own
    record: "Record | None" = None  # that record
    moved: "tuple | None" = None  # where newer data has the field: part, its record, field, first row
    of_file: str = ""  # what it tells of the file
    positions: bool = True  # the first argument is the number of the row to be shown

    @property
    def readable(self):
        return "r" in self.access

    @property
    def writable(self):
        return "w" in self.access


@dataclass
class PublicClass:
    source: Source
    subsystem: str
    name: str
    doc: str
    file: str
    frame: "Frame | None"
    record: "Record | None"
    own_parts: bool
    frame_flags: list
    journal: "int | None" = None
    records: dict = field(default_factory=dict)  # further records by part
    operations: list = field(default_factory=list)
    properties: list = field(default_factory=list)

    @property
    def stem(self):
        return self.source.stem

    @property
    def members(self):
        return self.operations + self.properties

    @property
    def closes(self):
        return any(op.name == "CloseFile" for op in self.operations)

    @property
    def rows(self):
        """The record of a transaction's rows, of a class that shows one."""
        return self.frame.rows if self.frame else None


def load_classes(paths, frames, records, file_names, name_lists, problems):
    """All classes, by name."""
    classes = [ClassReader(Source(path, problems), path.parent.name, frames, records, file_names,
                           name_lists).read() for path in sorted(paths)]
    seen = set()
    for each in classes:
        if each.name.lower() in seen:
            each.source.complain("class", "name", f"there is a class {each.name} already")
        seen.add(each.name.lower())
    return sorted(classes, key=lambda each: each.name.lower())


class ClassReader:
    """Turns one file into a PublicClass, complaining of whatever does not hold."""

    def __init__(self, source, subsystem, frames, records, file_names, name_lists):
        self.source = source
        self.subsystem = subsystem
        self.frames = frames
        self.records = records
        self.file_names = file_names
        self.name_lists = name_lists

    def read(self):
        source = self.source
        source.check_tables(("class", "frame", "records", "operations", "properties"))
        head = source.check_entries("class", CLASS_ENTRIES)
        flags = source.check_entries("frame", {flag: bool for flag in FRAME_FLAGS})
        source.check_names_differ("operations", "properties")
        frame = self.read_frame(head)
        record = self.records.get(head.get("record"), frame.record if frame else None)
        if head.get("parts", "by hand") != "by hand":
            source.complain("class", "parts", "parts says \"by hand\" or is left out")
        if "frame" in source.tables and (frame is None or "parts" in head):
            source.complain("frame", None, "departures are of a class with a frame whose parts are not by "
                            "hand")
        self.result = PublicClass(source, self.subsystem,
                                  source.check_text("class", "name", head, "name"),
                                  source.check_text("class", "doc", head, "doc"),
                                  head.get("file", ""), frame, record, "parts" in head,
                                  [flag for flag in FRAME_FLAGS if flags.get(flag)],
                                  head.get("journal"), self.read_records(head, frame))
        if self.is_known(head):
            self.read_operations()
            self.read_properties()
        return self.result

    def is_known(self, head):
        """Whether there is what the class is over. Otherwise every member would be complained of."""
        return (head.get("frame") in (None, *self.frames) and
                (self.result.frame is None or self.result.record is not None))

    def read_records(self, head, frame):
        """The records of the class's further parts."""
        told = self.source.tables.get("records", {})
        told = self.source.check_entries("records", {part: str for part in told})
        if told and ("parts" not in head or frame is None):
            self.source.complain("records", None, "further records are of a class with a frame whose parts "
                                 "are by hand")
        for part, name in told.items():
            if name not in self.records:
                self.source.complain("records", part, f"{part}: unknown record \"{name}\"")
        return {part: self.records[name] for part, name in told.items() if name in self.records}

    def read_frame(self, head):
        """The frame that the class names, or that of a table where it has a file; otherwise none."""
        source = self.source
        name = head.get("frame", "table" if "file" in head or "record" in head else None)
        if name is None:
            return None
        frame = self.frames.get(name)
        if frame is None:
            source.complain("class", "frame", f"unknown frame \"{name}\"")
            return None
        for entry in ("file", "record"):
            if (entry in head) == bool(getattr(frame, entry)):
                what = f"is that of the frame {name}" if entry in head else "is missing"
                source.complain("class", entry, f"{entry} {what}")
        if "record" in head and head["record"] not in self.records:
            source.complain("class", "record", f"unknown record \"{head['record']}\"")
        elif "record" in head and frame.file and self.records[head["record"]].file != frame.file:
            source.complain("class", "record", f"the frame {name} is over rows of {frame.file}")
        elif {"record", "file"} <= head.keys() and self.records[head["record"]].file != head["file"]:
            source.complain("class", "record", f"{head['record']} is a record of "
                            f"{self.records[head['record']].file}")
        if "file" in head and head["file"] not in self.file_names:
            source.complain("class", "file", f"unknown file \"{head['file']}\"; file_names.toml has "
                            "their names")
        if "{journal}" in frame.construct and "journal" not in head:
            source.complain("class", "journal", f"journal is missing: the frame {name} takes its code")
        elif "journal" in head and "{journal}" not in frame.construct:
            source.complain("class", "journal", f"journal: the frame {name} takes no code")
        return frame

    # Operations

    def check_reasons(self, table, name, value):
        """What is by hand tells why."""
        for attribute in ("by_hand", "by_hand_get", "by_hand_let"):
            if attribute in value and not (isinstance(value[attribute], str) and value[attribute]):
                self.source.complain(table, name, f"{name}: {attribute} tells why")

    def read_operations(self):
        for name, value in self.source.tables.get("operations", {}).items():
            operation = self.read_operation(name, value)
            if operation is not None:
                self.result.operations.append(operation)

    def read_operation(self, name, value):
        if value == "frame":
            return self.frame_operation(name, name)
        if isinstance(value, dict) and "frame" in value:
            return self.named_frame_operation(name, value)
        if not isinstance(value, dict):
            return self.complain_operation(name, "an operation is \"frame\" or a table of attributes")
        value = self.source.check_attributes("operations", name, value, OPERATION_ATTRIBUTES)
        self.check_reasons("operations", name, value)
        kinds = [kind for kind in ("read", "gives", "by_hand") if kind in value]
        if len(kinds) != 1:
            return self.complain_operation(name, "takes one of read, gives and by_hand")
        operation = Operation(
            name, kinds[0].replace("_", " "), value.get("returns", "Integer"),
            read_arguments(self.source, "operations", name, value.get("args", "")),
            self.source.check_text("operations", name, value, "doc"))
        if operation.returns not in TYPES:
            self.complain_operation(name, f"unknown type \"{operation.returns}\"")
        if operation.kind == "gives":
            operation.gives = value["gives"]
            if type(operation.gives) is not (bool if operation.returns == "Boolean" else int):
                self.complain_operation(name, f"gives {operation.gives}, and returns "
                                        f"{with_article(operation.returns)}")
        if operation.kind == "read":
            self.read_search(operation, value)
        return operation

    def named_frame_operation(self, name, value):
        """An operation of the frame with a doc of its own, and perhaps a name and arguments of its own."""
        value = self.source.check_attributes("operations", name, value,
                                             {"frame": object, "args": str, "doc": str})
        told = value["frame"]
        if told is not True and not isinstance(told, str):
            return self.complain_operation(name, "frame is true, or the frame's name for it")
        operation = self.frame_operation(name, name if told is True else told)
        doc = self.source.check_text("operations", name, value, "doc")
        if operation is not None:
            operation.doc = doc
            if "args" in value:
                self.rename_arguments(operation, value["args"])
        return operation

    def rename_arguments(self, operation, text):
        wanted = [(a.type, a.byref) for a in operation.args]
        operation.args = read_arguments(self.source, "operations", operation.name, text)
        if [(a.type, a.byref) for a in operation.args] != wanted:
            types = ", ".join(("byref " if byref else "") + kind for kind, byref in wanted) or "none"
            self.complain_operation(operation.name, f"{operation.forwards_to} of the frame has other "
                                    f"arguments: {types}")

    def frame_operation(self, name, told):
        """The operation that the frame calls `told`."""
        if self.result.frame is None:
            return self.complain_operation(name, "an operation of the frame needs a file and a record")
        value = self.result.frame.operations.get(told)
        if value is None:
            return self.complain_operation(name, f"{told} is no operation of the frame" if told != name
                                           else "is no operation of the frame")
        if told in self.result.frame.mistaken:
            return None
        return Operation(name, "frame", value.get("returns", "Integer"),
                         read_arguments(self.source, "operations", name, value.get("args", "")),
                         value["doc"], forwards_to=told)

    def read_search(self, operation, value):
        name = operation.name
        operation.key, operation.read = value.get("key"), value["read"]
        if operation.read not in READS:
            self.complain_operation(name, f"unknown engine operation \"{operation.read}\"")
        if self.result.record is None or self.result.rows:
            self.complain_operation(name, "a keyed read needs a file and a record")
            return
        keys = self.result.record.keys_numbered(operation.key)
        if not keys and ("key" in value or "write" in value):
            self.complain_operation(name, f"the record has no key {operation.key}")
            return
        for text in filter(None, (part.strip() for part in value.get("write", "").split(";"))):
            self.read_writer(operation, text, keys)

    def read_writer(self, operation, text, keys):
        name = operation.name
        match = re.fullmatch(r"(\w+)\((.*)\)", text)
        if not match or match[1] not in KEY_WRITERS:
            self.complain_operation(name, f"\"{text}\" is no key writer")
            return
        wanted, size = KEY_WRITERS[match[1]]
        values = [part.strip() for part in match[2].split(",")]
        if len(values) != (3 if match[1] == "KeyString" else 2) or not values[-1].isdigit():
            self.complain_operation(name, f"\"{text}\": a value and an offset are wanted")
            return
        argument = next((arg for arg in operation.args if arg.name == values[0]), None)
        if argument is None and not re.fullmatch(r"-?\d+|\"\"", values[0]):
            self.complain_operation(name, f"\"{text}\": there is no argument {values[0]}")
        elif argument is not None and argument.type != wanted:
            self.complain_operation(name, f"\"{text}\" writes {with_article(wanted)}, and "
                                    f"{values[0]} is {with_article(argument.type)}")
        self.check_place(name, text, int(values[-1]), max(size, 1), keys)
        operation.writers.append((match[1], values))

    def check_place(self, name, text, offset, size, keys):
        """A writer starts where a segment of the key starts, in the layout of some release."""
        width = max(key.width for key in keys)
        starts = sorted({start for key in keys for start in key.starts})
        if offset + size > width:
            self.complain_operation(name, f"\"{text}\" goes beyond the key's {width} bytes")
        elif offset not in starts:
            self.complain_operation(name, f"\"{text}\" starts inside a segment; they start at "
                                    f"{', '.join(map(str, starts))}")

    def complain_operation(self, name, what):
        self.source.complain("operations", name, f"{name}: {what}")

    # Properties

    def read_properties(self):
        written = self.source.tables.get("properties", {})
        names = [name for name, value in written.items()
                 if not (isinstance(value, dict) and "list" in value)]
        for earlier, later in zip(names, names[1:]):
            if earlier.lower() > later.lower():
                self.complain_property(later, f"stands behind {earlier}: properties are in "
                                       "alphabetical order")
        for name, value in self.name_lists.expand(self.source, "properties").items():
            prop = self.read_property(name, value)
            if prop is not None:
                self.result.properties.append(prop)
        self.result.properties.sort(key=lambda prop: prop.name.lower())

    def read_property(self, name, value):
        if value == "frame":
            return self.frame_property(name)
        if not isinstance(value, dict):
            return self.complain_property(name, "a property is \"frame\" or a table of attributes")
        value = self.source.check_attributes("properties", name, value, PROPERTY_ATTRIBUTES)
        self.check_reasons("properties", name, value)
        problem = ill_matched(value)
        if problem:
            return self.complain_property(name, problem)
        return self.described_property(name, value)

    def frame_property(self, name):
        told = self.result.frame.properties.get(name) if self.result.frame else None
        if told is None:
            return self.complain_property(name, "is no property of the frame")
        if name in self.result.frame.mistaken:
            return None
        return self.described_property(name, told, of_frame=True)

    def described_property(self, name, value, of_frame=False):
        shown = self.source.check_text("properties", name, value, "type")
        if shown not in SHOWN_BY:
            return self.complain_property(name, f"unknown type \"{shown}\"")
        prop = Property(name, "field", shown.split()[0],
                        read_arguments(self.source, "properties", name, value.get("args", "")),
                        self.source.check_text("properties", name, value, "doc"),
                        value.get("access", "rw"))
        if prop.access not in ("rw", "r", "w"):
            self.complain_property(name, f"access is rw, r or w and not \"{prop.access}\"")
        if "by_hand" in value:
            prop.by_hand = ("get", "let")
        else:
            prop.by_hand = tuple(way for way in ("get", "let") if f"by_hand_{way}" in value)
        prop.of_row = "row" in value or value.get("of_row", False)
        prop.positions = value.get("positions", True)
        prop.rows = value.get("rows", "")
        if prop.of_row:
            self.check_row(prop)
        if "dead" in value:
            prop.kind, prop.dead = "dead", value["dead"]
            self.check_dead(prop)
        elif len(prop.by_hand) == 2:
            prop.kind = "by hand"
        elif "address" in value:
            self.read_address(prop, value)
        elif "of_file" in value:
            self.read_of_file(prop, value["of_file"])
        elif of_frame and not {"field", "row"} & value.keys():
            prop.kind = "frame"
        else:
            prop.kind = "date" if shown == "Variant date" else "field"
            if value.get("converted"):
                prop.kind = "converted"
            elif "account" in value:
                prop.kind = "account"
            self.read_field(prop, value, shown)
        return prop

    def check_row(self, prop):
        """What belongs to one row tells which."""
        frame = self.result.frame
        if frame is None or frame.rows is None:
            self.complain_property(prop.name, "rows are those of a class over transactions")
            return
        if prop.positions and [a.type for a in prop.args] != ["Integer"]:
            self.complain_property(prop.name, "a row's property takes the Integer number of the row")
        if prop.positions and prop.rows not in (frame.lists or [""]):
            lists = " or ".join(frame.lists)
            self.complain_property(prop.name, f"rows is {lists}" if lists else
                                   f"the frame {frame.name} has one list of rows")

    def check_dead(self, prop):
        """What a dead property reads is of its type."""
        kinds = {"String": str, "Variant": str, "Boolean": bool}.get(prop.type, float)
        if prop.dead is not True and not is_of_kind(prop.dead, kinds):
            self.complain_property(prop.name, f"dead is true or {KINDS[kinds]}")
        elif prop.dead is False:
            self.complain_property(prop.name, "dead is true")

    def read_field(self, prop, value, shown):
        prop.record = record = self.record_of(prop, value)
        if record is None:
            return
        name = value.get("row", value.get("account", value.get("field", prop.name)))
        prop.field = record.find(name)
        if prop.field is None:
            self.complain_property(prop.name, f"there is no field {name}")
            return
        if prop.kind == "converted":
            self.check_converted(prop)
        elif prop.kind == "account":
            self.check_account(prop)
        elif prop.field.type not in SHOWN_BY[shown]:
            self.complain_property(prop.name, f"is {with_article(shown)}, and the field {name} "
                                   f"{with_article(prop.field.type)}")
        if not prop.of_row:
            self.check_indexes(prop, name)
        elif prop.field.count:
            self.complain_property(prop.name, f"the field {name} of a row repeats")
        if "clamp" in value:
            self.read_clamp(prop, value["clamp"])
        prop.below = value.get("below")
        if "moved" in value:
            self.read_moved(prop, value["moved"], value.get("first_row", 0))

    def record_of(self, prop, value):
        """The record that has the property's field."""
        prop.part = value.get("part", "")
        if not prop.part:
            record = self.result.rows if "row" in value else self.result.record
            if record is None and "row" not in value:
                self.complain_property(prop.name, "there is no record to show a field of")
            return record
        if prop.part not in self.source.tables.get("records", {}):
            self.complain_property(prop.name, f"there is no part {prop.part} in [records]")
        return self.result.records.get(prop.part)

    def read_moved(self, prop, place, first_row):
        """The field that newer data has instead, in a row that the first index tells."""
        part, _, name = str(place).partition(".")
        record = self.result.records.get(part)
        moved = record.find(name) if record else None
        if moved is None:
            self.complain_property(prop.name, f"moved to {place}, and there is no such part and field")
        elif not prop.field.count:
            self.complain_property(prop.name, "moved takes a field that repeats, whose index tells the row")
        elif (moved.type, bool(moved.count)) != (prop.field.type, bool(prop.field.count2)):
            self.complain_property(prop.name, f"moved to {place}, which is another type than before")
        else:
            prop.moved = (part, record, moved, first_row)

    def read_of_file(self, prop, name):
        prop.kind, prop.of_file = "of file", name
        if self.result.frame is None:
            self.complain_property(prop.name, "there is no file to tell of")
        if prop.type != OF_FILE.get(name) or prop.access != "r":
            self.complain_property(prop.name, "of_file is one of " + ", ".join(
                f"{each} ({kind})" for each, kind in OF_FILE.items()) + ", read-only")
        if [a.type in ("Integer", "Long") for a in prop.args] != [True] * (name == "RecordByte"):
            self.complain_property(prop.name, "RecordByte takes one index, and the others none")

    def read_address(self, prop, value):
        """A property of an address in memory: of the first one, or of a further one by its number."""
        prop.kind, prop.address, prop.release = "address", value["address"], value.get("from")
        if not self.result.own_parts:
            self.complain_property(prop.name, "addresses are a part of a class whose parts are by hand")
        if [a.type for a in prop.args] not in ([], ["Integer"]):
            self.complain_property(prop.name, "an address is the first one or has an Integer number")

    def check_converted(self, prop):
        shown = prop.type in WHOLE_NUMBERS + ("Boolean",)
        if not shown or prop.field.type not in WHOLE_NUMBERS or prop.type == prop.field.type:
            self.complain_property(prop.name, "converted is for whole numbers of two types, or for a "
                                   "Boolean over one")

    def check_account(self, prop):
        frame = self.result.frame
        if (prop.type, prop.field.type) != ("String", "Long"):
            self.complain_property(prop.name, "an account is a Long shown as a String")
        if not self.result.own_parts and frame.accounts.split(".")[0] != frame.part:
            self.complain_property(prop.name, f"accounts are looked up by a part {frame.accounts}, which "
                                   "parts by hand have")

    def check_indexes(self, prop, name):
        indexes = bool(prop.field.count) + bool(prop.field.count2)
        if len(prop.args) != indexes:
            self.complain_property(prop.name, f"the field {name} has {indexes} "
                                   f"{'index' if indexes == 1 else 'indexes'}, the property "
                                   f"{len(prop.args)}")

    def read_clamp(self, prop, clamp):
        if not (len(clamp) == 2 and all(isinstance(bound, int) for bound in clamp)):
            self.complain_property(prop.name, "clamp is a range such as [1, 20]")
        elif len(prop.args) != 1 or prop.args[0].type != "Integer":
            self.complain_property(prop.name, "clamp wants one Integer index")
        elif not 0 <= clamp[0] <= clamp[1] < prop.field.count:
            self.complain_property(prop.name, f"the field has elements 0 to {prop.field.count - 1}")
        else:
            prop.clamp = tuple(clamp)

    def complain_property(self, name, what):
        self.source.complain("properties", name, f"{name}: {what}")
