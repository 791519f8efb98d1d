// The class JrnlHdr: the headers of all journals as one table. Opening, finders, writes and the
// largest numbers are told here; its fields in jrnl_hdr_fields_test.cpp, the accounts and employees
// that it shows by ID in jrnl_hdr_id_test.cpp.
#include "engine/records/jrnl_hdr.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journals/jrnl_hdr.h>
#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "engine/store/driver.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Company;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::RaisedNumber;
using test::TakenAway;
using test::WhereOnlyThisIsReadOnly;

constexpr std::int32_t Overflow = 6;

/// A header as the finders see it. Without a record number of its own it bears the next one.
struct Header {
  std::int32_t record = 0;
  std::int16_t journal = 0;
  std::int16_t period = 0;
  std::string_view reference = "";
  std::int32_t party = 0;
  std::int32_t number = 0;
  std::uint8_t subindex1 = 0;
  std::uint8_t subindex2 = 0;
};

class JrnlHdrTest : public testing::Test {
 protected:
  explicit JrnlHdrTest(double release = 19.0) : company_(release) {}

  std::filesystem::path File(std::string_view name) const { return company_.Folder() / name; }
  std::filesystem::path HeaderFile() const { return File("JrnlHdr.dat"); }
  std::filesystem::path ChartFile() const { return File("Chart.dat"); }
  std::filesystem::path EmployeeFile() const { return File("Employee.dat"); }

  void AddHeader(const Header& header) {
    OpenRecordFile headers(HeaderFile(), JrnlHdrRecord::Describe());
    lastRecord_ = header.record != 0 ? header.record : lastRecord_ + 1;
    headers.Add([&](Tovrin2Record& record) {
      record.SetLong(JrnlHdrRecord::NRecord, lastRecord_);
      record.SetInteger(JrnlHdrRecord::JournalID, header.journal);
      record.SetInteger(JrnlHdrRecord::Period, header.period);
      record.SetText(JrnlHdrRecord::Reference, header.reference);
      record.SetLong(JrnlHdrRecord::IDNumber, header.party);
      record.SetLong(JrnlHdrRecord::TrxNumberL, header.number);
      record.SetByte(JrnlHdrRecord::Subindex1, header.subindex1);
      record.SetByte(JrnlHdrRecord::Subindex2, header.subindex2);
    });
  }

  Company company_;

 private:
  std::int32_t lastRecord_ = 0;
};

/// The same with an object open on the headers.
class OpenJrnlHdrTest : public JrnlHdrTest {
 protected:
  explicit OpenJrnlHdrTest(double release = 19.0) : JrnlHdrTest(release) {
    EXPECT_EQ(header_.OpenFile(), StatusSuccess);
  }

  JrnlHdr header_;
};

using JrnlHdrLifecycle = JrnlHdrTest;
using JrnlHdrRecordInHand = OpenJrnlHdrTest;
using JrnlHdrWrites = OpenJrnlHdrTest;
using JrnlHdrLargestNumbers = JrnlHdrTest;

// --- Opening and closing ---

TEST_F(JrnlHdrLifecycle, CloseFileOnANewObjectAnswers0) {
  JrnlHdr header;
  EXPECT_EQ(header.CloseFile(), StatusSuccess);
}

TEST_F(JrnlHdrLifecycle, OpenFileOpensTheHeadersAndTheAccounts) {
  JrnlHdr header;
  ASSERT_EQ(header.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(HeaderFile()));
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
  EXPECT_FALSE(IsHeldOpen(File("JrnlRow.dat")));
}

TEST_F(JrnlHdrLifecycle, CloseFileClosesAllFilesAndCanBeRepeated) {
  JrnlHdr header;
  ASSERT_EQ(header.OpenFile(), StatusSuccess);
  ASSERT_EQ(header.SalesRepID(), "");
  ASSERT_TRUE(IsHeldOpen(EmployeeFile()));
  EXPECT_EQ(header.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(HeaderFile()));
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
  EXPECT_EQ(header.CloseFile(), StatusSuccess);
}

TEST_F(JrnlHdrLifecycle, DestructionClosesAllFiles) {
  {
    JrnlHdr header;
    ASSERT_EQ(header.OpenFile(), StatusSuccess);
    ASSERT_EQ(header.SalesRepID(), "");
  }
  EXPECT_FALSE(IsHeldOpen(HeaderFile()));
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

TEST_F(JrnlHdrLifecycle, OpenFileBlanksTheRecord) {
  JrnlHdr header;
  ASSERT_EQ(header.OpenFile(), StatusSuccess);
  header.NRecord(7);
  ASSERT_EQ(header.OpenFile(), StatusSuccess);
  EXPECT_EQ(header.NRecord(), 0);
}

TEST_F(JrnlHdrLifecycle, OpenFileWithoutTheHeadersAnswers12AndOpensNoAccounts) {
  JrnlHdr header;
  {
    const TakenAway away(HeaderFile());
    EXPECT_EQ(header.OpenFile(), StatusFileNotFound);
    EXPECT_FALSE(IsHeldOpen(ChartFile()));
    EXPECT_EQ(header.CloseFile(), StatusSuccess);
    EXPECT_EQ(header.StepFirst(), StatusFileNotOpen);
  }
  EXPECT_EQ(header.OpenFile(), StatusSuccess);
}

// The status is that of the accounts, and the headers are open all the same.
TEST_F(JrnlHdrLifecycle, OpenFileWithoutTheAccountsAnswers12AndOpensTheHeaders) {
  AddHeader({.record = 7});
  const TakenAway away(ChartFile());
  JrnlHdr header;
  EXPECT_EQ(header.OpenFile(), StatusFileNotFound);
  EXPECT_TRUE(IsHeldOpen(HeaderFile()));
  EXPECT_EQ(header.GetEqual(7), StatusSuccess);
  EXPECT_EQ(header.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(HeaderFile()));
}

TEST_F(JrnlHdrLifecycle, OpenFileTellsWhatProtectsTheAccounts) {
  test::ProtectFile(ChartFile(), /*allowRead=*/false);
  JrnlHdr header;
  EXPECT_EQ(header.OpenFile(), StatusInvalidOwner);
  EXPECT_TRUE(IsHeldOpen(HeaderFile()));
}

TEST_F(JrnlHdrLifecycle, OpenFileNeedsHeadersThatCanBeWritten) {
  WhereOnlyThisIsReadOnly(HeaderFile(), [&] {
    JrnlHdr header;
    EXPECT_EQ(header.OpenFile(), StatusPermission);
    EXPECT_EQ(header.StepFirst(), StatusFileNotOpen);
  });
}

TEST_F(JrnlHdrLifecycle, OpenFileNeedsAccountsThatCanBeWritten) {
  AddHeader({});  // whoever opens a file first leaves a lock file, which not everyone can make
  WhereOnlyThisIsReadOnly(ChartFile(), [&] {
    JrnlHdr header;
    EXPECT_EQ(header.OpenFile(), StatusPermission);
    EXPECT_EQ(header.StepFirst(), StatusSuccess) << "the headers are open";
  });
}

TEST_F(JrnlHdrLifecycle, EmployeesAreClosedAlsoAfterASecondOpenFile) {
  JrnlHdr header;
  ASSERT_EQ(header.OpenFile(), StatusSuccess);
  ASSERT_EQ(header.SalesRepID(), "");
  ASSERT_EQ(header.OpenFile(), StatusSuccess);
  EXPECT_EQ(header.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

// The object still takes itself for open, and closes a file that is not.
TEST_F(JrnlHdrLifecycle, CloseFileAfterASecondOpenFileThatFailedAnswers3AndClosesTheOthers) {
  JrnlHdr header;
  ASSERT_EQ(header.OpenFile(), StatusSuccess);
  {
    const TakenAway away(HeaderFile());
    ASSERT_EQ(header.OpenFile(), StatusFileNotFound);
    EXPECT_FALSE(IsHeldOpen(away.Aside()));
  }
  EXPECT_TRUE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(header.CloseFile(), StatusFileNotOpen);
  EXPECT_FALSE(IsHeldOpen(ChartFile()));
  EXPECT_EQ(header.CloseFile(), StatusSuccess);
}

TEST_F(JrnlHdrLifecycle, OperationsBeforeOpenFileAnswer3) {
  JrnlHdr header;
  EXPECT_EQ(header.GetEqual(1), StatusFileNotOpen);
  EXPECT_EQ(header.GetForKeyL(0, 1, 5, 3, 0), StatusFileNotOpen);
  EXPECT_EQ(header.ReadFirst(3, 5), StatusFileNotOpen);
  EXPECT_EQ(header.ReadNext(), StatusFileNotOpen);
  EXPECT_EQ(header.ReadFirstForIDIndex(3, 12), StatusFileNotOpen);
  EXPECT_EQ(header.ReadNextForIDIndex(), StatusFileNotOpen);
  EXPECT_EQ(header.ReadFirstForInvoice("100"), StatusFileNotOpen);
  EXPECT_EQ(header.ReadNextForInvoice(), StatusFileNotOpen);
  EXPECT_EQ(header.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(header.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(header.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(header.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(header.Insert(), StatusFileNotOpen);
  EXPECT_EQ(header.Update(), StatusFileNotOpen);
  EXPECT_EQ(header.Delete(), StatusFileNotOpen);
  EXPECT_EQ(header.RecordCount(), 0);
}

TEST_F(JrnlHdrLifecycle, OperationsWithoutAFileAnswer0BeforeOpenFile) {
  JrnlHdr header;
  EXPECT_EQ(header.ClearRecord(), StatusSuccess);
  EXPECT_EQ(header.ReadBytes(), StatusSuccess);
}

// --- The record in hand ---

TEST_F(JrnlHdrRecordInHand, ClearRecordBlanksIt) {
  AddHeader({.record = 7, .journal = 3, .reference = "100"});
  ASSERT_EQ(header_.GetEqual(7), StatusSuccess);
  EXPECT_EQ(header_.ClearRecord(), StatusSuccess);
  EXPECT_EQ(header_.NRecord(), 0);
  EXPECT_EQ(header_.Reference(), "");
  EXPECT_TRUE(header_.TrxDate().IsNull());
}

TEST_F(JrnlHdrRecordInHand, ReadBytesLeavesItAsItIs) {
  header_.NRecord(7);
  EXPECT_EQ(header_.ReadBytes(), StatusSuccess);
  EXPECT_EQ(header_.NRecord(), 7);
}

TEST_F(JrnlHdrRecordInHand, BytesAreThoseThatWereRead) {
  AddHeader({.record = 7, .journal = 3, .reference = "100"});
  EXPECT_EQ(header_.ActualLength(), 0) << "nothing was read yet";
  ASSERT_EQ(header_.GetEqual(7), StatusSuccess);
  OpenRecordFile headers(HeaderFile(), JrnlHdrRecord::Describe());
  ASSERT_EQ(headers.File().btStepFirst(), StatusSuccess);
  const RecordBytes& bytes = headers.Record().Bytes();
  const auto length = static_cast<std::int32_t>(bytes.size());
  EXPECT_EQ(header_.ActualLength(), length);
  for (std::int32_t i = 0; i < length; ++i) {
    ASSERT_EQ(header_.RecordByte(i),
              std::to_integer<std::uint8_t>(bytes[static_cast<std::size_t>(i)]))
        << i;
  }
  EXPECT_EQ(header_.RecordByte(-1), 0);
  EXPECT_EQ(header_.RecordByte(length), 0);
}

// --- Finders, in data of all releases ---

class JrnlHdrFinders : public OpenJrnlHdrTest, public testing::WithParamInterface<double> {
 protected:
  JrnlHdrFinders() : OpenJrnlHdrTest(GetParam()) {}
};

std::string ReleaseName(const testing::TestParamInfo<double>& tested) {
  return "Release" + std::to_string(static_cast<int>(tested.param * 10));
}

TEST_P(JrnlHdrFinders, GetEqualFindsTheHeaderOfThatRecordNumber) {
  AddHeader({.record = 9, .reference = "nine"});
  AddHeader({.record = 7, .reference = "seven"});
  ASSERT_EQ(header_.GetEqual(7), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "seven");
  EXPECT_EQ(header_.GetEqual(8), StatusKeyNotFound);
  EXPECT_EQ(header_.Reference(), "seven") << "a search in vain leaves the record in hand";
}

TEST_P(JrnlHdrFinders, GetForKeyLComparesAllFiveParts) {
  AddHeader({.journal = 3, .period = 5, .number = 300, .subindex1 = 17, .subindex2 = 200});
  EXPECT_EQ(header_.GetForKeyL(17, 300, 5, 3, 200), StatusSuccess);
  EXPECT_EQ(header_.GetForKeyL(16, 300, 5, 3, 200), StatusKeyNotFound);
  EXPECT_EQ(header_.GetForKeyL(17, 301, 5, 3, 200), StatusKeyNotFound);
  EXPECT_EQ(header_.GetForKeyL(17, 300, 6, 3, 200), StatusKeyNotFound);
  EXPECT_EQ(header_.GetForKeyL(17, 300, 5, 4, 200), StatusKeyNotFound);
  EXPECT_EQ(header_.GetForKeyL(17, 300, 5, 3, 201), StatusKeyNotFound);
}

TEST_P(JrnlHdrFinders, GetForKeyLRaises6ForASecondSubindexThatIsNoByte) {
  EXPECT_EQ(RaisedNumber([&] { header_.GetForKeyL(0, 1, 5, 3, 256); }), Overflow);
  EXPECT_EQ(RaisedNumber([&] { header_.GetForKeyL(0, 1, 5, 3, -1); }), Overflow);
  EXPECT_EQ(header_.GetForKeyL(0, 1, 5, 3, 255), StatusKeyNotFound);
}

TEST_P(JrnlHdrFinders, ReadFirstFindsTheFirstReferenceOfTheJournalInThePeriod) {
  AddHeader({.journal = 3, .period = 5, .reference = "B"});
  AddHeader({.journal = 3, .period = 5, .reference = "A"});
  AddHeader({.journal = 3, .period = 4, .reference = "earlier"});
  AddHeader({.journal = 2, .period = 5, .reference = "another journal"});
  ASSERT_EQ(header_.ReadFirst(3, 5), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "A");
  ASSERT_EQ(header_.ReadNext(), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "B");
}

// An empty reference is searched for, whatever the search before has left in the key.
TEST_P(JrnlHdrFinders, ReadFirstFindsAnEmptyReferenceAfterASearchForALongOne) {
  AddHeader({.journal = 3, .period = 5, .reference = ""});
  AddHeader({.journal = 3, .period = 5, .reference = "B"});
  EXPECT_EQ(header_.ReadFirstForInvoice("zzzzzzzzzz"), StatusEndOfFile);
  ASSERT_EQ(header_.ReadFirst(3, 5), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "");
}

TEST_P(JrnlHdrFinders, ReadFirstAndReadNextRunOnIntoTheNextPeriodAndJournal) {
  AddHeader({.journal = 3, .period = 6, .reference = "next period"});
  AddHeader({.journal = 4, .period = 0, .reference = "next journal"});
  ASSERT_EQ(header_.ReadFirst(3, 5), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "next period");
  ASSERT_EQ(header_.ReadNext(), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "next journal");
  EXPECT_EQ(header_.ReadNext(), StatusEndOfFile);
}

TEST_P(JrnlHdrFinders, ReadFirstBeyondThePeriodsSearchesTheNearestOne) {
  AddHeader({.journal = 3, .period = -1, .reference = "below"});
  AddHeader({.journal = 3, .period = 0, .reference = "first"});
  AddHeader({.journal = 3, .period = 41, .reference = "last"});
  ASSERT_EQ(header_.ReadFirst(3, 99), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "last");
  ASSERT_EQ(header_.ReadFirst(3, 42), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "last");
  ASSERT_EQ(header_.ReadFirst(3, -1), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "first");
}

TEST_P(JrnlHdrFinders, ReadFirstTellsAllObjectsWhetherItWasForSales) {
  header_.ReadFirst(3, 5);
  EXPECT_TRUE(Shared().gJrnlHdrReadMode);
  header_.ReadFirst(4, 5);
  EXPECT_FALSE(Shared().gJrnlHdrReadMode);
}

TEST_P(JrnlHdrFinders, ReadFirstForIDIndexFindsTheFirstHeaderOfTheParty) {
  AddHeader({.journal = 3, .reference = "of another", .party = 11});
  AddHeader({.journal = 4, .reference = "in another journal", .party = 12});
  AddHeader({.journal = 3, .reference = "B", .party = 12});
  AddHeader({.journal = 3, .reference = "A", .party = 12});
  ASSERT_EQ(header_.ReadFirstForIDIndex(3, 12), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "B") << "they stand as they were written";
  ASSERT_EQ(header_.ReadNextForIDIndex(), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "A");
  ASSERT_EQ(header_.ReadNextForIDIndex(), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "in another journal") << "the walk runs on";
  EXPECT_EQ(header_.ReadNextForIDIndex(), StatusEndOfFile);
}

TEST_P(JrnlHdrFinders, ReadFirstForInvoiceFindsTheReferenceOrTheNextOne) {
  AddHeader({.journal = 4, .reference = "102"});
  AddHeader({.journal = 3, .reference = "100"});
  ASSERT_EQ(header_.ReadFirstForInvoice("100"), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "100");
  ASSERT_EQ(header_.ReadNextForInvoice(), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "102");
  EXPECT_EQ(header_.ReadNextForInvoice(), StatusEndOfFile);
  ASSERT_EQ(header_.ReadFirstForInvoice("101"), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "102");
  EXPECT_EQ(header_.ReadFirstForInvoice("103"), StatusEndOfFile);
}

TEST_P(JrnlHdrFinders, ReadFirstForInvoiceFindsAnEmptyReferenceAfterASearchForALongOne) {
  AddHeader({.reference = ""});
  EXPECT_EQ(header_.ReadFirstForInvoice("zzz"), StatusEndOfFile);
  EXPECT_EQ(header_.ReadFirstForInvoice(""), StatusSuccess);
}

TEST_P(JrnlHdrFinders, WalksWithoutAPlaceAnswer8) {
  AddHeader({});
  EXPECT_EQ(header_.ReadNext(), StatusInvalidPositioning);
  EXPECT_EQ(header_.ReadNextForIDIndex(), StatusInvalidPositioning);
  EXPECT_EQ(header_.ReadNextForInvoice(), StatusInvalidPositioning);
  ASSERT_EQ(header_.StepFirst(), StatusSuccess);
  EXPECT_EQ(header_.ReadNext(), StatusInvalidPositioning);
}

TEST_P(JrnlHdrFinders, WalksAlongAnotherPathThanTheSearchAnswer7) {
  AddHeader({.record = 7, .journal = 3, .period = 5, .reference = "100", .party = 12});
  ASSERT_EQ(header_.ReadFirst(3, 5), StatusSuccess);
  EXPECT_EQ(header_.ReadNextForInvoice(), StatusDifferentKeyNumber);
  EXPECT_EQ(header_.ReadNextForIDIndex(), StatusDifferentKeyNumber);
  ASSERT_EQ(header_.ReadFirstForInvoice("100"), StatusSuccess);
  EXPECT_EQ(header_.ReadNext(), StatusDifferentKeyNumber);
  ASSERT_EQ(header_.GetEqual(7), StatusSuccess);
  EXPECT_EQ(header_.ReadNext(), StatusDifferentKeyNumber);
  EXPECT_EQ(header_.ReadNextForInvoice(), StatusDifferentKeyNumber);
}

TEST_P(JrnlHdrFinders, StepsGoInTheOrderOfInsertion) {
  AddHeader({.record = 9});
  AddHeader({.record = 7});
  EXPECT_EQ(header_.RecordCount(), 2);
  ASSERT_EQ(header_.StepFirst(), StatusSuccess);
  EXPECT_EQ(header_.NRecord(), 9);
  ASSERT_EQ(header_.StepNext(), StatusSuccess);
  EXPECT_EQ(header_.NRecord(), 7);
  EXPECT_EQ(header_.StepNext(), StatusEndOfFile);
  ASSERT_EQ(header_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(header_.NRecord(), 9);
  ASSERT_EQ(header_.StepLast(), StatusSuccess);
  EXPECT_EQ(header_.NRecord(), 7);
}

INSTANTIATE_TEST_SUITE_P(Releases, JrnlHdrFinders, testing::Values(8.0, 12.9, 13.0, 18.0, 19.0),
                         ReleaseName);

// --- Finders whose keys changed with release 13 ---

class JrnlHdrFindersBelow13 : public JrnlHdrTest {
 protected:
  JrnlHdrFindersBelow13() : JrnlHdrTest(12.9) {}

  /// Makes the file of the headers anew, empty and without some of its keys.
  void RemakeHeaderFileWithout(std::initializer_list<std::int16_t> keys) {
    store::FileDescription description = JrnlHdrRecord::Describe().FileFor(12.9);
    std::erase_if(description.keys, [&](const store::KeyDescription& key) {
      return std::count(keys.begin(), keys.end(), key.number) != 0;
    });
    store::DefaultDriver().Remove(HeaderFile());
    ASSERT_EQ(store::DefaultDriver().Create(HeaderFile(), description), StatusSuccess);
  }

  JrnlHdr header_;
};

TEST_F(JrnlHdrFindersBelow13, GetEqualGoesByKey5) {
  RemakeHeaderFileWithout({1});
  AddHeader({.record = 7});
  ASSERT_EQ(header_.OpenFile(), StatusSuccess);
  EXPECT_EQ(header_.GetEqual(7), StatusSuccess);
}

TEST_F(JrnlHdrFindersBelow13, ReferencesGoByKey2) {
  RemakeHeaderFileWithout({4});
  AddHeader({.reference = "100"});
  AddHeader({.reference = "101"});
  ASSERT_EQ(header_.OpenFile(), StatusSuccess);
  ASSERT_EQ(header_.ReadFirstForInvoice("100"), StatusSuccess);
  ASSERT_EQ(header_.ReadNextForInvoice(), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "101");
}

TEST_F(JrnlHdrFindersBelow13, GetForKeyLRaises6ForANumberBeyond16Bits) {
  AddHeader({.journal = 3, .period = 5, .number = 32767});
  ASSERT_EQ(header_.OpenFile(), StatusSuccess);
  EXPECT_EQ(header_.GetForKeyL(0, 32767, 5, 3, 0), StatusSuccess);
  EXPECT_EQ(RaisedNumber([&] { header_.GetForKeyL(0, 32768, 5, 3, 0); }), Overflow);
  EXPECT_EQ(RaisedNumber([&] { header_.GetForKeyL(0, -32769, 5, 3, 0); }), Overflow);
}

// Until a file is open, the data count as older than any.
TEST_F(JrnlHdrFindersBelow13, GetForKeyLRaises6OnAnObjectThatWasNeverOpenedToo) {
  EXPECT_EQ(RaisedNumber([&] { header_.GetForKeyL(0, 32768, 5, 3, 0); }), Overflow);
}

class JrnlHdrFindersFrom13 : public OpenJrnlHdrTest {
 protected:
  JrnlHdrFindersFrom13() : OpenJrnlHdrTest(13.0) {}
};

TEST_F(JrnlHdrFindersFrom13, GetForKeyLFindsANumberBeyond16Bits) {
  AddHeader({.record = 7, .journal = 3, .period = 5, .number = 4464});
  AddHeader({.record = 8, .journal = 3, .period = 5, .number = 65536 + 4464});
  ASSERT_EQ(header_.GetForKeyL(0, 65536 + 4464, 5, 3, 0), StatusSuccess);
  EXPECT_EQ(header_.NRecord(), 8);
}

// --- Writes ---

TEST_F(JrnlHdrWrites, InsertUpdateAndDeleteChangeTheFile) {
  header_.NRecord(7);
  header_.JournalID(3);
  header_.Reference("100");
  ASSERT_EQ(header_.Insert(), StatusSuccess);
  EXPECT_EQ(header_.RecordCount(), 1);
  ASSERT_EQ(header_.GetEqual(7), StatusSuccess);
  header_.Reference("101");
  ASSERT_EQ(header_.Update(), StatusSuccess);
  EXPECT_EQ(header_.ReadFirstForInvoice("101"), StatusSuccess);
  ASSERT_EQ(header_.Delete(), StatusSuccess);
  EXPECT_EQ(header_.RecordCount(), 0);
}

TEST_F(JrnlHdrWrites, InsertOfARecordNumberOnFileAnswers5) {
  AddHeader({.record = 7});
  header_.NRecord(7);
  EXPECT_EQ(header_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(header_.RecordCount(), 1);
}

TEST_F(JrnlHdrWrites, InsertGivesNoRecordNumber) {
  ASSERT_EQ(header_.Insert(), StatusSuccess);
  EXPECT_EQ(header_.NRecord(), 0);
  EXPECT_EQ(header_.GetEqual(0), StatusSuccess);
}

TEST_F(JrnlHdrWrites, InsertByANewObjectTakesNoPlaceInAWalk) {
  ASSERT_EQ(header_.Insert(), StatusSuccess);
  EXPECT_EQ(header_.ReadNext(), StatusDifferentKeyNumber);
}

TEST_F(JrnlHdrWrites, InsertTakesItsPlaceInTheWalkOfTheLastSearch) {
  AddHeader({.record = 1, .journal = 3, .period = 5, .reference = "A"});
  AddHeader({.record = 2, .journal = 3, .period = 5, .reference = "C"});
  ASSERT_EQ(header_.ReadFirst(3, 5), StatusSuccess);
  header_.NRecord(3);
  header_.Reference("B");
  ASSERT_EQ(header_.Insert(), StatusSuccess);
  ASSERT_EQ(header_.ReadNext(), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "C");
}

TEST_F(JrnlHdrWrites, UpdateAfterAStepTakesItsPlaceInTheWalkOfTheLastSearch) {
  AddHeader({.record = 1, .reference = "A"});
  AddHeader({.record = 2, .reference = "B"});
  ASSERT_EQ(header_.ReadFirstForInvoice("B"), StatusSuccess);
  ASSERT_EQ(header_.StepFirst(), StatusSuccess);
  ASSERT_EQ(header_.Update(), StatusSuccess);
  ASSERT_EQ(header_.ReadNextForInvoice(), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "B");
}

// A walk that was refused is the last search all the same.
TEST_F(JrnlHdrWrites, UpdateTakesItsPlaceInAWalkThatWasRefused) {
  AddHeader({.record = 1, .journal = 3, .reference = "A"});
  AddHeader({.record = 2, .journal = 3, .reference = "B"});
  ASSERT_EQ(header_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(header_.ReadNext(), StatusDifferentKeyNumber);
  ASSERT_EQ(header_.Update(), StatusSuccess);
  ASSERT_EQ(header_.ReadNext(), StatusSuccess);
  EXPECT_EQ(header_.Reference(), "B");
}

// --- The largest numbers ---

TEST_F(JrnlHdrLargestNumbers, OfRecordsNeedsNoOpenFileAndOpensNone) {
  JrnlHdr header;
  EXPECT_EQ(header.MaxNRecord(), 1) << "of no headers";
  AddHeader({.record = 300});
  AddHeader({.record = 40});
  EXPECT_EQ(header.MaxNRecord(), 300);
  EXPECT_FALSE(IsHeldOpen(HeaderFile()));
  const TakenAway away(HeaderFile());
  EXPECT_EQ(header.MaxNRecord(), -1);
}

TEST_F(JrnlHdrLargestNumbers, OfTransactionsNeedsNoOpenFileAndOpensNone) {
  JrnlHdr header;
  EXPECT_EQ(header.MaxTrxNumberL(5, 3), 0) << "of no headers";
  AddHeader({.journal = 3, .period = 5, .number = 1});
  AddHeader({.journal = 3, .period = 5, .number = 70000});
  EXPECT_EQ(header.MaxTrxNumberL(5, 3), 70000);
  EXPECT_EQ(header.MaxTrxNumberL(3, 5), 0) << "the period comes first";
  EXPECT_FALSE(IsHeldOpen(HeaderFile()));
  const TakenAway away(HeaderFile());
  EXPECT_EQ(header.MaxTrxNumberL(5, 3), -1);
}

TEST_F(JrnlHdrLargestNumbers, LeaveTheRecordInHandAndItsPlace) {
  AddHeader({.record = 7, .journal = 3, .period = 5, .reference = "A", .number = 1});
  AddHeader({.record = 8, .journal = 3, .period = 5, .reference = "B", .number = 2});
  JrnlHdr header;
  ASSERT_EQ(header.OpenFile(), StatusSuccess);
  ASSERT_EQ(header.ReadFirst(3, 5), StatusSuccess);
  EXPECT_EQ(header.MaxNRecord(), 8);
  EXPECT_EQ(header.MaxTrxNumberL(5, 3), 2);
  EXPECT_EQ(header.NRecord(), 7);
  ASSERT_EQ(header.ReadNext(), StatusSuccess);
  EXPECT_EQ(header.NRecord(), 8);
}

}  // namespace
}  // namespace larkmoor
