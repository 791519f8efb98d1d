#include "field_access.h"

namespace larkmoor::cli {

using automation::ValueType;

namespace {

int IndexAt(std::span<const std::int32_t> indexes, std::size_t place) {
  return place < indexes.size() ? indexes[place] : 0;
}

}  // namespace

ValueType TypeOf(const Field& field) {
  switch (field.type) {
    case FieldType::Byte:
      return ValueType::Byte;
    case FieldType::Boolean:
      return ValueType::Boolean;
    case FieldType::Integer:
      return ValueType::Integer;
    case FieldType::Long:
      return ValueType::Long;
    case FieldType::Single:
      return ValueType::Single;
    case FieldType::Double:
      return ValueType::Double;
    case FieldType::Currency:
      return ValueType::Currency;
    case FieldType::Date:
    case FieldType::Day:
      return ValueType::Date;
    case FieldType::Text:
    case FieldType::Guid:
      break;
  }
  return ValueType::String;
}

Variant GetField(const Tovrin2Record& record, const Field& field,
                 std::span<const std::int32_t> indexes) {
  const int i = IndexAt(indexes, 0);
  const int j = IndexAt(indexes, 1);
  switch (field.type) {
    case FieldType::Byte:
      return record.GetByte(field, i, j);
    case FieldType::Boolean:
      return record.GetBoolean(field, i, j);
    case FieldType::Integer:
      return record.GetInteger(field, i, j);
    case FieldType::Long:
      return record.GetLong(field, i, j);
    case FieldType::Single:
      return record.GetSingle(field, i, j);
    case FieldType::Double:
      return record.GetDouble(field, i, j);
    case FieldType::Currency:
      return record.GetCurrency(field, i, j);
    case FieldType::Date:
    case FieldType::Day:
      return Date(record.GetDate(field, i, j));
    case FieldType::Text:
    case FieldType::Guid:
      break;
  }
  return record.GetText(field, i, j);
}

void SetField(Tovrin2Record& record, const Field& field, std::span<const std::int32_t> indexes,
              const Variant& value) {
  const int i = IndexAt(indexes, 0);
  const int j = IndexAt(indexes, 1);
  switch (field.type) {
    case FieldType::Byte:
      return record.SetByte(field, value.ToByte(), i, j);
    case FieldType::Boolean:
      return record.SetBoolean(field, value.ToBoolean(), i, j);
    case FieldType::Integer:
      return record.SetInteger(field, value.ToInteger(), i, j);
    case FieldType::Long:
      return record.SetLong(field, value.ToLong(), i, j);
    case FieldType::Single:
      return record.SetSingle(field, value.ToSingle(), i, j);
    case FieldType::Double:
      return record.SetDouble(field, value.ToDouble(), i, j);
    case FieldType::Currency:
      return record.SetCurrency(field, value.ToCurrency(), i, j);
    case FieldType::Date:
    case FieldType::Day:
      return record.SetDate(field, value.ToDate().Serial(), i, j);
    case FieldType::Text:
    case FieldType::Guid:
      return record.SetText(field, value.ToText(), i, j);
  }
}

}  // namespace larkmoor::cli
