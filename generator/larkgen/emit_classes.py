"""C++ of the public classes: the header that clients read, and the plain members."""

from .source import with_article
from .writer import banner, comment, literal

# What a public type is in C++: given back, taken, and its name among the record's accessors.
GIVEN = {
    "Integer": "std::int16_t", "Long": "std::int32_t", "Byte": "std::uint8_t", "Boolean": "bool",
    "Single": "float", "Double": "double", "Currency": "larkmoor::Currency",
    "String": "std::string", "Variant": "Variant", "Date": "larkmoor::Date",
}
TAKEN = GIVEN | {"String": "std::string_view", "Variant": "const Variant&"}
ACCESSOR = {"GUID": "Text", "Day": "Date"}
# What a dead property reads where the dictionary names nothing else.
BLANK = {
    "Integer": "0", "Long": "0", "Byte": "0", "Boolean": "false", "Single": "0", "Double": "0",
    "Currency": "{}", "String": "{}", "Variant": "std::int16_t{0}", "Date": "larkmoor::Date(0)",
}


def cpp_name(cls, member):
    """C++ forbids a member the name of its class; there, and there alone, it bears an underscore."""
    return member.name + ("_" if member.name == cls.name else "")


def parameter(argument):
    cpp_type = f"{GIVEN[argument.type]}&" if argument.byref else TAKEN[argument.type]
    return f"{cpp_type} {argument.name}".rstrip()


def parameters(arguments):
    return ", ".join(parameter(argument) for argument in arguments)


def returned(operation):
    return "Status" if operation.returns == "Integer" else GIVEN[operation.returns]


def get_signature(cls, prop, scope=""):
    return f"{GIVEN[prop.type]} {scope}{cpp_name(cls, prop)}({parameters(prop.args)})"


def let_signature(cls, prop, scope=""):
    taken = [parameter(a) for a in prop.args] + [f"{TAKEN[prop.type]} value"]
    return f"void {scope}{cpp_name(cls, prop)}({', '.join(taken)})"


# The header

def property_notes(prop):
    """What a client has to know of the field behind a property."""
    notes = []
    field = None if prop.moved else prop.field
    if prop.kind == "date":
        notes.append("Null where no date was entered; Null and what is no date store none.")
    if field and field.type == "Text":
        notes.append(f"Keeps {field.width} characters and cuts what is longer.")
    if prop.clamp:
        low, high = prop.clamp
        notes.append(f"{prop.args[0].name} runs from {low} to {high}; beyond, the nearest of them is "
                     "meant.")
    elif field and field.count2:
        notes.append(f"{prop.args[0].name} runs from 0 to {field.count - 1} and {prop.args[1].name} "
                     f"from 0 to {field.count2 - 1}; outside, error 9 is raised and nothing changes.")
    elif field and field.count:
        notes.append(f"{prop.args[0].name} runs from 0 to {field.count - 1}; outside, error 9 is raised "
                     "and nothing changes.")
    if prop.kind == "converted" and prop.type == "Boolean":
        notes.append("Stored as " + with_article(field.type) + ", -1 for true; any other than 0 is true.")
    elif prop.kind == "converted" and "get" not in prop.by_hand:
        notes.append("Stored as " + with_article(field.type) + "; what does not fit raises error 6.")
    if prop.kind == "account":
        notes.append("Stored as the account's index, empty as 0; an ID that no account has raises "
                     "0x80040205.")
    if prop.below is not None:
        notes.append(f"From release {prop.below:g} on it reads as blank and drops what is written.")
    if prop.kind == "address" and prop.args:
        notes.append(f"{prop.args[0].name} runs from 1 to 20; beyond, the nearest of them is meant.")
    if prop.kind == "address":
        notes.append(f"Below release {prop.release or 13.0:g} it reads as blank and drops what is written.")
    if prop.kind == "dead" and prop.writable:
        notes.append("Stands for no stored value: what is written is dropped.")
    return notes


def property_doc(prop):
    access = {"r": "Read-only.", "w": "Write-only."}.get(prop.access)
    return " ".join([prop.doc] + property_notes(prop) + ([access] if access else []))


def class_header(cls, path):
    lines = [banner(path), "#pragma once\n", "#include <cstdint>", "#include <memory>",
             "#include <string>", "#include <string_view>\n", "#include <larkmoor/member_access.h>",
             "#include <larkmoor/status.h>", "#include <larkmoor/variant.h>\n", "namespace larkmoor {\n",
             comment(cls.doc)]
    lines += [f"class {cls.name} {{", " public:", f"  {cls.name}();"]
    if cls.closes:
        lines.append("  /// Runs `CloseFile`; nothing escapes.")
    lines += [f"  ~{cls.name}();", f"  {cls.name}({cls.name}&&) noexcept;",
              f"  {cls.name}& operator=({cls.name}&&) noexcept;"]
    if cls.operations:
        lines.append("\n  // Operations. An Integer result is the status, 0 for success.")
    for operation in cls.operations:
        lines += ["", comment(operation.doc, "  "),
                  f"  {returned(operation)} {cpp_name(cls, operation)}({parameters(operation.args)});"]
    if cls.properties:
        lines.append("\n  // Properties.")
    for prop in cls.properties:
        lines += ["", comment(property_doc(prop), "  ")]
        if prop.readable:
            lines.append(f"  {get_signature(cls, prop)};")
        if prop.writable:
            lines.append(f"  {let_signature(cls, prop)};")
    lines += ["\n private:", f"  friend struct MemberAccess<{cls.name}>;", "  struct Parts;",
              "  std::unique_ptr<Parts> parts_;", "};\n", "}  // namespace larkmoor"]
    return "\n".join(lines) + "\n"


# The parts of a plain class

def parts_header(cls, path):
    lines = [banner(path), "#pragma once\n", f"#include <larkmoor/{cls.subsystem}/{cls.stem}.h>\n"]
    if cls.frame:
        lines += [f'#include "{header}"' for header in sorted({
            f"engine/records/{cls.record.stem}.h", "engine/tovrin_file_names.h", cls.frame.header})]
        lines.append("")
    lines += ["namespace larkmoor {\n"]
    if cls.frame:
        lines += [f"struct {cls.name}::Parts {{",
                  f"  {cls.frame.type} {cls.frame.part}{{{construction(cls)}}};", "};"]
    else:
        lines += [f"struct {cls.name}::Parts {{}};"]
    return "\n".join(lines + ["\n}  // namespace larkmoor"]) + "\n"


def construction(cls):
    """What the class's frame is made with."""
    return cls.frame.construct.format(name=cls.name, journal=cls.journal, file=cls.file,
                                      record=cls.record.name) + frame_behaviour(cls)


def frame_behaviour(cls):
    def camel(flag):
        head, *tail = flag.split("_")
        return head + "".join(word.capitalize() for word in tail)

    flags = ", ".join(f".{camel(flag)} = true" for flag in cls.frame_flags)
    return f",\n                   {{{flags}}}" if flags else ""


# The source

def class_source(cls, path):
    lines = [banner(path), f'#include "{cls.subsystem}/{cls.stem}_parts.h"\n']
    if any(prop.kind == "date" or prop.clamp for prop in cls.properties):
        lines.append('#include "connection/conversions.h"\n')
    lines += ["namespace larkmoor {\n"] + lifecycle(cls)
    for operation in cls.operations:
        if operation.kind != "by hand":
            lines += operation_body(cls, operation)
    for prop in cls.properties:
        lines += property_bodies(cls, prop)
    return "\n".join(lines + ["}  // namespace larkmoor"]) + "\n"


def lifecycle(cls):
    name = cls.name
    lines = [f"{name}::{name}() : parts_(std::make_unique<Parts>()) {{}}", ""]
    if cls.closes:
        lines += [f"{name}::~{name}() {{", "  if (!parts_) return;", "  try {", "    CloseFile();",
                  "  } catch (...) {", "    // A destructor has no one to tell.", "  }", "}"]
    else:
        lines += [f"{name}::~{name}() = default;"]
    return lines + [
        "", f"{name}::{name}({name}&&) noexcept = default;", "",
        f"{name}& {name}::operator=({name}&& other) noexcept {{",
        f"  {name} moved(std::move(other));", "  parts_.swap(moved.parts_);", "  return *this;", "}", ""]


def part(cls):
    """The frame among the parts of an object."""
    return f"parts_->{cls.frame.part}"


def operation_body(cls, operation):
    name = f"{cls.name}::{cpp_name(cls, operation)}"
    unnamed = parameters([type(a)(a.type, "", a.byref) for a in operation.args])
    if operation.kind == "frame":
        passed = ", ".join(a.name for a in operation.args)
        return [f"{returned(operation)} {name}({parameters(operation.args)}) "
                f"{{ return {part(cls)}.{operation.forwards_to}({passed}); }}", ""]
    if operation.kind == "gives":
        return [f"{returned(operation)} {name}({unnamed}) {{ return {str(operation.gives).lower()}; }}", ""]
    lines = [f"{returned(operation)} {name}({parameters(operation.args)}) {{"]
    for writer, values in operation.writers:
        lines.append(f"  {part(cls)}.File().{writer}({', '.join(values)});")
    key = f"{part(cls)}.KeyNumber()" if operation.key is None else operation.key
    return lines + [f"  return {part(cls)}.Read(&TovrinFile::{operation.read}, {key});", "}", ""]


def property_bodies(cls, prop):
    if prop.kind == "by hand":
        return []
    bodies = {"dead": dead_bodies, "frame": frame_bodies, "address": address_bodies,
              "of file": file_bodies}.get(prop.kind, field_bodies)
    get, let = bodies(cls, prop)
    prop = unnamed_if(prop, prop.of_row and not prop.positions)
    scope = f"{cls.name}::"
    lines = []
    if prop.readable and "get" not in prop.by_hand:
        signature = get_signature(cls, unnamed_if(prop, not get.uses), scope)
        lines += [f"{signature} {{ return {get.text}; }}", ""]
    if prop.writable and "let" not in prop.by_hand:
        signature = let_signature(cls, unnamed_if(prop, not let.uses), scope)
        if not let.uses:
            signature = signature.removesuffix(" value)") + ")"
        lines += [f"{signature} {{ {let.text}}}".replace("{ }", "{}"), ""]
    return lines


class Body:
    """The inside of a member, and whether it uses the member's arguments."""

    def __init__(self, text, uses=True):
        self.text = text
        self.uses = uses


def unnamed_if(prop, unnamed):
    """The property with its arguments' names left out, as an unused argument wants it."""
    if not unnamed:
        return prop
    args = [type(a)(a.type, "", a.byref) for a in prop.args]
    return type(prop)(**{**vars(prop), "args": args})


def dead_value(prop):
    """What a dead property reads; of a Variant also "Empty" and "Null"."""
    if prop.dead is True:
        return BLANK[prop.type]
    if prop.type == "Variant" and prop.dead in ("Empty", "Null"):
        return "{}" if prop.dead == "Empty" else "Null"
    if isinstance(prop.dead, str):
        return f"{GIVEN[prop.type]}({literal(prop.dead)})"
    return f"{GIVEN[prop.type]}({prop.dead})"


def dead_bodies(_, prop):
    return Body(dead_value(prop), uses=False), Body("", uses=False)


def frame_bodies(cls, prop):
    indexes = [a.name for a in prop.args]
    call = f"{part(cls)}.{prop.name}"
    return (Body(f"{call}({', '.join(indexes)})"),
            Body(f"{call}({', '.join(indexes + ['value'])}); "))


def address_bodies(_, prop):
    number = f"AddressBook::Further({prop.args[0].name})" if prop.args else "0"
    place = f"&AddressEntry::{prop.address}, {number}"
    release = "" if prop.release is None else f", {prop.release}"
    return (Body(f"parts_->addresses.Get({place}{release})"),
            Body(f"parts_->addresses.Set({place}, value{release}); "))


def file_bodies(cls, prop):
    indexes = ", ".join(a.name for a in prop.args)
    told = prop.of_file if prop.of_file == "FileVersion" else f"File().{prop.of_file}"
    return Body(f"{part(cls)}.{told}({indexes})"), Body("", uses=False)


def shown_record(cls, prop):
    """The record with the property's field in it."""
    if prop.part:
        return f"parts_->{prop.part}.Record()"
    if not prop.of_row:
        return f"{part(cls)}.Record()"
    if not prop.positions:
        return f"{part(cls)}.RowInHand()"
    return f"{part(cls)}.{prop.rows.capitalize()}Row({prop.args[0].name})"


def field_constant(record, field):
    return f"{record.name}Record::{field.name}"


def accesses(cls, prop, accessor, indexes):
    """C++ that gets the stored value, and what stands before and behind the value where it is set."""
    constant = field_constant(prop.record, prop.field)
    if prop.moved:
        moved_part, record, field, first_row = prop.moved
        place = [constant, field_constant(record, field), str(first_row)]
        get, let = (", ".join([f"&Tovrin2Record::{way}{accessor}"] + place) for way in ("Get", "Set"))
        behind = "".join(f", {index}" for index in indexes) + ")"
        return f"parts_->{moved_part}.Get({get}{behind}", f"parts_->{moved_part}.Set({let}, ", behind
    record = shown_record(cls, prop)
    return (f"{record}.Get{accessor}({', '.join([constant] + indexes)})",
            f"{record}.Set{accessor}({constant}, ", "".join(f", {index}" for index in indexes) + ")")


def field_bodies(cls, prop):
    field = prop.field
    accessor = ACCESSOR.get(field.type, field.type)
    indexes = [] if prop.of_row else [a.name for a in prop.args]
    if prop.clamp:
        indexes = [f"Clamp({prop.args[0].name}, {prop.clamp[0]}, {prop.clamp[1]})"]
    get, before, behind = accesses(cls, prop, accessor, indexes)
    value = "value"
    if prop.kind == "date":
        get, value = f"DateFromRecord({get})", "DateToRecord(value)"
    elif prop.kind == "converted":
        get, value = f"Variant({get}).To{prop.type}()", f"Variant(value).To{field.type}()"
    elif prop.kind == "account":
        accounts, source = f"parts_->{cls.frame.accounts}", f'"{cls.name}.{prop.name}"'
        get = f"{accounts}.AccountID({get}, {source})"
        value = f"{accounts}.AccountIndex(value, {source})"
    elif prop.type == "Date":
        get, value = f"larkmoor::Date({get})", "value.Serial()"
    let = f"{before}{value}{behind}; "
    if prop.below is None:
        return Body(get), Body(let)
    older = f"{part(cls)}.FileVersion() < {prop.below}"
    return (Body(f"{older} ? {get} : {GIVEN[prop.type]}{{}}"),
            Body(f"if ({older}) {let}"))


def umbrella_header(classes):
    lines = [banner("the class dictionary"), "#pragma once\n"]
    hand_written = ("bulk_write", "company", "currency", "date", "error", "journal_code", "message_box",
                    "status", "variant")
    lines += [f"#include <larkmoor/{name}.h>" for name in hand_written]
    lines += [""] + [f"#include <larkmoor/{cls.subsystem}/{cls.stem}.h>" for cls in classes]
    return "\n".join(lines) + "\n"
