// The class AuditTrail: the walk along its entries, which are never rewritten, and the one stored
// moment that it shows as a date and as a time of day.
#include <cstdint>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/crossref/audit_trail.h>
#include <larkmoor/date.h>
#include <larkmoor/status.h>

#include "support/company.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Company;
using test::IsHeldOpen;
using test::TakenAway;

class AuditTrailTest : public testing::Test {
 protected:
  std::filesystem::path AuditTrailFile() const { return company_.Folder() / "AuditTrail.dat"; }

  Company company_;
};

class OpenAuditTrailTest : public AuditTrailTest {
 protected:
  OpenAuditTrailTest() { EXPECT_EQ(audit_.OpenFile(), StatusSuccess); }

  AuditTrail audit_;
};

using AuditTrailLifecycle = AuditTrailTest;
using AuditTrailFields = OpenAuditTrailTest;

// --- Opening and closing ---

TEST_F(AuditTrailLifecycle, FileIsAuditTrailDat) {
  AuditTrail audit;
  EXPECT_EQ(audit.CloseFile(), StatusSuccess);
  ASSERT_EQ(audit.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(AuditTrailFile()));
  EXPECT_EQ(audit.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(AuditTrailFile()));
  EXPECT_EQ(audit.CloseFile(), StatusSuccess);
}

TEST_F(AuditTrailLifecycle, OpenFileAnswers12WithoutTheFileAndCanBeTriedAgain) {
  AuditTrail audit;
  {
    const TakenAway away(AuditTrailFile());
    EXPECT_EQ(audit.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(audit.CloseFile(), StatusSuccess);
    EXPECT_EQ(audit.StepFirst(), StatusFileNotOpen);
  }
  EXPECT_EQ(audit.OpenFile(), StatusSuccess);
}

TEST_F(AuditTrailLifecycle, OpenFileNeedsAFileThatCanBeWritten) {
  test::WhereReadOnly(AuditTrailFile(), [] {
    AuditTrail audit;
    EXPECT_EQ(audit.OpenFile(), StatusPermission);
  });
}

TEST_F(AuditTrailLifecycle, OperationsBeforeOpenFileAnswer3) {
  AuditTrail audit;
  EXPECT_EQ(audit.GetEqual(1), StatusFileNotOpen);
  EXPECT_EQ(audit.GetFirst(), StatusFileNotOpen);
  EXPECT_EQ(audit.GetLast(), StatusFileNotOpen);
  EXPECT_EQ(audit.GetNext(), StatusFileNotOpen);
  EXPECT_EQ(audit.GetPrevious(), StatusFileNotOpen);
  EXPECT_EQ(audit.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(audit.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(audit.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(audit.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(audit.Insert(), StatusFileNotOpen);
  EXPECT_EQ(audit.Delete(), StatusFileNotOpen);
  EXPECT_EQ(audit.RecordCount(), 0);
}

// --- Finders and writes ---

/// Entries 30, 10 and 20, laid in that order.
class AuditTrailFinders : public OpenAuditTrailTest {
 protected:
  AuditTrailFinders() {
    for (const std::int32_t number : {30, 10, 20}) {
      audit_.NRecord(number);
      EXPECT_EQ(audit_.Insert(), StatusSuccess);
    }
  }
};

TEST_F(AuditTrailFinders, GetEqualFindsTheEntryOfThatNumber) {
  ASSERT_EQ(audit_.GetEqual(10), StatusSuccess);
  EXPECT_EQ(audit_.NRecord(), 10);
  EXPECT_EQ(audit_.GetEqual(15), StatusKeyNotFound);
  EXPECT_EQ(audit_.NRecord(), 10) << "a search in vain leaves the record in hand";
}

TEST_F(AuditTrailFinders, GetEqualComparesAll32Bits) {
  EXPECT_EQ(audit_.GetEqual(65536 + 10), StatusKeyNotFound);
  audit_.NRecord(65536 + 10);
  ASSERT_EQ(audit_.Insert(), StatusSuccess);
  ASSERT_EQ(audit_.GetEqual(10), StatusSuccess);
  EXPECT_EQ(audit_.NRecord(), 10);
}

TEST_F(AuditTrailFinders, WalkGoesByNumberBothWays) {
  ASSERT_EQ(audit_.GetFirst(), StatusSuccess);
  EXPECT_EQ(audit_.NRecord(), 10);
  for (const std::int32_t next : {20, 30}) {
    ASSERT_EQ(audit_.GetNext(), StatusSuccess);
    EXPECT_EQ(audit_.NRecord(), next);
  }
  EXPECT_EQ(audit_.GetNext(), StatusEndOfFile);
  ASSERT_EQ(audit_.GetLast(), StatusSuccess);
  EXPECT_EQ(audit_.NRecord(), 30);
  for (const std::int32_t previous : {20, 10}) {
    ASSERT_EQ(audit_.GetPrevious(), StatusSuccess);
    EXPECT_EQ(audit_.NRecord(), previous);
  }
  EXPECT_EQ(audit_.GetPrevious(), StatusEndOfFile);
}

TEST_F(AuditTrailFinders, WalkGoesOnFromWhatWasFoundOrAdded) {
  ASSERT_EQ(audit_.GetEqual(20), StatusSuccess);
  ASSERT_EQ(audit_.GetNext(), StatusSuccess);
  EXPECT_EQ(audit_.NRecord(), 30);
  audit_.NRecord(15);
  ASSERT_EQ(audit_.Insert(), StatusSuccess);
  ASSERT_EQ(audit_.GetPrevious(), StatusSuccess);
  EXPECT_EQ(audit_.NRecord(), 10);
}

TEST_F(AuditTrailFinders, WalkWithoutAPlaceAnswers8) {
  ASSERT_EQ(audit_.StepFirst(), StatusSuccess);
  EXPECT_EQ(audit_.GetNext(), StatusInvalidPositioning);
  EXPECT_EQ(audit_.GetPrevious(), StatusInvalidPositioning);
}

TEST_F(AuditTrailFinders, StepsGoInTheOrderOfInsertion) {
  ASSERT_EQ(audit_.StepFirst(), StatusSuccess);
  EXPECT_EQ(audit_.NRecord(), 30);
  ASSERT_EQ(audit_.StepNext(), StatusSuccess);
  EXPECT_EQ(audit_.NRecord(), 10);
  ASSERT_EQ(audit_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(audit_.StepPrevious(), StatusEndOfFile);
  ASSERT_EQ(audit_.StepLast(), StatusSuccess);
  EXPECT_EQ(audit_.NRecord(), 20);
  EXPECT_EQ(audit_.StepNext(), StatusEndOfFile);
}

TEST_F(AuditTrailFinders, DeleteRemovesTheEntryThatWasFound) {
  ASSERT_EQ(audit_.GetEqual(20), StatusSuccess);
  ASSERT_EQ(audit_.Delete(), StatusSuccess);
  EXPECT_EQ(audit_.GetEqual(20), StatusKeyNotFound);
  EXPECT_EQ(audit_.RecordCount(), 2);
}

template <typename Table>
constexpr bool CanBeUpdated = requires(Table table) {
  table.Update();
};

TEST(AuditTrailWrites, HaveNoUpdate) { EXPECT_FALSE(CanBeUpdated<AuditTrail>); }

// --- When it was entered ---

/// An entry stamped 2004-03-01 09:30:15.
class AuditTrailMoment : public OpenAuditTrailTest {
 protected:
  AuditTrailMoment() { audit_.EntryDate(Date::FromYmd(2004, 3, 1, 9, 30, 15)); }
};

/// A time of day as EntryTime shows it: on day 0.
std::string TimeText(int hour, int minute, int second) {
  return Date::FromYmd(1899, 12, 30, hour, minute, second).ToText();
}

TEST_F(AuditTrailMoment, IsReadAsADateAtMidnightAndAsATimeOnDay0) {
  EXPECT_EQ(audit_.EntryDate(), Date::FromYmd(2004, 3, 1));
  EXPECT_EQ(audit_.EntryTime().ToText(), TimeText(9, 30, 15));
  EXPECT_GE(audit_.EntryTime().Serial(), 0.0);
  EXPECT_LT(audit_.EntryTime().Serial(), 1.0);
}

TEST_F(AuditTrailMoment, IsOneFieldOnFile) {
  ASSERT_EQ(audit_.Insert(), StatusSuccess);
  AuditTrail reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.StepFirst(), StatusSuccess);
  EXPECT_EQ(reader.EntryDate(), Date::FromYmd(2004, 3, 1));
  EXPECT_EQ(reader.EntryTime().ToText(), TimeText(9, 30, 15));
}

TEST_F(AuditTrailMoment, KeepsItsDateWhereATimeIsAssigned) {
  audit_.EntryTime(Date::FromYmd(1899, 12, 30, 14));
  EXPECT_EQ(audit_.EntryDate(), Date::FromYmd(2004, 3, 1));
  EXPECT_EQ(audit_.EntryTime().ToText(), TimeText(14, 0, 0));
  audit_.EntryTime(Date::FromYmd(1899, 12, 30, 23, 59, 59));
  EXPECT_EQ(audit_.EntryDate(), Date::FromYmd(2004, 3, 1));
  EXPECT_EQ(audit_.EntryTime().ToText(), TimeText(23, 59, 59));
  audit_.EntryTime(Date(0));
  EXPECT_EQ(audit_.EntryDate(), Date::FromYmd(2004, 3, 1));
  EXPECT_EQ(audit_.EntryTime(), Date(0));
}

TEST_F(AuditTrailMoment, TakesNoMoreThanTheTimeOfDayOfAnAssignedTime) {
  audit_.EntryTime(Date::FromYmd(2010, 5, 6, 14, 15, 16));
  EXPECT_EQ(audit_.EntryDate(), Date::FromYmd(2004, 3, 1));
  EXPECT_EQ(audit_.EntryTime().ToText(), TimeText(14, 15, 16));
}

TEST_F(AuditTrailMoment, LosesItsTimeWhereADateIsAssigned) {
  audit_.EntryDate(Date::FromYmd(2004, 3, 2));
  EXPECT_EQ(audit_.EntryDate(), Date::FromYmd(2004, 3, 2));
  EXPECT_EQ(audit_.EntryTime(), Date(0));
}

TEST_F(AuditTrailMoment, TakesTheTimeOfAnAssignedDateToo) {
  audit_.EntryDate(Date::FromYmd(2004, 3, 2, 16, 45, 30));
  EXPECT_EQ(audit_.EntryDate(), Date::FromYmd(2004, 3, 2));
  EXPECT_EQ(audit_.EntryTime().ToText(), TimeText(16, 45, 30));
}

TEST_F(AuditTrailMoment, IsWholeWhereTheDateIsAssignedFirst) {
  audit_.EntryDate(Date::FromYmd(2020, 2, 29));
  audit_.EntryTime(Date::FromYmd(1899, 12, 30, 12, 34, 56));
  EXPECT_EQ(audit_.EntryDate(), Date::FromYmd(2020, 2, 29));
  EXPECT_EQ(audit_.EntryTime().ToText(), TimeText(12, 34, 56));
}

// Below day 0 the fraction is still the time of its day.
TEST_F(AuditTrailMoment, MayLieBeforeDay0) {
  audit_.EntryDate(Date::FromYmd(1850, 6, 7, 6));
  EXPECT_EQ(audit_.EntryDate(), Date::FromYmd(1850, 6, 7));
  EXPECT_EQ(audit_.EntryTime().ToText(), TimeText(6, 0, 0));
  audit_.EntryTime(Date::FromYmd(1899, 12, 30, 18, 30));
  EXPECT_EQ(audit_.EntryDate(), Date::FromYmd(1850, 6, 7));
  EXPECT_EQ(audit_.EntryTime().ToText(), TimeText(18, 30, 0));
}

// Elsewhere these days stand for no date at all; here they are days.
TEST_F(AuditTrailMoment, KnowsNoEmptyDate) {
  for (const Date day : {Date::FromYmd(1999, 12, 31), Date::FromYmd(1900, 1, 1),
                         Date::FromYmd(1900, 7, 15), Date(65537), Date(1)}) {
    audit_.EntryDate(day);
    EXPECT_EQ(audit_.EntryDate(), day);
  }
}

TEST_F(AuditTrailFields, MomentOfABlankEntryIsTheFirstDayOf1900) {
  EXPECT_EQ(audit_.EntryDate(), Date::FromYmd(1900, 1, 1));
  EXPECT_EQ(audit_.EntryTime(), Date(0));
  audit_.EntryTime(Date::FromYmd(1899, 12, 30, 14));
  EXPECT_EQ(audit_.EntryDate(), Date::FromYmd(1900, 1, 1));
  EXPECT_EQ(audit_.EntryTime().ToText(), TimeText(14, 0, 0));
}

// --- Further fields ---

TEST_F(AuditTrailFields, ReferenceToATransactionReads0AndKeepsNothing) {
  audit_.JournalID(3);
  audit_.Period(4);
  audit_.TrxNumber(5);
  audit_.Subindex1(6);
  audit_.Subindex2(7);
  audit_.Key(8.5);
  EXPECT_EQ(audit_.JournalID(), 0);
  EXPECT_EQ(audit_.Period(), 0);
  EXPECT_EQ(audit_.TrxNumber(), 0);
  EXPECT_EQ(audit_.Subindex1(), 0);
  EXPECT_EQ(audit_.Subindex2(), 0);
  EXPECT_EQ(audit_.Key(), 0);
}

TEST_F(AuditTrailFields, UnknownNumberIsKept) {
  audit_.NRecord(1);
  audit_.Unknown1(-7);
  ASSERT_EQ(audit_.Insert(), StatusSuccess);
  audit_.Unknown1(0);
  ASSERT_EQ(audit_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(audit_.Unknown1(), -7);
}

}  // namespace
}  // namespace larkmoor
