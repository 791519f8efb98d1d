// What every class over one row of the company's settings is: the general file, the row's record,
// and the accounts that the row points at.
#pragma once

#include <string_view>

#include "tables/settings_accounts.h"

namespace larkmoor {

/// Where a class departs from the frame.
struct SettingsBehaviour {
  /// An account that is no longer there reads as empty and is no error.
  bool missingAccountReadsEmpty = false;
};

class SettingsFrame {
 public:
  /// `record` tells the row; `name` is the class's, which opens the messages about accounts.
  SettingsFrame(const RecordDescription& record, std::string_view name,
                SettingsBehaviour behaviour = {});

  /// Opens the file in normal mode and binds the record.
  Status OpenFile();
  /// Closes the chart of accounts, then the file; 0 where the object is not marked open.
  Status CloseFile();
  /// Reads the row.
  Status Read();
  /// Rewrites the row.
  Status Update();

  /// Drops the file without closing it. The open mark stays as it was.
  void Release() { file_.Release(); }
  [[nodiscard]] bool IsOpen() const { return file_.IsOpen(); }
  void Mark(bool isOpen) { file_.Mark(isOpen); }

  [[nodiscard]] TovrinFile& File() { return file_.File(); }
  [[nodiscard]] Tovrin2Record& Record() { return file_.Record(); }
  [[nodiscard]] SettingsAccounts& Accounts() { return accounts_; }
  /// Release of the data as the last successful `OpenFile` found it, 0 before.
  [[nodiscard]] double FileVersion() const { return fileVersion_; }

 private:
  RecordFile file_;
  SettingsAccounts accounts_;
  std::int16_t row_;
  double fileVersion_ = 0;
};

}  // namespace larkmoor
