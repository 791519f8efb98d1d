#include "engine/sequential.h"

#include <charconv>
#include <cstring>
#include <memory>
#include <string_view>

namespace larkmoor {
namespace {

constexpr char EndMark = '\x1A';
constexpr int EndOfStream = std::char_traits<char>::eof();
/// Digits of the longest length that a record could have.
constexpr std::size_t LongestLength = 10;

/// Reads records one by one. A read ends with a record, at the end, or with a problem.
class SequentialReader {
 public:
  enum class Read { Record, End, Problem };

  SequentialReader(std::istream& in, std::size_t recordLength)
      : in_(*in.rdbuf()), recordLength_(recordLength) {}

  /// Reads the next record into `record`, which is of the record length.
  Read Next(RecordBytes& record) {
    if (in_.sgetc() == EndMark) return TakeEndMark() ? Read::End : Read::Problem;
    if (in_.sgetc() == EndOfStream) return Read::End;
    return TakeLength() && TakeBytes(record) && TakeLineEnd() ? Read::Record : Read::Problem;
  }

  [[nodiscard]] const std::string& Problem() const { return problem_; }

 private:
  /// Nothing may follow the mark: whatever does would be lost.
  bool TakeEndMark() {
    in_.sbumpc();
    return in_.sgetc() == EndOfStream || Fail("stands behind the end mark");
  }

  bool TakeLength() {
    std::string digits;
    int c = in_.sbumpc();
    for (; c >= '0' && c <= '9' && digits.size() <= LongestLength; c = in_.sbumpc()) {
      digits += std::char_traits<char>::to_char_type(c);
    }
    std::size_t length = 0;
    const auto [stop, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), length);
    if (c != ',' || error != std::errc()) return Fail("does not start with its length and a comma");
    if (length == recordLength_) return true;
    return Fail("has " + std::to_string(length) + " bytes, the file's records have " +
                std::to_string(recordLength_));
  }

  bool TakeBytes(RecordBytes& record) {
    const auto wanted = static_cast<std::streamsize>(record.size());
    if (in_.sgetn(reinterpret_cast<char*>(record.data()), wanted) == wanted) return true;
    return Fail("is cut short");
  }

  bool TakeLineEnd() {
    if (in_.sgetc() == '\r') in_.sbumpc();
    return in_.sbumpc() == '\n' || Fail("does not end with a line end");
  }

  bool Fail(std::string_view problem) {
    problem_ = problem;
    return false;
  }

  std::streambuf& in_;
  std::size_t recordLength_;
  std::string problem_;
};

std::string OfRecord(std::int64_t number, std::string_view problem) {
  return "record " + std::to_string(number) + " " + std::string(problem);
}

/// The key number that inserts name; they need one that the file has.
std::int16_t AnyKey(const store::FileDescription& description) {
  return description.keys.empty() ? std::int16_t{0} : description.keys.front().number;
}

}  // namespace

SequentialResult SaveSequential(TovrinFile& file, std::optional<std::int16_t> keyNumber,
                                std::ostream& out, const store::Progress& progress) {
  SequentialResult result;
  const std::int64_t total = file.btRecordCount();
  const RecordBufferHandle record = file.RecordBuffer();
  Status status = keyNumber ? file.btGetFirst(*keyNumber) : file.btStepFirst();
  while (status == StatusSuccess) {
    out << record->size() << ',';
    out.write(reinterpret_cast<const char*>(record->data()),
              static_cast<std::streamsize>(record->size()));
    out << "\r\n";
    ++result.records;
    if (!out) {
      result.problem = OfRecord(result.records, "could not be written");
      return result;
    }
    if (progress) progress(result.records, total);
    status = keyNumber ? file.btGetNext(*keyNumber) : file.btStepNext();
  }
  if (status != StatusEndOfFile) result.status = status;
  return result;
}

SequentialResult LoadSequential(TovrinFile& file, std::istream& in,
                                const store::Progress& progress) {
  using Read = SequentialReader::Read;
  SequentialResult result;
  const store::FileDescription* description = file.Description();
  if (description == nullptr) return {.status = StatusFileNotOpen};
  const std::int16_t key = AnyKey(*description);
  const std::unique_ptr<store::Batch> batch = store::DefaultDriver().BeginBatch();
  const RecordBufferHandle record = file.RecordBuffer();
  SequentialReader reader(in, description->recordLength);
  Read read = reader.Next(*record);
  std::int64_t added = 0;
  for (; read == Read::Record; read = reader.Next(*record)) {
    result.status = file.btInsert(key);
    if (result.status != StatusSuccess) {
      result.problem = OfRecord(added + 1, "was refused");
      return result;
    }
    ++added;
    if (progress) progress(added, 0);
  }
  if (read == Read::Problem) {
    result.problem = OfRecord(added + 1, reader.Problem());
    return result;
  }
  result.status = batch->Commit();
  if (result.status == StatusSuccess) result.records = added;
  return result;
}

}  // namespace larkmoor
