#include "records/sqlite_store.h"

#include <algorithm>

#include "data/record_images.h"

namespace larkmoor::bench {
namespace {

/// Whether the field is a column of the table.
bool IsColumn(const Field& field) { return field.count == 0; }

std::string_view TypeOf(FieldType type) {
  switch (type) {
    case FieldType::Single:
    case FieldType::Double:
    case FieldType::Date:
      return "REAL NOT NULL";
    case FieldType::Text:
      return "TEXT NOT NULL";
    case FieldType::Guid:
      return "BLOB";
    default:
      return "INTEGER NOT NULL";
  }
}

std::string NamesOf(const store::KeyDescription& key, const RecordDescription& record) {
  std::string names;
  for (const store::KeySegment& segment : key.segments) {
    const auto field = std::ranges::find(record.fields, segment.offset, &Field::offset);
    if (!names.empty()) names += ", ";
    names += field->name;
  }
  return names;
}

/// The same columns, each the other way round.
std::string Descending(std::string columns) {
  for (std::size_t place = 0; (place = columns.find(", ", place)) != std::string::npos;) {
    columns.insert(place, " DESC");
    place += std::string_view(" DESC, ").size();
  }
  return columns + " DESC";
}

std::string PlacesFor(const RecordDescription& record) {
  std::string places;
  for (const Field& field : record.fields) {
    if (IsColumn(field)) places += ", ?";
  }
  return places;
}

/// What is not there is no value.
void BindGuid(Statement& insert, int place, std::span<const std::byte> guid) {
  const bool isBlank =
      std::ranges::all_of(guid, [](std::byte byte) { return byte == std::byte{}; });
  isBlank ? insert.BindNull(place) : insert.Bind(place, guid);
}

void BindField(Statement& insert, int place, const Field& field, std::span<const std::byte> image) {
  switch (field.type) {
    case FieldType::Byte:
      return insert.Bind(place, std::int32_t{GetField<std::uint8_t>(image, field)});
    case FieldType::Boolean:
    case FieldType::Integer:
      return insert.Bind(place, std::int32_t{GetField<std::int16_t>(image, field)});
    case FieldType::Long:
    case FieldType::Day:
      return insert.Bind(place, GetField<std::int32_t>(image, field));
    case FieldType::Currency:
      return insert.Bind(place, GetField<std::int64_t>(image, field));
    case FieldType::Single:
      return insert.Bind(place, double{GetField<float>(image, field)});
    case FieldType::Double:
    case FieldType::Date:
      return insert.Bind(place, GetField<double>(image, field));
    case FieldType::Text:
      return insert.Bind(place, GetTextField(image, field));
    case FieldType::Guid:
      return BindGuid(insert, place, image.subspan(field.offset, field.width));
  }
}

}  // namespace

std::string SqliteTable::Schema(double release) const {
  std::string columns = "place INTEGER PRIMARY KEY";
  for (const Field& field : record.fields) {
    if (!IsColumn(field)) continue;
    columns += ", " + std::string(field.name) + " " + std::string(TypeOf(field.type));
  }
  std::string schema = "CREATE TABLE record (" + columns + ");";
  for (const store::KeyDescription& key : record.FileFor(release).keys) {
    schema += key.unique ? "CREATE UNIQUE INDEX key" : "CREATE INDEX key";
    schema += std::to_string(key.number) + " ON record (" + NamesOf(key, record) + ");";
  }
  return schema;
}

std::string SqliteTable::TextOf(Query query) const {
  const std::string path = std::string(walkColumns) + ", place";
  const std::string back = Descending(path);
  const std::string select = "SELECT place, NRecord, Amount, " + std::string(account) + ", " +
                             std::string(walkColumns) + " FROM record";
  const std::string here = "(" + path + ") ";
  switch (query) {
    case Query::Find:
      return select + " WHERE " + std::string(findCondition) + " ORDER BY place LIMIT 1";
    case Query::First:
      return select + " ORDER BY " + path + " LIMIT 1";
    case Query::Last:
      return select + " ORDER BY " + back + " LIMIT 1";
    case Query::StepFirst:
      return select + " ORDER BY place LIMIT 1";
    case Query::Next:
      return select + " WHERE " + here + "> (?, ?, ?, ?) ORDER BY " + path + " LIMIT 1";
    case Query::Previous:
      return select + " WHERE " + here + "< (?, ?, ?, ?) ORDER BY " + back + " LIMIT 1";
    case Query::StepNext:
      return select + " WHERE place > ? ORDER BY place LIMIT 1";
    case Query::WalkNext:
      return select + " ORDER BY " + path;
    case Query::WalkPrevious:
      return select + " ORDER BY " + back;
    case Query::WalkStep:
      return select + " ORDER BY place";
    case Query::Count:
      return "SELECT count(*) FROM record";
    case Query::Percentage:
      return "SELECT 100.0 * (SELECT count(*) FROM record WHERE " + here +
             "< (?, ?, ?, ?)) / (SELECT count(*) - 1 FROM record)";
    case Query::FindByPercentage:
      return select + " ORDER BY " + path +
             " LIMIT 1 OFFSET CAST(round(? / 100 * (SELECT count(*) - 1 FROM record)) AS INTEGER)";
    case Query::Insert:
      return "INSERT INTO record VALUES (NULL" + PlacesFor(record) + ")";
    case Query::SetAmount:
      return "UPDATE record SET Amount = ? WHERE place = ?";
    case Query::SetKey:
      return "UPDATE record SET " + std::string(keyField) + " = ? WHERE place = ?";
    case Query::Delete:
      return "DELETE FROM record WHERE place = ?";
    case Query::KeepFirst:
      return "DELETE FROM record WHERE place > ?";
    case Query::Size:
      break;
  }
  return {};
}

void BindFields(Statement& insert, const RecordDescription& record,
                std::span<const std::byte> image) {
  int place = 0;
  for (const Field& field : record.fields) {
    if (IsColumn(field)) BindField(insert, ++place, field, image);
  }
}

}  // namespace larkmoor::bench
