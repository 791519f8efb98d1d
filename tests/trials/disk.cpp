#include "trials/disk.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string_view>

namespace larkmoor::trials {
namespace {

using Kind = Event::Kind;

/// What a disk writes wholly or not at all.
constexpr std::uint64_t Sector = 512;

void Put(std::string& file, std::uint64_t place, std::string_view bytes) {
  if (file.size() < place + bytes.size()) file.resize(place + bytes.size());
  std::copy(bytes.begin(), bytes.end(), file.begin() + static_cast<std::ptrdiff_t>(place));
}

/// Applies an event, of a write only those sectors that `reaches` says.
template <typename Reaches>
void Apply(const Event& event, std::string& file, Reaches reaches) {
  if (event.kind == Kind::Resize && reaches()) file.resize(event.place);
  if (event.kind == Kind::Extend && file.size() < event.place && reaches()) {
    file.resize(event.place);
  }
  if (event.kind != Kind::Write && event.kind != Kind::DurableWrite) return;
  for (std::string_view left = event.bytes; !left.empty();) {
    const std::uint64_t place = event.place + event.bytes.size() - left.size();
    const std::string_view piece = left.substr(0, Sector - place % Sector);
    if (event.kind == Kind::DurableWrite || reaches()) Put(file, place, piece);
    left.remove_prefix(piece.size());
  }
}

/// What of the changes that are not safe reaches the disk before its power is gone.
class Luck {
 public:
  Luck(test::Dice& dice, std::size_t changes)
      : dice_(dice),
        isInOrder_(dice.OneIn(3)),
        isTorn_(dice.OneIn(2)),
        percent_(dice.OneOf({0, 10, 50, 90, 100})),
        last_(dice.PlaceIn(changes + 1)) {}

  /// Begins with the next change, in the order in which they were made.
  void Begin() {
    ++change_;
    reaches_ = dice_.Below(100) < percent_;
  }
  /// Whether the next piece of that change is there.
  bool Reaches() {
    if (isInOrder_ && change_ != last_) return change_ < last_;
    return isTorn_ ? dice_.Below(100) < percent_ : reaches_;
  }

 private:
  test::Dice& dice_;
  bool isInOrder_;  ///< all that was written before the last change is there, and nothing after it
  bool isTorn_;     ///< a change may be there in pieces
  int percent_;     ///< how likely it is that one is there
  std::size_t last_;
  std::size_t change_ = 0;
  bool reaches_ = false;
};

}  // namespace

void FileOnDisk::Take(const Event& event) {
  if (event.kind != Kind::Sync) return unsafe_.push_back(event);
  safe_ = AsWritten();
  unsafe_.clear();
}

std::string FileOnDisk::AfterLossOfPower(test::Dice& dice) const {
  std::string file = safe_;
  Luck luck(dice, unsafe_.size());
  for (const Event& event : unsafe_) {
    luck.Begin();
    Apply(event, file, [&luck] { return luck.Reaches(); });
  }
  return file;
}

std::string FileOnDisk::AsWritten() const {
  std::string file = safe_;
  for (const Event& event : unsafe_) Apply(event, file, [] { return true; });
  return file;
}

NamesOnDisk::NamesOnDisk(std::size_t names) : safe_(names) {
  std::iota(safe_.begin(), safe_.end(), std::size_t{0});
}

void NamesOnDisk::Take(const Event& event) {
  if (event.kind != Kind::SyncFolder) return unsafe_.push_back(event);
  safe_ = AsGiven();
  unsafe_.clear();
}

std::vector<std::size_t> NamesOnDisk::AfterLossOfPower(test::Dice& dice) const {
  // The journals of file systems keep renames in their order.
  return After(dice.PlaceIn(unsafe_.size() + 1));
}

std::vector<std::size_t> NamesOnDisk::After(std::size_t renames) const {
  std::vector<std::size_t> files = safe_;
  for (std::size_t i = 0; i < renames; ++i) files.at(unsafe_[i].place) = unsafe_[i].file;
  return files;
}

}  // namespace larkmoor::trials
