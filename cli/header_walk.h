// The headers of transactions of all journals, by date.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "progress.h"
#include "tables/record_file.h"

namespace larkmoor::cli {

/// Goes through the headers of the connected company that meet a condition, in the order of their
/// dates, and on one day in that of their record numbers. Company files on a medium that can only
/// be read are enough for it.
class HeaderWalk {
 public:
  using Condition = std::function<bool(Tovrin2Record& header)>;

  /// Looks at all headers. Raises a `Failure` with the status where that fails. `output` tells what
  /// comes of the transactions while they are walked.
  HeaderWalk(const Condition& condition, Output output);

  /// Takes the next header in hand; false at the end.
  bool Next();
  [[nodiscard]] Tovrin2Record& Header() { return headers_.Record(); }
  [[nodiscard]] double Release() { return headers_.File().btDataVersion(); }

 private:
  struct Place {
    double date;
    std::int32_t nRecord;
    auto operator<=>(const Place&) const = default;
  };

  void Collect(const Condition& condition);
  bool Find(std::int32_t nRecord);

  RecordFile headers_;
  Progress progress_;
  std::vector<Place> places_;
  std::size_t next_ = 0;
};

/// Opens a further file of the company for reading. Raises a `Failure` where it does not open.
void OpenForReading(RecordFile& file);

/// "transaction 17", for messages.
std::string NameOfTransaction(const Tovrin2Record& header);

}  // namespace larkmoor::cli
