// The fields of records by value, whatever their types, for tests that go over a table of them.
#pragma once

#include <larkmoor/date.h>
#include <larkmoor/variant.h>

#include "engine/record_description.h"
#include "engine/tovrin_record.h"

namespace larkmoor::test {

/// Puts a value into a field.
inline void SetValue(Tovrin2Record& record, const Field& field, const Variant& value, int index = 0,
                     int index2 = 0) {
  switch (field.type) {
    case FieldType::Byte:
      return record.SetByte(field, value.ToByte(), index, index2);
    case FieldType::Boolean:
      return record.SetBoolean(field, value.ToBoolean(), index, index2);
    case FieldType::Integer:
      return record.SetInteger(field, value.ToInteger(), index, index2);
    case FieldType::Long:
      return record.SetLong(field, value.ToLong(), index, index2);
    case FieldType::Single:
      return record.SetSingle(field, value.ToSingle(), index, index2);
    case FieldType::Double:
      return record.SetDouble(field, value.ToDouble(), index, index2);
    case FieldType::Currency:
      return record.SetCurrency(field, value.ToCurrency(), index, index2);
    case FieldType::Date:
    case FieldType::Day:
      return record.SetDate(field, value.ToDate().Serial(), index, index2);
    case FieldType::Text:
    case FieldType::Guid:
      return record.SetText(field, value.ToText(), index, index2);
  }
}

/// What a field holds.
inline Variant ValueOf(const Tovrin2Record& record, const Field& field, int index = 0,
                       int index2 = 0) {
  switch (field.type) {
    case FieldType::Byte:
      return record.GetByte(field, index, index2);
    case FieldType::Boolean:
      return record.GetBoolean(field, index, index2);
    case FieldType::Integer:
      return record.GetInteger(field, index, index2);
    case FieldType::Long:
      return record.GetLong(field, index, index2);
    case FieldType::Single:
      return record.GetSingle(field, index, index2);
    case FieldType::Double:
      return record.GetDouble(field, index, index2);
    case FieldType::Currency:
      return record.GetCurrency(field, index, index2);
    case FieldType::Date:
    case FieldType::Day:
      return Date(record.GetDate(field, index, index2));
    case FieldType::Text:
    case FieldType::Guid:
      break;
  }
  return record.GetText(field, index, index2);
}

}  // namespace larkmoor::test
