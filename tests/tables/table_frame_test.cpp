// The part that table classes are made of: one file, one record, the key number of the last read,
// and the departures from the common life of a table.
#include "tables/table_frame.h"

#include <cstdint>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "engine/records/address.h"
#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::Company;
using test::IsHeldOpen;

// Key numbers of the addresses.
constexpr std::int16_t ByNumber = 0;
constexpr std::int16_t ByVendor = 1;
constexpr std::int16_t ByCustomer = 2;

/// A frame over the addresses.
struct AddressFrame : TableFrame {
  explicit AddressFrame(FrameBehaviour behaviour = {})
      : TableFrame(AddressRecord::Describe(), TovrinFileNames::AddressFile(), behaviour) {}

  void AddForCustomer(std::int32_t customer) {
    Record().ClearBuffer();
    Record().SetLong(AddressRecord::CustomerRecordNumber, customer);
    ASSERT_EQ(Insert(), StatusSuccess);
  }

  Status GetFirstForCustomer(std::int32_t customer) {
    File().KeyLong(customer, 0);
    File().KeyLong(0, 4);
    return Read(&TovrinFile::btGetGreaterOrEqual, ByCustomer);
  }

  std::int32_t Number() { return Record().GetLong(AddressRecord::AddressRecordNumber); }
  std::int32_t Customer() { return Record().GetLong(AddressRecord::CustomerRecordNumber); }
};

/// A company whose addresses can be taken away and put back.
class FrameTest : public testing::Test {
 protected:
  std::filesystem::path AddressFile() const {
    return company_.Folder() / TovrinFileNames::AddressFile();
  }
  void TakeFileAway() { std::filesystem::rename(AddressFile(), Hidden()); }
  void PutFileBack() { std::filesystem::rename(Hidden(), AddressFile()); }

  Company company_;

 private:
  std::filesystem::path Hidden() const { return company_.Folder() / "taken away"; }
};

using PlainFrame = FrameTest;
using FrameThatKeepsItsOpenMark = FrameTest;
using FrameThatSetsNoMark = FrameTest;
using FrameThatKeepsItsFile = FrameTest;

// --- The common life of a table ---

TEST_F(PlainFrame, IsClosedAtFirst) {
  const AddressFrame frame;
  EXPECT_FALSE(frame.IsOpen());
  EXPECT_EQ(frame.KeyNumber(), 0);
  EXPECT_EQ(frame.FileVersion(), 0);
}

TEST_F(PlainFrame, AnswersFromAClosedFileBeforeOpenFile) {
  AddressFrame frame;
  EXPECT_EQ(frame.Insert(), StatusFileNotOpen);
  EXPECT_EQ(frame.Update(), StatusFileNotOpen);
  EXPECT_EQ(frame.Delete(), StatusFileNotOpen);
  EXPECT_EQ(frame.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(frame.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(frame.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(frame.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(frame.Read(&TovrinFile::btGetFirst, ByNumber), StatusFileNotOpen);
  EXPECT_EQ(frame.RecordCount(), 0);
  EXPECT_FALSE(frame.IsOpen());
  EXPECT_EQ(frame.CloseFile(), StatusSuccess);
}

TEST_F(PlainFrame, OpenFileMarksItAndTakesTheReleaseOfTheData) {
  const Company older(12.9);
  AddressFrame frame;
  EXPECT_EQ(frame.OpenFile(), StatusSuccess);
  EXPECT_TRUE(frame.IsOpen());
  EXPECT_DOUBLE_EQ(frame.FileVersion(), 12.9);
}

TEST_F(PlainFrame, OpenFileBindsTheRecordToTheFileAndBlanksIt) {
  AddressFrame frame;
  frame.Record().SetLong(AddressRecord::CustomerRecordNumber, 5);
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  EXPECT_EQ(frame.Customer(), 0);
  frame.AddForCustomer(6);
  EXPECT_EQ(frame.Number(), 1) << "the number that the engine gave shows in the record";
}

TEST_F(PlainFrame, SecondCloseFileAnswers0) {
  AddressFrame frame;
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  EXPECT_EQ(frame.CloseFile(), StatusSuccess);
  EXPECT_FALSE(frame.IsOpen());
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(frame.CloseFile(), StatusSuccess);
}

TEST_F(PlainFrame, CloseFileAnswersWhatTheEngineAnswersAndClosesAllTheSame) {
  AddressFrame frame;
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(frame.CloseFile(), StatusFileNotOpen);
  EXPECT_FALSE(frame.IsOpen());
  EXPECT_EQ(frame.CloseFile(), StatusSuccess);
}

TEST_F(PlainFrame, CloseFileDropsTheRecordAndTheKeyInHand) {
  AddressFrame frame;
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  frame.AddForCustomer(5);
  frame.File().KeyLong(1, 0);
  ASSERT_EQ(frame.CloseFile(), StatusSuccess);
  EXPECT_EQ(frame.Customer(), 0);
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  EXPECT_EQ(frame.Read(&TovrinFile::btGetEqual, ByNumber), StatusKeyNotFound)
      << "the key buffer is blank again";
}

TEST_F(PlainFrame, CloseFileKeepsTheKeyNumberAndTheRelease) {
  AddressFrame frame;
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  ASSERT_EQ(frame.GetFirstForCustomer(1), StatusEndOfFile);
  ASSERT_EQ(frame.CloseFile(), StatusSuccess);
  EXPECT_EQ(frame.KeyNumber(), ByCustomer);
  EXPECT_EQ(frame.FileVersion(), 19.0);
}

TEST_F(PlainFrame, FailedOpenFileLeavesItClosed) {
  TakeFileAway();
  AddressFrame frame;
  EXPECT_EQ(frame.OpenFile(), StatusFileNotFound);
  EXPECT_FALSE(frame.IsOpen());
  EXPECT_EQ(frame.FileVersion(), 0);
  EXPECT_EQ(frame.CloseFile(), StatusSuccess);
  PutFileBack();
  EXPECT_EQ(frame.OpenFile(), StatusSuccess);
}

TEST_F(PlainFrame, FailedOpenFileDropsTheKeyInHand) {
  AddressFrame frame;
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  frame.AddForCustomer(5);
  ASSERT_EQ(frame.CloseFile(), StatusSuccess);
  frame.File().KeyLong(1, 0);
  TakeFileAway();
  ASSERT_EQ(frame.OpenFile(), StatusFileNotFound);
  PutFileBack();
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  EXPECT_EQ(frame.Read(&TovrinFile::btGetEqual, ByNumber), StatusKeyNotFound);
}

// The file is gone, but the mark stays: the next CloseFile closes a file that is not open.
TEST_F(PlainFrame, FailedOpenFileOfAnOpenTableKeepsTheMark) {
  AddressFrame frame;
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  TakeFileAway();
  EXPECT_EQ(frame.OpenFile(), StatusFileNotFound);
  EXPECT_TRUE(frame.IsOpen());
  EXPECT_EQ(frame.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(frame.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(frame.CloseFile(), StatusSuccess);
}

TEST_F(PlainFrame, SecondOpenFileOpensAnew) {
  AddressFrame frame;
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  frame.AddForCustomer(5);
  EXPECT_EQ(frame.OpenFile(), StatusSuccess);
  EXPECT_EQ(frame.Customer(), 0);
  EXPECT_EQ(frame.Update(), StatusInvalidPositioning);
  EXPECT_EQ(frame.RecordCount(), 1);
  EXPECT_EQ(frame.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

TEST_F(PlainFrame, DestructionClosesTheFile) {
  {
    AddressFrame frame;
    ASSERT_EQ(frame.OpenFile(), StatusSuccess);
    ASSERT_TRUE(IsHeldOpen(AddressFile()));
  }
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

TEST_F(PlainFrame, ReadSetsTheKeyNumberWhateverItFinds) {
  AddressFrame frame;
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  EXPECT_EQ(frame.Read(&TovrinFile::btGetLast, ByVendor), StatusEndOfFile);
  EXPECT_EQ(frame.KeyNumber(), ByVendor);
  frame.AddForCustomer(5);
  EXPECT_EQ(frame.GetFirstForCustomer(5), StatusSuccess);
  EXPECT_EQ(frame.KeyNumber(), ByCustomer);
}

TEST_F(PlainFrame, WritesAndStepsKeepTheKeyNumber) {
  AddressFrame frame;
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  frame.AddForCustomer(5);
  EXPECT_EQ(frame.KeyNumber(), ByNumber);
  ASSERT_EQ(frame.GetFirstForCustomer(5), StatusSuccess);
  EXPECT_EQ(frame.StepFirst(), StatusSuccess);
  EXPECT_EQ(frame.StepLast(), StatusSuccess);
  EXPECT_EQ(frame.StepNext(), StatusEndOfFile);
  EXPECT_EQ(frame.StepPrevious(), StatusEndOfFile);
  EXPECT_EQ(frame.Update(), StatusSuccess);
  EXPECT_EQ(frame.Delete(), StatusSuccess);
  frame.AddForCustomer(6);
  EXPECT_EQ(frame.KeyNumber(), ByCustomer);
}

TEST_F(PlainFrame, WritesGoOnTheKeyPathOfTheLastRead) {
  AddressFrame frame;
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  frame.AddForCustomer(5);
  EXPECT_EQ(frame.File().btGetNext(ByNumber), StatusEndOfFile);
  ASSERT_EQ(frame.GetFirstForCustomer(5), StatusSuccess);
  ASSERT_EQ(frame.Update(), StatusSuccess);
  EXPECT_EQ(frame.File().btGetNext(ByNumber), StatusDifferentKeyNumber);
  frame.AddForCustomer(6);
  EXPECT_EQ(frame.File().btGetPrevious(ByCustomer), StatusSuccess);
  EXPECT_EQ(frame.Customer(), 5);
}

// --- closeKeepsOpenMark ---

TEST_F(FrameThatKeepsItsOpenMark, AnswersEveryFurtherCloseFileWith3) {
  AddressFrame frame({.closeKeepsOpenMark = true});
  EXPECT_EQ(frame.CloseFile(), StatusSuccess) << "never opened";
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  EXPECT_EQ(frame.CloseFile(), StatusSuccess);
  EXPECT_TRUE(frame.IsOpen());
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(frame.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(frame.CloseFile(), StatusFileNotOpen);
}

TEST_F(FrameThatKeepsItsOpenMark, CanBeOpenedAgain) {
  AddressFrame frame({.closeKeepsOpenMark = true});
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  ASSERT_EQ(frame.CloseFile(), StatusSuccess);
  EXPECT_EQ(frame.OpenFile(), StatusSuccess);
  EXPECT_EQ(frame.CloseFile(), StatusSuccess);
}

// --- openSetsNoMark ---

TEST_F(FrameThatSetsNoMark, AnswersCloseFileWith0AndKeepsTheFileOpen) {
  AddressFrame frame({.openSetsNoMark = true});
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  EXPECT_FALSE(frame.IsOpen());
  frame.AddForCustomer(5);
  EXPECT_EQ(frame.CloseFile(), StatusSuccess);
  EXPECT_EQ(frame.CloseFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(AddressFile()));
  EXPECT_EQ(frame.Customer(), 5);
  EXPECT_EQ(frame.StepFirst(), StatusSuccess);
}

TEST_F(FrameThatSetsNoMark, ReleasesTheFileAtItsEnd) {
  {
    AddressFrame frame({.openSetsNoMark = true});
    ASSERT_EQ(frame.OpenFile(), StatusSuccess);
    ASSERT_EQ(frame.CloseFile(), StatusSuccess);
  }
  EXPECT_FALSE(IsHeldOpen(AddressFile()));
}

// --- failedOpenKeepsFile ---

TEST_F(FrameThatKeepsItsFile, KeepsTheKeyInHandOverAFailedOpenFile) {
  AddressFrame frame({.openSetsNoMark = true, .failedOpenKeepsFile = true});
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  frame.AddForCustomer(5);
  frame.File().KeyLong(1, 0);
  TakeFileAway();
  ASSERT_EQ(frame.OpenFile(), StatusFileNotFound);
  EXPECT_EQ(frame.StepFirst(), StatusFileNotOpen);
  PutFileBack();
  ASSERT_EQ(frame.OpenFile(), StatusSuccess);
  EXPECT_EQ(frame.Read(&TovrinFile::btGetEqual, ByNumber), StatusSuccess);
  EXPECT_EQ(frame.Customer(), 5);
}

}  // namespace
}  // namespace larkmoor
