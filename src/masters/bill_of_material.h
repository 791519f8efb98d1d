// The components of an assembly, as the newest revision of its bill of material tells them.
#pragma once

#include <cstdint>

#include "tables/table_frame.h"

namespace larkmoor {

/// Belongs to one item object and reads that object's record. The revisions are read once for the
/// record in hand. Where the user is refused, or the file does not open, there are no components.
class BillOfMaterial {
 public:
  explicit BillOfMaterial(TableFrame& items);

  std::int16_t Count();
  // Of a component, counted from 1; outside, the nearest one is meant. 0 where there is none.
  std::int32_t ItemOf(std::int16_t component);
  double QuantityOf(std::int16_t component);

  /// Forgets the revision, a refusal, and the mark of the open file.
  void Forget();
  void Close();

 private:
  void Load();
  bool OpenRevisions();
  bool FindNewest(std::int32_t item);
  [[nodiscard]] bool IsLoaded() const;

  TableFrame& items_;
  RecordFile revisions_;
  std::uint64_t loadedAt_ = 0;
  bool isLoaded_ = false;
  bool isDenied_ = false;
  std::int16_t count_ = 0;
};

}  // namespace larkmoor
