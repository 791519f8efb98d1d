// The class RecurringTransaction: a plain table whose date cannot be set, and two of whose names
// stand for one field.
#include "engine/records/recurring_transaction.h"

#include <cstdint>
#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/journals/recurring_transaction.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/read_only_file.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Company;
using test::IsHeldOpen;
using test::OpenRecordFile;
using Numbers = std::vector<std::int32_t>;

/// What a day that was never entered is on file, and its other form.
constexpr double EmptyDate = 2;
constexpr double OtherEmptyDate = 65537;

class RecurringTransactionTest : public testing::Test {
 protected:
  std::filesystem::path File() const {
    return company_.Folder() / TovrinFileNames::RecurringTransactionFile();
  }
  void Open() { ASSERT_EQ(table_.OpenFile(), StatusSuccess); }

  /// Lays a record that is blank but for what `fill` puts into it.
  template <typename Fill>
  void Lay(Fill&& fill) const {
    OpenRecordFile(File(), RecurringTransactionRecord::Describe()).Add(fill);
  }
  /// Lays a record of that day and has the table read it.
  void LoadWithNextDate(double day) {
    Lay([&](Tovrin2Record& record) {
      record.SetLong(RecurringTransactionRecord::RecurNum, ++series_);
      record.SetDate(RecurringTransactionRecord::NextDate, day);
      record.SetLong(RecurringTransactionRecord::LastUpdateCounter, -1);
    });
    Open();
    ASSERT_EQ(table_.StepLast(), StatusSuccess);
  }

  /// The numbers of all series on file.
  Numbers SeriesOnFile() const {
    OpenRecordFile file(File(), RecurringTransactionRecord::Describe());
    Numbers numbers;
    for (Status status = file.File().btStepFirst(); status == StatusSuccess;
         status = file.File().btStepNext()) {
      numbers.push_back(file.Record().GetLong(RecurringTransactionRecord::RecurNum));
    }
    return numbers;
  }

  Company company_;
  RecurringTransaction table_;

 private:
  std::int32_t series_ = 0;
};

using RecurringTransactionFile = RecurringTransactionTest;
using RecurringTransactionRows = RecurringTransactionTest;
using RecurringTransactionNames = RecurringTransactionTest;
using RecurringTransactionNextDate = RecurringTransactionTest;

// --- Open and closed ---

TEST_F(RecurringTransactionFile, AnswersFromAClosedFileBeforeOpenFile) {
  EXPECT_EQ(table_.Insert(), StatusFileNotOpen);
  EXPECT_EQ(table_.Update(), StatusFileNotOpen);
  EXPECT_EQ(table_.Delete(), StatusFileNotOpen);
  EXPECT_EQ(table_.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(table_.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(table_.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(table_.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(table_.RecordCount(), 0);
  EXPECT_EQ(table_.CloseFile(), StatusSuccess);
}

TEST_F(RecurringTransactionFile, IsHeldUntilCloseFile) {
  Open();
  EXPECT_TRUE(IsHeldOpen(File()));
  EXPECT_EQ(table_.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(File()));
  EXPECT_EQ(table_.CloseFile(), StatusSuccess);
}

TEST_F(RecurringTransactionFile, IsClosedAtTheEndOfTheObject) {
  {
    RecurringTransaction brief;
    ASSERT_EQ(brief.OpenFile(), StatusSuccess);
    ASSERT_TRUE(IsHeldOpen(File()));
  }
  EXPECT_FALSE(IsHeldOpen(File()));
}

TEST_F(RecurringTransactionFile, ThatTheEngineClosedAnswers3AtTheFirstCloseFile) {
  Open();
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(table_.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(table_.CloseFile(), StatusSuccess);
}

TEST_F(RecurringTransactionFile, ThatCannotBeOpenedAnswersWhy) {
  {
    const test::TakenAway away(File());
    EXPECT_EQ(table_.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(table_.CloseFile(), StatusSuccess);
  }
  test::ProtectFile(File(), /*allowRead=*/false);
  EXPECT_EQ(table_.OpenFile(), StatusInvalidOwner);
  EXPECT_EQ(table_.StepFirst(), StatusFileNotOpen);
}

TEST_F(RecurringTransactionFile, IsOpenedForWriting) {
  test::WhereOnlyThisIsReadOnly(File(), [&] { EXPECT_EQ(table_.OpenFile(), StatusPermission); });
}

// --- Rows ---

TEST_F(RecurringTransactionRows, AreWalkedInTheOrderOfTheirInsertion) {
  Open();
  constexpr std::int32_t Series[] = {30, 10, 20};
  for (const std::int32_t number : Series) {
    table_.RecurNum(number);
    ASSERT_EQ(table_.Insert(), StatusSuccess);
  }
  EXPECT_EQ(table_.RecordCount(), 3);
  ASSERT_EQ(table_.StepFirst(), StatusSuccess);
  EXPECT_EQ(table_.RecurNum(), 30);
  ASSERT_EQ(table_.StepNext(), StatusSuccess);
  EXPECT_EQ(table_.RecurNum(), 10);
  ASSERT_EQ(table_.StepLast(), StatusSuccess);
  EXPECT_EQ(table_.RecurNum(), 20);
  EXPECT_EQ(table_.StepNext(), StatusEndOfFile);
  ASSERT_EQ(table_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(table_.RecurNum(), 10);
}

TEST_F(RecurringTransactionRows, AreUpdatedAndDeletedWhereTheWalkStands) {
  for (const std::int32_t number : Numbers{1, 2, 3}) {
    Lay([=](Tovrin2Record& record) {
      record.SetLong(RecurringTransactionRecord::RecurNum, number);
    });
  }
  Open();
  EXPECT_EQ(table_.Update(), StatusInvalidPositioning);
  ASSERT_EQ(table_.StepFirst(), StatusSuccess);
  ASSERT_EQ(table_.StepNext(), StatusSuccess);
  table_.RecurNum(20);
  EXPECT_EQ(table_.Update(), StatusSuccess);
  EXPECT_EQ(SeriesOnFile(), (Numbers{1, 20, 3}));
  EXPECT_EQ(table_.Delete(), StatusSuccess);
  EXPECT_EQ(SeriesOnFile(), (Numbers{1, 3}));
  ASSERT_EQ(table_.StepNext(), StatusSuccess);
  EXPECT_EQ(table_.RecurNum(), 3);
}

// --- Names of fields ---

TEST_F(RecurringTransactionNames, CODTermsAndDueMonthEndAreOneField) {
  Open();
  table_.DueMonthEnd(true);
  EXPECT_TRUE(table_.CODTerms());
  EXPECT_FALSE(table_.PrepayTerms());
  EXPECT_FALSE(table_.DayIsActual());
  table_.CODTerms(false);
  EXPECT_FALSE(table_.DueMonthEnd());
}

TEST_F(RecurringTransactionNames, OccurrencesIsSpelledOtherwiseOnFile) {
  Lay([](Tovrin2Record& record) { record.SetInteger(RecurringTransactionRecord::Occurences, 12); });
  Open();
  ASSERT_EQ(table_.StepFirst(), StatusSuccess);
  EXPECT_EQ(table_.Occurrences(), 12);
  table_.Occurrences(11);
  ASSERT_EQ(table_.Update(), StatusSuccess);
  OpenRecordFile file(File(), RecurringTransactionRecord::Describe());
  ASSERT_EQ(file.File().btStepFirst(), StatusSuccess);
  EXPECT_EQ(file.Record().GetInteger(RecurringTransactionRecord::Occurences), 11);
}

// --- NextDate ---

TEST_F(RecurringTransactionNextDate, IsTheDayOnFile) {
  LoadWithNextDate(45000);
  EXPECT_EQ(table_.NextDate(), Variant(Date(45000)));
  EXPECT_EQ(table_.LastUpdateCounter(), -1);
}

TEST_F(RecurringTransactionNextDate, IsNullWhereTheDayIsEmpty) {
  for (const double day : {EmptyDate, OtherEmptyDate, 200.0}) {
    LoadWithNextDate(day);
    EXPECT_TRUE(table_.NextDate().IsNull()) << day;
  }
}

// The day that is assigned is dropped. The one on file goes to the counter instead.
TEST_F(RecurringTransactionNextDate, AssignedStaysAsItWasAndSetsTheCounter) {
  LoadWithNextDate(45000);
  table_.NextDate(Date(46000));
  EXPECT_EQ(table_.NextDate(), Variant(Date(45000)));
  EXPECT_EQ(table_.LastUpdateCounter(), 45000);
}

TEST_F(RecurringTransactionNextDate, AssignedSetsTheCounterWhateverIsAssigned) {
  LoadWithNextDate(45000);
  for (const Variant& value : {Variant(Null), Variant(), Variant("no date"), Variant(1e300)}) {
    table_.LastUpdateCounter(-1);
    table_.NextDate(value);
    EXPECT_EQ(table_.LastUpdateCounter(), 45000) << value;
  }
  EXPECT_EQ(table_.NextDate(), Variant(Date(45000)));
}

TEST_F(RecurringTransactionNextDate, AssignedSetsTheCounterToTheNearestDay) {
  LoadWithNextDate(45000.25);
  table_.NextDate(Null);
  EXPECT_EQ(table_.LastUpdateCounter(), 45000);
  LoadWithNextDate(45000.75);
  table_.NextDate(Null);
  EXPECT_EQ(table_.LastUpdateCounter(), 45001);
}

TEST_F(RecurringTransactionNextDate, AssignedSetsTheCounterTo2WhereTheDayIsEmpty) {
  for (const double day : {EmptyDate, OtherEmptyDate, 200.0}) {
    LoadWithNextDate(day);
    table_.NextDate(Date(46000));
    EXPECT_EQ(table_.LastUpdateCounter(), 2) << day;
    EXPECT_TRUE(table_.NextDate().IsNull()) << day;
  }
}

// The one day that the library cannot store comes out of the conversion as the other empty date.
TEST_F(RecurringTransactionNextDate, AssignedSetsTheCounterTo65537WhereTheDayIsTheEndOf1999) {
  const Date day = Date::FromYmd(1999, 12, 31);
  LoadWithNextDate(day.Serial());
  EXPECT_EQ(table_.NextDate(), Variant(day));
  table_.NextDate(Null);
  EXPECT_EQ(table_.LastUpdateCounter(), 65537);
}

TEST_F(RecurringTransactionNextDate, OfANewTableIsNullAndSetsTheCounterTo2) {
  EXPECT_TRUE(table_.NextDate().IsNull());
  table_.NextDate(Date(46000));
  EXPECT_EQ(table_.LastUpdateCounter(), 2);
}

TEST_F(RecurringTransactionNextDate, OnFileIsOutOfReachOfTheClient) {
  LoadWithNextDate(45000);
  table_.NextDate(Date(46000));
  ASSERT_EQ(table_.Update(), StatusSuccess);
  OpenRecordFile file(File(), RecurringTransactionRecord::Describe());
  ASSERT_EQ(file.File().btStepFirst(), StatusSuccess);
  EXPECT_EQ(file.Record().GetDate(RecurringTransactionRecord::NextDate), 45000);
  EXPECT_EQ(file.Record().GetLong(RecurringTransactionRecord::LastUpdateCounter), 45000);
}

}  // namespace
}  // namespace larkmoor
