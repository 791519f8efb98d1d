// What a driver answers: reads, positions, writes, conflicts, numbers that keys give, percentages.

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engine/store/conformance.h"

namespace larkmoor::test {
namespace {

using store::OpenMode;
using store::Seek;
using store::Step;

// Reading ----------------------------------------------------------------------------------------

class ReadAnswers : public DriverTest {};
INSTANTIATE_TEST_SUITE_P(Every, ReadAnswers, testing::ValuesIn(EveryDriver()), DriverName);

TEST_P(ReadAnswers, EachSearchFindsItsNeighbour) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .kind = 10},
              {.number = 2, .kind = 20},
              {.number = 3, .kind = 20},
              {.number = 4, .kind = 30}});
  constexpr int None = 0;
  struct Row {
    std::int16_t sought;
    int equal, greater, greaterOrEqual, less, lessOrEqual;
  };
  // Of records with equal keys the first is found upwards, the last downwards.
  const Row rows[] = {
      {5, None, 1, 1, None, None},  // below all
      {10, 1, 2, 1, None, 1},       //
      {15, None, 2, 2, 1, 1},       // between two
      {20, 2, 4, 2, 1, 3},          // repeated
      {30, 4, None, 4, 3, 4},       //
      {35, None, None, None, 4, 4}  // above all
  };
  for (const Row& row : rows) {
    const auto expectFound = [&](Seek seek, int expected, Status nothing) {
      SCOPED_TRACE(testing::Message()
                   << "sought " << row.sought << ", search " << static_cast<int>(seek));
      const Status status = file.Get(seek, SampleKey::Kind, {.kind = row.sought});
      EXPECT_EQ(status, expected == None ? nothing : StatusSuccess);
      if (expected != None) {
        EXPECT_EQ(file.InHand().number, expected);
      }
    };
    expectFound(Seek::Equal, row.equal, StatusKeyNotFound);
    expectFound(Seek::Greater, row.greater, StatusEndOfFile);
    expectFound(Seek::GreaterOrEqual, row.greaterOrEqual, StatusEndOfFile);
    expectFound(Seek::Less, row.less, StatusEndOfFile);
    expectFound(Seek::LessOrEqual, row.lessOrEqual, StatusEndOfFile);
  }
}

TEST_P(ReadAnswers, EverySearchOnAnEmptyFileAnswersThatNothingIsThere) {
  Cursor file = New(SampleFile());
  EXPECT_EQ(file.Get(Seek::Equal, SampleKey::Kind), StatusKeyNotFound);
  for (const Seek seek : {Seek::Greater, Seek::GreaterOrEqual, Seek::Less, Seek::LessOrEqual,
                          Seek::First, Seek::Last}) {
    EXPECT_EQ(file.Get(seek, SampleKey::Kind), StatusEndOfFile) << static_cast<int>(seek);
  }
  for (const Step step : {Step::First, Step::Last, Step::Next, Step::Previous}) {
    EXPECT_EQ(file.StepTo(step), StatusEndOfFile) << static_cast<int>(step);
  }
}

TEST_P(ReadAnswers, WalksReachEveryRecordBothWaysAndEndWith9) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .name = "C"}, {.number = 2, .name = "A"}, {.number = 3, .name = "B"}});

  EXPECT_EQ(NumbersByKey(file, SampleKey::Name), (Numbers{2, 3, 1}));
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Name), StatusEndOfFile);
  EXPECT_EQ(NumbersByKeyBackwards(file, SampleKey::Name), (Numbers{1, 3, 2}));
  EXPECT_EQ(file.Get(Seek::Previous, SampleKey::Name), StatusEndOfFile);
  EXPECT_EQ(NumbersByStep(file), (Numbers{1, 2, 3}));
  EXPECT_EQ(file.StepTo(Step::Next), StatusEndOfFile);
  EXPECT_EQ(NumbersByStepBackwards(file), (Numbers{3, 2, 1}));
  EXPECT_EQ(file.StepTo(Step::Previous), StatusEndOfFile);
}

TEST_P(ReadAnswers, AReadGivesTheWholeRecord) {
  Cursor file = New(SampleFile());
  const Sample written = MadeSample(7, 4711);
  Fill(file, {written});
  Cursor other = file.Another();
  ASSERT_EQ(other.Get(Seek::Equal, SampleKey::Guid, written), StatusSuccess);
  EXPECT_EQ(other.InHand(), written);
  ASSERT_EQ(other.StepTo(Step::First), StatusSuccess);
  EXPECT_EQ(other.InHand(), written);
}

TEST_P(ReadAnswers, AKeyNumberThatTheFileHasNotAnswers6BeforeAnythingElse) {
  Cursor file = New(SampleFile());
  const auto expectRefused = [&] {
    for (int seek = 0; seek <= static_cast<int>(Seek::Previous); ++seek) {
      for (const std::int16_t missing : {SampleKey::Missing, std::int16_t{17}, std::int16_t{-1}}) {
        EXPECT_EQ(file.Get(static_cast<Seek>(seek), missing), StatusInvalidKeyNumber)
            << "search " << seek << " on key " << missing;
      }
    }
  };
  expectRefused();  // Next and Previous without a place would answer 8.
  Fill(file, {{.number = 1}, {.number = 2}});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Number), StatusSuccess);
  expectRefused();  // Next and Previous on another key would answer 7.
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Number), StatusSuccess);
}

TEST_P(ReadAnswers, AFailedReadLeavesRecordBufferAndPosition) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .kind = 1}, {.number = 2, .kind = 2}, {.number = 3, .kind = 3}});
  struct Failure {
    const char* what;
    Status expected;
    std::function<Status()> read;
  };
  const Failure failures[] = {
      {"equal", StatusKeyNotFound,
       [&] { return file.Get(Seek::Equal, SampleKey::Kind, {.kind = 9}); }},
      {"equal on another key", StatusKeyNotFound,
       [&] { return file.Get(Seek::Equal, SampleKey::Name, {.name = "X"}); }},
      {"greater", StatusEndOfFile,
       [&] { return file.Get(Seek::Greater, SampleKey::Kind, {.kind = 3}); }},
      {"at or above", StatusEndOfFile,
       [&] { return file.Get(Seek::GreaterOrEqual, SampleKey::Kind, {.kind = 4}); }},
      {"less", StatusEndOfFile, [&] { return file.Get(Seek::Less, SampleKey::Kind, {.kind = 1}); }},
      {"at or below", StatusEndOfFile,
       [&] { return file.Get(Seek::LessOrEqual, SampleKey::Kind, {.kind = 0}); }},
      {"another key", StatusDifferentKeyNumber,
       [&] { return file.Get(Seek::Next, SampleKey::Number); }},
      {"missing key", StatusInvalidKeyNumber,
       [&] { return file.Get(Seek::First, SampleKey::Missing); }},
      {"percentage on a missing key", StatusInvalidKeyNumber,
       [&] { return file.File().GetByPercentage(SampleKey::Missing, 0, file.Buffer()); }},
  };
  for (const Failure& failure : failures) {
    SCOPED_TRACE(failure.what);
    // Each side of the position is looked at after a failure of its own.
    const auto failAfterRead = [&] {
      ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Kind, {.kind = 2}), StatusSuccess);
      const Bytes before = file.Buffer();
      EXPECT_EQ(failure.read(), failure.expected);
      EXPECT_EQ(file.Buffer(), before);
    };
    failAfterRead();
    EXPECT_EQ(file.Get(Seek::Next, SampleKey::Kind), StatusSuccess);
    EXPECT_EQ(file.InHand().number, 3);
    failAfterRead();
    EXPECT_EQ(file.StepTo(Step::Next), StatusSuccess);
    EXPECT_EQ(file.InHand().number, 3);
    failAfterRead();
    Sample changed = file.InHand();
    ++changed.stamp;
    EXPECT_EQ(file.Update(SampleKey::Kind, changed), StatusSuccess);
  }
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 2}), StatusSuccess);
  EXPECT_EQ(file.InHand().stamp, static_cast<std::int32_t>(std::size(failures)));
}

TEST_P(ReadAnswers, AWalkThatEndedGoesBackFromItsLastRecord) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}});
  ASSERT_EQ(NumbersByKey(file, SampleKey::Number), (Numbers{1, 2}));
  EXPECT_EQ(file.Get(Seek::Previous, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 1);
  ASSERT_EQ(NumbersByStepBackwards(file), (Numbers{2, 1}));
  EXPECT_EQ(file.StepTo(Step::Next), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 2);
}

TEST_P(ReadAnswers, AFailedStepLeavesThePlaceOnTheKeyPath) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .kind = 2}, {.number = 2, .kind = 1}});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Kind), StatusSuccess);
  ASSERT_EQ(file.InHand().number, 2);
  EXPECT_EQ(file.StepTo(Step::Next), StatusEndOfFile);
  EXPECT_EQ(file.InHand().number, 2);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Kind), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 1);
}

TEST_P(ReadAnswers, ARecordInTheFileIsNotTheRecordInTheBuffer) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .name = "written"}});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Number), StatusSuccess);
  std::fill(file.Buffer().begin(), file.Buffer().end(), std::byte{0xFF});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(file.InHand().name, "written");
}

TEST_P(ReadAnswers, TheFileTellsWhatItWasMadeFrom) {
  for (const auto& made : {SampleFile(), StrictFile(), LooseFile()}) {
    SCOPED_TRACE(made.name);
    Cursor file = New(made);
    const store::FileDescription& told = file.File().Description();
    EXPECT_EQ(told.name, made.name);
    EXPECT_EQ(told.release, made.release);
    EXPECT_EQ(told.recordLength, made.recordLength);
    ASSERT_EQ(told.keys.size(), made.keys.size());
    for (const store::KeyDescription& key : made.keys) {
      SCOPED_TRACE(key.number);
      const store::KeyDescription* same = told.FindKey(key.number);
      ASSERT_NE(same, nullptr);
      EXPECT_EQ(same->unique, key.unique);
      EXPECT_EQ(same->modifiable, key.modifiable);
      EXPECT_EQ(same->autoIncrement, key.autoIncrement);
      ASSERT_EQ(same->segments.size(), key.segments.size());
      for (std::size_t i = 0; i < key.segments.size(); ++i) {
        EXPECT_EQ(same->segments[i].type, key.segments[i].type);
        EXPECT_EQ(same->segments[i].offset, key.segments[i].offset);
        EXPECT_EQ(same->segments[i].width, key.segments[i].width);
      }
    }
  }
}

TEST_P(ReadAnswers, RecordCountFollowsInsertsAndDeletes) {
  Cursor file = New(SampleFile());
  EXPECT_EQ(file.File().RecordCount(), 0);
  Fill(file, {{}, {}, {}});
  EXPECT_EQ(file.File().RecordCount(), 3);
  EXPECT_EQ(file.Delete(), StatusSuccess);
  EXPECT_EQ(file.File().RecordCount(), 2);
  EXPECT_EQ(file.Another().File().RecordCount(), 2);
}

// Positions --------------------------------------------------------------------------------------

class PositionAnswers : public DriverTest {};
INSTANTIATE_TEST_SUITE_P(Every, PositionAnswers, testing::ValuesIn(EveryDriver()), DriverName);

TEST_P(PositionAnswers, NothingIsCurrentAfterAnOpen) {
  Cursor writer = New(SampleFile());
  Fill(writer, {{.number = 1}, {.number = 2}});
  Cursor file = writer.Another();
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Number), StatusInvalidPositioning);
  EXPECT_EQ(file.Get(Seek::Previous, SampleKey::Number), StatusInvalidPositioning);
  EXPECT_EQ(file.Update(SampleKey::Number, {.number = 1, .stamp = 1}), StatusInvalidPositioning);
  EXPECT_EQ(file.Delete(), StatusInvalidPositioning);
  double percent = -1;
  EXPECT_EQ(file.File().Percentage(SampleKey::Number, percent), StatusInvalidPositioning);
  EXPECT_EQ(percent, -1);
}

TEST_P(PositionAnswers, ThePhysicalPlaceAfterAnOpenIsBeforeTheFirstRecord) {
  Cursor writer = New(SampleFile());
  Fill(writer, {{.number = 1}, {.number = 2}});
  Cursor file = writer.Another();
  EXPECT_EQ(file.StepTo(Step::Previous), StatusEndOfFile);
  EXPECT_EQ(file.StepTo(Step::Next), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 1);
}

TEST_P(PositionAnswers, NextAndPreviousOnAnotherKeyAnswer7AndKeepThePlace) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}, {.number = 3}});
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 2}), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Name), StatusDifferentKeyNumber);
  EXPECT_EQ(file.Get(Seek::Previous, SampleKey::Name), StatusDifferentKeyNumber);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 3);
}

TEST_P(PositionAnswers, TheLastSuccessfulKeyedReadDecidesWhichKeyGoesOn) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Number), StatusSuccess);
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Name), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Number), StatusDifferentKeyNumber);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Name), StatusSuccess);
}

TEST_P(PositionAnswers, AKeyedReadTakesThePhysicalPlace) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .kind = 3}, {.number = 2, .kind = 1}, {.number = 3, .kind = 2}});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Kind), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 2);
  EXPECT_EQ(file.StepTo(Step::Next), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 3);
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Kind), StatusSuccess);
  EXPECT_EQ(file.StepTo(Step::Previous), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 1);
}

TEST_P(PositionAnswers, AStepLeavesNoPlaceOnAKeyPath) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}, {.number = 3}});
  for (const Step step : {Step::First, Step::Next, Step::Last, Step::Previous}) {
    ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 2}), StatusSuccess);
    ASSERT_EQ(file.StepTo(step), StatusSuccess);
    EXPECT_EQ(file.Get(Seek::Next, SampleKey::Number), StatusInvalidPositioning);
    EXPECT_EQ(file.Get(Seek::Previous, SampleKey::Number), StatusInvalidPositioning);
  }
}

TEST_P(PositionAnswers, ASteppedRecordIsTheCurrentOne) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}});
  ASSERT_EQ(file.StepTo(Step::First), StatusSuccess);
  EXPECT_EQ(file.Update(SampleKey::Number, {.number = 1, .stamp = 5}), StatusSuccess);
  ASSERT_EQ(file.StepTo(Step::Last), StatusSuccess);
  EXPECT_EQ(file.Delete(), StatusSuccess);
  ASSERT_EQ(NumbersByStep(file), (Numbers{1}));
  EXPECT_EQ(file.InHand().stamp, 5);
}

TEST_P(PositionAnswers, AfterADeleteAllWalksGoOnFromItsPlace) {
  const auto numberAfter = [this](std::string name, auto read) {
    store::FileDescription description = SampleFile();
    description.name = std::move(name);
    Cursor file = New(description);
    Fill(file, {{.number = 1, .kind = 3}, {.number = 2, .kind = 2}, {.number = 3, .kind = 1}});
    EXPECT_EQ(file.Get(Seek::Equal, SampleKey::Kind, {.kind = 2}), StatusSuccess);
    EXPECT_EQ(file.Delete(), StatusSuccess);
    EXPECT_EQ(read(file), StatusSuccess);
    return file.InHand().number;
  };
  EXPECT_EQ(numberAfter("A", [](Cursor& f) { return f.Get(Seek::Next, SampleKey::Kind); }), 1);
  EXPECT_EQ(numberAfter("B", [](Cursor& f) { return f.Get(Seek::Previous, SampleKey::Kind); }), 3);
  EXPECT_EQ(numberAfter("C", [](Cursor& f) { return f.StepTo(Step::Next); }), 3);
  EXPECT_EQ(numberAfter("D", [](Cursor& f) { return f.StepTo(Step::Previous); }), 1);
}

TEST_P(PositionAnswers, AfterADeleteNothingIsCurrent) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Number), StatusSuccess);
  ASSERT_EQ(file.Delete(), StatusSuccess);
  EXPECT_EQ(file.Delete(), StatusInvalidPositioning);
  EXPECT_EQ(file.Update(SampleKey::Number, {.number = 1}), StatusInvalidPositioning);
  double percent = -1;
  EXPECT_EQ(file.File().Percentage(SampleKey::Number, percent), StatusInvalidPositioning);
  EXPECT_EQ(NumbersByStep(file), (Numbers{2}));
}

TEST_P(PositionAnswers, DeletingInsideAWalkEmptiesTheFile) {
  Cursor file = New(SampleFile());
  Fill(file, {{}, {}, {}, {}});
  for (Status status = file.Get(Seek::First, SampleKey::Name); status == StatusSuccess;
       status = file.Get(Seek::Next, SampleKey::Name)) {
    ASSERT_EQ(file.Delete(), StatusSuccess);
  }
  EXPECT_EQ(file.File().RecordCount(), 0);
}

TEST_P(PositionAnswers, AnInsertedRecordIsTheCurrentOneAndTakesEveryPlace) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .kind = 1, .name = "C"}, {.number = 2, .kind = 5, .name = "A"}});
  ASSERT_EQ(file.Insert(SampleKey::Kind, {.number = 3, .kind = 3, .name = "B"}), StatusSuccess);

  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Name), StatusDifferentKeyNumber);
  EXPECT_EQ(file.Update(SampleKey::Kind, {.number = 3, .kind = 3, .name = "B", .stamp = 9}),
            StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Kind), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 2);
  EXPECT_EQ(file.Get(Seek::Previous, SampleKey::Kind), StatusSuccess);
  EXPECT_EQ(file.InHand(), (Sample{.number = 3, .kind = 3, .name = "B", .stamp = 9}));

  ASSERT_EQ(file.Insert(SampleKey::Kind, {.number = 4}), StatusSuccess);
  EXPECT_EQ(file.StepTo(Step::Previous), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 3);
}

TEST_P(PositionAnswers, AnInsertAfterAStepTakesAPlaceOnTheGivenKey) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .name = "A"}, {.number = 2, .name = "C"}});
  ASSERT_EQ(file.StepTo(Step::First), StatusSuccess);
  ASSERT_EQ(file.Insert(SampleKey::Name, {.number = 3, .name = "B"}), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Name), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 2);
}

TEST_P(PositionAnswers, AnUpdateTakesItsPlaceOnTheGivenKeyByItsNewValue) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .kind = 1}, {.number = 2, .kind = 2}, {.number = 3, .kind = 3}});
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 1}), StatusSuccess);
  ASSERT_EQ(file.Update(SampleKey::Kind, {.number = 1, .kind = 2}), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Number), StatusDifferentKeyNumber);
  // Among the equal ones it lies first, for it was inserted first.
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Kind), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 2);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Kind), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 3);
}

TEST_P(PositionAnswers, AnUpdateAfterAStepTakesAPlaceOnTheGivenKey) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}});
  ASSERT_EQ(file.StepTo(Step::First), StatusSuccess);
  ASSERT_EQ(file.Update(SampleKey::Number, {.number = 1, .stamp = 1}), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 2);
}

TEST_P(PositionAnswers, AnUpdateKeepsThePhysicalPlace) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .name = "A"}, {.number = 2, .name = "B"}, {.number = 3, .name = "C"}});
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 2}), StatusSuccess);
  ASSERT_EQ(file.Update(SampleKey::Name, {.number = 2, .name = "Z"}), StatusSuccess);
  EXPECT_EQ(file.StepTo(Step::Next), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 3);
  EXPECT_EQ(NumbersByStep(file), (Numbers{1, 2, 3}));
}

TEST_P(PositionAnswers, APlaceOutlivesTheRecordThatSomeoneElseDeletes) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}, {.number = 3}});
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 2}), StatusSuccess);
  Cursor other = file.Another();
  ASSERT_EQ(other.Get(Seek::Equal, SampleKey::Number, {.number = 2}), StatusSuccess);
  ASSERT_EQ(other.Delete(), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 3);
  EXPECT_EQ(file.Get(Seek::Previous, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 1);
}

TEST_P(PositionAnswers, APlaceStaysWhereTheRecordLayWhenSomeoneElseMovesIt) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .kind = 1}, {.number = 2, .kind = 2}, {.number = 3, .kind = 3}});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Kind), StatusSuccess);
  Cursor other = file.Another();
  ASSERT_EQ(other.Get(Seek::Equal, SampleKey::Number, {.number = 1}), StatusSuccess);
  ASSERT_EQ(other.Update(SampleKey::Kind, {.number = 1, .kind = 9}), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Kind), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 2);
}

TEST_P(PositionAnswers, AWalkMeetsWhatSomeoneElseInsertsAheadOfIt) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .kind = 1}, {.number = 2, .kind = 3}});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Kind), StatusSuccess);
  Cursor other = file.Another();
  ASSERT_EQ(other.Insert(SampleKey::Kind, {.number = 3, .kind = 2}), StatusSuccess);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Kind), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 3);
  EXPECT_EQ(file.StepTo(Step::Next), StatusEndOfFile);
  ASSERT_EQ(other.Insert(SampleKey::Kind, {.number = 4}), StatusSuccess);
  EXPECT_EQ(file.StepTo(Step::Next), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 4);
}

TEST_P(PositionAnswers, EveryObjectHasAPositionOfItsOwn) {
  Cursor first = New(SampleFile());
  Fill(first, {{.number = 1}, {.number = 2}, {.number = 3}});
  Cursor second = first.Another();
  ASSERT_EQ(first.Get(Seek::First, SampleKey::Number), StatusSuccess);
  ASSERT_EQ(second.Get(Seek::Last, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(first.Get(Seek::Next, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(second.Get(Seek::Previous, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(second.Get(Seek::Previous, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(first.InHand().number, 2);
  EXPECT_EQ(second.InHand().number, 1);
}

// Order of duplicates and of places --------------------------------------------------------------

TEST_P(PositionAnswers, DuplicatesLieInTheOrderOfInsertion) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 9, .name = "same"},
              {.number = 3, .name = "same"},
              {.number = 5, .name = "same"},
              {.number = 1, .name = "same"}});
  EXPECT_EQ(NumbersByKey(file, SampleKey::Name), (Numbers{9, 3, 5, 1}));
  EXPECT_EQ(NumbersByKeyBackwards(file, SampleKey::Name), (Numbers{1, 5, 3, 9}));
}

TEST_P(PositionAnswers, AnUpdateDoesNotChangeTheOrderOfDuplicates) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .name = "A"}, {.number = 2, .name = "A"}, {.number = 3, .name = "B"}});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Name), StatusSuccess);
  ASSERT_EQ(file.Update(SampleKey::Name, {.number = 1, .name = "Z"}), StatusSuccess);
  ASSERT_EQ(file.Update(SampleKey::Name, {.number = 1, .name = "A"}), StatusSuccess);
  EXPECT_EQ(NumbersByKey(file, SampleKey::Name), (Numbers{1, 2, 3}));
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Name), StatusSuccess);
  ASSERT_EQ(file.Update(SampleKey::Name, {.number = 1, .name = "B"}), StatusSuccess);
  EXPECT_EQ(NumbersByKey(file, SampleKey::Name), (Numbers{2, 1, 3}));
}

TEST_P(PositionAnswers, AFreedPlaceIsNotUsedAgain) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}, {.number = 3}});
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 2}), StatusSuccess);
  ASSERT_EQ(file.Delete(), StatusSuccess);
  Fill(file, {{.number = 4}});
  EXPECT_EQ(NumbersByStep(file), (Numbers{1, 3, 4}));
}

TEST_P(PositionAnswers, ThePlaceOfTheLastRecordIsNotUsedAgainEither) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}});
  Cursor other = file.Another();
  ASSERT_EQ(file.StepTo(Step::Last), StatusSuccess);
  ASSERT_EQ(other.StepTo(Step::Last), StatusSuccess);
  ASSERT_EQ(other.Delete(), StatusSuccess);
  Fill(other, {{.number = 3}});
  EXPECT_EQ(file.Update(SampleKey::Number, {.number = 2, .stamp = 1}), StatusRecordConflict);
  EXPECT_EQ(file.StepTo(Step::Next), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 3);
}

// Writing ----------------------------------------------------------------------------------------

class WriteAnswers : public DriverTest {};
INSTANTIATE_TEST_SUITE_P(Every, WriteAnswers, testing::ValuesIn(EveryDriver()), DriverName);

TEST_P(WriteAnswers, AnInsertThatWouldRepeatAUniqueKeyAnswers5AndWritesNothing) {
  Cursor file = New(StrictFile());
  Fill(file, {{.number = 1, .account = 10}, {.number = 2, .account = 20}});
  EXPECT_EQ(file.Insert(0, {.number = 1, .account = 30}), StatusDuplicateKey);
  EXPECT_EQ(file.Insert(0, {.number = 3, .account = 20}), StatusDuplicateKey);
  EXPECT_EQ(NumbersByKey(file, StrictKey::Number), (Numbers{1, 2}));
  EXPECT_EQ(NumbersByKey(file, StrictKey::Account), (Numbers{1, 2}));
  EXPECT_EQ(NumbersByStep(file), (Numbers{1, 2}));
  EXPECT_EQ(Findings(file.Path()), Nothing);
}

TEST_P(WriteAnswers, AnUpdateThatWouldRepeatAUniqueKeyAnswers5AndWritesNothing) {
  Cursor file = New(StrictFile());
  Fill(file, {{.number = 1, .account = 10}, {.number = 2, .account = 20}});
  EXPECT_EQ(file.Update(0, {.number = 2, .account = 10, .stamp = 1}), StatusDuplicateKey);
  EXPECT_EQ(file.Update(0, {.number = 1, .account = 20, .stamp = 1}), StatusDuplicateKey);
  ASSERT_EQ(file.Get(Seek::Equal, StrictKey::Account, {.account = 20}), StatusSuccess);
  EXPECT_EQ(file.InHand(), (Sample{.number = 2, .account = 20}));
  EXPECT_EQ(Findings(file.Path()), Nothing);
}

TEST_P(WriteAnswers, AnUpdateMayKeepItsOwnUniqueKeys) {
  Cursor file = New(StrictFile());
  Fill(file, {{.number = 1, .account = 10}});
  EXPECT_EQ(file.Update(0, {.number = 1, .account = 10, .stamp = 1}), StatusSuccess);
}

TEST_P(WriteAnswers, AUniqueKeyIsFreeAgainAfterItsRecordIsGoneOrChanged) {
  Cursor file = New(StrictFile());
  Fill(file, {{.number = 1, .account = 10}});
  ASSERT_EQ(file.Update(0, {.number = 1, .account = 11}), StatusSuccess);
  EXPECT_EQ(file.Insert(0, {.number = 2, .account = 10}), StatusSuccess);
  ASSERT_EQ(file.Delete(), StatusSuccess);
  EXPECT_EQ(file.Insert(0, {.number = 2, .account = 10}), StatusSuccess);
}

TEST_P(WriteAnswers, AnUpdateThatChangesAFixedKeyAnswers10AndWritesNothing) {
  Cursor file = New(StrictFile());
  Fill(file, {{.number = 1, .account = 10, .grade = 3, .name = "A"}});
  EXPECT_EQ(file.Update(0, {.number = 1, .account = 10, .grade = 4, .name = "A"}),
            StatusKeyNotModifiable);
  EXPECT_EQ(file.Update(0, {.number = 1, .account = 10, .grade = 3, .name = "B"}),
            StatusKeyNotModifiable);
  EXPECT_EQ(file.Update(0, {.number = 1, .account = 11, .kind = 5, .grade = 3, .name = "A"}),
            StatusSuccess);
  ASSERT_EQ(file.Get(Seek::Equal, StrictKey::Grade, {.grade = 3}), StatusSuccess);
  EXPECT_EQ(file.InHand(),
            (Sample{.number = 1, .account = 11, .kind = 5, .grade = 3, .name = "A"}));
}

TEST_P(WriteAnswers, WhatLiesBehindTheEndOfATextChangesNoFixedKey) {
  Cursor file = New(StrictFile());
  Fill(file, {{.number = 1, .name = "A"}});
  Bytes record = file.Buffer();
  Poke(record, SampleOffset::Name + 2, 'x');
  EXPECT_EQ(file.File().Update(0, record), StatusSuccess);
}

TEST_P(WriteAnswers, AKeyNumberThatTheFileHasNotAnswers6AndWritesNothing) {
  Cursor file = New(SampleFile());
  EXPECT_EQ(file.Insert(SampleKey::Missing, {.number = 1}), StatusInvalidKeyNumber);
  EXPECT_EQ(file.File().RecordCount(), 0);
  Fill(file, {{.number = 1}});
  EXPECT_EQ(file.Update(SampleKey::Missing, {.number = 1, .stamp = 1}), StatusInvalidKeyNumber);
  ASSERT_EQ(file.StepTo(Step::First), StatusSuccess);
  EXPECT_EQ(file.InHand().stamp, 0);
}

TEST_P(WriteAnswers, AReadOnlyFileAnswers46ToEveryWrite) {
  Cursor writer = New(SampleFile());
  Fill(writer, {{.number = 1}});
  Cursor file = writer.Another(OpenMode::ReadOnly);
  // Even where a key number is missing or nothing is current.
  EXPECT_EQ(file.Delete(), StatusAccessDenied);
  EXPECT_EQ(file.Update(SampleKey::Missing, {.number = 1}), StatusAccessDenied);
  EXPECT_EQ(file.Insert(SampleKey::Missing, {.number = 2}), StatusAccessDenied);
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(file.Insert(SampleKey::Number, {.number = 2}), StatusAccessDenied);
  EXPECT_EQ(file.Update(SampleKey::Number, {.number = 1, .stamp = 1}), StatusAccessDenied);
  EXPECT_EQ(file.Delete(), StatusAccessDenied);
  EXPECT_EQ(NumbersByKey(file, SampleKey::Number), (Numbers{1}));
  EXPECT_EQ(file.InHand().stamp, 0);
}

TEST_P(WriteAnswers, AReadOnlyObjectSeesWhatOthersWrite) {
  Cursor writer = New(SampleFile());
  Cursor reader = writer.Another(OpenMode::ReadOnly);
  EXPECT_EQ(reader.Get(Seek::First, SampleKey::Number), StatusEndOfFile);
  Fill(writer, {{.number = 1}});
  EXPECT_EQ(reader.Get(Seek::First, SampleKey::Number), StatusSuccess);
}

TEST_P(WriteAnswers, TheFirstObstacleInOrderIsTheAnswer) {
  Cursor file = New(StrictFile());
  const Sample kept{.number = 1, .account = 10, .grade = 1};
  const Sample repeated{.number = 2, .account = 10, .grade = 1};
  const Sample repeatedAndFixed{.number = 2, .account = 10, .grade = 9};
  Cursor fresh = file.Another();
  EXPECT_EQ(fresh.Update(2, repeated), StatusInvalidKeyNumber);    // 6 before 8
  EXPECT_EQ(fresh.Update(0, repeated), StatusInvalidPositioning);  // 8 before the record's own
  Fill(file, {kept, {.number = 2, .account = 20, .grade = 1}});
  EXPECT_EQ(file.Insert(2, kept), StatusInvalidKeyNumber);              // 6 before 5
  EXPECT_EQ(file.Update(0, repeatedAndFixed), StatusKeyNotModifiable);  // 10 before 5
  ASSERT_EQ(fresh.Get(Seek::Equal, 0, {.number = 2}), StatusSuccess);
  ASSERT_EQ(fresh.Update(0, {.number = 2, .account = 21, .grade = 1}), StatusSuccess);
  EXPECT_EQ(file.Update(2, repeatedAndFixed), StatusInvalidKeyNumber);  // 6 before 80
  EXPECT_EQ(file.Update(0, repeatedAndFixed), StatusRecordConflict);    // 80 before 10 and 5
}

TEST_P(WriteAnswers, AFailedWriteLeavesThePosition) {
  Cursor file = New(StrictFile());
  Fill(file, {{.number = 1, .account = 10, .grade = 1},
              {.number = 2, .account = 20, .grade = 1},
              {.number = 3, .account = 30, .grade = 1}});
  ASSERT_EQ(file.Get(Seek::Equal, StrictKey::Account, {.account = 20}), StatusSuccess);
  EXPECT_EQ(file.Insert(0, {.number = 1, .account = 99}), StatusDuplicateKey);
  EXPECT_EQ(file.Update(0, {.number = 2, .account = 10, .grade = 1}), StatusDuplicateKey);
  EXPECT_EQ(file.Update(0, {.number = 2, .account = 20, .grade = 7}), StatusKeyNotModifiable);
  EXPECT_EQ(file.Get(Seek::Next, StrictKey::Account), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 3);
  EXPECT_EQ(file.Get(Seek::Previous, StrictKey::Account), StatusSuccess);
  EXPECT_EQ(file.Insert(0, {.number = 1, .account = 99}), StatusDuplicateKey);
  EXPECT_EQ(file.StepTo(Step::Previous), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 1);
  EXPECT_EQ(file.Insert(0, {.number = 3, .account = 99}), StatusDuplicateKey);
  EXPECT_EQ(file.Delete(), StatusSuccess);
  EXPECT_EQ(NumbersByKey(file, 0), (Numbers{2, 3}));
}

TEST_P(WriteAnswers, AnUpdateMovesTheRecordOnEveryKeyPath) {
  Cursor file = New(SampleFile());
  const Sample before = MadeSample(1, 50);
  const Sample after = MadeSample(1, 77);
  Fill(file, {before, MadeSample(2, 61)});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Number), StatusSuccess);
  ASSERT_EQ(file.Update(SampleKey::Number, after), StatusSuccess);
  for (const store::KeyDescription& key : SampleFile().keys) {
    SCOPED_TRACE(key.number);
    EXPECT_EQ(file.Get(Seek::Equal, key.number, after), StatusSuccess);
    EXPECT_EQ(file.InHand(), after);
    if (key.number != SampleKey::Number) {
      EXPECT_EQ(file.Get(Seek::Equal, key.number, before), StatusKeyNotFound);
    }
  }
  EXPECT_EQ(Findings(file.Path()), Nothing);
}

TEST_P(WriteAnswers, ADeleteTakesTheRecordFromEveryKeyPath) {
  Cursor file = New(SampleFile());
  const Sample gone = MadeSample(1, 50);
  Fill(file, {gone});
  ASSERT_EQ(file.Delete(), StatusSuccess);
  for (const store::KeyDescription& key : SampleFile().keys) {
    EXPECT_EQ(file.Get(Seek::Equal, key.number, gone), StatusKeyNotFound) << key.number;
  }
  EXPECT_EQ(file.StepTo(Step::First), StatusEndOfFile);
  EXPECT_EQ(Findings(file.Path()), Nothing);
}

TEST_P(WriteAnswers, SyncAnswers0) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}});
  EXPECT_EQ(file.File().Sync(), StatusSuccess);
}

// Someone else's changes -------------------------------------------------------------------------

class ConflictAnswers : public DriverTest {
 protected:
  /// Changes the record of that number through an object of its own.
  static void ChangeElsewhere(const Cursor& file, std::int32_t number) {
    Cursor other = file.Another();
    ASSERT_EQ(other.Get(Seek::Equal, 0, {.number = number}), StatusSuccess);
    Sample changed = other.InHand();
    ++changed.stamp;
    ASSERT_EQ(other.Update(0, changed), StatusSuccess);
  }

  static void DeleteElsewhere(const Cursor& file, std::int32_t number) {
    Cursor other = file.Another();
    ASSERT_EQ(other.Get(Seek::Equal, 0, {.number = number}), StatusSuccess);
    ASSERT_EQ(other.Delete(), StatusSuccess);
  }
};
INSTANTIATE_TEST_SUITE_P(Every, ConflictAnswers, testing::ValuesIn(EveryDriver()), DriverName);

TEST_P(ConflictAnswers, ARecordThatAnotherObjectChangedAnswers80UntilItIsReadAgain) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}});
  ASSERT_EQ(file.Get(Seek::First, 0), StatusSuccess);
  ChangeElsewhere(file, 1);
  EXPECT_EQ(file.Update(0, {.number = 1, .stamp = 100}), StatusRecordConflict);
  EXPECT_EQ(file.Update(0, {.number = 1, .stamp = 100}), StatusRecordConflict);
  EXPECT_EQ(file.Delete(), StatusRecordConflict);
  ASSERT_EQ(file.Get(Seek::First, 0), StatusSuccess);
  EXPECT_EQ(file.InHand().stamp, 1);
  EXPECT_EQ(file.Update(0, {.number = 1, .stamp = 100}), StatusSuccess);
}

TEST_P(ConflictAnswers, ARecordThatAnotherObjectDeletedAnswers80) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}});
  ASSERT_EQ(file.Get(Seek::First, 0), StatusSuccess);
  DeleteElsewhere(file, 1);
  EXPECT_EQ(file.Update(0, {.number = 1, .stamp = 100}), StatusRecordConflict);
  EXPECT_EQ(file.Delete(), StatusRecordConflict);
  EXPECT_EQ(NumbersByStep(file), (Numbers{2}));
}

TEST_P(ConflictAnswers, ARecordOfTheSameKeyIsNotTheSameRecord) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}});
  ASSERT_EQ(file.Get(Seek::First, 0), StatusSuccess);
  DeleteElsewhere(file, 1);
  Cursor other = file.Another();
  Fill(other, {{.number = 1}});
  EXPECT_EQ(file.Update(0, {.number = 1, .stamp = 100}), StatusRecordConflict);
  EXPECT_EQ(file.Delete(), StatusRecordConflict);
}

TEST_P(ConflictAnswers, ChangesOfOtherRecordsDisturbNobody) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}, {.number = 3}});
  ASSERT_EQ(file.Get(Seek::First, 0), StatusSuccess);
  ChangeElsewhere(file, 2);
  DeleteElsewhere(file, 3);
  EXPECT_EQ(file.Update(0, {.number = 1, .stamp = 100}), StatusSuccess);
}

TEST_P(ConflictAnswers, OwnUpdatesCountAsRead) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}});
  EXPECT_EQ(file.Update(0, {.number = 1, .stamp = 1}), StatusSuccess);
  EXPECT_EQ(file.Update(0, {.number = 1, .stamp = 2}), StatusSuccess);
  EXPECT_EQ(file.Delete(), StatusSuccess);
}

TEST_P(ConflictAnswers, AnInsertedRecordThatAnotherObjectChangesAnswers80) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}});
  ChangeElsewhere(file, 1);
  EXPECT_EQ(file.Delete(), StatusRecordConflict);
}

TEST_P(ConflictAnswers, AFailedReadDoesNotCountAsRead) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}});
  ASSERT_EQ(file.Get(Seek::First, 0), StatusSuccess);
  ChangeElsewhere(file, 1);
  ASSERT_EQ(file.Get(Seek::Next, 0), StatusEndOfFile);
  EXPECT_EQ(file.Update(0, {.number = 1, .stamp = 100}), StatusRecordConflict);
}

TEST_P(ConflictAnswers, ARefusedWriteLeavesTheOthersRecordAlone) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}});
  ChangeElsewhere(file, 1);
  EXPECT_EQ(file.Update(0, {.number = 1, .stamp = 100}), StatusRecordConflict);
  Cursor other = file.Another();
  ASSERT_EQ(other.Get(Seek::First, 0), StatusSuccess);
  EXPECT_EQ(other.InHand().stamp, 1);
}

// Numbers that keys give -------------------------------------------------------------------------

class AutoIncrementAnswers : public DriverTest {
 protected:
  /// The number that an insert with 0 gets.
  static std::int32_t NextNumber(Cursor& file) {
    EXPECT_EQ(file.Insert(SampleKey::Name, {}), StatusSuccess);
    return file.InHand().number;
  }
};
INSTANTIATE_TEST_SUITE_P(Every, AutoIncrementAnswers, testing::ValuesIn(EveryDriver()), DriverName);

TEST_P(AutoIncrementAnswers, NumbersStartAt1AndRiseByOne) {
  Cursor file = New(SampleFile());
  EXPECT_EQ(NextNumber(file), 1);
  EXPECT_EQ(NextNumber(file), 2);
  EXPECT_EQ(NextNumber(file), 3);
  EXPECT_EQ(NumbersByKey(file, SampleKey::Number), (Numbers{1, 2, 3}));
}

TEST_P(AutoIncrementAnswers, AnExplicitNumberIsKeptAndTheNextIsOneAboveTheHighest) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 50}, {.number = 7}});
  EXPECT_EQ(file.InHand().number, 7);
  EXPECT_EQ(NextNumber(file), 51);
}

TEST_P(AutoIncrementAnswers, TheHighestNumberIsThatOfTheRecordsThatAreThere) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 50}});
  ASSERT_EQ(file.Delete(), StatusSuccess);
  EXPECT_EQ(NextNumber(file), 2);
}

TEST_P(AutoIncrementAnswers, AnotherObjectsNumbersCount) {
  Cursor file = New(SampleFile());
  Cursor other = file.Another();
  EXPECT_EQ(NextNumber(file), 1);
  EXPECT_EQ(NextNumber(other), 2);
  EXPECT_EQ(NextNumber(file), 3);
}

TEST_P(AutoIncrementAnswers, TheGivenNumberIsInTheFileAndInTheBuffer) {
  Cursor file = New(SampleFile());
  ASSERT_EQ(file.Insert(SampleKey::Number, {.name = "new"}), StatusSuccess);
  EXPECT_EQ(file.InHand(), (Sample{.number = 1, .name = "new"}));
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 1}), StatusSuccess);
  EXPECT_EQ(file.InHand(), (Sample{.number = 1, .name = "new"}));
}

TEST_P(AutoIncrementAnswers, AFailedInsertGivesNoNumber) {
  Cursor file = New(StrictFile());
  Fill(file, {{.number = 1, .account = 10}});
  EXPECT_EQ(file.Insert(StrictKey::Number, {.account = 10}), StatusDuplicateKey);
  EXPECT_EQ(file.InHand().number, 0);
  EXPECT_EQ(file.Insert(SampleKey::Missing, {.account = 11}), StatusInvalidKeyNumber);
  EXPECT_EQ(file.InHand().number, 0);
  EXPECT_EQ(file.Insert(StrictKey::Number, {.account = 11}), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 2);
}

TEST_P(AutoIncrementAnswers, ANumberThatIsTakenAnswers5) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 5}});
  EXPECT_EQ(file.Insert(SampleKey::Number, {.number = 5}), StatusDuplicateKey);
  EXPECT_EQ(NextNumber(file), 6);
}

TEST_P(AutoIncrementAnswers, AnUpdateGivesNoNumber) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 5}});
  EXPECT_EQ(file.Update(SampleKey::Number, {.number = 0}), StatusSuccess);
  EXPECT_EQ(NumbersByKey(file, SampleKey::Number), (Numbers{0}));
}

TEST_P(AutoIncrementAnswers, NumbersMayHave16Bits) {
  Cursor file = New(LooseFile());
  Fill(file, {{.number = 1, .kind = 300}});
  ASSERT_EQ(file.Insert(LooseKey::Group, {.number = 2}), StatusSuccess);
  EXPECT_EQ(file.InHand(), (Sample{.number = 2, .kind = 301}));
}

TEST_P(AutoIncrementAnswers, AnInsertBeyondTheLastNumberFailsAndDoesNotStartOver) {
  Cursor wide = New(SampleFile());
  Fill(wide, {{.number = std::numeric_limits<std::int32_t>::max()}});
  EXPECT_NE(wide.Insert(SampleKey::Number, {}), StatusSuccess);
  EXPECT_EQ(wide.File().RecordCount(), 1);
  Cursor narrow = New(LooseFile());
  Fill(narrow, {{.kind = std::numeric_limits<std::int16_t>::max()}});
  EXPECT_NE(narrow.Insert(LooseKey::Kind, {}), StatusSuccess);
  EXPECT_EQ(narrow.File().RecordCount(), 1);
}

// Percentages ------------------------------------------------------------------------------------

class PercentageAnswers : public DriverTest {
 protected:
  static constexpr std::int32_t Many = 1000;

  /// A file of `Many` records whose order by account is their order by number turned round.
  Cursor Large() {
    Cursor file = New(SampleFile());
    const auto batch = Driver().BeginBatch();
    for (std::int32_t i = 1; i <= Many; ++i) Fill(file, {{.number = i, .account = -i}});
    EXPECT_EQ(batch->Commit(), StatusSuccess);
    return file;
  }

  static double PercentageOf(Cursor& file, std::int16_t keyNumber) {
    double percent = -1;
    EXPECT_EQ(file.File().Percentage(keyNumber, percent), StatusSuccess);
    return percent;
  }
};
INSTANTIATE_TEST_SUITE_P(Every, PercentageAnswers, testing::ValuesIn(EveryDriver()), DriverName);

TEST_P(PercentageAnswers, TheFirstRecordLiesAt0AndTheLastAt100) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .kind = 3}, {.number = 2, .kind = 2}, {.number = 3, .kind = 1}});
  ASSERT_EQ(file.Get(Seek::First, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(PercentageOf(file, SampleKey::Number), 0.0);
  EXPECT_EQ(PercentageOf(file, SampleKey::Kind), 100.0);
  ASSERT_EQ(file.Get(Seek::Last, SampleKey::Number), StatusSuccess);
  EXPECT_EQ(PercentageOf(file, SampleKey::Number), 100.0);
  EXPECT_EQ(PercentageOf(file, SampleKey::Kind), 0.0);
}

TEST_P(PercentageAnswers, ALoneRecordLiesAt0) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}});
  EXPECT_EQ(PercentageOf(file, SampleKey::Name), 0.0);
}

TEST_P(PercentageAnswers, DuplicatesAreToldApart) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1}, {.number = 2}, {.number = 3}});
  ASSERT_EQ(file.StepTo(Step::First), StatusSuccess);
  EXPECT_EQ(PercentageOf(file, SampleKey::Name), 0.0);
  ASSERT_EQ(file.StepTo(Step::Last), StatusSuccess);
  EXPECT_EQ(PercentageOf(file, SampleKey::Name), 100.0);
}

TEST_P(PercentageAnswers, PercentagesRiseAlongTheKeyPath) {
  Cursor file = Large();
  double before = 0;
  for (Status status = file.Get(Seek::First, SampleKey::Place); status == StatusSuccess;
       status = file.Get(Seek::Next, SampleKey::Place)) {
    const double percent = PercentageOf(file, SampleKey::Place);
    ASSERT_GE(percent, before) << file.InHand();
    ASSERT_LE(percent, 100.0) << file.InHand();
    before = percent;
  }
  EXPECT_EQ(before, 100.0);
}

TEST_P(PercentageAnswers, TheMiddleOfAFileLiesInTheMiddle) {
  Cursor file = Large();
  ASSERT_EQ(file.Get(Seek::Equal, SampleKey::Number, {.number = 500}), StatusSuccess);
  EXPECT_NEAR(PercentageOf(file, SampleKey::Number), 50, 25);
  ASSERT_EQ(file.File().GetByPercentage(SampleKey::Number, 50, file.Buffer()), StatusSuccess);
  EXPECT_NEAR(file.InHand().number, 500, 250);
}

TEST_P(PercentageAnswers, AReadByPercentageReachesTheEndsAndClampsBeyondThem) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .kind = 2}, {.number = 2, .kind = 3}, {.number = 3, .kind = 1}});
  const auto numberAt = [&](double percent) {
    EXPECT_EQ(file.File().GetByPercentage(SampleKey::Kind, percent, file.Buffer()), StatusSuccess);
    return file.InHand().number;
  };
  EXPECT_EQ(numberAt(0), 3);
  EXPECT_EQ(numberAt(100), 2);
  EXPECT_EQ(numberAt(-5), 3);
  EXPECT_EQ(numberAt(1e9), 2);
}

TEST_P(PercentageAnswers, AReadByPercentageTakesEverySideOfThePosition) {
  Cursor file = New(SampleFile());
  Fill(file, {{.number = 1, .kind = 2}, {.number = 2, .kind = 1}, {.number = 3, .kind = 3}});
  const auto readFirst = [&] {
    ASSERT_EQ(file.File().GetByPercentage(SampleKey::Kind, 0, file.Buffer()), StatusSuccess);
    ASSERT_EQ(file.InHand().number, 2);
  };
  readFirst();
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Number), StatusDifferentKeyNumber);
  EXPECT_EQ(file.Get(Seek::Next, SampleKey::Kind), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 1);
  readFirst();
  EXPECT_EQ(file.StepTo(Step::Next), StatusSuccess);
  EXPECT_EQ(file.InHand().number, 3);
  readFirst();
  EXPECT_EQ(file.Delete(), StatusSuccess);
  EXPECT_EQ(NumbersByStep(file), (Numbers{1, 3}));
}

TEST_P(PercentageAnswers, AnEmptyFileAnswers9) {
  Cursor file = New(SampleFile());
  EXPECT_EQ(file.File().GetByPercentage(SampleKey::Number, 50, file.Buffer()), StatusEndOfFile);
}

TEST_P(PercentageAnswers, AKeyNumberThatTheFileHasNotAnswers6) {
  Cursor file = New(SampleFile());
  double percent = -1;
  EXPECT_EQ(file.File().Percentage(SampleKey::Missing, percent), StatusInvalidKeyNumber);
  EXPECT_EQ(file.File().GetByPercentage(SampleKey::Missing, 0, file.Buffer()),
            StatusInvalidKeyNumber);
  Fill(file, {{.number = 1}});
  EXPECT_EQ(file.File().Percentage(SampleKey::Missing, percent), StatusInvalidKeyNumber);
  EXPECT_EQ(percent, -1);
}

}  // namespace
}  // namespace larkmoor::test
