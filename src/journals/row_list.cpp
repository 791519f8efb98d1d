#include "journals/row_list.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "engine/runtime_error.h"

namespace larkmoor {
namespace {

constexpr std::int32_t OutOfMemory = 7;
constexpr std::int32_t SubscriptOutOfRange = 9;

}  // namespace

void RowList::Clear() {
  images_.assign(1, Image{});
  counts_ = {};
}

void RowList::StartLoading() {
  counts_.StartLoading();
  images_.clear();
  Resize(counts_.capacity);
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
  if (row < 1) RaiseRuntimeError(SubscriptOutOfRange);
  CopyTo(row - 1, record);
  counts_.inHand = row;
}

void RowList::KeepRowInHand(const Tovrin2Record& record) {
  if (counts_.inHand <= 0) return;
  const RecordBytes& bytes = record.Bytes();
  std::memcpy(images_[static_cast<std::size_t>(counts_.inHand - 1)].data(), bytes.data(),
              std::min(bytes.size(), ImageSize));
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
  RaiseRuntimeError(OutOfMemory);
}

}  // namespace larkmoor
