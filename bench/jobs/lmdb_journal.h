// Transactions in bare LMDB, as a program would keep them that needs nothing but these two files: a
// tree of headers and a tree of rows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>
#include <vector>

#include "data/record_images.h"
#include "data/transactions.h"
#include "engine/record_description.h"
#include "peers/lmdb_file.h"
#include "support.h"

namespace larkmoor::bench {

class LmdbTransactions {
 public:
  LmdbTransactions(const std::filesystem::path& place, std::int16_t journal, Form form);

  // As those of `LarkmoorJournal`. A walk reads one state of the files from its start to its end.
  Totals Walk();
  Totals Find(const Wanted& wanted);
  void Insert(const Transaction& transaction);
  void Load(std::span<const Transaction> transactions);

 private:
  using RowImage = std::array<std::byte, RowSize>;

  /// Reads the transaction whose header the key cursor stands on.
  void Read(Totals& totals);
  void ReadRows();
  void AddTo(Totals& totals) const;
  void PutHeader(LmdbWrite& write, const Transaction& transaction);
  void PutRows(LmdbWrite& write, const Transaction& transaction);

  std::int16_t journal_;
  const Field& quantity_;
  Folder folder_;
  LmdbFile headers_;
  LmdbFile rows_;
  std::vector<std::byte> header_ = std::vector<std::byte>(HeaderSize);
  std::vector<RowImage> images_;
  std::size_t count_ = 0;  // images in use
};

template <typename Book>
class LmdbJournal : public LmdbTransactions {
 public:
  static constexpr std::string_view Name = "lmdb";
  explicit LmdbJournal(const std::filesystem::path& place)
      : LmdbTransactions(place, Book::Code, Form::Plain) {}
};

template <typename Book>
class PackedLmdbJournal : public LmdbTransactions {
 public:
  static constexpr std::string_view Name = "packed_lmdb";
  explicit PackedLmdbJournal(const std::filesystem::path& place)
      : LmdbTransactions(place, Book::Code, Form::Packed) {}
};

}  // namespace larkmoor::bench
