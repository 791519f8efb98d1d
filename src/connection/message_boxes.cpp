#include "connection/message_boxes.h"

#include <iostream>
#include <string>
#include <utility>

#include <larkmoor/message_box.h>

namespace larkmoor {
namespace {

// In one piece, so that the lines of two threads do not mix.
void WriteToStandardError(std::string_view text) { std::cerr << std::string(text) + '\n'; }

MessageBoxHandler& ThreadHandler() {
  thread_local MessageBoxHandler handler = WriteToStandardError;
  return handler;
}

}  // namespace

MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler) {
  if (!handler) handler = WriteToStandardError;
  return std::exchange(ThreadHandler(), std::move(handler));
}

void ShowMessageBox(std::string_view text) noexcept {
  try {
    // A copy, since a handler may install another one while it runs.
    const MessageBoxHandler handler = ThreadHandler();
    handler(text);
  } catch (...) {
    // A box that cannot be shown must not become an error of the operation that tells of one.
  }
}

}  // namespace larkmoor
