// Making a company where others can get at the folder: whose the files are, what bears their names
// already, what a failure leaves, and several who make one at the same time.
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/company.h>
#include <larkmoor/connection/btrieve.h>
#include <larkmoor/error.h>
#include <larkmoor/status.h>
#include <larkmoor/tables/address.h>

#include "engine/records/all_records.h"
#include "engine/store/driver.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::RunInChild;
using test::TempFolder;
using test::WriteFile;

/// The status of the error that making a company there raises, 0 where it is made.
Status MakingAnswers(const fs::path& folder) {
  try {
    CreateCompany(folder);
    return StatusSuccess;
  } catch (const Error& error) {
    return error.BtrieveStatus();
  }
}

/// The names that a company's files have.
std::set<std::string> CompanyNames() {
  std::set<std::string> names{"VERSION.TXT"};
  for (const RecordDescription* record : AllRecords()) names.emplace(record->fileName);
  return names;
}

std::set<std::string> NamesIn(const fs::path& folder) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
  return names;
}

mode_t PermissionsOf(const fs::path& path) {
  struct stat status {};
  EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777U;
}

/// A folder for companies, and beside it one that is nobody's business.
class CompanyFolder : public testing::Test {
 protected:
  CompanyFolder() {
    fs::create_directory(Folder());
    fs::create_directory(Outside());
    WriteFile(Outside() / "letter", "private");
  }

  fs::path Folder() const { return parent_.Path() / "company"; }
  fs::path Outside() const { return parent_.Path() / "outside"; }
  fs::path Letter() const { return Outside() / "letter"; }

  /// Nothing was made, changed or cut off outside.
  void ExpectNothingHappenedOutside() {
    EXPECT_EQ(ReadFile(Letter()), "private");
    EXPECT_EQ(NamesIn(Outside()), (std::set<std::string>{"letter"}));
  }

  void ExpectACompanyThatWorks(const fs::path& folder) {
    Btrieve connection;
    ASSERT_EQ(connection.Connect(folder.string()), Variant(StatusSuccess));
    Address address;
    ASSERT_EQ(address.OpenFile(), StatusSuccess);
    EXPECT_EQ(address.Insert(), StatusSuccess);
  }

  TempFolder parent_;
};

// --- Permissions ---

using CompanyPermissions = CompanyFolder;

TEST_F(CompanyPermissions, AreThoseOfTheFolderForEveryFileWhateverTheUmask) {
  for (const mode_t folderMode : {0700U, 0750U, 0770U, 0755U, 0777U}) {
    for (const mode_t mask : {0U, 027U, 077U}) {
      SCOPED_TRACE(testing::Message() << std::oct << folderMode << " under " << mask);
      fs::remove_all(Folder());
      fs::create_directory(Folder());
      ASSERT_EQ(chmod(Folder().c_str(), folderMode), 0);
      RunInChild([&] {
        umask(mask);
        CreateCompany(Folder());
        ExpectACompanyThatWorks(Folder());  // and has its lock files
      });
      EXPECT_TRUE(fs::exists(Folder() / "Address.dat-lock"));
      for (const std::string& name : NamesIn(Folder())) {
        EXPECT_EQ(PermissionsOf(Folder() / name), folderMode & 0666U) << name;
      }
    }
  }
}

TEST_F(CompanyPermissions, OfAFolderThatIsMadeAreWhatTheUmaskLeaves) {
  fs::remove(Folder());
  RunInChild([&] {
    umask(027);
    CreateCompany(Folder());
  });
  EXPECT_EQ(PermissionsOf(Folder()), 0750U);
  EXPECT_EQ(PermissionsOf(Folder() / "Address.dat"), 0640U);
  EXPECT_EQ(PermissionsOf(Folder() / "VERSION.TXT"), 0640U);
}

/// Looks at all names of a folder again and again, and keeps the widest permissions of each.
class Watcher {
 public:
  explicit Watcher(const fs::path& folder)
      : thread_([this, folder] {
          while (!stop_) Look(folder);
        }) {}
  ~Watcher() { End(); }
  Watcher(const Watcher&) = delete;
  Watcher& operator=(const Watcher&) = delete;

  std::map<std::string, mode_t> Widest() {
    End();
    return widest_;
  }

 private:
  void Look(const fs::path& folder) {
    std::error_code gone;
    for (fs::directory_iterator entry(folder, gone), end; !gone && entry != end;
         entry.increment(gone)) {
      struct stat status {};
      if (lstat(entry->path().c_str(), &status) != 0) continue;
      widest_[entry->path().filename()] |= status.st_mode & 07777U;
    }
  }
  void End() {
    stop_ = true;
    if (thread_.joinable()) thread_.join();
  }

  std::map<std::string, mode_t> widest_;
  std::atomic<bool> stop_ = false;
  std::thread thread_;
};

TEST_F(CompanyPermissions, AreNeverWiderForAMoment) {
  // Files on their way have names that they do not keep, and not every look comes in time for one.
  constexpr std::size_t Enough = 10;
  RunInChild([&] {
    umask(0);
    std::set<std::string> onTheirWay;
    for (int round = 0; round < 100 && onTheirWay.size() < Enough; ++round) {
      const fs::path folder = Folder() / std::to_string(round);
      ASSERT_EQ(mkdir(folder.c_str(), 0700), 0);
      Watcher watcher(folder);
      CreateCompany(folder);
      for (const auto& [name, permissions] : watcher.Widest()) {
        EXPECT_EQ(permissions, 0600U) << name;
        if (!fs::exists(folder / name)) onTheirWay.insert(name);
      }
    }
    EXPECT_GE(onTheirWay.size(), Enough);
  });
}

// --- Links ---

using CompanyLinks = CompanyFolder;

TEST_F(CompanyLinks, InPlaceOfAFileAreRefusedAndNotFollowed) {
  for (const std::string& name : CompanyNames()) {
    for (const fs::path& target : {Letter(), Outside() / "new", Folder() / name}) {
      SCOPED_TRACE(name + " to " + target.string());
      fs::create_symlink(target, Folder() / name);
      EXPECT_EQ(MakingAnswers(Folder()), StatusFileExists);
      EXPECT_EQ(NamesIn(Folder()), (std::set<std::string>{name}));
      EXPECT_TRUE(fs::is_symlink(Folder() / name));
      ExpectNothingHappenedOutside();
      fs::remove(Folder() / name);
    }
  }
}

TEST_F(CompanyLinks, InPlaceOfALockFileAreReplacedAndNotFollowed) {
  for (const fs::path& target : {Letter(), Outside() / "new"}) {
    for (const std::string& name : CompanyNames()) {
      fs::create_symlink(target, Folder() / (name + "-lock"));
    }
    CreateCompany(Folder());
    ExpectACompanyThatWorks(Folder());
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(Folder() / "Address.dat-lock")));
    ExpectNothingHappenedOutside();
    fs::remove_all(Folder());
    fs::create_directory(Folder());
  }
}

TEST_F(CompanyLinks, ToAFolderLeadToACompanyThere) {
  fs::create_directory_symlink(Folder(), parent_.Path() / "link");
  CreateCompany(parent_.Path() / "link");
  EXPECT_TRUE(fs::is_symlink(parent_.Path() / "link"));
  ExpectACompanyThatWorks(Folder());
}

TEST_F(CompanyLinks, ToNoFolderAreRefused) {
  for (const fs::path& target : {Outside() / "new", Letter(), parent_.Path() / "link"}) {
    SCOPED_TRACE(target);
    fs::create_symlink(target, parent_.Path() / "link");
    EXPECT_EQ(MakingAnswers(parent_.Path() / "link"), StatusInvalidFileName);
    EXPECT_EQ(MakingAnswers(parent_.Path() / "link" / "below"), StatusInvalidFileName);
    EXPECT_TRUE(fs::is_symlink(parent_.Path() / "link"));
    ExpectNothingHappenedOutside();
    fs::remove(parent_.Path() / "link");
  }
}

/// Puts a link to the letter in place of the version file as soon as the company has a file.
/// Returns whether it came before the company's own.
bool PlantVersionLink(const fs::path& folder, const fs::path& letter,
                      const std::atomic<bool>& stop) {
  while (!stop && fs::is_empty(folder)) {
  }
  return symlink(letter.c_str(), (folder / "VERSION.TXT").c_str()) == 0;
}

TEST_F(CompanyLinks, ThatComeInBetweenAreNotFollowedAndStay) {
  bool wasInTime = false;
  for (int attempt = 0; attempt < 50 && !wasInTime; ++attempt) {
    fs::remove_all(Folder());
    fs::create_directory(Folder());
    std::atomic<bool> stop = false;
    std::thread planter([&] { wasInTime = PlantVersionLink(Folder(), Letter(), stop); });
    const Status status = MakingAnswers(Folder());
    stop = true;
    planter.join();
    EXPECT_EQ(status, wasInTime ? StatusFileExists : StatusSuccess);
    ExpectNothingHappenedOutside();
  }
  ASSERT_TRUE(wasInTime);
  EXPECT_EQ(NamesIn(Folder()), (std::set<std::string>{"VERSION.TXT"}));
  EXPECT_TRUE(fs::is_symlink(Folder() / "VERSION.TXT"));
}

// --- What is no file ---

TEST_F(CompanyFolder, AFifoOrAFolderInPlaceOfAFileIsRefused) {
  for (const std::string name : {"Address.dat", "WorkTicket.dat", "VERSION.TXT"}) {
    SCOPED_TRACE(name);
    ASSERT_EQ(mkfifo((Folder() / name).c_str(), 0600), 0);
    EXPECT_EQ(MakingAnswers(Folder()), StatusFileExists);
    fs::remove(Folder() / name);
    fs::create_directory(Folder() / name);
    EXPECT_EQ(MakingAnswers(Folder()), StatusFileExists);
    EXPECT_EQ(NamesIn(Folder()), (std::set<std::string>{name}));
    fs::remove(Folder() / name);
  }
}

// --- Failures ---

TEST_F(CompanyFolder, ACompanyThatFailsHalfWayLeavesWhatWasThereAndNothingElse) {
  WriteFile(Folder() / "Notes.txt", "to be read first");
  RunInChild([&] {
    // Room for the files, and for no more than the first lock files.
    signal(SIGXFSZ, SIG_IGN);
    const rlimit most{100'000, 100'000};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &most), 0);
    EXPECT_NE(MakingAnswers(Folder()), StatusSuccess);
    EXPECT_NE(MakingAnswers(Folder() / "of" / "many"), StatusSuccess);
  });
  EXPECT_EQ(NamesIn(Folder()), (std::set<std::string>{"Notes.txt"}));
  EXPECT_EQ(ReadFile(Folder() / "Notes.txt"), "to be read first");
}

TEST_F(CompanyFolder, ADiskThatIsFullHalfWayAnswers18AndIsEmptyAgain) {
  if (!test::CanMount()) GTEST_SKIP() << "takes the right to mount";
  RunInChild([&] {
    test::MountMemoryDisk(Folder(), 512U << 10U);
    EXPECT_EQ(MakingAnswers(Folder()), StatusDiskFull);
    EXPECT_EQ(NamesIn(Folder()), std::set<std::string>{});
  });
}

// --- Several at the same time ---

TEST_F(CompanyFolder, OfSeveralWhoMakeACompanyAtTheSameTimeOneSucceeds) {
  constexpr int Makers = 4;
  for (int round = 0; round < 10; ++round) {
    const fs::path folder = Folder() / "new" / std::to_string(round);
    std::atomic<int> made = 0;
    std::vector<std::thread> makers;
    for (int i = 0; i < Makers; ++i) {
      makers.emplace_back([&] { made += MakingAnswers(folder) == StatusSuccess ? 1 : 0; });
    }
    for (std::thread& maker : makers) maker.join();
    EXPECT_EQ(made, 1);
    ExpectACompanyThatWorks(folder);
    for (const std::string& name : CompanyNames()) EXPECT_TRUE(fs::exists(folder / name)) << name;
  }
}

}  // namespace
}  // namespace larkmoor
