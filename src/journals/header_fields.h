// What the properties of a transaction's header have in common, whatever class shows them: rules
// over the header record that need no file of the object's own.
#pragma once

#include <cstdint>
#include <string_view>

#include "engine/records/jrnl_hdr.h"
#include "engine/tovrin_record.h"

namespace larkmoor {

/// From release 12 on a header bears the account that its total is posted to.
constexpr bool HasMainAccount(double release) { return release >= 12.0; }
/// The name under which `MainAccount` looks accounts up, in every class.
inline constexpr std::string_view MainAccountSource = "JrnlHdr.MainAccount";

/// 255 of a drop shipment, the low byte of what is stored; otherwise 0.
std::uint8_t DropShipByte(const Tovrin2Record& header);

/// The reference packed into a Double. `Subindex2` does not fit, so that taking a key sets it to 0.
double KeyOfHeader(const Tovrin2Record& header);
void TakeKey(double packed, Tovrin2Record& header);

}  // namespace larkmoor
