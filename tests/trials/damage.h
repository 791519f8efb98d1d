// Damage to the bytes of a file.
#pragma once

#include <string>

#include "support/dice.h"

namespace larkmoor::trials {

/// Does one kind of damage, and tells which.
std::string Damage(std::string& bytes, test::Dice& dice);

}  // namespace larkmoor::trials
