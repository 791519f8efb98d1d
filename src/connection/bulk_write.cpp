#include <larkmoor/bulk_write.h>

#include "engine/runtime_error.h"
#include "engine/store/driver.h"

namespace larkmoor {
namespace {

constexpr std::int32_t InvalidCall = 5;

thread_local bool bulkUnderWay = false;

}  // namespace

struct BulkWrite::State {
  std::unique_ptr<store::Batch> batch;
};

BulkWrite::BulkWrite() {
  if (bulkUnderWay) RaiseRuntimeError(InvalidCall);
  state_ = std::make_unique<State>(State{store::DefaultDriver().BeginBatch()});
  bulkUnderWay = true;
}

BulkWrite::~BulkWrite() { bulkUnderWay = false; }

Status BulkWrite::Commit() { return state_->batch->Commit(); }

}  // namespace larkmoor
