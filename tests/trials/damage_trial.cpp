// Files that were damaged while nobody had them open.

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

#include "support/child_process.h"
#include "trials/child.h"
#include "trials/damage.h"
#include "trials/file_bytes.h"
#include "trials/lockstep.h"
#include "trials/shapes.h"
#include "trials/trial.h"

namespace larkmoor::trials {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using store::OpenMode;

enum class Client {
  Writer,
  Reader,  ///< opens in read-only mode
  Guest,   ///< the host does not let it write
};

std::string_view NameOf(Client client) {
  static constexpr std::string_view Names[] = {"a writer", "a reader", "a guest"};
  return Names[static_cast<std::size_t>(client)];
}

/// What a round keeps in its folder.
struct RoundFiles {
  fs::path sound;
  fs::path damaged;
  fs::path asDamaged;  ///< the damaged one before anyone worked on it

  explicit RoundFiles(const fs::path& folder)
      : sound(folder / "sound.dat"),
        damaged(folder / "damaged.dat"),
        asDamaged(folder / "as_damaged.dat") {}
};

/// Gives up the right to write to the files.
void BecomeGuest(const RoundFiles& files) {
  using fs::perms;
  constexpr perms Read = perms::owner_read | perms::group_read | perms::others_read;
  constexpr perms Enter = perms::owner_exec | perms::group_exec | perms::others_exec;
  fs::permissions(files.sound.parent_path(), Read | Enter | perms::owner_write);
  for (const fs::path& path : {files.sound, files.damaged}) fs::permissions(path, Read);
  if (!test::BecomeNobody()) throw std::runtime_error("cannot give up the right to write");
}

void UseAsWriter(Lockstep& pair) {
  if (pair.Open()) {
    pair.Read();
    pair.Verify();
    pair.Write();
    pair.Read();
  }
  pair.Close();
  if (pair.Open()) pair.Read();
  pair.Close();
  pair.Compact();
  if (pair.Open()) pair.Read();
  pair.Close();
  pair.Administer();
}

void UseAsReader(Lockstep& pair) {
  if (pair.Open()) pair.Read();
  pair.Verify();
  pair.Administer();
}

void Use(Round& round, const RoundFiles& files, Client client, bool isProtected) {
  if (client == Client::Guest) BecomeGuest(files);
  Lockstep pair(round, files.sound, files.damaged,
                client == Client::Writer ? OpenMode::Normal : OpenMode::ReadOnly, isProtected);
  if (client == Client::Writer) {
    UseAsWriter(pair);
  } else {
    UseAsReader(pair);
  }
}

}  // namespace

void DamageRound(Round& round) {
  const Shape& shape = Shapes()[round.Dice().PlaceIn(Shapes().size())];
  const Client client =
      round.Dice().OneOf({Client::Writer, Client::Writer, Client::Reader, Client::Guest});
  const RoundFiles files(round.Folder());
  std::string bytes = ReadBytes(shape.path);
  WriteBytes(files.sound, bytes);
  const std::string damage = Damage(bytes, round.Dice());
  WriteBytes(files.damaged, bytes);
  WriteBytes(files.asDamaged, bytes);
  try {
    InChild(round, 30s, [&](Round& inner) { Use(inner, files, client, shape.isProtected); });
  } catch (const Finding& finding) {
    throw Finding(shape.name + ", " + damage + ", used by " + std::string(NameOf(client)) + ": " +
                  finding.what());
  }
  round.Count("damaged files");
}

}  // namespace larkmoor::trials
