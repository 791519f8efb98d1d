// Sound files of several shapes, to be damaged.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "engine/store/file_description.h"
#include "support/dice.h"
#include "support/sample_files.h"

namespace larkmoor::trials {

struct Shape {
  std::string name;
  std::filesystem::path path;
  bool isProtected = false;  ///< by an owner name that lets others read
};

/// All shapes: small files and large ones, long records, many deletes, protection, files of a
/// company. The same in every process; made at the first call.
const std::vector<Shape>& Shapes();

/// A record with values in all fields that keys are made of, and something in between. Fields that
/// ask for the next number hold 0.
test::Bytes RandomRecord(const store::FileDescription& description, test::Dice& dice);

}  // namespace larkmoor::trials
