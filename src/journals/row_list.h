// The rows of a transaction in memory, and which of them the row record shows.
//
// Row numbers count from 1. The list is an array that grows in the steps that clients have come to
// know: a row beyond its capacity that is named comes into being with all rows before it, one
// within the capacity is there blank without counting as a row.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/tovrin_record.h"

namespace larkmoor {

/// Counts of a list of rows. `inHand` is the row that the record shows: 0 where there is nothing to
/// save, -1 after loading.
struct RowCounts {
  std::int32_t inHand = 0;
  std::int32_t capacity = 0;
  std::int32_t loaded = 0;

  /// As loading begins.
  void StartLoading() {
    capacity = Step;
    loaded = 0;
  }
  /// Counts one more row, and takes it in hand.
  void Add() {
    if (++loaded > capacity) capacity += Step;
    inHand = loaded;
  }
  /// Makes room for a row that a client names beyond the capacity.
  void GrowTo(std::int32_t row) { capacity = loaded = row; }

  static constexpr std::int32_t Step = 10;
};

class RowList {
 public:
  /// A row as the row file holds it, byte for byte.
  static constexpr std::size_t ImageSize = 514;

  /// One blank element, no rows.
  void Clear();

  void StartLoading();
  /// Adds the row that the record holds.
  void Load(const Tovrin2Record& record);
  /// The elements behind the rows are blank. No row is in hand: the record holds what the last read
  /// left.
  void EndLoading();

  /// Shows a row in the record, after keeping the one that it showed. Raises error 9 for a row
  /// below 1, with all as it was.
  void ShowRow(std::int16_t row, Tovrin2Record& record);
  /// Keeps the row in hand, if there is one.
  void KeepRowInHand(const Tovrin2Record& record);
  /// Puts the image of row `index`, from 0, into the record.
  void CopyTo(std::int32_t index, Tovrin2Record& record) const;
  /// As after writing the rows: none is in hand.
  void LetGo() { counts_.inHand = 0; }

  /// Keeps the row in hand and takes `row`, which is below 1, for the one in hand.
  void StepAside(std::int16_t row, const Tovrin2Record& record);

  /// Says how many rows there are, making room for them.
  void SetCount(std::int32_t rows);
  /// The same, and counts what is beyond the capacity as room that is not there: the next row that
  /// is named beyond it cuts the list there.
  void SetCountWithinCapacity(std::int32_t rows);

  [[nodiscard]] const RowCounts& Counts() const { return counts_; }

 private:
  using Image = std::array<std::byte, ImageSize>;

  void Resize(std::int32_t last);

  std::vector<Image> images_ = std::vector<Image>(1);
  /// All elements from here on are blank, so that a walk does not blank the same ones at every
  /// load.
  std::size_t blankFrom_ = 0;
  RowCounts counts_;
};

}  // namespace larkmoor
