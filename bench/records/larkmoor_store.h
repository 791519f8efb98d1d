// Records as the library's engine keeps them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

#include <larkmoor/bulk_write.h>
#include <larkmoor/status.h>

#include "engine/store/driver.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_record.h"
#include "records/store.h"
#include "support.h"

namespace larkmoor::bench {

template <typename Kind>
class LarkmoorStore {
 public:
  static constexpr std::string_view Name = "larkmoor";

  explicit LarkmoorStore(const std::filesystem::path& folder)
      : path_(folder / Kind::Record::Describe().fileName) {
    if (!std::filesystem::exists(path_)) {
      Check(store::DefaultDriver().Create(path_, FileOf<Kind>()) == StatusSuccess, "create");
    }
    record_.AttachBuffer(file_.RecordBuffer());
    Open();
  }

  void Open() {
    Check(file_.btOpen(path_.string(), TovrinFile::NormalMode) == StatusSuccess, "open");
  }
  void Close() { Check(file_.btClose() == StatusSuccess, "close"); }

  bool Find(const Probe& probe) {
    Kind::WriteKey(file_, probe);
    return file_.btGetEqual(Kind::FindKey) == StatusSuccess;
  }
  bool Start(Path path) {
    walk_ = path;
    if (path == Path::Step) return file_.btStepFirst() == StatusSuccess;
    return (path == Path::Next ? file_.btGetFirst(Kind::WalkKey)
                               : file_.btGetLast(Kind::WalkKey)) == StatusSuccess;
  }
  bool Move() {
    if (walk_ == Path::Step) return file_.btStepNext() == StatusSuccess;
    return (walk_ == Path::Next ? file_.btGetNext(Kind::WalkKey)
                                : file_.btGetPrevious(Kind::WalkKey)) == StatusSuccess;
  }
  void End() {}
  [[nodiscard]] Seen InHand() const { return See<Kind>(record_); }
  std::int64_t Count() { return file_.btRecordCount(); }

  double Percentage() {
    double percent = 0;
    Check(file_.btFindPercentage(Kind::WalkKey, percent) == StatusSuccess, "percentage");
    return percent;
  }
  bool FindByPercentage(double percent) {
    return file_.btGetByPercentage(Kind::WalkKey, percent) == StatusSuccess;
  }

  void Insert(std::span<const std::byte> image) {
    std::ranges::copy(image, record_.Bytes().begin());
    Check(file_.btInsert(Kind::FindKey) == StatusSuccess, "insert");
  }
  void SetAmount(double amount) {
    record_.SetDouble(Kind::Record::Amount, amount);
    Update();
  }
  void SetKey(const Probe& probe) {
    Set(Kind::KeyField, Kind::OtherKey(probe));
    Update();
  }
  void Delete() { Check(file_.btDelete() == StatusSuccess, "delete"); }

  void Load(const Images& images) {
    BulkWrite bulk;
    for (std::size_t i = 0; i < images.Count(); ++i) Insert(images[i]);
    Check(bulk.Commit() == StatusSuccess, "commit");
  }
  void KeepFirst(std::int64_t count) {
    BulkWrite bulk;
    for (std::int64_t more = Count() - count; more > 0; --more) {
      Check(file_.btStepLast() == StatusSuccess, "last record");
      Delete();
    }
    Check(bulk.Commit() == StatusSuccess, "commit");
  }

 private:
  void Set(const Field& field, std::string_view value) { record_.SetText(field, value); }
  void Set(const Field& field, std::int32_t value) { record_.SetLong(field, value); }
  void Update() { Check(file_.btUpdate(Kind::FindKey) == StatusSuccess, "update"); }

  std::filesystem::path path_;
  TovrinFile file_;
  Tovrin2Record record_{Kind::Record::Describe()};
  Path walk_ = Path::Next;
};

}  // namespace larkmoor::bench
