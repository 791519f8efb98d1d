#include "failure.h"

#include <iostream>

#include "connection/status_messages.h"

namespace larkmoor::cli {

std::string StatusTitle(Status status) {
  const std::string text = BtrieveErrorText(status);
  return text.substr(0, text.find_first_of("\r\n"));
}

void Require(Status status, std::string_view what) {
  if (status == StatusSuccess) return;
  throw Failure(std::string(what) + ": " + StatusTitle(status), status);
}

void Report(std::string_view message) { std::cerr << "larkmoor: " << message << '\n'; }

}  // namespace larkmoor::cli
