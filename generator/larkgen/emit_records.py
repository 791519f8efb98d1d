"""C++ of the record descriptions."""

from .writer import banner, boolean, comment, literal, number


def field_constant(field):
    counts = f", {field.count}, {field.count2}"
    kind = "Guid" if field.type == "GUID" else field.type
    return (f"  static constexpr Field {field.name}{{{literal(field.name)}, FieldType::{kind}, "
            f"{field.offset}, {field.width}{counts},\n      {literal(field.doc)}}};")


def record_header(record, path):
    fields = [f for f in record.fields if f.type != "Fill"]
    lines = [banner(path), "#pragma once\n", '#include "engine/record_description.h"\n',
             "namespace larkmoor {\n", comment(record.doc), f"struct {record.name}Record {{",
             "  static const RecordDescription& Describe();\n"]
    lines += [field_constant(f) for f in fields]
    lines += ["};\n", "}  // namespace larkmoor"]
    return "\n".join(lines) + "\n"


def key_segments(index, key):
    segments = ", ".join(f"{{store::SegmentType::{s.type}, {s.offset}, {s.width}}}"
                         for s in key.segments)
    return f"constexpr store::KeySegment Segments{index}[] = {{{segments}}};"


def key_row(index, key):
    return (f"    {{{key.number}, {boolean(key.unique)}, {boolean(key.modifiable)}, "
            f"{boolean(key.auto_increment)}, Segments{index}, {number(key.from_release)}, "
            f"{number(key.below)}}},")


def record_source(record, file_name, path):
    name = f"{record.name}Record"
    fields = [f for f in record.fields if f.type != "Fill"]
    lines = [banner(path), f'#include "engine/records/{record.stem}.h"\n']
    if record.base:
        lines.append(f'#include "engine/records/{record.base.stem}.h"\n')
    lines += ["namespace larkmoor {\nnamespace {\n", "constexpr Field Fields[] = {"]
    lines += [f"    {name}::{f.name}," for f in fields] + ["};"]
    if not record.base:
        lines += [key_segments(i, key) for i, key in enumerate(record.keys)]
        lines += ["constexpr RecordKey Keys[] = {"]
        lines += [key_row(i, key) for i, key in enumerate(record.keys)] + ["};"]
        steps = ", ".join(f"{{{number(release)}, {length}}}" for release, length in record.lengths)
        lines += [f"constexpr RecordLength Lengths[] = {{{steps}}};"]
    if record.row:
        lines += [f"constexpr RowMark Mark{{{record.row[0].offset}, {record.row[1]}}};"]
    base = f"{record.base.name}Record::Describe()" if record.base else ""
    shared = (f"{base}.keys, {base}.lengths, &{base}" if base else "Keys, Lengths, nullptr")
    lines += ["\n}  // namespace\n", f"const RecordDescription& {name}::Describe() {{",
              "  static const RecordDescription description{",
              f"      {literal(record.name)}, {literal(record.doc)}, {literal(file_name)}, Fields,",
              f"      {shared}, {'&Mark' if record.row else 'nullptr'}}};", "  return description;",
              "}\n", "}  // namespace larkmoor"]
    return "\n".join(lines) + "\n"


ALL_RECORDS_HEADER = """#pragma once

#include <span>
#include <string_view>

#include "engine/record_description.h"

namespace larkmoor {

/// Every record description, by name.
std::span<const RecordDescription* const> AllRecords();
/// The description of that name in any case of letters, or null.
const RecordDescription* FindRecord(std::string_view name);

}  // namespace larkmoor
"""


def all_records_header(folder):
    return banner(f"{folder}/*.toml") + ALL_RECORDS_HEADER


def all_records_source(records, folder):
    lines = [banner(f"{folder}/*.toml"), '#include "engine/records/all_records.h"\n',
             '#include "engine/text.h"']
    lines += [f'#include "engine/records/{record.stem}.h"' for record in records]
    lines += ["", "namespace larkmoor {\n", "std::span<const RecordDescription* const> AllRecords() {",
              "  static const RecordDescription* const records[] = {"]
    lines += [f"      &{record.name}Record::Describe()," for record in records]
    lines += ["  };", "  return records;", "}\n",
              "const RecordDescription* FindRecord(std::string_view name) {",
              "  for (const RecordDescription* record : AllRecords()) {",
              "    if (EqualIgnoringCase(record->name, name)) return record;", "  }",
              "  return nullptr;", "}\n", "}  // namespace larkmoor"]
    return "\n".join(lines) + "\n"


def file_names_header(names, path):
    lines = [banner(path), "#pragma once\n", "#include <string_view>\n", "namespace larkmoor {\n",
             "/// The bare name of every record file, to be put behind the company path.",
             "struct TovrinFileNames {"]
    lines += [f"  static constexpr std::string_view {operation}() {{ return {literal(name)}; }}"
              for operation, name in names.items()]
    lines += ["};\n", "}  // namespace larkmoor"]
    return "\n".join(lines) + "\n"
