// The connection: what proves a company folder, what all objects of a thread share, and what the
// version texts say.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/connection/btrieve.h>
#include <larkmoor/status.h>
#include <larkmoor/tables/address.h>

#include "connection/shared_state.h"
#include "connection/status_messages.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/record_files.h"
#include "support/worker.h"

namespace larkmoor {
namespace {

using test::Company;
using test::OnAnotherThread;

/// Gives the thread the shared state of a new one.
struct NewThreadState {
  NewThreadState() { Shared() = SharedState{}; }
};

/// Begins with the shared state of a new thread and a connection object.
class BtrieveTest : public testing::Test {
 protected:
  /// Connects, and looks at the kind of the answer on the way.
  Status Connect(std::string_view path) {
    const Variant status = btrieve_.Connect(path);
    EXPECT_EQ(status.GetKind(), Variant::Kind::Integer);
    return status.ToInteger();
  }

  NewThreadState newThread_;
  Btrieve btrieve_;
};

using BtrieveConnect = BtrieveTest;
using BtrieveDisconnect = BtrieveTest;
using BtrieveCompanyPath = BtrieveTest;
using BtrieveReset = BtrieveTest;
using BtrieveErrors = BtrieveTest;
using BtrieveVersions = BtrieveTest;

/// A company with the shared state of a thread that has not connected to it.
class UnconnectedCompany {
 public:
  explicit UnconnectedCompany(double release = 19.0) : company_(release) {}

  std::string Path() const { return company_.Path(); }
  std::filesystem::path VersionFile() const { return company_.Folder() / "VERSION.TXT"; }
  std::filesystem::path CompanyFile() const {
    return company_.Folder() / TovrinFileNames::CompanyFile();
  }
  std::filesystem::path AddressFile() const {
    return company_.Folder() / TovrinFileNames::AddressFile();
  }

 private:
  Company company_;
  NewThreadState newThread_;
};

std::string WithBackslashes(std::string path) {
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

// --- Connect ---

TEST_F(BtrieveConnect, ToACompanyAnswers0AndSetsThePathAndCounts) {
  const UnconnectedCompany company;
  EXPECT_EQ(Connect(company.Path()), StatusSuccess);
  EXPECT_EQ(btrieve_.CompanyPath(), company.Path());
  EXPECT_EQ(btrieve_.ConnectCount(), 1);
}

TEST_F(BtrieveConnect, TakesACompanyOfAnyRelease) {
  for (const double release : {8.0, 10.9, 11.5, 12.9, 13.0, 19.0}) {
    const UnconnectedCompany company(release);
    EXPECT_EQ(Connect(company.Path()), StatusSuccess) << release;
  }
}

TEST_F(BtrieveConnect, EmptyPathAnswers11AndKeepsThePathEmpty) {
  EXPECT_EQ(Connect(""), StatusInvalidFileName);
  EXPECT_EQ(btrieve_.CompanyPath(), "");
  EXPECT_EQ(btrieve_.ConnectCount(), 0);
}

TEST_F(BtrieveConnect, PathOfBlanksIsAnEmptyPath) {
  EXPECT_EQ(Connect("    "), StatusInvalidFileName);
  EXPECT_EQ(btrieve_.CompanyPath(), "");
}

TEST_F(BtrieveConnect, CutsBlanksAndAddsTheBackslash) {
  Connect("  C:\\Co  ");
  EXPECT_EQ(btrieve_.CompanyPath(), "C:\\Co\\");
}

TEST_F(BtrieveConnect, KeepsTheBackslashAtTheEndAndTheBlanksInside) {
  Connect("C:\\My Co\\");
  EXPECT_EQ(btrieve_.CompanyPath(), "C:\\My Co\\");
}

TEST_F(BtrieveConnect, GivesAPathOfSlashesASlash) {
  Connect(" /no/such/company ");
  EXPECT_EQ(btrieve_.CompanyPath(), "/no/such/company/");
  Connect("/no/such/company/");
  EXPECT_EQ(btrieve_.CompanyPath(), "/no/such/company/");
}

TEST_F(BtrieveConnect, TakesThePathWithoutItsLastSlash) {
  const UnconnectedCompany company;
  std::string path = company.Path();
  path.pop_back();
  EXPECT_EQ(Connect("  " + path + " "), StatusSuccess);
  EXPECT_EQ(btrieve_.CompanyPath(), company.Path());
}

TEST_F(BtrieveConnect, ReadsBackslashesAsTheHostsSeparators) {
  const UnconnectedCompany company;
  std::string path = WithBackslashes(company.Path());
  path.pop_back();
  EXPECT_EQ(Connect(path), StatusSuccess);
  EXPECT_EQ(btrieve_.CompanyPath(), path + "\\");
}

TEST_F(BtrieveConnect, FolderThatIsNotThereAnswers11AndKeepsTheNewPath) {
  EXPECT_EQ(Connect("/no/such/company/"), StatusInvalidFileName);
  EXPECT_EQ(btrieve_.CompanyPath(), "/no/such/company/");
  EXPECT_EQ(btrieve_.ConnectCount(), 0);
}

TEST_F(BtrieveConnect, FolderWithoutVersionFileAnswers11AndKeepsTheNewPath) {
  const UnconnectedCompany company;
  std::filesystem::remove(company.VersionFile());
  EXPECT_EQ(Connect(company.Path()), StatusInvalidFileName);
  EXPECT_EQ(btrieve_.CompanyPath(), company.Path());
  EXPECT_EQ(btrieve_.ConnectCount(), 0);
}

TEST_F(BtrieveConnect, FolderInPlaceOfTheVersionFileAnswers11) {
  const UnconnectedCompany company;
  std::filesystem::remove(company.VersionFile());
  std::filesystem::create_directory(company.VersionFile());
  EXPECT_EQ(Connect(company.Path()), StatusInvalidFileName);
}

// The first field tells the version; of a field that begins with "F" its last five characters do.
TEST_F(BtrieveConnect, VersionOf9IsProvedWithAndWithoutItsLetter) {
  const UnconnectedCompany company;
  for (const char* content : {"F12.00", "12.00", "12.00\r\n", "12.00,more", "F12.00,more"}) {
    test::WriteFile(company.VersionFile(), content);
    EXPECT_EQ(Connect(company.Path()), StatusSuccess) << content;
  }
}

TEST_F(BtrieveConnect, VersionFileWithoutANumberAnswers11) {
  const UnconnectedCompany company;
  for (const std::string& content :
       {std::string(), std::string("F"), std::string("Peachtree"), std::string(",12.00"),
        std::string("\r\n12.00"), std::string("0"), std::string("\xff\xfe\x80\x81\x00\x1f", 6)}) {
    test::WriteFile(company.VersionFile(), content);
    EXPECT_EQ(Connect(company.Path()), StatusInvalidFileName) << testing::PrintToString(content);
    EXPECT_EQ(btrieve_.ConnectCount(), 0);
  }
}

// Version 4 is release 0, which is the sign of no company. Below it the release is negative, and
// that is a company.
TEST_F(BtrieveConnect, Version4Answers11WhileVersion3Connects) {
  const UnconnectedCompany company;
  test::WriteFile(company.VersionFile(), "4");
  EXPECT_EQ(Connect(company.Path()), StatusInvalidFileName);
  test::WriteFile(company.VersionFile(), "3");
  EXPECT_EQ(Connect(company.Path()), StatusSuccess);
}

TEST_F(BtrieveConnect, MissingCompanyFileAnswers12AndKeepsTheNewPath) {
  const UnconnectedCompany company;
  std::filesystem::remove(company.CompanyFile());
  EXPECT_EQ(Connect(company.Path()), StatusFileNotFound);
  EXPECT_EQ(btrieve_.CompanyPath(), company.Path());
  EXPECT_EQ(btrieve_.ConnectCount(), 0);
}

TEST_F(BtrieveConnect, ForeignCompanyFileAnswers30AndKeepsTheNewPath) {
  const UnconnectedCompany company;
  test::WriteFile(company.CompanyFile(), "This is no record file.");
  EXPECT_EQ(Connect(company.Path()), StatusNotARecordFile);
  EXPECT_EQ(btrieve_.CompanyPath(), company.Path());
  EXPECT_EQ(btrieve_.ConnectCount(), 0);
}

TEST_F(BtrieveConnect, CompanyFileProtectedByAnOwnerAnswers51) {
  const UnconnectedCompany company;
  test::ProtectFile(company.CompanyFile(), /*allowRead=*/false);
  EXPECT_EQ(Connect(company.Path()), StatusInvalidOwner);
  EXPECT_EQ(btrieve_.CompanyPath(), company.Path());
  EXPECT_EQ(btrieve_.ConnectCount(), 0);
}

TEST_F(BtrieveConnect, CompanyFileThatMayBeReadIsEnough) {
  const UnconnectedCompany company;
  test::ProtectFile(company.CompanyFile(), /*allowRead=*/true);
  EXPECT_EQ(Connect(company.Path()), StatusSuccess);
}

TEST_F(BtrieveConnect, OpensTheCompanyFileForReadingOnly) {
  const UnconnectedCompany company;
  test::WhereReadOnly(company.CompanyFile(),
                      [&] { EXPECT_EQ(Connect(company.Path()), StatusSuccess); });
}

TEST_F(BtrieveConnect, LooksAtNoOtherRecordFile) {
  const UnconnectedCompany company;
  std::filesystem::remove(company.AddressFile());
  EXPECT_EQ(Connect(company.Path()), StatusSuccess);
}

TEST_F(BtrieveConnect, LeavesTheCompanyFileClosed) {
  const UnconnectedCompany company;
  ASSERT_EQ(Connect(company.Path()), StatusSuccess);
  EXPECT_FALSE(test::IsHeldOpen(company.CompanyFile()));
}

TEST_F(BtrieveConnect, TwiceCountsTwice) {
  const UnconnectedCompany company;
  Connect(company.Path());
  Connect(company.Path());
  EXPECT_EQ(btrieve_.ConnectCount(), 2);
}

TEST_F(BtrieveConnect, FailureLosesTheOldPathAndKeepsTheCount) {
  const UnconnectedCompany company;
  ASSERT_EQ(Connect(company.Path()), StatusSuccess);
  EXPECT_EQ(Connect(""), StatusInvalidFileName);
  EXPECT_EQ(btrieve_.CompanyPath(), "");
  EXPECT_EQ(btrieve_.ConnectCount(), 1);
}

TEST_F(BtrieveConnect, ElsewhereLeavesOpenTablesOnTheirFile) {
  const UnconnectedCompany first;
  const UnconnectedCompany second;
  ASSERT_EQ(Connect(first.Path()), StatusSuccess);
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  ASSERT_EQ(address.Insert(), StatusSuccess);

  ASSERT_EQ(Connect(second.Path()), StatusSuccess);
  EXPECT_EQ(address.RecordCount(), 1);
  Address openedAfterwards;
  ASSERT_EQ(openedAfterwards.OpenFile(), StatusSuccess);
  EXPECT_EQ(openedAfterwards.RecordCount(), 0);
}

TEST_F(BtrieveConnect, IsKnownToAllObjectsOfTheThread) {
  const UnconnectedCompany company;
  ASSERT_EQ(Connect(company.Path()), StatusSuccess);
  Btrieve another;
  EXPECT_EQ(another.CompanyPath(), company.Path());
  EXPECT_EQ(another.ConnectCount(), 1);
}

TEST_F(BtrieveConnect, IsNotKnownToOtherThreads) {
  const UnconnectedCompany company;
  ASSERT_EQ(Connect(company.Path()), StatusSuccess);
  OnAnotherThread([] {
    Btrieve elsewhere;
    EXPECT_EQ(elsewhere.CompanyPath(), "");
    EXPECT_EQ(elsewhere.ConnectCount(), 0);
  });
}

// --- Disconnect ---

TEST_F(BtrieveDisconnect, OnACountOf0Leaves0AndAnswers0) {
  const Variant status = btrieve_.Disconnect();
  EXPECT_EQ(status.GetKind(), Variant::Kind::Integer);
  EXPECT_EQ(status, Variant(StatusSuccess));
  EXPECT_EQ(btrieve_.ConnectCount(), 0);
}

TEST_F(BtrieveDisconnect, AfterTwoConnectionsLeavesOne) {
  const UnconnectedCompany company;
  Connect(company.Path());
  Connect(company.Path());
  EXPECT_EQ(btrieve_.Disconnect(), Variant(StatusSuccess));
  EXPECT_EQ(btrieve_.ConnectCount(), 1);
}

TEST_F(BtrieveDisconnect, KeepsThePathAndOpenTables) {
  const UnconnectedCompany company;
  Connect(company.Path());
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  ASSERT_EQ(address.Insert(), StatusSuccess);
  btrieve_.Disconnect();
  EXPECT_EQ(btrieve_.ConnectCount(), 0);
  EXPECT_EQ(btrieve_.CompanyPath(), company.Path());
  EXPECT_EQ(address.StepFirst(), StatusSuccess);
}

TEST_F(BtrieveDisconnect, CountsForAllObjectsOfTheThread) {
  const UnconnectedCompany company;
  Connect(company.Path());
  Btrieve another;
  another.Disconnect();
  EXPECT_EQ(btrieve_.ConnectCount(), 0);
}

TEST_F(BtrieveDisconnect, IsNotDoneByDestruction) {
  const UnconnectedCompany company;
  { EXPECT_EQ(Btrieve().Connect(company.Path()), Variant(StatusSuccess)); }
  EXPECT_EQ(btrieve_.ConnectCount(), 1);
  EXPECT_EQ(btrieve_.CompanyPath(), company.Path());
}

// --- CompanyPath ---

TEST_F(BtrieveCompanyPath, LetCutsBlanksAndAddsTheBackslash) {
  btrieve_.CompanyPath("  C:\\Co  ");
  EXPECT_EQ(btrieve_.CompanyPath(), "C:\\Co\\");
  btrieve_.CompanyPath("C:\\My Co\\");
  EXPECT_EQ(btrieve_.CompanyPath(), "C:\\My Co\\");
}

TEST_F(BtrieveCompanyPath, LetGivesAPathOfSlashesASlash) {
  btrieve_.CompanyPath(" /srv/co ");
  EXPECT_EQ(btrieve_.CompanyPath(), "/srv/co/");
  btrieve_.CompanyPath("/srv/co/");
  EXPECT_EQ(btrieve_.CompanyPath(), "/srv/co/");
}

// Unlike Connect, which leaves an empty path empty.
TEST_F(BtrieveCompanyPath, LetMakesABackslashOfTheEmptyText) {
  btrieve_.CompanyPath("");
  EXPECT_EQ(btrieve_.CompanyPath(), "\\");
  btrieve_.CompanyPath("   ");
  EXPECT_EQ(btrieve_.CompanyPath(), "\\");
}

TEST_F(BtrieveCompanyPath, LetProvesNothingAndCountsNothing) {
  btrieve_.CompanyPath("/no/such/company");
  EXPECT_EQ(btrieve_.CompanyPath(), "/no/such/company/");
  EXPECT_EQ(btrieve_.ConnectCount(), 0);
}

TEST_F(BtrieveCompanyPath, LetIsWhereTablesOpenFrom) {
  const UnconnectedCompany company;
  btrieve_.CompanyPath(company.Path());
  Address address;
  EXPECT_EQ(address.OpenFile(), StatusSuccess);
}

TEST_F(BtrieveCompanyPath, KeepsAccents) {
  btrieve_.CompanyPath("C:\\Soci\u00e9t\u00e9");
  EXPECT_EQ(btrieve_.CompanyPath(), "C:\\Soci\u00e9t\u00e9\\");
}

// --- Reset ---

TEST_F(BtrieveReset, Answers0AsAnInteger) {
  const Variant status = btrieve_.Reset();
  EXPECT_EQ(status.GetKind(), Variant::Kind::Integer);
  EXPECT_EQ(status, Variant(StatusSuccess));
}

TEST_F(BtrieveReset, ClosesTheThreadsTablesAndKeepsTheirRecords) {
  const UnconnectedCompany company;
  Connect(company.Path());
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  address.City("Ghent");
  btrieve_.Reset();
  EXPECT_EQ(address.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(address.City(), "Ghent");
  EXPECT_FALSE(test::IsHeldOpen(company.AddressFile()));
}

TEST_F(BtrieveReset, KeepsThePathAndTheCount) {
  const UnconnectedCompany company;
  Connect(company.Path());
  btrieve_.Reset();
  EXPECT_EQ(btrieve_.CompanyPath(), company.Path());
  EXPECT_EQ(btrieve_.ConnectCount(), 1);
}

TEST_F(BtrieveReset, IsDoneByConstructionToo) {
  const UnconnectedCompany company;
  Connect(company.Path());
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  const Btrieve another;
  EXPECT_EQ(address.StepFirst(), StatusFileNotOpen);
}

TEST_F(BtrieveReset, LeavesTheTablesOfOtherThreadsOpen) {
  const UnconnectedCompany company;
  Connect(company.Path());
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  ASSERT_EQ(address.Insert(), StatusSuccess);
  OnAnotherThread([] { Btrieve().Reset(); });
  EXPECT_EQ(address.StepFirst(), StatusSuccess);
}

// --- Errors and messages ---

TEST_F(BtrieveErrors, NumberAndTextStayBlankAfterAFailure) {
  ASSERT_EQ(Connect("/no/such/company"), StatusInvalidFileName);
  EXPECT_EQ(btrieve_.ErrorNumber(), 0);
  EXPECT_EQ(btrieve_.ErrorText(), "");
}

TEST_F(BtrieveErrors, MessageIsTheTextOfTheStatus) {
  const Variant message = btrieve_.ErrorMessage(3);
  EXPECT_EQ(message.GetKind(), Variant::Kind::String);
  EXPECT_EQ(message.ToText(),
            "Btrieve error 3: File Not Opened\r\n"
            "\r\n"
            "A file must be opened before any Btrieve\r\n"
            "operation can be performed on it.");
}

TEST_F(BtrieveErrors, MessageOfAnUnlistedStatusNamesItsNumber) {
  EXPECT_EQ(btrieve_.ErrorMessage(0), Variant("Btrieve error 0"));
  EXPECT_EQ(btrieve_.ErrorMessage(-1), Variant("Btrieve error -1"));
  EXPECT_EQ(btrieve_.ErrorMessage(400), Variant("Btrieve error 400"));
}

// --- Versions ---

/// One of the three version blocks that the engine gives.
struct Block {
  std::int16_t version;
  std::int16_t revision;
  std::uint8_t id;

  /// The text of this block's numbers with an id, nothing between revision and id.
  [[nodiscard]] std::string Text(std::uint8_t shownId) const {
    return std::to_string(version) + "." + std::to_string(revision) + std::to_string(shownId);
  }
};

using VersionBuffer = std::array<std::byte, TovrinFile::VersionBufferSize>;

Block BlockAt(const VersionBuffer& buffer, std::size_t offset) {
  Block block;
  std::memcpy(&block.version, &buffer.at(offset), sizeof block.version);
  std::memcpy(&block.revision, &buffer.at(offset + 2), sizeof block.revision);
  block.id = std::to_integer<std::uint8_t>(buffer.at(offset + 4));
  return block;
}

/// The engine's version blocks, asked as a connection without a company asks.
struct Blocks {
  Blocks() {
    VersionBuffer buffer{};
    status = TovrinFile().btVersion(TovrinFileNames::CompanyFile(), buffer);
    a = BlockAt(buffer, 0);
    b = BlockAt(buffer, 5);
    c = BlockAt(buffer, 10);
  }

  Status status;
  Block a, b, c;
};

TEST_F(BtrieveVersions, ComeFromTheThreeBlocksAndTheServerBearsTheIdOfTheRequestor) {
  const Blocks blocks;
  ASSERT_NE(blocks.b.id, blocks.c.id);
  std::string client, requestor, server;
  EXPECT_EQ(btrieve_.btGetVersion(client, requestor, server), blocks.status);
  EXPECT_EQ(client, blocks.a.Text(blocks.a.id));
  EXPECT_EQ(requestor, blocks.c.Text(blocks.c.id));
  EXPECT_EQ(server, blocks.b.Text(blocks.c.id));
}

TEST_F(BtrieveVersions, AnswerWithoutACompany) {
  std::string client, requestor, server;
  EXPECT_EQ(btrieve_.btGetVersion(client, requestor, server), StatusSuccess);
  EXPECT_NE(client, "");
}

TEST_F(BtrieveVersions, OverwriteWhatTheTextsHeld) {
  const UnconnectedCompany company;
  Connect(company.Path());
  std::string client = "x", requestor = "y", server = "z";
  EXPECT_EQ(btrieve_.btGetVersion(client, requestor, server), StatusSuccess);
  EXPECT_EQ(client, btrieve_.ClientVersion());
  EXPECT_EQ(requestor, btrieve_.RequestorVersion());
  EXPECT_EQ(server, btrieve_.ServerVersion());
}

TEST_F(BtrieveVersions, AreFetchedAtConstruction) {
  const Blocks blocks;
  EXPECT_EQ(btrieve_.ClientVersion(), blocks.a.Text(blocks.a.id));
  EXPECT_EQ(btrieve_.RequestorVersion(), blocks.c.Text(blocks.c.id));
  EXPECT_EQ(btrieve_.ServerVersion(), blocks.b.Text(blocks.c.id));
}

TEST_F(BtrieveVersions, LeaveOpenTablesOpen) {
  const UnconnectedCompany company;
  Connect(company.Path());
  Address address;
  ASSERT_EQ(address.OpenFile(), StatusSuccess);
  ASSERT_EQ(address.Insert(), StatusSuccess);
  std::string client, requestor, server;
  btrieve_.btGetVersion(client, requestor, server);
  EXPECT_EQ(address.StepFirst(), StatusSuccess);
}

TEST_F(BtrieveVersions, TheRecordInterfaceHasAFixedOne) {
  EXPECT_EQ(btrieve_.TovrinVersion(), "2.13.0");
}

// --- The object itself ---

static_assert(std::is_move_constructible_v<Btrieve> && std::is_move_assignable_v<Btrieve>);
static_assert(!std::is_copy_constructible_v<Btrieve> && !std::is_copy_assignable_v<Btrieve>);

TEST_F(BtrieveVersions, MoveWithTheObject) {
  const std::string client = btrieve_.ClientVersion();
  Btrieve moved(std::move(btrieve_));
  EXPECT_EQ(moved.ClientVersion(), client);
}

}  // namespace
}  // namespace larkmoor
