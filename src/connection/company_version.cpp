#include "connection/company_version.h"

#include <charconv>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <istream>
#include <string>
#include <string_view>
#include <system_error>

#include "connection/shared_state.h"
#include "engine/path.h"
#include "engine/text.h"

namespace larkmoor {
namespace {

/// The text up to the first comma or line end. What cannot be read ends it too.
std::string FirstField(std::istream& file) {
  std::string field;
  for (char c; file.get(c) && c != ',' && c != '\r' && c != '\n';) field += c;
  return field;
}

/// The number that a text begins with, after blanks and a sign; 0 where there is none or where it
/// is beyond a double.
double LeadingNumber(std::string_view text) {
  text = TrimBlanks(text);
  // `from_chars` would take words such as "inf" for numbers, and no "+".
  text = text.substr(0, text.find_first_not_of("+-.0123456789eE"));
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

/// The number in the file runs ahead of the release of the data, by a lead that changed twice.
double ReleaseOf(double version) {
  if (version == 0) return 0;
  if (version < 8.6) return version - 4;
  if (version < 9.0) return version - 3.6;
  return version - 3;
}

/// The number in a field: five characters at the end of a field that is marked with an "F",
/// otherwise the whole of it.
double VersionIn(std::string_view field) {
  constexpr std::size_t VersionLength = 5;
  if (field.starts_with('F') && field.size() > VersionLength) {
    field.remove_prefix(field.size() - VersionLength);
  }
  return LeadingNumber(field);
}

}  // namespace

double ReadCompanyVersion() {
  const std::filesystem::path path = ResolvePath(Shared().gCompanyPath + "VERSION.TXT");
  // Of anything else that bears the name an open might wait for ever, as of a pipe.
  std::error_code failed;
  if (!std::filesystem::is_regular_file(path, failed)) return 0;
  std::ifstream file(path, std::ios::binary);
  return ReleaseOf(VersionIn(FirstField(file)));
}

}  // namespace larkmoor
