#include "engine/runtime_error.h"

#include <larkmoor/error.h>

namespace larkmoor {
namespace {

const char* TextOf(std::int32_t number) {
  switch (number) {
    case errors::InvalidCall:
      return "Invalid procedure call or argument";
    case errors::Overflow:
      return "Overflow";
    case errors::OutOfMemory:
      return "Out of memory";
    case errors::SubscriptOutOfRange:
      return "Subscript out of range";
    case errors::TypeMismatch:
      return "Type mismatch";
    case errors::OutOfStackSpace:
      return "Out of stack space";
    case errors::InvalidUseOfNull:
      return "Invalid use of Null";
    case errors::CannotCreateObject:
      return "ActiveX component can't create object";
    case errors::NoSuchMember:
      return "Object doesn't support this property or method";
    case errors::WrongArguments:
      return "Wrong number of arguments or invalid property assignment";
    default:
      return "Application-defined or object-defined error";
  }
}

}  // namespace

void RaiseRuntimeError(std::int32_t number) { throw Error(number, "Larkmoor", TextOf(number)); }

}  // namespace larkmoor
