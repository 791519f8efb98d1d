// A record file of the company together with the record object bound to it: what every class that
// touches a file owns, once for its own table and once for each file that it looks into.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include <larkmoor/status.h>

#include "engine/tovrin_file.h"
#include "engine/tovrin_record.h"

namespace larkmoor {

class RecordFile {
 public:
  /// `fileName` is the bare name of the file, which `Open` looks for in the company folder.
  RecordFile(const RecordDescription& record, std::string_view fileName);

  /// Opens the file; on success binds the record and sets the open mark. Where it fails the file
  /// object is dropped and the mark stays as it was.
  Status Open(std::int16_t mode = TovrinFile::NormalMode);
  /// The same, and keeps the file object where it fails.
  Status OpenKeeping(std::int16_t mode = TovrinFile::NormalMode);
  /// Closes the file, drops file and record, and takes the mark away. Returns the close's status.
  Status Close();
  /// Drops the file without closing it. The mark stays as it was.
  void Release();
  /// Binds the record to the file as it stands and sets the mark.
  void Bind();

  /// Whether the object is marked open. The mark is the class's word, not the engine's.
  [[nodiscard]] bool IsOpen() const { return isOpen_; }
  void Mark(bool isOpen) { isOpen_ = isOpen; }

  [[nodiscard]] TovrinFile& File() { return *file_; }
  [[nodiscard]] Tovrin2Record& Record() { return record_; }

 private:
  std::string_view fileName_;
  std::unique_ptr<TovrinFile> file_;  // never null: a dropped file gives way to a fresh one
  Tovrin2Record record_;
  bool isOpen_ = false;
};

}  // namespace larkmoor
