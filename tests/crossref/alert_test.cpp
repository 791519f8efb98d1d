// The class Alert: a table whose records are found by their number, and the texts of its codes.
#include <cstdint>
#include <filesystem>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include <larkmoor/crossref/alert.h>
#include <larkmoor/status.h>

#include "support/company.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Company;
using test::IsHeldOpen;
using test::TakenAway;

class AlertTest : public testing::Test {
 protected:
  std::filesystem::path AlertFile() const { return company_.Folder() / "Alert.dat"; }

  Company company_;
};

/// Alerts 3, 1 and 2, laid in that order, each with its number as its amount.
class OpenAlertTest : public AlertTest {
 protected:
  OpenAlertTest() {
    EXPECT_EQ(alert_.OpenFile(), StatusSuccess);
    for (const std::int16_t index : {std::int16_t{3}, std::int16_t{1}, std::int16_t{2}}) {
      alert_.Index(index);
      alert_.Amount(index);
      EXPECT_EQ(alert_.Insert(), StatusSuccess);
    }
  }

  Alert alert_;
};

using AlertLifecycle = AlertTest;
using AlertFinders = OpenAlertTest;
using AlertWrites = OpenAlertTest;
using AlertTexts = OpenAlertTest;

// --- Opening and closing ---

TEST_F(AlertLifecycle, CloseFileOnANewObjectAnswers0) {
  Alert alert;
  EXPECT_EQ(alert.CloseFile(), StatusSuccess);
}

TEST_F(AlertLifecycle, FileIsAlertDat) {
  Alert alert;
  ASSERT_EQ(alert.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(AlertFile()));
  EXPECT_EQ(alert.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(AlertFile()));
  EXPECT_EQ(alert.CloseFile(), StatusSuccess);
}

TEST_F(AlertLifecycle, DestructionClosesTheFile) {
  {
    Alert alert;
    ASSERT_EQ(alert.OpenFile(), StatusSuccess);
  }
  EXPECT_FALSE(IsHeldOpen(AlertFile()));
}

TEST_F(AlertLifecycle, OpenFileAnswers12WithoutTheFileAndCanBeTriedAgain) {
  Alert alert;
  {
    const TakenAway away(AlertFile());
    EXPECT_EQ(alert.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(alert.CloseFile(), StatusSuccess);
    EXPECT_EQ(alert.StepFirst(), StatusFileNotOpen);
  }
  EXPECT_EQ(alert.OpenFile(), StatusSuccess);
}

TEST_F(AlertLifecycle, OpenFileTellsWhatProtectsTheFile) {
  test::ProtectFile(AlertFile(), /*allowRead=*/false);
  Alert alert;
  EXPECT_EQ(alert.OpenFile(), StatusInvalidOwner);
}

TEST_F(AlertLifecycle, OpenFileNeedsAFileThatCanBeWritten) {
  test::WhereReadOnly(AlertFile(), [] {
    Alert alert;
    EXPECT_EQ(alert.OpenFile(), StatusPermission);
  });
}

TEST_F(AlertLifecycle, OperationsBeforeOpenFileAnswer3) {
  Alert alert;
  EXPECT_EQ(alert.GetEqual(1), StatusFileNotOpen);
  EXPECT_EQ(alert.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(alert.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(alert.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(alert.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(alert.Insert(), StatusFileNotOpen);
  EXPECT_EQ(alert.Update(), StatusFileNotOpen);
  EXPECT_EQ(alert.Delete(), StatusFileNotOpen);
  EXPECT_EQ(alert.RecordCount(), 0);
}

// --- Finders ---

TEST_F(AlertFinders, GetEqualFindsTheAlertOfThatNumber) {
  ASSERT_EQ(alert_.GetEqual(2), StatusSuccess);
  EXPECT_EQ(alert_.Amount(), 2);
  ASSERT_EQ(alert_.GetEqual(3), StatusSuccess);
  EXPECT_EQ(alert_.Amount(), 3);
  EXPECT_EQ(alert_.GetEqual(4), StatusKeyNotFound);
  EXPECT_EQ(alert_.Amount(), 3) << "a search in vain leaves the record in hand";
}

// The number asked for is wider than the field that holds it.
TEST_F(AlertFinders, GetEqualComparesAll32Bits) {
  EXPECT_EQ(alert_.GetEqual(65536 + 2), StatusKeyNotFound);
}

TEST_F(AlertFinders, StepsGoInTheOrderOfInsertion) {
  ASSERT_EQ(alert_.StepFirst(), StatusSuccess);
  EXPECT_EQ(alert_.Index(), 3);
  ASSERT_EQ(alert_.StepNext(), StatusSuccess);
  EXPECT_EQ(alert_.Index(), 1);
  ASSERT_EQ(alert_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(alert_.StepPrevious(), StatusEndOfFile);
  ASSERT_EQ(alert_.StepLast(), StatusSuccess);
  EXPECT_EQ(alert_.Index(), 2);
  EXPECT_EQ(alert_.StepNext(), StatusEndOfFile);
}

// --- Writes ---

TEST_F(AlertWrites, InsertAddsTheRecordInHand) {
  alert_.Index(9);
  ASSERT_EQ(alert_.Insert(), StatusSuccess);
  EXPECT_EQ(alert_.RecordCount(), 4);
  EXPECT_EQ(alert_.GetEqual(9), StatusSuccess);
}

TEST_F(AlertWrites, InsertOfANumberOnFileAnswers5) {
  alert_.Index(1);
  EXPECT_EQ(alert_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(alert_.RecordCount(), 3);
}

TEST_F(AlertWrites, UpdateRewritesTheAlertThatWasFound) {
  ASSERT_EQ(alert_.GetEqual(1), StatusSuccess);
  alert_.Subject("Over the limit");
  ASSERT_EQ(alert_.Update(), StatusSuccess);
  Alert reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual(1), StatusSuccess);
  EXPECT_EQ(reader.Subject(), "Over the limit");
}

TEST_F(AlertWrites, DeleteRemovesTheAlertThatWasFound) {
  ASSERT_EQ(alert_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(alert_.Delete(), StatusSuccess);
  EXPECT_EQ(alert_.GetEqual(1), StatusKeyNotFound);
  EXPECT_EQ(alert_.RecordCount(), 2);
  EXPECT_EQ(alert_.Delete(), StatusInvalidPositioning);
}

// --- Texts of codes ---

/// The different texts that `describe` has for the codes 0 to 20.
template <typename Describe>
std::set<std::string> TextsOf(Describe&& describe) {
  std::set<std::string> texts;
  for (std::int16_t code = 0; code <= 20; ++code) texts.insert(describe(code));
  return texts;
}

TEST_F(AlertTexts, EveryKindOfCodeHasTexts) {
  EXPECT_GT(TextsOf([&](std::int16_t code) { return alert_.ApplyToDescription(code); }).size(), 2U);
  EXPECT_GT(TextsOf([&](std::int16_t code) { return alert_.ConditionDescription(code); }).size(),
            2U);
  EXPECT_GT(TextsOf([&](std::int16_t code) { return alert_.TypeDescription(code); }).size(), 2U);
}

TEST_F(AlertTexts, TextIsThatOfTheCodeAskedForWhateverTheRecordHolds) {
  const std::string applyTo = alert_.ApplyToDescription(1);
  const std::string condition = alert_.ConditionDescription(1);
  const std::string type = alert_.TypeDescription(1);
  alert_.ApplyTo(2);
  alert_.Condition(2);
  alert_.TypeIndex(2);
  EXPECT_EQ(alert_.ApplyToDescription(1), applyTo);
  EXPECT_EQ(alert_.ConditionDescription(1), condition);
  EXPECT_EQ(alert_.TypeDescription(1), type);
}

}  // namespace
}  // namespace larkmoor
