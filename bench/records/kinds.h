// The two kinds of records that stores are measured with: the headers of invoices, 5,670 bytes
// each, and their rows, 514 bytes each. Fields, lengths and keys are the dictionary's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/record_images.h"
#include "engine/record_description.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_record.h"
#include "peers/lmdb_file.h"
#include "peers/sqlite.h"
#include "support.h"

namespace larkmoor::bench {

/// The release whose keys the files have.
inline constexpr double DataRelease = 19;

/// What is looked at of a record that was read, and what it is told by.
struct Seen {
  std::int32_t transaction = 0;
  double amount = 0;
  std::int32_t account = 0;

  bool operator==(const Seen&) const = default;
};

/// What a record is looked for by.
struct Probe {
  std::int32_t transaction = 0;
  std::string reference;
};

/// What is looked for, and what is found.
struct Sought {
  Probe probe;
  Seen seen;
};

/// Invoices have their numbers in the order in which they were entered.
struct Headers {
  using Record = JrnlHdrRecord;
  static constexpr std::string_view Name = "header";
  static constexpr std::int32_t InTransaction = 1;
  static constexpr const Field& Account = Record::MainAccountIndex;

  /// Found by the invoice's number, walked by period and number.
  static constexpr std::int16_t FindKey = 4;
  static constexpr std::int16_t WalkKey = 7;
  static void WriteKey(TovrinFile& file, const Probe& probe) {
    file.KeyTerminated(probe.reference, 0);
  }
  static LmdbKey PathOf(const Probe& probe) {
    return LmdbKey::OfPath(FindKey).Text(probe.reference);
  }
  static constexpr std::string_view FindCondition = "Reference = ?";
  static constexpr std::string_view WalkColumns = "JournalID, Period, Reference";
  using LastWalkSegment = std::string;
  static void Ask(Statement& find, const Probe& probe) { find.Start(probe.reference); }

  /// A field of three keys, and what it is changed to.
  static constexpr const Field& KeyField = Record::Reference;
  static std::string OtherKey(const Probe& probe) { return "X" + probe.reference; }
  static Sought Moved(const Sought& from) {
    Sought moved = from;
    moved.probe.reference = OtherKey(from.probe);
    return moved;
  }

  static void Fill(std::span<std::byte> image, const Transaction& from, std::int32_t) {
    FillHeader(image, Sales::Code, from);
  }
};

/// Five of each invoice.
struct Rows {
  using Record = JrnlRowRecord;
  static constexpr std::string_view Name = "row";
  static constexpr std::int32_t InTransaction = 5;
  static constexpr const Field& Account = Record::AccountIndex;

  /// The first one of an invoice is found by the header's number; the walk goes by account and day.
  static constexpr std::int16_t FindKey = 1;
  static constexpr std::int16_t WalkKey = 2;
  static void WriteKey(TovrinFile& file, const Probe& probe) {
    file.KeyLong(probe.transaction, 0);
    file.KeyWord(0, 4);
  }
  static LmdbKey PathOf(const Probe& probe) {
    return LmdbKey::OfPath(FindKey).Long(probe.transaction).Integer(0);
  }
  static constexpr std::string_view FindCondition = "NRecord = ? AND RowOrder = 0";
  static constexpr std::string_view WalkColumns = "AccountIndex, TrxDate, NRecord";
  using LastWalkSegment = std::int32_t;
  static void Ask(Statement& find, const Probe& probe) { find.Start(probe.transaction); }

  /// A field of one key, and what it is changed to.
  static constexpr const Field& KeyField = Record::AccountIndex;
  static std::int32_t OtherKey(const Probe&) { return Wages; }
  static Sought Moved(const Sought& from) {
    Sought moved = from;
    moved.seen.account = OtherKey(from.probe);
    return moved;
  }

  static void Fill(std::span<std::byte> image, const Transaction& from, std::int32_t row) {
    FillRow(image, Sales::Code, from, from.lines[static_cast<std::size_t>(row)],
            static_cast<std::int16_t>(row + 1));
  }
};

/// Calls `work` with the kind of that name.
template <typename Work>
void WithKind(std::string_view name, Work work) {
  if (name == Headers::Name) return work(Headers{});
  Check(name == Rows::Name, "kind of records");
  work(Rows{});
}

template <typename Kind>
store::FileDescription FileOf() {
  return Kind::Record::Describe().FileFor(DataRelease);
}

/// What is looked at of a record that a file has in hand.
template <typename Kind>
Seen See(const Tovrin2Record& record) {
  return {record.GetLong(Kind::Record::NRecord), record.GetDouble(Kind::Record::Amount),
          record.GetLong(Kind::Account)};
}

/// The same of a record's bytes.
template <typename Kind>
Seen See(std::span<const std::byte> image) {
  return {GetField<std::int32_t>(image, Kind::Record::NRecord),
          GetField<double>(image, Kind::Record::Amount),
          GetField<std::int32_t>(image, Kind::Account)};
}

/// Records one behind the other.
class Images {
 public:
  Images(std::size_t length, std::int32_t count)
      : length_(length), bytes_(length * static_cast<std::size_t>(count)) {}

  [[nodiscard]] std::size_t Count() const { return bytes_.size() / length_; }
  [[nodiscard]] std::span<std::byte> operator[](std::size_t place) {
    return std::span(bytes_).subspan(place * length_, length_);
  }
  [[nodiscard]] std::span<const std::byte> operator[](std::size_t place) const {
    return std::span(bytes_).subspan(place * length_, length_);
  }

 private:
  std::size_t length_;
  std::vector<std::byte> bytes_;
};

/// The records of a number of transactions, always the same ones.
template <typename Kind>
Images ImagesOf(std::int32_t firstTransaction, std::int32_t transactions) {
  Images images(FileOf<Kind>().recordLength, transactions * Kind::InTransaction);
  std::size_t place = 0;
  for (std::int32_t i = 0; i < transactions; ++i) {
    const Transaction from = Sales::Of(firstTransaction + i);
    for (std::int32_t row = 0; row < Kind::InTransaction; ++row) {
      Kind::Fill(images[place++], from, row);
    }
  }
  return images;
}

inline Probe ProbeOf(std::int32_t transaction) {
  return {transaction, Sales::Of(transaction).reference};
}

}  // namespace larkmoor::bench
