// Records in bare LMDB: one file with one tree, entry for entry the library's own.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "engine/store/key_encoding.h"
#include "peers/lmdb_file.h"
#include "records/store.h"
#include "support.h"

namespace larkmoor::bench {

template <typename Kind>
class OneTransactionWalk;

/// Each call reads what was committed last, in a transaction of its own; along a path it comes back
/// to its place.
template <typename Kind, Form TheForm>
class LmdbStore {
 public:
  static constexpr std::string_view Name = TheForm == Form::Plain ? "lmdb" : "packed_lmdb";

  explicit LmdbStore(const std::filesystem::path& folder) : path_(folder / Name) { Open(); }

  void Open() { file_.emplace(path_, TheForm); }
  void Close() { file_.reset(); }

  bool Find(const Probe& probe) {
    const LmdbKey path = Kind::PathOf(probe);
    file_->Begin();
    const bool found = file_->Find(path, path) && Take();
    file_->End();
    return found;
  }
  bool Start(Path path) {
    walk_ = path;
    file_->Begin();
    const bool found = GoToStart();
    file_->End();
    return found;
  }
  bool Move() {
    file_->Begin();
    const bool found = GoToPlace() && GoOn();
    file_->End();
    return found;
  }
  void End() {}
  [[nodiscard]] Seen InHand() const { return See<Kind>(image_); }
  std::int64_t Count() {
    file_->Begin();
    const std::size_t entries = file_->Entries();
    file_->End();
    return static_cast<std::int64_t>(entries / (1 + description_.keys.size()));
  }

  void Insert(std::span<const std::byte> image) {
    LmdbWrite write(*file_);
    Add(write, image);
    write.Commit();
  }
  void SetAmount(double amount) {
    PutField(image_, Kind::Record::Amount, amount);
    LmdbWrite write(*file_);
    write.Take(file_->Number());
    write.Replace(image_);
    write.Commit();
  }
  void SetKey(const Probe& probe) {
    const std::vector<std::byte> before = image_;
    Set(Kind::KeyField, Kind::OtherKey(probe));
    LmdbWrite write(*file_);
    write.Take(file_->Number());
    write.Replace(image_);
    for (const store::KeyDescription& key : description_.keys) {
      LmdbKey from = KeyOf(key, before);
      LmdbKey to = KeyOf(key, image_);
      if (from == to) continue;
      write.RemoveKey(from);
      write.AddKey(to);
    }
    write.Commit();
  }
  void Delete() {
    LmdbWrite write(*file_);
    write.Take(file_->Number());
    Remove(write);
    write.Commit();
  }

  void Load(const Images& images) {
    LmdbWrite write(*file_);
    for (std::size_t i = 0; i < images.Count(); ++i) Add(write, images[i]);
    write.Commit();
  }
  void KeepFirst(std::int64_t count) {
    LmdbWrite write(*file_);
    for (std::int64_t more = Count() - count; more > 0; --more) {
      write.TakeLast(image_);
      Remove(write);
    }
    write.Commit();
  }

 private:
  inline static const LmdbKey WalkPath = LmdbKey::OfPath(Kind::WalkKey);

  static LmdbKey KeyOf(const store::KeyDescription& key, std::span<const std::byte> image) {
    return LmdbKey::OfPath(key.number).Bytes(store::EncodeKeyOf(key, image).Bytes());
  }

  friend class OneTransactionWalk<Kind>;

  bool Take() {
    file_->Read(image_);
    place_ = file_->Place();
    return true;
  }
  bool GoToStart() {
    if (walk_ == Path::Step) return file_->ReadFrom(0, image_);
    if (walk_ == Path::Next) return file_->Find(WalkPath, WalkPath) && Take();
    return file_->FindBelow(LmdbKey::OfPath(Kind::WalkKey + 1), WalkPath) && Take();
  }
  /// Nobody takes records out during a walk, so that the place is still there.
  bool GoToPlace() { return walk_ == Path::Step || file_->Find(place_, WalkPath); }
  bool GoOn() {
    if (walk_ == Path::Step) return file_->ReadFrom(file_->Number() + 1, image_);
    return (walk_ == Path::Next ? file_->Next(WalkPath) : file_->Previous(WalkPath)) && Take();
  }
  void Add(LmdbWrite& write, std::span<const std::byte> image) {
    for (const store::KeyDescription& key : description_.keys) {
      if (key.unique) Check(!write.Has(KeyOf(key, image)), "new number");
    }
    write.Add(image);
    for (const store::KeyDescription& key : description_.keys) {
      LmdbKey entry = KeyOf(key, image);
      write.AddKey(entry);
    }
  }
  void Remove(LmdbWrite& write) {
    write.Remove();
    for (const store::KeyDescription& key : description_.keys) {
      LmdbKey entry = KeyOf(key, image_);
      write.RemoveKey(entry);
    }
  }
  void Set(const Field& field, std::string_view value) { PutTextField(image_, field, value); }
  void Set(const Field& field, std::int32_t value) { PutField(image_, field, value); }

  std::filesystem::path path_;
  std::optional<LmdbFile> file_;
  store::FileDescription description_ = FileOf<Kind>();
  std::vector<std::byte> image_ = std::vector<std::byte>(description_.recordLength);
  LmdbKey place_;
  Path walk_ = Path::Next;
};

template <typename Kind>
using PlainLmdbStore = LmdbStore<Kind, Form::Plain>;
template <typename Kind>
using PackedLmdbStore = LmdbStore<Kind, Form::Packed>;

/// The same file, walked in one transaction from start to end, which shows one state of it and
/// keeps the room of that state from being used again.
template <typename Kind>
class OneTransactionWalk {
 public:
  static constexpr std::string_view Name = "lmdb_one_transaction";

  explicit OneTransactionWalk(PlainLmdbStore<Kind>& store) : store_(store) {}

  bool Start(Path path) {
    store_.walk_ = path;
    store_.file_->Begin();
    return store_.GoToStart();
  }
  bool Move() {
    if (store_.walk_ == Path::Step) return store_.file_->ReadNext(store_.image_);
    return store_.GoOn();
  }
  void End() { store_.file_->End(); }
  [[nodiscard]] Seen InHand() const { return store_.InHand(); }

 private:
  PlainLmdbStore<Kind>& store_;
};

}  // namespace larkmoor::bench
