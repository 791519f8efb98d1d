#include "csv.h"

namespace larkmoor::cli {
namespace {

constexpr int End = std::char_traits<char>::eof();
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

void WriteField(std::ostream& out, std::string_view field) {
  if (field.find_first_of(",\"\r\n") == std::string_view::npos) {
    out << field;
    return;
  }
  out << '"';
  for (const char c : field) {
    if (c == '"') out << '"';
    out << c;
  }
  out << '"';
}

}  // namespace

CsvReader::CsvReader(std::istream& in) : in_(*in.rdbuf()) { SkipByteOrderMark(); }

/// A character that only begins like the mark stays.
void CsvReader::SkipByteOrderMark() {
  std::size_t taken = 0;
  while (taken < ByteOrderMark.size() && TakeIf(ByteOrderMark[taken])) ++taken;
  if (taken == ByteOrderMark.size()) return;
  for (; taken > 0; --taken) in_.sungetc();
}

/// The next character, line breaks of all kinds as a line feed.
int CsvReader::Take() {
  int c = in_.sbumpc();
  if (c == '\r') {
    if (in_.sgetc() == '\n') in_.sbumpc();
    c = '\n';
  }
  if (c == '\n') ++line_;
  return c;
}

bool CsvReader::TakeIf(char wanted) {
  if (in_.sgetc() != std::char_traits<char>::to_int_type(wanted)) return false;
  Take();
  return true;
}

void CsvReader::SkipEmptyLines() {
  while (TakeIf('\n') || TakeIf('\r')) {
  }
}

bool CsvReader::AtFieldEnd() {
  const int c = in_.sgetc();
  return c == ',' || c == '\n' || c == '\r' || c == End;
}

std::string CsvReader::TakePlainField() {
  std::string field;
  while (!AtFieldEnd()) field += std::char_traits<char>::to_char_type(Take());
  return field;
}

/// The field behind an opening quotation mark. Line breaks within it stay as they are.
std::string CsvReader::TakeQuotedField(CsvRecord& record) {
  std::string field;
  while (true) {
    const int c = in_.sbumpc();
    if (c == End) {
      record.problem = "the quotation mark is never closed";
      return field;
    }
    if (c == '"' && !TakeIf('"')) break;
    if (c == '\n' || (c == '\r' && in_.sgetc() != '\n')) ++line_;
    field += std::char_traits<char>::to_char_type(c);
  }
  if (!AtFieldEnd()) record.problem = "text behind a closing quotation mark";
  return field + TakePlainField();
}

/// Whether another field follows in the record.
bool CsvReader::TakeFieldEnd() { return Take() == ','; }

std::optional<CsvRecord> CsvReader::Next() {
  SkipEmptyLines();
  if (in_.sgetc() == End) return std::nullopt;
  CsvRecord record;
  record.line = line_;
  do {
    record.fields.push_back(TakeIf('"') ? TakeQuotedField(record) : TakePlainField());
  } while (TakeFieldEnd());
  return record;
}

void WriteCsv(std::ostream& out, const std::vector<std::string>& fields) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) out << ',';
    WriteField(out, fields[i]);
  }
  // A line without any character would be passed over by a reader.
  if (fields.size() == 1 && fields.front().empty()) out << "\"\"";
  out << '\n';
}

}  // namespace larkmoor::cli
