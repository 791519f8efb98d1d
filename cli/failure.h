// How a command ends badly, and what it then says on standard error.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include <larkmoor/status.h>

namespace larkmoor::cli {

/// What the process answers.
enum ExitCode : int {
  ExitSuccess = 0,
  ExitFailure = 1,  ///< the command was understood and did not succeed
  ExitUsage = 2,    ///< the command line is wrong
};

/// The command failed. The message is shown as it is.
class Failure : public std::runtime_error {
 public:
  /// `status` is the one that a file or the connection answered, 0 where none did.
  explicit Failure(const std::string& message, Status status = StatusSuccess)
      : std::runtime_error(message), status_(status) {}

  [[nodiscard]] Status BtrieveStatus() const { return status_; }

 private:
  Status status_;
};

/// The command line names something that is not there, or a value that does not convert.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// "Btrieve error 12: File not found": the first line of the status's message.
std::string StatusTitle(Status status);

/// Raises a `Failure` "`what`: title" for any status but success.
void Require(Status status, std::string_view what);

/// Writes "larkmoor: `message`" to standard error.
void Report(std::string_view message);

}  // namespace larkmoor::cli
