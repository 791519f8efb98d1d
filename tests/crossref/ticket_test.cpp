// The class Ticket: its file, the walk along the numbers of tickets, the last number of all, and
// its fields. How it shows customers, jobs, employees and so on by their IDs is told in
// ticket_references_test.cpp.
#include "engine/records/ticket.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/crossref/ticket.h>
#include <larkmoor/status.h>

#include "engine/tovrin_file.h"
#include "support/company.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Company;
using test::IsHeldOpen;
using test::TakenAway;

class TicketTest : public testing::Test {
 protected:
  std::filesystem::path TicketFile() const { return company_.Folder() / "Ticket.dat"; }

  Company company_;
};

class OpenTicketTest : public TicketTest {
 protected:
  OpenTicketTest() { EXPECT_EQ(ticket_.OpenFile(), StatusSuccess); }

  /// Adds a ticket of that number with an object of its own.
  static void Add(std::string_view ticketNumber, std::int32_t nRecord) {
    Ticket ticket;
    ASSERT_EQ(ticket.OpenFile(), StatusSuccess);
    ticket.TicketNumber(ticketNumber);
    ticket.NRecord(nRecord);
    ASSERT_EQ(ticket.Insert(), StatusSuccess);
  }

  Ticket ticket_;
};

/// Tickets 000030, 000010 and 000020, laid in that order, and an object that has read none yet.
class TicketFinders : public OpenTicketTest {
 protected:
  TicketFinders() {
    Add("000030", 3);
    Add("000010", 1);
    Add("000020", 2);
  }

  /// What a finder read, or its status where it read nothing.
  std::string NumberAt(Status status) {
    return status == StatusSuccess ? ticket_.TicketNumber() : "status " + std::to_string(status);
  }
};

using TicketLifecycle = TicketTest;
using TicketFields = OpenTicketTest;
using TicketLastTicketNumber = OpenTicketTest;

// --- Opening and closing ---

TEST_F(TicketLifecycle, FileIsTicketDat) {
  Ticket ticket;
  EXPECT_EQ(ticket.CloseFile(), StatusSuccess);
  ASSERT_EQ(ticket.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(TicketFile()));
  EXPECT_EQ(ticket.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(TicketFile()));
  EXPECT_EQ(ticket.CloseFile(), StatusSuccess);
}

TEST_F(TicketLifecycle, OpenFileBlanksTheRecord) {
  Ticket ticket;
  ASSERT_EQ(ticket.OpenFile(), StatusSuccess);
  ticket.TicketNumber("000010");
  ASSERT_EQ(ticket.OpenFile(), StatusSuccess);
  EXPECT_EQ(ticket.TicketNumber(), "");
}

TEST_F(TicketLifecycle, OpenFileAnswers12WithoutTheFileAndCanBeTriedAgain) {
  Ticket ticket;
  {
    const TakenAway away(TicketFile());
    EXPECT_EQ(ticket.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(ticket.CloseFile(), StatusSuccess);
    EXPECT_EQ(ticket.StepFirst(), StatusFileNotOpen);
  }
  EXPECT_EQ(ticket.OpenFile(), StatusSuccess);
}

TEST_F(TicketLifecycle, OpenFileTellsWhatProtectsTheFile) {
  test::ProtectFile(TicketFile(), /*allowRead=*/false);
  Ticket ticket;
  EXPECT_EQ(ticket.OpenFile(), StatusInvalidOwner);
}

TEST_F(TicketLifecycle, OpenFileNeedsAFileThatCanBeWritten) {
  test::WhereReadOnly(TicketFile(), [] {
    Ticket ticket;
    EXPECT_EQ(ticket.OpenFile(), StatusPermission);
  });
}

TEST_F(TicketLifecycle, OperationsBeforeOpenFileAnswer3) {
  Ticket ticket;
  EXPECT_EQ(ticket.GetEqual("000010"), StatusFileNotOpen);
  EXPECT_EQ(ticket.GetFirst(), StatusFileNotOpen);
  EXPECT_EQ(ticket.GetGreaterThan(""), StatusFileNotOpen);
  EXPECT_EQ(ticket.GetGreaterThanOrEqual(""), StatusFileNotOpen);
  EXPECT_EQ(ticket.GetLast(), StatusFileNotOpen);
  EXPECT_EQ(ticket.GetLessThan("9"), StatusFileNotOpen);
  EXPECT_EQ(ticket.GetLessThanOrEqual("9"), StatusFileNotOpen);
  EXPECT_EQ(ticket.GetNext(), StatusFileNotOpen);
  EXPECT_EQ(ticket.GetPrevious(), StatusFileNotOpen);
  EXPECT_EQ(ticket.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(ticket.StepLast(), StatusFileNotOpen);
  EXPECT_EQ(ticket.StepNext(), StatusFileNotOpen);
  EXPECT_EQ(ticket.StepPrevious(), StatusFileNotOpen);
  EXPECT_EQ(ticket.Insert(), StatusFileNotOpen);
  EXPECT_EQ(ticket.Update(), StatusFileNotOpen);
  EXPECT_EQ(ticket.Delete(), StatusFileNotOpen);
  EXPECT_EQ(ticket.RecordCount(), 0);
  EXPECT_EQ(ticket.NRecordBytes(), 0);
}

// --- Finders ---

TEST_F(TicketFinders, GetEqualFindsTheTicketOfThatNumber) {
  EXPECT_EQ(NumberAt(ticket_.GetEqual("000020")), "000020");
  EXPECT_EQ(NumberAt(ticket_.GetEqual("000010")), "000010");
}

// It is satisfied with a ticket that is not the one asked for.
TEST_F(TicketFinders, GetEqualOfANumberThatIsNotOnFileReadsTheNextTicket) {
  EXPECT_EQ(NumberAt(ticket_.GetEqual("000015")), "000020");
  EXPECT_EQ(NumberAt(ticket_.GetEqual("")), "000010");
  EXPECT_EQ(ticket_.GetEqual("000031"), StatusEndOfFile);
  EXPECT_EQ(ticket_.TicketNumber(), "000010") << "a search in vain leaves the record in hand";
}

TEST_F(TicketFinders, GetGreaterThanReadsTheNextTicket) {
  EXPECT_EQ(NumberAt(ticket_.GetGreaterThan("000010")), "000020");
  EXPECT_EQ(NumberAt(ticket_.GetGreaterThan("000015")), "000020");
  EXPECT_EQ(NumberAt(ticket_.GetGreaterThan("")), "000010");
  EXPECT_EQ(ticket_.GetGreaterThan("000030"), StatusEndOfFile);
}

TEST_F(TicketFinders, GetGreaterThanOrEqualReadsTheTicketOrTheNextOne) {
  EXPECT_EQ(NumberAt(ticket_.GetGreaterThanOrEqual("000010")), "000010");
  EXPECT_EQ(NumberAt(ticket_.GetGreaterThanOrEqual("000011")), "000020");
  EXPECT_EQ(ticket_.GetGreaterThanOrEqual("000031"), StatusEndOfFile);
}

TEST_F(TicketFinders, GetLessThanReadsTheTicketBefore) {
  EXPECT_EQ(NumberAt(ticket_.GetLessThan("000030")), "000020");
  EXPECT_EQ(NumberAt(ticket_.GetLessThan("000025")), "000020");
  EXPECT_EQ(ticket_.GetLessThan("000010"), StatusEndOfFile);
}

TEST_F(TicketFinders, GetLessThanOrEqualReadsTheTicketOrTheOneBefore) {
  EXPECT_EQ(NumberAt(ticket_.GetLessThanOrEqual("000030")), "000030");
  EXPECT_EQ(NumberAt(ticket_.GetLessThanOrEqual("000029")), "000020");
  EXPECT_EQ(ticket_.GetLessThanOrEqual("000009"), StatusEndOfFile);
}

TEST_F(TicketFinders, CompareTheWholeNumber) {
  Add("0000100", 4);
  EXPECT_EQ(NumberAt(ticket_.GetGreaterThan("000010")), "0000100");
  EXPECT_EQ(NumberAt(ticket_.GetLessThan("0000100")), "000010");
  EXPECT_EQ(NumberAt(ticket_.GetEqual("00001")), "000010");
}

TEST_F(TicketFinders, GetFirstReadsTheLowestNumberWhateverIsInHand) {
  ticket_.TicketNumber("000025");
  EXPECT_EQ(NumberAt(ticket_.GetFirst()), "000010");
}

TEST_F(TicketFinders, WalkGoesByNumberBothWays) {
  EXPECT_EQ(NumberAt(ticket_.GetFirst()), "000010");
  EXPECT_EQ(NumberAt(ticket_.GetNext()), "000020");
  EXPECT_EQ(NumberAt(ticket_.GetNext()), "000030");
  EXPECT_EQ(ticket_.GetNext(), StatusEndOfFile);
  EXPECT_EQ(NumberAt(ticket_.GetEqual("000030")), "000030");
  EXPECT_EQ(NumberAt(ticket_.GetPrevious()), "000020");
  EXPECT_EQ(NumberAt(ticket_.GetPrevious()), "000010");
  EXPECT_EQ(ticket_.GetPrevious(), StatusEndOfFile);
}

TEST_F(TicketFinders, WalkGoesOnFromWhatAnyFinderFound) {
  ASSERT_EQ(ticket_.GetGreaterThan("000010"), StatusSuccess);
  EXPECT_EQ(NumberAt(ticket_.GetNext()), "000030");
  ASSERT_EQ(ticket_.GetGreaterThanOrEqual("000020"), StatusSuccess);
  EXPECT_EQ(NumberAt(ticket_.GetPrevious()), "000010");
  ASSERT_EQ(ticket_.GetLessThan("000030"), StatusSuccess);
  EXPECT_EQ(NumberAt(ticket_.GetNext()), "000030");
  ASSERT_EQ(ticket_.GetLessThanOrEqual("000020"), StatusSuccess);
  EXPECT_EQ(NumberAt(ticket_.GetPrevious()), "000010");
}

TEST_F(TicketFinders, WalkWithoutAPlaceAnswers8) {
  EXPECT_EQ(ticket_.GetNext(), StatusInvalidPositioning);
  EXPECT_EQ(ticket_.GetPrevious(), StatusInvalidPositioning);
  ASSERT_EQ(ticket_.GetFirst(), StatusSuccess);
  ASSERT_EQ(ticket_.StepFirst(), StatusSuccess);
  EXPECT_EQ(ticket_.GetNext(), StatusInvalidPositioning) << "a step leaves the walk";
}

// GetLast alone takes the key in use, which on a new object is not that of the numbers.
TEST_F(TicketFinders, GetLastOnANewObjectTakesAPlaceThatTheWalkByNumberCannotUse) {
  ASSERT_EQ(ticket_.GetLast(), StatusSuccess);
  EXPECT_EQ(ticket_.GetPrevious(), StatusDifferentKeyNumber);
  Ticket another;
  ASSERT_EQ(another.OpenFile(), StatusSuccess);
  ASSERT_EQ(another.GetLast(), StatusSuccess);
  EXPECT_EQ(another.GetNext(), StatusDifferentKeyNumber);
}

TEST_F(TicketFinders, GetLastAfterAnyFinderReadsTheHighestNumber) {
  ASSERT_EQ(ticket_.GetFirst(), StatusSuccess);
  EXPECT_EQ(NumberAt(ticket_.GetLast()), "000030");
  EXPECT_EQ(NumberAt(ticket_.GetPrevious()), "000020");
}

TEST_F(TicketFinders, GetLastAfterAFinderInVainReadsTheHighestNumber) {
  EXPECT_EQ(ticket_.GetNext(), StatusInvalidPositioning);
  EXPECT_EQ(NumberAt(ticket_.GetLast()), "000030");
  EXPECT_EQ(NumberAt(ticket_.GetPrevious()), "000020");
}

TEST_F(TicketFinders, InsertOnANewObjectTakesAPlaceThatTheWalkByNumberCannotUse) {
  ticket_.TicketNumber("000015");
  ticket_.NRecord(4);
  ASSERT_EQ(ticket_.Insert(), StatusSuccess);
  EXPECT_EQ(ticket_.GetNext(), StatusDifferentKeyNumber);
}

TEST_F(TicketFinders, WritesTakeTheirPlaceInTheWalk) {
  ASSERT_EQ(ticket_.GetFirst(), StatusSuccess);
  ticket_.TicketNumber("000025");
  ticket_.NRecord(4);
  ASSERT_EQ(ticket_.Insert(), StatusSuccess);
  EXPECT_EQ(NumberAt(ticket_.GetNext()), "000030");
  ticket_.TicketNumber("000005");
  ASSERT_EQ(ticket_.Update(), StatusSuccess);
  EXPECT_EQ(NumberAt(ticket_.GetNext()), "000010");
}

TEST_F(TicketFinders, DeleteRemovesTheTicketThatWasFound) {
  EXPECT_EQ(NumberAt(ticket_.GetEqual("000020")), "000020");
  ASSERT_EQ(ticket_.Delete(), StatusSuccess);
  EXPECT_EQ(ticket_.RecordCount(), 2);
  EXPECT_EQ(NumberAt(ticket_.GetEqual("000020")), "000030");
}

TEST_F(TicketFinders, StepsGoInTheOrderOfInsertion) {
  EXPECT_EQ(NumberAt(ticket_.StepFirst()), "000030");
  EXPECT_EQ(NumberAt(ticket_.StepNext()), "000010");
  EXPECT_EQ(NumberAt(ticket_.StepPrevious()), "000030");
  EXPECT_EQ(ticket_.StepPrevious(), StatusEndOfFile);
  EXPECT_EQ(NumberAt(ticket_.StepLast()), "000020");
  EXPECT_EQ(ticket_.StepNext(), StatusEndOfFile);
}

// --- LastTicketNumber ---

TEST_F(TicketLastTicketNumber, OfACompanyWithoutTicketsIsSixZeros) {
  EXPECT_EQ(ticket_.LastTicketNumber(), "000000");
}

TEST_F(TicketLastTicketNumber, IsTheHighestAsText) {
  Add("10", 1);
  EXPECT_EQ(ticket_.LastTicketNumber(), "10");
  Add("9", 2);
  EXPECT_EQ(ticket_.LastTicketNumber(), "9");
  Add("8", 3);
  EXPECT_EQ(ticket_.LastTicketNumber(), "9");
}

TEST_F(TicketLastTicketNumber, OfATicketWithoutANumberIsEmpty) {
  Add("", 1);
  EXPECT_EQ(ticket_.LastTicketNumber(), "");
}

TEST_F(TicketLastTicketNumber, NeedsNoOpenFileAndLeavesNoneOpen) {
  Add("000010", 1);
  ASSERT_EQ(ticket_.CloseFile(), StatusSuccess);
  EXPECT_EQ(ticket_.LastTicketNumber(), "000010");
  EXPECT_FALSE(IsHeldOpen(TicketFile()));
  EXPECT_EQ(ticket_.GetFirst(), StatusFileNotOpen);
  EXPECT_EQ(ticket_.TicketNumber(), "");
}

TEST_F(TicketLastTicketNumber, WithoutTheFileIsSixZeros) {
  Add("000010", 1);
  const TakenAway away(TicketFile());
  EXPECT_EQ(ticket_.LastTicketNumber(), "000000") << "though the object has the file open";
}

TEST_F(TicketLastTicketNumber, WhereAccessIsRefusedIsSixZeros) {
  Add("000010", 1);
  ASSERT_EQ(ticket_.CloseFile(), StatusSuccess);
  test::ProtectFile(TicketFile(), /*allowRead=*/false);
  EXPECT_EQ(ticket_.LastTicketNumber(), "000000");
}

TEST_F(TicketLastTicketNumber, WhereTheFileCannotBeWrittenIsSixZeros) {
  Add("000010", 1);
  ASSERT_EQ(ticket_.CloseFile(), StatusSuccess);
  test::WhereReadOnly(TicketFile(), [] { EXPECT_EQ(Ticket().LastTicketNumber(), "000000"); });
}

TEST_F(TicketLastTicketNumber, IsThatOfTheCompanyOfTheMoment) {
  Add("000010", 1);
  const Company another;
  Add("000077", 1);
  EXPECT_EQ(ticket_.LastTicketNumber(), "000077");
  EXPECT_EQ(ticket_.GetEqual("000010"), StatusSuccess);
}

TEST_F(TicketFinders, AreNotDisturbedByLastTicketNumber) {
  std::vector<std::string> stepped;
  for (Status status = ticket_.StepFirst(); status == StatusSuccess; status = ticket_.StepNext()) {
    EXPECT_EQ(ticket_.LastTicketNumber(), "000030");
    stepped.push_back(ticket_.TicketNumber());
  }
  EXPECT_EQ(stepped, (std::vector<std::string>{"000030", "000010", "000020"}));
  std::vector<std::string> walked;
  for (Status status = ticket_.GetFirst(); status == StatusSuccess; status = ticket_.GetNext()) {
    EXPECT_EQ(ticket_.LastTicketNumber(), "000030");
    walked.push_back(ticket_.TicketNumber());
  }
  EXPECT_EQ(walked, (std::vector<std::string>{"000010", "000020", "000030"}));
}

TEST_F(TicketFinders, UpdateRewritesTheTicketInHandAfterLastTicketNumber) {
  ASSERT_EQ(ticket_.GetFirst(), StatusSuccess);
  ticket_.Description("Survey");
  EXPECT_EQ(ticket_.LastTicketNumber(), "000030");
  ASSERT_EQ(ticket_.Update(), StatusSuccess);
  ASSERT_EQ(ticket_.GetEqual("000010"), StatusSuccess);
  EXPECT_EQ(ticket_.Description(), "Survey");
  ASSERT_EQ(ticket_.GetEqual("000030"), StatusSuccess);
  EXPECT_EQ(ticket_.Description(), "");
}

// --- The bytes of the record ---

TEST_F(TicketFinders, NRecordBytesIsTheLengthOfTheTicketThatWasRead) {
  EXPECT_EQ(ticket_.NRecordBytes(), 0);
  ASSERT_EQ(ticket_.GetFirst(), StatusSuccess);
  EXPECT_EQ(ticket_.NRecordBytes(),
            static_cast<std::int32_t>(TicketRecord::Describe().LengthFor(19.0)));
}

TEST_F(TicketFinders, RecordByteIsAByteOfTheTicketInHandWithoutReadBytes) {
  ASSERT_EQ(ticket_.GetFirst(), StatusSuccess);
  ticket_.TicketNumber("AB");
  const auto place = static_cast<std::int32_t>(TicketRecord::TicketNumber.offset);
  EXPECT_EQ(ticket_.RecordByte(place), 'A');
  EXPECT_EQ(ticket_.RecordByte(place + 1), 'B');
  EXPECT_EQ(ticket_.RecordByte(place + 2), 0);
  EXPECT_EQ(ticket_.RecordByte(-1), 0);
  EXPECT_EQ(ticket_.RecordByte(ticket_.NRecordBytes()), 0);
}

TEST_F(TicketFinders, ReadBytesAnswers0AndReadsNothing) {
  EXPECT_EQ(Ticket().ReadBytes(), StatusSuccess);
  ASSERT_EQ(ticket_.GetFirst(), StatusSuccess);
  ticket_.Description("Survey");
  EXPECT_EQ(ticket_.ReadBytes(), StatusSuccess);
  EXPECT_EQ(ticket_.Description(), "Survey");
}

// --- Fields ---

TEST_F(TicketFields, SecondsHaveSecondNames) {
  ticket_.StartSeconds(1);
  ticket_.StopSeconds(2);
  ticket_.BreakSeconds(3);
  ticket_.DurationSeconds(4);
  EXPECT_EQ(ticket_.Unused2(), 1);
  EXPECT_EQ(ticket_.Unused3(), 2);
  EXPECT_EQ(ticket_.Unused4(), 3);
  EXPECT_EQ(ticket_.Unused5(), 4);
  ticket_.Unused2(11);
  ticket_.Unused3(12);
  ticket_.Unused4(13);
  ticket_.Unused5(14);
  EXPECT_EQ(ticket_.StartSeconds(), 11);
  EXPECT_EQ(ticket_.StopSeconds(), 12);
  EXPECT_EQ(ticket_.BreakSeconds(), 13);
  EXPECT_EQ(ticket_.DurationSeconds(), 14);
}

TEST_F(TicketFields, WithoutAMeaningRead0AndKeepNothing) {
  for (const int index : {-1, 0, 1, 20, 32767}) {
    ticket_.Unused1(static_cast<std::int16_t>(index), 7);
    EXPECT_EQ(ticket_.Unused1(static_cast<std::int16_t>(index)), 0) << index;
  }
  ticket_.Unknown6(7);
  ticket_.Unused7(7);
  EXPECT_EQ(ticket_.Unknown6(), 0);
  EXPECT_EQ(ticket_.Unused7(), 0);
}

}  // namespace
}  // namespace larkmoor
