// Running a program to its end and looking at what it wrote.
#pragma once

#include <string>
#include <vector>

namespace larkmoor::test {

struct ProgramResult {
  int exitCode = 0;  ///< minus the signal's number where a signal ended it
  std::string out = {};
  std::string err = {};
};

/// Runs `command`, the program's path first, with no input. Raises `std::runtime_error` where it
/// does not start.
ProgramResult RunProgram(const std::vector<std::string>& command);

/// The same with a terminal as its standard error.
ProgramResult RunProgramOnTerminal(const std::vector<std::string>& command);

}  // namespace larkmoor::test
