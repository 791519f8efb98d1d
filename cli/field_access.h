// Fields of a record by their description, whatever their type.
#pragma once

#include <cstdint>
#include <span>

#include <larkmoor/variant.h>

#include "automation/automation.h"
#include "engine/tovrin_record.h"

namespace larkmoor::cli {

/// The type that a field is shown as.
automation::ValueType TypeOf(const Field& field);

/// A field's value. Dates come as they are stored, the empty one as 2.0.
Variant GetField(const Tovrin2Record& record, const Field& field,
                 std::span<const std::int32_t> indexes);

/// Puts a value of the field's own type into it.
void SetField(Tovrin2Record& record, const Field& field, std::span<const std::int32_t> indexes,
              const Variant& value);

}  // namespace larkmoor::cli
