// Comma-separated values: fields between commas, a record a line; a field that holds a comma, a
// quotation mark or a line break stands in quotation marks, with those inside it doubled.
#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace larkmoor::cli {

struct CsvRecord {
  std::int64_t line = 0;  ///< of the record's first character, from 1
  std::vector<std::string> fields;
  std::string problem;  ///< why the record is malformed, or empty
};

/// Reads records from a stream. Lines end with LF, CR LF or CR; empty ones are passed over, and so
/// is a byte order mark at the start. Whatever the stream holds is read without failing.
class CsvReader {
 public:
  explicit CsvReader(std::istream& in);

  /// The next record, nothing at the end.
  std::optional<CsvRecord> Next();

 private:
  void SkipByteOrderMark();
  int Take();
  bool TakeIf(char wanted);
  void SkipEmptyLines();
  bool AtFieldEnd();
  std::string TakePlainField();
  std::string TakeQuotedField(CsvRecord& record);
  bool TakeFieldEnd();

  std::streambuf& in_;
  std::int64_t line_ = 1;
};

/// Writes one record and a line feed.
void WriteCsv(std::ostream& out, const std::vector<std::string>& fields);

}  // namespace larkmoor::cli
