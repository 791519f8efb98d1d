#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <span>
#include <string>
#include <string_view>

#include <larkmoor/connection/btrieve.h>

#include "connection/btrieve_parts.h"
#include "connection/company_version.h"
#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/text.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"

namespace larkmoor {
namespace {

/// What the versions answer with where something other than the engine fails.
constexpr Status StatusRuntimeError = 400;

/// Ends a path with the separator that it uses, "\" where it uses none.
std::string WithSeparator(std::string_view path) {
  if (path.ends_with('\\') || path.ends_with('/')) return std::string(path);
  const char separator = path.find('/') == std::string_view::npos ? '\\' : '/';
  return std::string(path) + separator;
}

std::string CompanyFilePath() {
  return Shared().gCompanyPath + std::string(TovrinFileNames::CompanyFile());
}

/// Whether the company file opens for reading.
Status ProbeCompanyFile() {
  TovrinFile file;
  const Status status = file.btOpen(CompanyFilePath(), TovrinFile::ReadOnlyMode);
  if (status == StatusSuccess) file.btClose();
  return status;
}

/// One of the blocks in the engine's answer about its versions: two signed words and a byte, as
/// text.
struct VersionBlock {
  static constexpr std::size_t Size = 5;

  explicit VersionBlock(std::span<const std::byte, Size> bytes)
      : number(Word(bytes[0], bytes[1]) + "." + Word(bytes[2], bytes[3])),
        id(std::to_string(std::to_integer<int>(bytes[4]))) {}

  static std::string Word(std::byte low, std::byte high) {
    const int word = std::to_integer<int>(low) | std::to_integer<int>(high) << 8;
    return std::to_string(static_cast<std::int16_t>(word));
  }

  std::string number;
  std::string id;
};

/// Fills the texts whatever the engine's status; of an error they keep what they held.
Status FetchVersions(std::string& client, std::string& requestor, std::string& server) {
  try {
    std::array<std::byte, TovrinFile::VersionBufferSize> buffer{};
    const Status status = TovrinFile().btVersion(CompanyFilePath(), buffer);
    const std::span<const std::byte, TovrinFile::VersionBufferSize> bytes(buffer);
    const VersionBlock a(bytes.subspan<0, VersionBlock::Size>());
    const VersionBlock b(bytes.subspan<VersionBlock::Size, VersionBlock::Size>());
    const VersionBlock c(bytes.subspan<2 * VersionBlock::Size, VersionBlock::Size>());
    client = a.number + a.id;
    requestor = c.number + c.id;
    server = b.number + c.id;  // the third block's id: clients know the text in this form
    return status;
  } catch (const std::exception&) {
    return StatusRuntimeError;
  }
}

}  // namespace

// Neither status is looked at: construction never fails, and a client whose engine does not answer
// learns it from the next status.
Btrieve::Parts::Parts() {
  FetchVersions(clientVersion, requestorVersion, serverVersion);
  TovrinFile().btReset();
}

Variant Btrieve::Connect(std::string_view path) {
  SharedState& shared = Shared();
  shared.gCompanyPath = TrimBlanks(path);
  if (shared.gCompanyPath.empty()) return StatusInvalidFileName;
  shared.gCompanyPath = WithSeparator(shared.gCompanyPath);
  if (ReadCompanyVersion() == 0) return StatusInvalidFileName;
  const Status status = ProbeCompanyFile();
  if (status == StatusSuccess) ++shared.gConnectCount;
  return status;
}

Variant Btrieve::Disconnect() {
  if (Shared().gConnectCount != 0) --Shared().gConnectCount;
  return StatusSuccess;
}

Variant Btrieve::Reset() {
  TovrinFile().btReset();
  return StatusSuccess;
}

Status Btrieve::btGetVersion(std::string& clientVersion, std::string& requestorVersion,
                             std::string& serverVersion) {
  return FetchVersions(clientVersion, requestorVersion, serverVersion);
}

std::string Btrieve::ClientVersion() { return parts_->clientVersion; }

std::string Btrieve::CompanyPath() { return Shared().gCompanyPath; }

void Btrieve::CompanyPath(std::string_view value) {
  Shared().gCompanyPath = WithSeparator(TrimBlanks(value));
}

std::int32_t Btrieve::ConnectCount() { return Shared().gConnectCount; }

Variant Btrieve::ErrorMessage(std::int16_t errorNumber) { return BtrieveErrorText(errorNumber); }

std::int32_t Btrieve::ErrorNumber() { return Shared().gErrorNumber; }

std::string Btrieve::ErrorText() { return Shared().gErrorText; }

std::string Btrieve::RequestorVersion() { return parts_->requestorVersion; }

std::string Btrieve::ServerVersion() { return parts_->serverVersion; }

std::string Btrieve::TovrinVersion() { return "2.13.0"; }

}  // namespace larkmoor
