// Where the few messages go that the library shows from the inside.
#pragma once

#include <functional>
#include <string_view>

namespace larkmoor {

/// Shows a text to the user and returns when the user has read it. The text is UTF-8; its line
/// breaks are carriage return and line feed. What a handler throws is dropped.
using MessageBoxHandler = std::function<void(std::string_view text)>;

/// Installs the handler of the calling thread and gives back the one before it, which may be the
/// default and can always be called. An empty handler brings back the default, which writes the
/// text and a line end to standard error.
MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler);

}  // namespace larkmoor
