#include "automation/automation.h"

#include "engine/runtime_error.h"
#include "engine/text.h"

namespace larkmoor::automation {
namespace {

constexpr std::int32_t CannotCreateObject = 429;
constexpr std::int32_t NoSuchMember = 438;
constexpr std::int32_t WrongNumberOfArguments = 450;

const Class& ClassNamed(std::string_view name) {
  const Class* found = FindClass(name);
  if (found == nullptr) RaiseRuntimeError(CannotCreateObject);
  return *found;
}

const Member& MemberFor(const Class& type, std::string_view name, bool operation,
                        std::size_t arguments) {
  const Member* member = FindMember(type, name);
  if (member == nullptr || member->isOperation != operation) RaiseRuntimeError(NoSuchMember);
  if (member->arguments.size() != arguments) RaiseRuntimeError(WrongNumberOfArguments);
  return *member;
}

}  // namespace

std::string_view NameOf(ValueType type) {
  static constexpr std::string_view Names[] = {"Integer", "Long",     "Byte",   "Boolean", "Single",
                                               "Double",  "Currency", "String", "Variant", "Date"};
  return Names[static_cast<std::size_t>(type)];
}

std::string_view Member::Access() const {
  if (isOperation) return "-";
  if (get == nullptr) return "w";
  return let == nullptr ? "r" : "rw";
}

const Class* FindClass(std::string_view name) {
  for (const Class* type : Classes()) {
    if (EqualIgnoringCase(type->name, name)) return type;
  }
  return nullptr;
}

const Member* FindMember(const Class& type, std::string_view name) {
  for (const Member& member : type.members) {
    if (EqualIgnoringCase(member.name, name)) return &member;
  }
  return nullptr;
}

Object::Object(std::string_view className) : Object(ClassNamed(className)) {}

Object::Object(const Class& type) : type_(&type), object_(type.make(), type.destroy) {}

TovrinFile* Object::File() const { return type_->file(object_.get()); }

Variant Object::Get(std::string_view property, std::vector<Variant> indexes) const {
  const Member& member = MemberFor(*type_, property, false, indexes.size());
  if (member.get == nullptr) RaiseRuntimeError(NoSuchMember);
  return member.get(object_.get(), indexes);
}

void Object::Let(std::string_view property, const Variant& value, std::vector<Variant> indexes) {
  const Member& member = MemberFor(*type_, property, false, indexes.size());
  if (member.let == nullptr) RaiseRuntimeError(NoSuchMember);
  member.let(object_.get(), indexes, value);
}

Variant Object::Call(std::string_view operation, std::vector<Variant> arguments) {
  return CallByRef(operation, arguments);
}

Variant Object::CallByRef(std::string_view operation, std::vector<Variant>& arguments) {
  const Member& member = MemberFor(*type_, operation, true, arguments.size());
  return member.get(object_.get(), arguments);
}

}  // namespace larkmoor::automation
