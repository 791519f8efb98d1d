#include "class_rows.h"

#include <algorithm>
#include <string>
#include <vector>

#include "failure.h"
#include "row_mark.h"

namespace larkmoor::cli {
namespace {

using automation::Member;
using automation::Storage;

std::vector<Variant> IndexArguments(const Column& column) {
  return {column.indexes.begin(), column.indexes.end()};
}

bool IsWrittenByHand(const Member& member) {
  return !member.isOperation && member.storage == Storage::ByHand;
}

}  // namespace

ClassRows::ClassRows(const automation::Class& type)
    : object_(type),
      shape_(type.name, PropertiesOf(type)),
      holdsMoreThanItsRecord_(std::ranges::any_of(type.members, IsWrittenByHand)) {
  if (object_.File() == nullptr || !Offers("OpenFile")) {
    throw UsageError(std::string(type.name) + " is a class without a record file");
  }
  Open();
}

void ClassRows::Open() { Require(object_.Call("OpenFile").ToInteger(), Name()); }

/// Whether the class has an operation of that name without arguments.
bool ClassRows::Offers(std::string_view operation) const {
  const Member* member = FindMember(object_.Type(), operation);
  return member != nullptr && member->isOperation && member->arguments.empty();
}

bool ClassRows::IsRow() const {
  return BearsMark(*object_.Type().record, *object_.File()->RecordBuffer());
}

void ClassRows::StartRow() {
  // What a class keeps beside its record starts anew with an open only.
  if (holdsMoreThanItsRecord_) {
    Open();
  } else {
    std::ranges::fill(*File().RecordBuffer(), std::byte{0});
  }
  GiveMark(*object_.Type().record, *File().RecordBuffer());
}

Variant ClassRows::Get(const Column& column) {
  return object_.Get(column.property->name, IndexArguments(column));
}

void ClassRows::Set(const Column& column, const Variant& value) {
  object_.Let(column.property->name, value, IndexArguments(column));
}

Status ClassRows::Insert() {
  return Offers("Insert") ? object_.Call("Insert").ToInteger() : File().btInsert(0);
}

Status ClassRows::Update() {
  return Offers("Update") ? object_.Call("Update").ToInteger() : File().btUpdate(0);
}

Status ClassRows::Delete() {
  return Offers("Delete") ? object_.Call("Delete").ToInteger() : File().btDelete();
}

}  // namespace larkmoor::cli
