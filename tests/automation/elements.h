// What the classes store, value by value: every property, and of a repeating one every index.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <span>
#include <vector>

#include <larkmoor/variant.h>

#include "automation/automation.h"
#include "engine/record_description.h"
#include "engine/tovrin_file.h"

namespace larkmoor::test {

using Indexes = std::vector<std::int16_t>;

/// A stored property; of a repeating one, the value at one index.
struct Element {
  const automation::Class* type;
  const automation::Member* member;
  Indexes indexes;

  [[nodiscard]] const Field& StoredIn() const { return *member->field; }

  /// Where its bytes start in the record.
  [[nodiscard]] std::size_t Place() const {
    const Field& field = StoredIn();
    const std::size_t row = IndexMeant(0) * std::max<std::size_t>(field.count2, 1);
    return field.offset + (row + IndexMeant(1)) * field.width;
  }

  [[nodiscard]] bool LiesIn(const RecordBytes& record) const {
    return Place() + StoredIn().width <= record.size();
  }
  /// Its bytes, or none where the record ends before them.
  [[nodiscard]] std::span<std::byte> BytesIn(RecordBytes& record) const {
    if (!LiesIn(record)) return {};
    return std::span(record).subspan(Place(), StoredIn().width);
  }

  [[nodiscard]] Variant Get(const automation::Object& object) const {
    return object.Get(member->name, {indexes.begin(), indexes.end()});
  }
  void Let(automation::Object& object, const Variant& value) const {
    object.Let(member->name, value, {indexes.begin(), indexes.end()});
  }

 private:
  [[nodiscard]] std::size_t IndexMeant(std::size_t i) const {
    if (i >= indexes.size()) return 0;
    if (!member->clamps) return static_cast<std::size_t>(indexes[i]);
    return static_cast<std::size_t>(std::clamp(indexes[i], member->clampLow, member->clampHigh));
  }
};

/// "Budget.Amount(3)".
inline std::ostream& operator<<(std::ostream& out, const Element& element) {
  out << element.type->name << '.' << element.member->name;
  for (std::size_t i = 0; i < element.indexes.size(); ++i) {
    out << (i == 0 ? "(" : ", ") << element.indexes[i];
  }
  return element.indexes.empty() ? out : out << ')';
}

/// Whether a property shows a field as it is, or under the rules for dates.
inline bool ShowsField(const automation::Member& member) {
  return (member.storage == automation::Storage::Field ||
          member.storage == automation::Storage::Date) &&
         member.get != nullptr && member.let != nullptr;
}

/// Whether the class's own record has the field.
inline bool IsStored(const automation::Member& member) {
  return ShowsField(member) && !member.ofRow;
}

/// The indexes from `first` to `last`.
struct IndexRange {
  std::int16_t first;
  std::int16_t last;
};

/// The range of each index of a stored property.
inline std::vector<IndexRange> RangesOf(const automation::Member& member) {
  if (member.clamps) return {{member.clampLow, member.clampHigh}};
  std::vector<IndexRange> ranges;
  for (const std::uint16_t count : {member.field->count, member.field->count2}) {
    if (count > 0) ranges.push_back({0, static_cast<std::int16_t>(count - 1)});
  }
  return ranges;
}

enum class Which { All, FirstAndLast };

/// Appends a property's values whose indexes begin with `begin`.
inline void AppendElements(const automation::Class& type, const automation::Member& member,
                           Which which, const Indexes& begin, std::vector<Element>& elements) {
  const std::vector<IndexRange> ranges = RangesOf(member);
  if (begin.size() == ranges.size()) {
    elements.push_back({&type, &member, begin});
    return;
  }
  const auto [first, last] = ranges[begin.size()];
  const int step = which == Which::All ? 1 : std::max(last - first, 1);
  for (int index = first; index <= last; index += step) {
    Indexes longer = begin;
    longer.push_back(static_cast<std::int16_t>(index));
    AppendElements(type, member, which, longer, elements);
  }
}

/// The values that a class stores: all, or of repeating properties the first and the last.
inline std::vector<Element> ElementsOf(const automation::Class& type, Which which) {
  std::vector<Element> elements;
  for (const automation::Member& member : type.members) {
    if (IsStored(member)) AppendElements(type, member, which, {}, elements);
  }
  return elements;
}

}  // namespace larkmoor::test
