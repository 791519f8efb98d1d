// Making a company folder.
#pragma once

#include <filesystem>
#include <string>

namespace larkmoor {

/// What a new company starts with.
struct CompanyOptions {
  /// Release of the data, from 8.0 to 19.0. Fractions such as 10.9 or 11.5 are releases too: keys
  /// and fields differ between them.
  double Release = 19.0;
  /// Name of the company, UTF-8; empty for none.
  std::string Name = {};
};

/// Makes a company in `folder`, which is created where it is missing: "VERSION.TXT", every record
/// file with the keys of that release, the company record and the rows of the general file.
///
/// Raises an `Error` where the folder holds a company already, where the release is out of range,
/// or where a file cannot be made (its `BtrieveStatus()` tells why). Nothing that was in the
/// folder is overwritten, and what was made of a company that failed is taken away again.
void CreateCompany(const std::filesystem::path& folder, const CompanyOptions& options = {});

}  // namespace larkmoor
