// The one exception that the library raises.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include <larkmoor/status.h>

namespace larkmoor {

/// A raised error. A property has no status to return, so what goes wrong behind one arrives as
/// an `Error`; operations raise one only where their own documentation says so.
///
/// `what()` is the description.
class Error : public std::runtime_error {
 public:
  /// An error with the given number, source and description; `status` is the Btrieve status that
  /// caused it, 0 where none did.
  Error(std::int32_t number, std::string source, std::string description,
        Status status = StatusSuccess)
      : std::runtime_error(description),
        number_(number),
        status_(status),
        source_(std::move(source)),
        description_(std::move(description)) {}

  /// The error's number: a classic runtime number (6, 9, 13, 28, 94, 438), or one of the
  /// 0x800402xx family as a signed 32-bit number (0x80040201 is -2147220991).
  [[nodiscard]] std::int32_t Number() const noexcept { return number_; }
  /// "Tovrin" for failures behind a property, "Larkmoor" for the runtime's own errors.
  [[nodiscard]] const std::string& Source() const noexcept { return source_; }
  /// What failed, for a person to read. UTF-8; line breaks are carriage return and line feed.
  [[nodiscard]] const std::string& Description() const noexcept { return description_; }
  /// The Btrieve status that caused the error, 0 for the runtime's own errors.
  [[nodiscard]] Status BtrieveStatus() const noexcept { return status_; }

 private:
  std::int32_t number_;
  Status status_;
  std::string source_;
  std::string description_;
};

}  // namespace larkmoor
