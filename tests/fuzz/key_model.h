// What a record file holds and where searches end, told by a plain list of records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "engine/store/driver.h"
#include "support/sample_files.h"

namespace larkmoor::fuzz {

/// The records of a file in physical order.
class KeyModel {
 public:
  explicit KeyModel(store::FileDescription description) : description_(std::move(description)) {}

  [[nodiscard]] const store::FileDescription& Description() const { return description_; }
  [[nodiscard]] std::vector<test::Bytes>& Records() { return records_; }

  /// Places in `Records()` along a key, duplicates in physical order.
  [[nodiscard]] std::vector<std::size_t> PathOf(const store::KeyDescription& key) const;
  /// The place along `path` where a search ends; nothing where it finds none.
  [[nodiscard]] std::optional<std::size_t> Find(store::Seek seek, const store::KeyDescription& key,
                                                const std::vector<std::size_t>& path,
                                                std::span<const std::byte> keyBuffer) const;
  /// Whether a record other than the one at `except` has the number of `record`, which is unique.
  [[nodiscard]] bool HasNumberOf(std::span<const std::byte> record,
                                 std::optional<std::size_t> except = {}) const;
  /// What the next record without a number of its own is given.
  [[nodiscard]] std::int32_t NextNumber() const;

 private:
  [[nodiscard]] std::int32_t NumberAt(std::size_t place) const;

  store::FileDescription description_;
  std::vector<test::Bytes> records_;
};

}  // namespace larkmoor::fuzz
