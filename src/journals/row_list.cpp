#include "journals/row_list.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "engine/runtime_error.h"

namespace larkmoor {
void RowList::Clear() {
  images_.assign(1, Image{});
  blankFrom_ = 0;
  counts_ = {};
}

void RowList::StartLoading() {
  counts_.StartLoading();
  Resize(counts_.capacity);
}

void RowList::EndLoading() {
  const auto rows = static_cast<std::size_t>(counts_.loaded);
  const std::size_t end = std::min(blankFrom_, images_.size());
  for (std::size_t i = rows; i < end; ++i) images_[i] = {};
  blankFrom_ = rows;
  counts_.inHand = -1;
}

void RowList::Load(const Tovrin2Record& record) {
  const std::int32_t capacity = counts_.capacity;
  counts_.Add();
  if (counts_.capacity > capacity) Resize(counts_.capacity - 1);
  KeepRowInHand(record);
}

void RowList::ShowRow(std::int16_t row, Tovrin2Record& record) {
  if (row == counts_.inHand) return;
  if (row > counts_.capacity) {
    Resize(row);
    counts_.GrowTo(row);
  }
  KeepRowInHand(record);
  if (row < 1) RaiseRuntimeError(errors::SubscriptOutOfRange);
  CopyTo(row - 1, record);
  counts_.inHand = row;
}

void RowList::KeepRowInHand(const Tovrin2Record& record) {
  if (counts_.inHand <= 0) return;
  const auto row = static_cast<std::size_t>(counts_.inHand);
  const RecordBytes& bytes = record.Bytes();
  std::memcpy(images_[row - 1].data(), bytes.data(), std::min(bytes.size(), ImageSize));
  blankFrom_ = std::max(blankFrom_, row);
}

void RowList::CopyTo(std::int32_t index, Tovrin2Record& record) const {
  RecordBytes& bytes = record.Bytes();
  std::memcpy(bytes.data(), images_[static_cast<std::size_t>(index)].data(),
              std::min(bytes.size(), ImageSize));
}

void RowList::StepAside(std::int16_t row, const Tovrin2Record& record) {
  KeepRowInHand(record);
  counts_.inHand = row;
}

void RowList::SetCount(std::int32_t rows) {
  const std::int32_t capacity = std::max(rows, counts_.capacity);
  SetCountWithinCapacity(rows);
  counts_.capacity = capacity;
}

void RowList::SetCountWithinCapacity(std::int32_t rows) {
  if (rows > counts_.capacity) Resize(rows);
  counts_.loaded = rows;
}

void RowList::Resize(std::int32_t last) try {
  images_.resize(static_cast<std::size_t>(last) + 1);
} catch (const std::bad_alloc&) {
  RaiseRuntimeError(errors::OutOfMemory);
}

}  // namespace larkmoor
