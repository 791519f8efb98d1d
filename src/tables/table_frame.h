// What every table is: one record file, one record object, and the operations on them.
#pragma once

#include <cstdint>
#include <string_view>

#include <larkmoor/status.h>

#include "tables/record_file.h"

namespace larkmoor {

/// Where a class departs from the frame.
struct FrameBehaviour {
  /// `CloseFile` leaves the object marked open, so that the next one asks the engine again.
  bool closeKeepsOpenMark = false;
  /// `OpenFile` never marks the object open, so that `CloseFile` closes nothing.
  bool openSetsNoMark = false;
  /// A failed `OpenFile` keeps the file object.
  bool failedOpenKeepsFile = false;
};

/// The frame of a table. A public class owns one and forwards its operations to it. No operation
/// raises an error; each answers with the engine's status.
class TableFrame {
 public:
  /// `fileName` is the bare name of the file, which `OpenFile` looks for in the company folder.
  TableFrame(const RecordDescription& record, std::string_view fileName,
             FrameBehaviour behaviour = {});

  /// Opens the file in normal mode, binds and blanks the record. Where that fails the object drops
  /// its file and is otherwise as it was.
  Status OpenFile();
  /// Closes the file and drops it and the record; 0 where the object is not marked open.
  Status CloseFile();
  Status Delete() { return file_.File().btDelete(); }
  /// Both use the key number of the last keyed read.
  Status Insert() {
    ++moves_;
    return file_.File().btInsert(keyNumber_);
  }
  Status Update() { return file_.File().btUpdate(keyNumber_); }
  std::int32_t RecordCount() { return file_.File().btRecordCount(); }
  // Steps leave the key number as it was.
  Status StepFirst() { return Step(&TovrinFile::btStepFirst); }
  Status StepLast() { return Step(&TovrinFile::btStepLast); }
  Status StepNext() { return Step(&TovrinFile::btStepNext); }
  Status StepPrevious() { return Step(&TovrinFile::btStepPrevious); }
  /// A keyed read; the key writers have filled the key buffer of `File()`.
  Status Read(Status (TovrinFile::*read)(std::int16_t), std::int16_t keyNumber) {
    keyNumber_ = keyNumber;
    ++moves_;
    return (file_.File().*read)(keyNumber);
  }
  std::int32_t FindByPercent();
  Status GetByPercent(double percent);

  /// Closes the file of an `OpenFile` whose further files failed, with the open mark as it was
  /// before.
  void TakeBackOpen(bool wasOpen);

  [[nodiscard]] TovrinFile& File() { return file_.File(); }
  [[nodiscard]] Tovrin2Record& Record() { return file_.Record(); }
  /// Key number of the last keyed read, 0 before the first.
  [[nodiscard]] std::int16_t KeyNumber() const { return keyNumber_; }
  /// Release of the data as the last successful `OpenFile` found it, 0 before.
  [[nodiscard]] double FileVersion() const { return fileVersion_; }
  [[nodiscard]] bool IsOpen() const { return file_.IsOpen(); }
  /// For a class whose finders choose the key by release, or whose `OpenFile` sets one.
  void SetKeyNumber(std::int16_t keyNumber) { keyNumber_ = keyNumber; }
  /// Grows with every read, step and insert, whatever came of it: what a class keeps about the
  /// record in hand holds as long as this is the same.
  [[nodiscard]] std::uint64_t Moves() const { return moves_; }

 private:
  Status Step(Status (TovrinFile::*step)()) {
    ++moves_;
    return (file_.File().*step)();
  }

  RecordFile file_;
  FrameBehaviour behaviour_;
  std::int16_t keyNumber_ = 0;
  std::uint64_t moves_ = 0;
  double fileVersion_ = 0;
};

}  // namespace larkmoor
