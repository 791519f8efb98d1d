#include "engine/runtime_error.h"

#include <string>

#include <gtest/gtest.h>

#include <larkmoor/error.h>

namespace larkmoor {
namespace {

Error Raised(std::int32_t number) {
  try {
    RaiseRuntimeError(number);
  } catch (const Error& error) {
    return error;
  }
}

TEST(RuntimeError, HasItsClassicNumberAndText) {
  const std::pair<std::int32_t, std::string> texts[] = {
      {5, "Invalid procedure call or argument"},
      {6, "Overflow"},
      {9, "Subscript out of range"},
      {13, "Type mismatch"},
      {28, "Out of stack space"},
      {94, "Invalid use of Null"},
      {429, "ActiveX component can't create object"},
      {438, "Object doesn't support this property or method"},
      {450, "Wrong number of arguments or invalid property assignment"},
  };
  for (const auto& [number, text] : texts) {
    EXPECT_EQ(Raised(number).Number(), number);
    EXPECT_EQ(Raised(number).Description(), text);
  }
}

TEST(RuntimeError, ComesFromTheLibraryAndCarriesNoBtrieveStatus) {
  const Error error = Raised(errors::OutOfStackSpace);
  EXPECT_EQ(error.Source(), "Larkmoor");
  EXPECT_EQ(error.BtrieveStatus(), StatusSuccess);
  EXPECT_STREQ(error.what(), "Out of stack space");
}

}  // namespace
}  // namespace larkmoor
