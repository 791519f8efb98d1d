#include <algorithm>

#include "phases.h"
#include "records/larkmoor_store.h"
#include "records/lmdb_store.h"
#include "records/sqlite_store.h"

namespace larkmoor::bench {
namespace {

constexpr std::int32_t InCommit = 1000;

template <typename Kind>
void Fill(std::int32_t records, const std::filesystem::path& folder) {
  LarkmoorStore<Kind> larkmoor(folder);
  PlainLmdbStore<Kind> plain(folder);
  PackedLmdbStore<Kind> packed(folder);
  NormalSqliteStore<Kind> sqlite(folder);
  const std::int32_t transactions = records / Kind::InTransaction;
  for (std::int32_t first = 1; first <= transactions; first += InCommit) {
    const Images images = ImagesOf<Kind>(first, std::min(InCommit, transactions - first + 1));
    larkmoor.Load(images);
    plain.Load(images);
    packed.Load(images);
    sqlite.Load(images);
  }
}

}  // namespace

void FillStores(const RecordsOptions& options) {
  WithKind(options.kind, [&]<typename Kind>(Kind) { Fill<Kind>(options.records, options.folder); });
}

}  // namespace larkmoor::bench
