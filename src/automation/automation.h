// Every public class and member by name at run time.
//
// The rows are generated from the class dictionary; this is what the command line, the COM server
// and the Python module stand on.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include <larkmoor/variant.h>

#include "engine/record_description.h"

namespace larkmoor {
class TovrinFile;
}

namespace larkmoor::automation {

/// The interface types. A status is an Integer.
enum class ValueType : std::uint8_t {
  Integer,
  Long,
  Byte,
  Boolean,
  Single,
  Double,
  Currency,
  String,
  Variant,
  Date
};

/// "Integer", "Long" and so on.
std::string_view NameOf(ValueType type);

struct Argument {
  std::string_view name;
  ValueType type;
  bool byref = false;
};

/// What stands behind a property.
enum class Storage : std::uint8_t {
  Field,   ///< the record's field, as it is
  Date,    ///< the record's field under the rules for dates and Null
  Dead,    ///< nothing: reads `deadText`, drops writes
  ByHand,  ///< code of the class's own, for one direction or both
};

/// Calls a member on an object of its class. `arguments` holds the indexes or the operation's
/// arguments, already as many as the member takes; a byref argument is written back into it.
using Getter = Variant (*)(void* object, std::span<Variant> arguments);
using Letter = void (*)(void* object, std::span<Variant> arguments, const Variant& value);

struct Member {
  std::string_view name;
  std::string_view doc;
  bool isOperation;
  ValueType type;  ///< what the operation returns, or the property's type
  std::span<const Argument> arguments;
  Getter get;           ///< calls an operation; null for a write-only property
  Letter let;           ///< null for operations and read-only properties
  std::int32_t number;  ///< permanent, for automation clients
  Storage storage = Storage::ByHand;
  /// The field behind the property, or null. Of a property that is written by hand it is known
  /// where the other direction shows the field as it is.
  const Field* field = nullptr;
  /// Set where the index is brought into this range first.
  bool clamps = false;
  std::int16_t clampLow = 0;
  std::int16_t clampHigh = 0;
  /// What a dead property reads.
  std::string_view deadText = {};
  /// Set where the property belongs to one row of a transaction: its index is the number of the
  /// row, from 1, and `field` one of the row's record.
  bool ofRow = false;
  /// Which of a transaction's lists the row is in, where it has several: "pay" or "job".
  std::string_view rowList = {};

  /// "rw", "r" or "w"; "-" for operations.
  [[nodiscard]] std::string_view Access() const;
};

struct Class {
  std::string_view name;
  std::string_view subsystem;
  std::string_view doc;
  std::span<const Member> members;  ///< operations in interface order, then properties by name
  void* (*make)();
  void (*destroy)(void* object);
  /// The object's own record file, or null for a class without one. Positions taken on it are
  /// positions of the object.
  TovrinFile* (*file)(void* object);
  /// The record behind the properties, or null.
  const RecordDescription* record;
};

/// All public classes, by name.
std::span<const Class* const> Classes();
/// The class of that name in any case of letters, or null.
const Class* FindClass(std::string_view name);
/// The member of that name in any case of letters, or null.
const Member* FindMember(const Class& type, std::string_view name);

/// An object of a class chosen at run time.
class Object {
 public:
  /// Makes an object. Raises error 429 where there is no class of that name.
  explicit Object(std::string_view className);
  explicit Object(const Class& type);

  [[nodiscard]] const Class& Type() const { return *type_; }
  /// The object's own record file, or null.
  [[nodiscard]] TovrinFile* File() const;

  // Each raises error 438 ("Object doesn't support this property or method") for a name that the
  // class does not have or has not for this use, 450 for a wrong number of arguments, and what the
  // conversions of the arguments and the member itself raise.
  Variant Get(std::string_view property, std::vector<Variant> indexes = {}) const;
  void Let(std::string_view property, const Variant& value, std::vector<Variant> indexes = {});
  Variant Call(std::string_view operation, std::vector<Variant> arguments = {});
  /// The same with byref arguments written back.
  Variant CallByRef(std::string_view operation, std::vector<Variant>& arguments);

 private:
  const Class* type_;
  std::unique_ptr<void, void (*)(void*)> object_;
};

}  // namespace larkmoor::automation
