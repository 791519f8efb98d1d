// Showing a message from inside the library.
#pragma once

#include <string_view>

namespace larkmoor {

/// Gives the text to the thread's handler and drops whatever that throws.
void ShowMessageBox(std::string_view text) noexcept;

}  // namespace larkmoor
