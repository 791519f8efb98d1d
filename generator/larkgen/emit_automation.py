"""C++ of the run-time member table."""

from .emit_classes import GIVEN, cpp_name
from .writer import banner, boolean, literal

# How an argument or a value of a type is taken out of a Variant.
CONVERSION = {
    "Integer": "ToInteger", "Long": "ToLong", "Byte": "ToByte", "Boolean": "ToBoolean",
    "Single": "ToSingle", "Double": "ToDouble", "Currency": "ToCurrency", "String": "ToText",
    "Date": "ToDate",
}
STORAGE = {"field": "Field", "date": "Date", "dead": "Dead"}  # of all other kinds it is ByHand


def converted(expression, kind):
    return expression if kind == "Variant" else f"{expression}.{CONVERSION[kind]}()"


def object_of(cls):
    return f"static_cast<{cls.name}*>(object)"


def call(cls, member):
    """The body that calls an operation or reads a property."""
    byrefs = {i: f"argument{i}" for i, a in enumerate(member.args) if a.byref}
    passed = ", ".join(byrefs.get(i) or converted(f"arguments[{i}]", a.type)
                       for i, a in enumerate(member.args))
    invoked = f"{object_of(cls)}->{cpp_name(cls, member)}({passed})"
    if not byrefs:
        return f"return Variant({invoked});"
    before = " ".join(f"{GIVEN[member.args[i].type]} {name} = "
                      f"{converted(f'arguments[{i}]', member.args[i].type)};"
                      for i, name in byrefs.items())
    after = " ".join(f"arguments[{i}] = {name};" for i, name in byrefs.items())
    return f"{before} Variant result({invoked}); {after} return result;"


def getter(cls, member):
    arguments = " arguments" if member.args else ""
    return (f"[](void* object, std::span<Variant>{arguments}) -> Variant "
            f"{{ {call(cls, member)} }}")


def letter(cls, prop):
    arguments = " arguments" if prop.args else ""
    passed = [converted(f"arguments[{i}]", a.type) for i, a in enumerate(prop.args)]
    passed.append(converted("value", prop.type))
    return (f"[](void* object, std::span<Variant>{arguments}, const Variant& value) "
            f"{{ {object_of(cls)}->{cpp_name(cls, prop)}({', '.join(passed)}); }}")


def arguments_row(member, index):
    rows = ", ".join(f"{{{literal(a.name)}, ValueType::{a.type}, {boolean(a.byref)}}}"
                     for a in member.args)
    return f"constexpr Argument Arguments{index}[] = {{{rows}}};"


def member_row(cls, member, index, number):
    operation = hasattr(member, "returns")
    kind = member.returns if operation else member.type
    arguments = f"Arguments{index}" if member.args else "{}"
    get = getter(cls, member) if operation or member.readable else "nullptr"
    let = "nullptr" if operation or not member.writable else letter(cls, member)
    lines = [f"    {{{literal(member.name)}, {literal(member.doc)},",
             f"     {boolean(operation)}, ValueType::{kind}, {arguments},",
             f"     {get},", f"     {let},", f"     {number}{storage(cls, member, operation)}}},"]
    return "\n".join(lines)


def storage(cls, member, operation):
    if operation:
        return ""
    if member.part or member.moved or member.below is not None:
        return ", Storage::ByHand"  # the record of the class tells nothing of it
    text = f", Storage::{'ByHand' if member.by_hand else STORAGE.get(member.kind, 'ByHand')}"
    if member.of_row:
        shown = f"&{cls.rows.name}Record::{member.field.name}" if member.field else "nullptr"
        text += f", {shown}, false, 0, 0, {{}}, true"
        text += f", {literal(member.rows)}" if member.rows else ""
    elif member.field:
        text += f", &{cls.record.name}Record::{member.field.name}"
        if member.clamp:
            text += f", true, {member.clamp[0]}, {member.clamp[1]}"
    elif member.kind == "dead" and not member.by_hand and not isinstance(member.dead, bool):
        text += f", nullptr, false, 0, 0, {literal(str(member.dead))}"
    return text


def automation_source(cls, numbers, path):
    lines = [banner(path), '#include "automation/class_rows.h"',
             f'#include "{cls.subsystem}/{cls.stem}_parts.h"\n', "namespace larkmoor {\n",
             "template <>", f"struct MemberAccess<{cls.name}> {{"]
    if cls.frame:
        lines.append("  static TovrinFile* File(void* object) {\n"
                     f"    return &{object_of(cls)}->parts_->{cls.frame.part}.File();\n  }}")
    else:
        lines.append("  static TovrinFile* File(void*) { return nullptr; }")
    lines += ["};\n", "namespace automation {\nnamespace {\n"]
    lines += [arguments_row(m, i) for i, m in enumerate(cls.members) if m.args]
    lines += ["", "const Member Members[] = {"] if cls.members else [""]
    lines += [member_row(cls, m, i, numbers[cls.name, m.name]) for i, m in enumerate(cls.members)]
    record = f"&{cls.record.name}Record::Describe()" if cls.record else "nullptr"
    members = "Members" if cls.members else "{}"
    lines += (["};\n"] if cls.members else [""]) + [
        "}  // namespace\n", f"const Class& {cls.name}Class() {{",
        f"  static const Class row = ClassRow<{cls.name}>({literal(cls.name)}, "
        f"{literal(cls.subsystem)},", f"      {literal(cls.doc)}, {members}, {record});",
        "  return row;", "}\n", "}  // namespace automation\n}  // namespace larkmoor"]
    return "\n".join(lines) + "\n"


def all_classes_source(classes):
    lines = [banner("the class dictionary"), '#include "automation/automation.h"\n',
             "namespace larkmoor::automation {\n"]
    lines += [f"const Class& {cls.name}Class();" for cls in classes]
    lines += ["", "std::span<const Class* const> Classes() {",
              "  static const Class* const classes[] = {"]
    lines += [f"      &{cls.name}Class()," for cls in classes]
    lines += ["  };", "  return classes;", "}\n", "}  // namespace larkmoor::automation"]
    return "\n".join(lines) + "\n"
