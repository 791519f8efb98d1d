// Values as text, the same in every place of the command line: what `list` and `export` show is
// what `import`, `insert`, `set` and `--where` take.
//
// Numbers are independent of the locale, and money has its cents; truth values are "true" and
// "false"; dates are in ISO form, and empty where there is none.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <larkmoor/variant.h>

#include "row_shape.h"

namespace larkmoor::cli {

/// A text does not convert. The message tells why, without saying where.
class ValueError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The shown text of a value.
std::string TextOf(const Variant& value);

/// The value of a text for a property of that type. Blanks around numbers, dates and truth values
/// are passed over; an empty text stands for 0, false and the empty date. Truth values are "true",
/// "yes",
/// "-1", "1" and "false", "no", "0" in any case of letters.
Variant ValueFromText(std::string_view text, automation::ValueType type);

/// What of a text the property's field cannot hold, each as the end of a sentence about the text:
/// all of it where the file's records are too short for the field, as those of an older release may
/// be; a character that Windows-1252 lacks; more bytes than the field has. Empty where nothing is
/// lost.
std::vector<std::string> LossesOf(std::string_view text, const Property& property,
                                  std::size_t recordLength);

/// Whether values of that type stand at the right of a table's column.
bool IsNumber(automation::ValueType type);

}  // namespace larkmoor::cli
