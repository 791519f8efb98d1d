// Making a company folder.
#pragma once

#include <filesystem>
#include <string>

#include <larkmoor/date.h>

namespace larkmoor {

/// What a new company starts with.
struct CompanyOptions {
  /// Release of the data, from 8.0 to 19.0. Fractions such as 10.9 or 11.5 are releases too: keys
  /// and fields differ between them.
  double Release = 19.0;
  /// Name of the company, UTF-8; empty for none.
  std::string Name = {};
  /// First day of the fiscal year, whose twelve periods are a month each; left at 0, the first of
  /// January of the current year.
  Date FiscalYearStart = Date(0);
};

/// Makes a company in `folder`, which is created where it is missing: "VERSION.TXT", every record
/// file with the keys of that release, the company record, and the settings with a fiscal calendar,
/// terms, aging classes, ship methods, price levels and the next numbers of papers to start with.
///
/// A folder that is made has the permissions that the process's umask leaves. Whoever may read and
/// write the folder may read and write the files, whatever the umask. `folder` may be a link to a
/// folder, and the company is then made there; a link that leads nowhere is refused. Inside of it
/// no link is followed.
///
/// Raises an `Error` where the folder holds a company already, or something that bears the name of
/// one of its files; where the release is out of range or the first day no date; or where a file
/// cannot be made (its `BtrieveStatus()` tells why). Nothing that was in the folder is overwritten,
/// but for lock files that a former company has left, and what was made of a company that failed is
/// taken away again. Of several who make a company in one folder at the same time one succeeds.
void CreateCompany(const std::filesystem::path& folder, const CompanyOptions& options = {});

}  // namespace larkmoor
