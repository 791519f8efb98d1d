// The program that libFuzzer drives: it feeds one target.
#include <cstddef>
#include <cstdint>

#include "fuzz/targets.h"

namespace {

constexpr const larkmoor::fuzz::Target* Target = larkmoor::fuzz::FindTarget(LARKMOOR_FUZZ_TARGET);
static_assert(Target != nullptr, "the target is in Targets");

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Target->run({data, size});
  return 0;
}
