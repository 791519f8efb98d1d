// Opening, making and keeping record files: names, folders, rights, owners, foreign files, room.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engine/store/conformance.h"
#include "support/child_process.h"

namespace larkmoor::test {
namespace {

namespace fs = std::filesystem;
using store::OpenMode;
using store::Seek;
using store::Step;

class OpenAnswers : public DriverTest {
 protected:
  /// The status of an open; what was opened is closed again.
  Status OpenStatus(const fs::path& path, OpenMode mode = OpenMode::Normal) {
    std::unique_ptr<store::File> file;
    const Status status = Driver().Open(path, mode, file);
    EXPECT_EQ(file != nullptr, status == StatusSuccess);
    return status;
  }

  /// Makes a file of that many records and closes it.
  fs::path MakeFilled(std::int32_t records) {
    Cursor file = New(SampleFile());
    const auto batch = Driver().BeginBatch();
    for (std::int32_t i = 1; i <= records; ++i) Fill(file, {MadeSample(i, i)});
    EXPECT_EQ(batch->Commit(), StatusSuccess);
    return file.Path();
  }
};
INSTANTIATE_TEST_SUITE_P(Every, OpenAnswers, testing::ValuesIn(EveryDriver()), DriverName);

// Making -----------------------------------------------------------------------------------------

TEST_P(OpenAnswers, AMadeFileIsOneFileOfThatNameAndEmpty) {
  const fs::path path = Make(SampleFile());
  EXPECT_TRUE(fs::is_regular_file(path));
  EXPECT_EQ(Cursor(Driver(), path).File().RecordCount(), 0);
}

TEST_P(OpenAnswers, MakingAFileThatExistsAnswers59AndLeavesIt) {
  const fs::path path = MakeFilled(3);
  EXPECT_EQ(Driver().Create(path, SampleFile()), StatusFileExists);
  EXPECT_EQ(Cursor(Driver(), path).File().RecordCount(), 3);
}

TEST_P(OpenAnswers, MakingAFileLeavesAForeignOneOfThatName) {
  std::ofstream(Folder() / "Sample.dat") << "a letter";
  EXPECT_EQ(Driver().Create(Folder() / "Sample.dat", SampleFile()), StatusFileExists);
  EXPECT_EQ(fs::file_size(Folder() / "Sample.dat"), 8U);
}

TEST_P(OpenAnswers, AFileInAMissingFolderCannotBeMade) {
  EXPECT_EQ(Driver().Create(Folder() / "none" / "Sample.dat", SampleFile()), StatusFileNotFound);
}

TEST_P(OpenAnswers, ACopyOfTheFileAloneIsTheWholeFile) {
  const fs::path path = MakeFilled(50);
  fs::create_directory(Folder() / "copy");
  fs::copy_file(path, Folder() / "copy" / "Sample.dat");
  Cursor copy(Driver(), Folder() / "copy" / "Sample.dat");
  EXPECT_EQ(NumbersByKey(copy, SampleKey::Number).size(), 50U);
  EXPECT_EQ(Findings(copy.Path()), Nothing);
}

// Names ------------------------------------------------------------------------------------------

TEST_P(OpenAnswers, AMissingFileAndAMissingFolderAnswer12) {
  EXPECT_EQ(OpenStatus(Folder() / "None.dat"), StatusFileNotFound);
  EXPECT_EQ(OpenStatus(Folder() / "None.dat", OpenMode::ReadOnly), StatusFileNotFound);
  EXPECT_EQ(OpenStatus(Folder() / "none" / "Sample.dat"), StatusFileNotFound);
}

/// How many parts of its memory the process has mapped.
std::size_t Mappings() {
  std::ifstream maps("/proc/self/maps");
  std::size_t count = 0;
  for (std::string line; std::getline(maps, line);) ++count;
  return count;
}

// A service that opens and closes for months would run out of them.
TEST_P(OpenAnswers, OpeningAndClosingLeavesNothingMapped) {
  const fs::path path = MakeFilled(1);
  ASSERT_EQ(OpenStatus(path), StatusSuccess);
  const std::size_t before = Mappings();
  for (int i = 0; i < 50; ++i) ASSERT_EQ(OpenStatus(path), StatusSuccess);
  EXPECT_LT(Mappings(), before + 25);
}

TEST_P(OpenAnswers, AnOpenOfAMissingFileMakesNone) {
  EXPECT_EQ(OpenStatus(Folder() / "None.dat"), StatusFileNotFound);
  EXPECT_TRUE(fs::is_empty(Folder()));
}

TEST_P(OpenAnswers, AnImpossibleNameAnswers11) {
  EXPECT_EQ(OpenStatus(Folder() / std::string(300, 'x')), StatusInvalidFileName);
}

// Files that are none ----------------------------------------------------------------------------

TEST_P(OpenAnswers, AFileOfAnotherKindAnswers30) {
  std::ofstream(Folder() / "Letter.dat") << "Dear Sirs, this is no record file.";
  std::ofstream(Folder() / "Long.dat") << std::string(100'000, 'x');
  std::ofstream(Folder() / "Zeros.dat") << std::string(100'000, '\0');
  for (const char* name : {"Letter.dat", "Long.dat", "Zeros.dat"}) {
    EXPECT_EQ(OpenStatus(Folder() / name), StatusNotARecordFile) << name;
    EXPECT_EQ(OpenStatus(Folder() / name, OpenMode::ReadOnly), StatusNotARecordFile) << name;
  }
}

TEST_P(OpenAnswers, AFileOfAnotherKindIsNotChanged) {
  const fs::path path = Folder() / "Empty.dat";
  std::ofstream(path).close();
  EXPECT_EQ(OpenStatus(path), StatusNotARecordFile);
  EXPECT_EQ(fs::file_size(path), 0U);
}

TEST_P(OpenAnswers, AFolderIsNoRecordFile) {
  fs::create_directory(Folder() / "Sample.dat");
  EXPECT_NE(OpenStatus(Folder() / "Sample.dat"), StatusSuccess);
}

TEST_P(OpenAnswers, ATruncatedFileAnswers30Or2) {
  constexpr std::size_t Records = 2000;
  const fs::path whole = MakeFilled(Records);
  const auto size = fs::file_size(whole);
  std::vector<std::uintmax_t> sizes{size - 1, size - 4096, size / 2};
  for (std::uintmax_t cut = 1; cut < size / 2; cut *= 4) sizes.push_back(cut);
  for (const std::uintmax_t cut : sizes) {
    SCOPED_TRACE(testing::Message() << "the first " << cut << " bytes of " << size);
    const fs::path path = Folder() / ("Cut" + std::to_string(cut) + ".dat");
    fs::copy_file(whole, path);
    fs::resize_file(path, cut);
    // A missing piece that is noticed too late ends the process.
    RunInChild([&] {
      const Status status = OpenStatus(path);
      if (status == StatusSuccess) {
        // Room that held nothing may be missing.
        Cursor file(Driver(), path);
        EXPECT_EQ(NumbersByStep(file).size(), Records);
        EXPECT_EQ(Findings(path), Nothing);
      } else {
        EXPECT_TRUE(status == StatusNotARecordFile || status == StatusIOError) << status;
      }
    });
  }
}

// The folder is looked at each time --------------------------------------------------------------

TEST_P(OpenAnswers, AFileThatWasTakenAwayAnswers12AndOnePutBackIsOpened) {
  const fs::path path = MakeFilled(3);
  const fs::path aside = Folder() / "Aside.bak";
  Cursor before(Driver(), path);
  fs::rename(path, aside);
  EXPECT_EQ(OpenStatus(path), StatusFileNotFound);
  EXPECT_EQ(OpenStatus(path, OpenMode::ReadOnly), StatusFileNotFound);
  fs::rename(aside, path);
  Cursor after(Driver(), path);
  EXPECT_EQ(after.File().RecordCount(), 3);
  Fill(after, {{.number = 10}});
  EXPECT_EQ(before.File().RecordCount(), 4);
}

TEST_P(OpenAnswers, AnObjectGoesOnWithAFileThatWasTakenAway) {
  const fs::path path = MakeFilled(3);
  const fs::path aside = Folder() / "Aside.bak";
  Cursor file(Driver(), path);
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Number), StatusSuccess);
  fs::rename(path, aside);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(file.Delete(), StatusSuccess);
  Fill(file, {{.number = 10}, {.number = 11}});
  fs::rename(aside, path);
  Cursor back(Driver(), path);
  EXPECT_EQ(NumbersByKey(back, SampleKey::Number), (Numbers{1, 3, 10, 11}));
}

TEST_P(OpenAnswers, AnotherFilePutInThePlaceIsTheOneOpenedFromThenOn) {
  const fs::path path = MakeFilled(3);
  Cursor old(Driver(), path);
  fs::rename(path, Folder() / "Aside.bak");
  Cursor replacement = New(SampleFile());
  EXPECT_EQ(replacement.File().RecordCount(), 0);
  Fill(replacement, {{.number = 77}});
  EXPECT_EQ(NumbersByKey(old, SampleKey::Number), (Numbers{1, 2, 3}));
  Fill(old, {{.number = 4}});
  EXPECT_EQ(NumbersByKey(replacement, SampleKey::Number), (Numbers{77}));
  EXPECT_EQ(Cursor(Driver(), path).File().RecordCount(), 1);
}

TEST_P(OpenAnswers, AnObjectGoesOnWithAFileThatWasRemoved) {
  const fs::path path = MakeFilled(3);
  Cursor file(Driver(), path);
  fs::remove(path);
  EXPECT_EQ(OpenStatus(path), StatusFileNotFound);
  EXPECT_EQ(NumbersByKey(file, SampleKey::Number), (Numbers{1, 2, 3}));
  EXPECT_EQ(file.Delete(), StatusSuccess);
}

TEST_P(OpenAnswers, AFileMayBeMadeAnewWhereOneWasRemoved) {
  const fs::path path = MakeFilled(3);
  fs::remove(path);
  Cursor file = New(StrictFile());
  fs::rename(file.Path(), path);
  EXPECT_EQ(Cursor(Driver(), path).File().Description().name, "Strict");
}

// Many objects -----------------------------------------------------------------------------------

TEST_P(OpenAnswers, HundredsOfObjectsMayHaveAFileOpen) {
  const fs::path path = MakeFilled(400);
  std::vector<Cursor> objects;
  for (std::int32_t i = 1; i <= 400; ++i) {
    objects.emplace_back(Driver(), path);
    ASSERT_EQ(objects.back().Get(Seek::Equal, SampleKey::Number, {.number = i}), StatusSuccess);
  }
  ASSERT_EQ(objects.front().Delete(), StatusSuccess);
  for (std::int32_t i = 1; i < 400; ++i) {
    ASSERT_EQ(objects[static_cast<std::size_t>(i) - 1].Get(Seek::Next, SampleKey::Number),
              StatusSuccess);
    EXPECT_EQ(objects[static_cast<std::size_t>(i) - 1].InHand().number, i + 1);
  }
}

TEST_P(OpenAnswers, ManyFilesMayBeOpenAtOnce) {
  std::vector<Cursor> files;
  for (int i = 0; i < 80; ++i) {
    store::FileDescription description = SampleFile();
    description.name += std::to_string(i);
    files.push_back(New(description));
    Fill(files.back(), {{.number = i}});
  }
  for (int i = 0; i < 80; ++i) {
    EXPECT_EQ(NumbersByStep(files[static_cast<std::size_t>(i)]),
              (Numbers{i == 0 ? 1 : i}));  // a 0 asks for a number
  }
}

// Rights -----------------------------------------------------------------------------------------

TEST_P(OpenAnswers, AFileSystemThatRefusesWritesAnswers94InNormalModeOnly) {
  const fs::path path = MakeFilled(3);
  fs::permissions(path, fs::perms(0444));
  fs::permissions(Folder(), fs::perms(0755));
  RunInChild([&] {
    ASSERT_TRUE(BecomeNobody());
    EXPECT_EQ(OpenStatus(path), StatusPermission);
    Cursor file(Driver(), path, OpenMode::ReadOnly);
    EXPECT_EQ(NumbersByKey(file, SampleKey::Number), (Numbers{1, 2, 3}));
    EXPECT_EQ(file.Delete(), StatusAccessDenied);
  });
}

TEST_P(OpenAnswers, AFolderThatTakesNoFilesCanBeRead) {
  const fs::path made = MakeFilled(3);
  // A copy, so that nothing that an open leaves lies beside it.
  const fs::path folder = Folder() / "sealed";
  fs::create_directory(folder);
  fs::copy_file(made, folder / "Sample.dat");
  fs::permissions(folder / "Sample.dat", fs::perms(0444));
  fs::permissions(Folder(), fs::perms(0755));
  fs::permissions(folder, fs::perms(0555));
  RunInChild([&] {
    ASSERT_TRUE(BecomeNobody());
    Cursor file(Driver(), folder / "Sample.dat", OpenMode::ReadOnly);
    EXPECT_EQ(NumbersByKey(file, SampleKey::Number), (Numbers{1, 2, 3}));
  });
  fs::permissions(folder, fs::perms(0755));
}

TEST_P(OpenAnswers, AReadOnlyDiskCanBeRead) {
  if (!CanMount()) GTEST_SKIP() << "takes the right to mount";
  const fs::path path = MakeFilled(3);
  RunInChild([&] {
    MountReadOnly(Folder());
    EXPECT_EQ(OpenStatus(path), StatusPermission);
    Cursor file(Driver(), path, OpenMode::ReadOnly);
    EXPECT_EQ(NumbersByKey(file, SampleKey::Number), (Numbers{1, 2, 3}));
    EXPECT_EQ(NumbersByStepBackwards(file), (Numbers{3, 2, 1}));
  });
}

// Owner names ------------------------------------------------------------------------------------

TEST_P(OpenAnswers, AProtectedFileAnswers51UntilTheProtectionIsTakenAway) {
  const fs::path path = MakeFilled(1);
  ASSERT_EQ(Driver().SetOwner(path, "secret", false), StatusSuccess);
  EXPECT_EQ(OpenStatus(path), StatusInvalidOwner);
  EXPECT_EQ(OpenStatus(path, OpenMode::ReadOnly), StatusInvalidOwner);
  EXPECT_EQ(Driver().ClearOwner(path, "guess"), StatusInvalidOwner);
  EXPECT_EQ(OpenStatus(path), StatusInvalidOwner);
  EXPECT_EQ(Driver().ClearOwner(path, "secret"), StatusSuccess);
  EXPECT_EQ(Cursor(Driver(), path).File().RecordCount(), 1);
}

TEST_P(OpenAnswers, AProtectedFileMayAllowReadsAndAnswers46ToWrites) {
  const fs::path path = MakeFilled(2);
  ASSERT_EQ(Driver().SetOwner(path, "secret", true), StatusSuccess);
  Cursor file(Driver(), path);
  EXPECT_EQ(NumbersByKey(file, SampleKey::Number), (Numbers{1, 2}));
  EXPECT_EQ(file.Insert(SampleKey::Number, {}), StatusAccessDenied);
  EXPECT_EQ(file.Update(SampleKey::Number, MadeSample(2, 9)), StatusAccessDenied);
  EXPECT_EQ(file.Delete(), StatusAccessDenied);
  EXPECT_EQ(OpenStatus(path, OpenMode::ReadOnly), StatusSuccess);
  ASSERT_EQ(Driver().ClearOwner(path, "secret"), StatusSuccess);
  EXPECT_EQ(Cursor(Driver(), path).Insert(SampleKey::Number, {}), StatusSuccess);
}

TEST_P(OpenAnswers, AdministrationDoesNotLookAtOwnerNames) {
  const fs::path path = MakeFilled(2);
  ASSERT_EQ(Driver().SetOwner(path, "secret", false), StatusSuccess);
  store::FileStatistics statistics;
  EXPECT_EQ(Driver().Statistics(path, statistics), StatusSuccess);
  EXPECT_TRUE(statistics.hasOwner);
  EXPECT_FALSE(statistics.ownerAllowsRead);
  EXPECT_EQ(Findings(path), Nothing);
  EXPECT_EQ(Driver().Compact(path), StatusSuccess);
  EXPECT_EQ(OpenStatus(path), StatusInvalidOwner);
}

TEST_P(OpenAnswers, AMissingFileHasNoOwner) {
  EXPECT_EQ(Driver().SetOwner(Folder() / "None.dat", "secret", false), StatusFileNotFound);
  EXPECT_EQ(Driver().ClearOwner(Folder() / "None.dat", "secret"), StatusFileNotFound);
}

// Care -------------------------------------------------------------------------------------------

TEST_P(OpenAnswers, StatisticsTellWhatAFileHolds) {
  const fs::path path = MakeFilled(3);
  store::FileStatistics statistics;
  ASSERT_EQ(Driver().Statistics(path, statistics), StatusSuccess);
  EXPECT_EQ(statistics.description.name, "Sample");
  EXPECT_EQ(statistics.description.keys.size(), SampleFile().keys.size());
  EXPECT_EQ(statistics.records, 3);
  EXPECT_GT(statistics.bytes, 0U);
  EXPECT_FALSE(statistics.hasOwner);
  EXPECT_EQ(Driver().Statistics(Folder() / "None.dat", statistics), StatusFileNotFound);
}

TEST_P(OpenAnswers, VerifyTellsItsProgress) {
  const fs::path path = MakeFilled(2000);
  std::int64_t last = -1;
  bool rising = true;
  std::vector<std::string> findings;
  EXPECT_EQ(Driver().Verify(path, findings,
                            [&](std::int64_t done, std::int64_t total) {
                              rising = rising && done >= last && done <= total;
                              last = done;
                            }),
            StatusSuccess);
  EXPECT_EQ(findings, Nothing);
  EXPECT_TRUE(rising);
}

TEST_P(OpenAnswers, CompactGivesTheRoomOfDeletedRecordsBackAndKeepsAllElse) {
  const fs::path path = MakeFilled(5000);
  Numbers left;
  {
    Cursor file(Driver(), path);
    const auto batch = Driver().BeginBatch();
    for (Status status = file.StepTo(Step::First); status == StatusSuccess;
         status = file.StepTo(Step::Next)) {
      if (file.InHand().number % 50 == 0) {
        left.push_back(file.InHand().number);
      } else {
        ASSERT_EQ(file.Delete(), StatusSuccess);
      }
    }
    // A record at the front of every path and at the end of the physical order.
    Fill(file, {{.number = 6000, .account = -1}});
    left.push_back(6000);
    ASSERT_EQ(batch->Commit(), StatusSuccess);
  }
  const auto before = fs::file_size(path);
  ASSERT_EQ(Driver().Compact(path), StatusSuccess);
  EXPECT_LT(fs::file_size(path), before / 2);
  EXPECT_EQ(Findings(path), Nothing);

  Cursor file(Driver(), path);
  EXPECT_EQ(NumbersByStep(file), left);
  EXPECT_EQ(NumbersByKey(file, SampleKey::Number), left);
  ASSERT_EQ(file.Insert(SampleKey::Number, {}), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 6001);
  EXPECT_EQ(file.StepTo(Step::Previous), StatusSuccess);
  EXPECT_EQ(file.InHand(), (Sample{.number = 6000, .account = -1}));
}

TEST_P(OpenAnswers, CompactAnswers85WhileAnObjectHasTheFileOpen) {
  const fs::path path = MakeFilled(3);
  {
    Cursor file(Driver(), path);
    EXPECT_EQ(Driver().Compact(path), StatusFileInUse);
    EXPECT_EQ(NumbersByKey(file, SampleKey::Number), (Numbers{1, 2, 3}));
  }
  EXPECT_EQ(Driver().Compact(path), StatusSuccess);
  EXPECT_EQ(Driver().Compact(Folder() / "None.dat"), StatusFileNotFound);
}

TEST_P(OpenAnswers, TheEngineTellsThreeVersionsWithTheirIds) {
  std::vector<int> ids;
  for (const store::EngineVersion& version : Driver().Versions()) ids.push_back(version.id);
  std::sort(ids.begin(), ids.end());
  EXPECT_EQ(ids, (std::vector<int>{78, 83, 87}));
}

// Room -------------------------------------------------------------------------------------------

TEST_P(OpenAnswers, AFileGrowsUnderEveryObjectThatHasItOpen) {
  constexpr std::int32_t Records = 20'000;
  Cursor reader = New(SampleFile());
  Fill(reader, {MadeSample(1, 1)});
  Cursor writer = reader.Another();
  {
    const auto batch = Driver().BeginBatch();
    for (std::int32_t i = 2; i <= Records; ++i) Fill(writer, {MadeSample(i, i)});
    ASSERT_EQ(batch->Commit(), StatusSuccess);
  }
  EXPECT_EQ(reader.File().RecordCount(), Records);
  Numbers expected(Records);
  std::generate(expected.begin(), expected.end(), [i = 0]() mutable { return ++i; });
  EXPECT_EQ(NumbersByStep(reader), expected);
  EXPECT_EQ(Findings(reader.Path()), Nothing);
}

TEST_P(OpenAnswers, AFullDiskAnswers18AndNothingIsLost) {
  if (!CanMount()) GTEST_SKIP() << "takes the right to mount";
  RunInChild([&] {
    MountMemoryDisk(Folder(), 4U << 20U);
    std::ofstream(Folder() / "ballast") << std::string(1U << 20U, 'x');
    Cursor file = New(SampleFile());
    std::int32_t written = 0;
    Status status = StatusSuccess;
    while (written < 1'000'000) {
      status = file.Insert(SampleKey::Number, MadeSample(written + 1, written + 1));
      if (status != StatusSuccess) break;
      ++written;
    }
    EXPECT_EQ(status, StatusDiskFull);
    EXPECT_EQ(file.File().RecordCount(), written);
    Cursor reader = file.Another();
    EXPECT_EQ(NumbersByKey(reader, SampleKey::Guid).size(), static_cast<std::size_t>(written));
    EXPECT_EQ(Findings(file.Path()), Nothing);

    fs::remove(Folder() / "ballast");
    EXPECT_EQ(file.Insert(SampleKey::Number, MadeSample(written + 1, 1)), StatusSuccess);
    EXPECT_EQ(reader.File().RecordCount(), written + 1);
  });
}

TEST_P(OpenAnswers, ABatchThatFillsTheDiskAnswers18AndKeepsNothing) {
  if (!CanMount()) GTEST_SKIP() << "takes the right to mount";
  RunInChild([&] {
    MountMemoryDisk(Folder(), 4U << 20U);
    Cursor file = New(SampleFile());
    Fill(file, {MadeSample(1, 1)});
    {
      const auto batch = Driver().BeginBatch();
      Status status = StatusSuccess;
      for (std::int32_t i = 2; i < 100'000 && status == StatusSuccess; ++i) {
        status = file.Insert(SampleKey::Number, MadeSample(i, i));
      }
      if (status == StatusSuccess) status = batch->Commit();
      EXPECT_EQ(status, StatusDiskFull);
    }
    Cursor reader = file.Another();
    EXPECT_EQ(NumbersByKey(reader, SampleKey::Number), (Numbers{1}));
    Fill(reader, {MadeSample(2, 2)});
    EXPECT_EQ(Findings(file.Path()), Nothing);
  });
}

}  // namespace
}  // namespace larkmoor::test
