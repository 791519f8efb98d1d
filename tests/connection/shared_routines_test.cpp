// The routines that open a company file for the length of one call: what they answer, what they
// write, and that they leave nothing open and nobody's position disturbed.
#include "connection/shared_routines.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/message_box.h>
#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "engine/records/default_customer_data.h"
#include "engine/records/default_vendor_data.h"
#include "engine/records/employee.h"
#include "engine/records/general_data.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::CapturedMessages;
using test::Company;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::RaisedNumber;

using Messages = std::vector<std::string>;

/// Names a folder that is not there as the company for the lifetime of the object.
class NoCompany {
 public:
  NoCompany() { Shared().gCompanyPath = "/no/such/company/"; }
  ~NoCompany() { Shared().gCompanyPath.clear(); }
};

// --- Employees ---

class EmployeeIndex : public testing::Test {
 protected:
  std::filesystem::path EmployeeFile() const {
    return company_.Folder() / TovrinFileNames::EmployeeFile();
  }

  void AddEmployee(std::string_view id, std::int32_t index) {
    OpenRecordFile employees(EmployeeFile(), EmployeeRecord::Describe());
    employees.Add([&](Tovrin2Record& record) {
      record.SetText(EmployeeRecord::EmployeeID, id);
      record.SetLong(EmployeeRecord::Index, index);
    });
  }

  Company company_;
  CapturedMessages messages_;
};

TEST_F(EmployeeIndex, IsThatOfTheEmployeeWithTheID) {
  AddEmployee("ADAMS", 11);
  AddEmployee("BAKER", 12);
  EXPECT_EQ(EmployeeIndexFromID("BAKER"), 12);
  EXPECT_EQ(EmployeeIndexFromID("ADAMS"), 11);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(EmployeeIndex, FindsAnIDWithAccents) {
  AddEmployee("Zo\u00eb", 13);
  EXPECT_EQ(EmployeeIndexFromID("Zo\u00eb"), 13);
}

TEST_F(EmployeeIndex, OfTheEmptyTextIs0AndTouchesNoFile) {
  AddEmployee("", 14);
  EXPECT_EQ(EmployeeIndexFromID(""), 0);
  std::filesystem::remove(EmployeeFile());
  EXPECT_EQ(EmployeeIndexFromID(""), 0);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(EmployeeIndex, OfAnUnknownIDIs0WithAMessage) {
  AddEmployee("ADAMS", 11);
  EXPECT_EQ(EmployeeIndexFromID("NOBODY"), 0);
  EXPECT_EQ(messages_.Texts(), Messages{"Error getting SalesRep index:\r\n"
                                        "-2147220988:Employee.GetEqual(NOBODY) failed\r\n"
                                        "\r\n"
                                        "Btrieve error 4: Key Value Not Found\r\n"
                                        "\r\n"
                                        "The value in the Key Buffer was not in the index\r\n"
                                        "specified by the Key Number on a search operation."});
}

TEST_F(EmployeeIndex, TakesCaseAndTrailingBlanksForDifferences) {
  AddEmployee("ADAMS", 11);
  EXPECT_EQ(EmployeeIndexFromID("Adams"), 0);
  EXPECT_EQ(EmployeeIndexFromID("ADAMS "), 0);
  EXPECT_EQ(EmployeeIndexFromID("ADAM"), 0);
  EXPECT_EQ(messages_.Texts().size(), 3U);
}

TEST_F(EmployeeIndex, WithoutTheFileIs0WithAMessage) {
  std::filesystem::remove(EmployeeFile());
  EXPECT_EQ(EmployeeIndexFromID("ADAMS"), 0);
  EXPECT_EQ(messages_.Texts(), Messages{"Error getting SalesRep index:\r\n"
                                        "-2147220991:Employee.OpenFile failed\r\n"
                                        "\r\n"
                                        "Btrieve error 12: File not found\r\n"
                                        "\r\n"
                                        "The file name specified does not exist."});
}

// Elsewhere a file of another owner is passed over in silence; here it is an error like any other.
TEST_F(EmployeeIndex, WithAProtectedFileIs0WithAMessage) {
  AddEmployee("ADAMS", 11);
  test::ProtectFile(EmployeeFile(), /*allowRead=*/false);
  EXPECT_EQ(EmployeeIndexFromID("ADAMS"), 0);
  EXPECT_EQ(messages_.Texts(), Messages{"Error getting SalesRep index:\r\n"
                                        "-2147220991:Employee.OpenFile failed\r\n"
                                        "\r\n"
                                        "Btrieve error 51"});
}

TEST_F(EmployeeIndex, NeedsNoMoreThanReadingTheFile) {
  AddEmployee("ADAMS", 11);
  test::ProtectFile(EmployeeFile(), /*allowRead=*/true);
  EXPECT_EQ(EmployeeIndexFromID("ADAMS"), 11);
  EXPECT_EQ(messages_.Texts(), Messages{});
}

TEST_F(EmployeeIndex, IsFoundInAReadOnlyFile) {
  AddEmployee("ADAMS", 11);
  test::WhereReadOnly(EmployeeFile(), [&] { EXPECT_EQ(EmployeeIndexFromID("ADAMS"), 11); });
}

TEST_F(EmployeeIndex, OfATextThatIsNoUtf8Is0WithAMessage) {
  EXPECT_EQ(EmployeeIndexFromID("\xff\xfe"), 0);
  EXPECT_EQ(messages_.Texts(), Messages{"Error getting SalesRep index:\r\n13:Type mismatch"});
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

TEST_F(EmployeeIndex, IsNotDisturbedByAHandlerThatThrows) {
  const MessageBoxHandler before =
      SetMessageBoxHandler([](std::string_view) { throw std::runtime_error("no display"); });
  EXPECT_EQ(RaisedNumber([] { EXPECT_EQ(EmployeeIndexFromID("NOBODY"), 0); }), 0);
  SetMessageBoxHandler(before);
}

TEST_F(EmployeeIndex, LeavesTheFileClosed) {
  AddEmployee("ADAMS", 11);
  EmployeeIndexFromID("ADAMS");
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
  EmployeeIndexFromID("NOBODY");
  EXPECT_FALSE(IsHeldOpen(EmployeeFile()));
}

TEST_F(EmployeeIndex, DisturbsNoPositionOfTheClient) {
  AddEmployee("ADAMS", 11);
  AddEmployee("BAKER", 12);
  OpenRecordFile client(EmployeeFile(), EmployeeRecord::Describe());
  ASSERT_EQ(client.File().btGetFirst(0), StatusSuccess);
  EmployeeIndexFromID("BAKER");
  EXPECT_EQ(client.Record().GetText(EmployeeRecord::EmployeeID), "ADAMS");
  EXPECT_EQ(client.File().btGetNext(0), StatusSuccess);
  EXPECT_EQ(client.Record().GetText(EmployeeRecord::EmployeeID), "BAKER");
}

// --- Batch counters ---

constexpr std::int16_t GeneralDataRow = 4;

class BatchEntry : public testing::Test {
 protected:
  std::filesystem::path GeneralFile() const {
    return company_.Folder() / TovrinFileNames::GeneralFile();
  }

  /// The row of the batch counters, read into the record of a file opened for it.
  struct Counters : OpenRecordFile {
    explicit Counters(const std::filesystem::path& path)
        : OpenRecordFile(path, GeneralDataRecord::Describe()) {
      EXPECT_EQ(ReadRow(GeneralDataRow), StatusSuccess);
    }
    std::int16_t Count(int journal) {
      return Record().GetInteger(GeneralDataRecord::BatchEntryCount, journal);
    }
    std::uint8_t Flag(int journal) {
      return Record().GetByte(GeneralDataRecord::BatchFlag, journal);
    }
  };

  std::int16_t Count(int journal) { return Counters(GeneralFile()).Count(journal); }
  std::uint8_t Flag(int journal) { return Counters(GeneralFile()).Flag(journal); }

  Company company_;
};

TEST_F(BatchEntry, IsCountedAndFlaggedForItsJournal) {
  ASSERT_EQ(Count(3), 0);
  ASSERT_EQ(Flag(3), 0);
  EXPECT_TRUE(IncrementBatchEntry(3));
  EXPECT_EQ(Count(3), 1);
  EXPECT_EQ(Flag(3), 255) << "true is -1, in a byte 255";
}

TEST_F(BatchEntry, IsAddedToThoseCounted) {
  {
    Counters counters(GeneralFile());
    counters.Record().SetInteger(GeneralDataRecord::BatchEntryCount, 41, 4);
    ASSERT_EQ(counters.File().btUpdate(0), StatusSuccess);
  }
  EXPECT_TRUE(IncrementBatchEntry(4));
  EXPECT_TRUE(IncrementBatchEntry(4));
  EXPECT_EQ(Count(4), 43);
}

TEST_F(BatchEntry, LeavesTheOtherJournalsAsTheyAre) {
  EXPECT_TRUE(IncrementBatchEntry(0));
  EXPECT_TRUE(IncrementBatchEntry(11));
  Counters counters(GeneralFile());
  EXPECT_EQ(counters.Count(0), 1);
  EXPECT_EQ(counters.Count(11), 1);
  for (int journal = 1; journal <= 10; ++journal) {
    EXPECT_EQ(counters.Count(journal), 0) << journal;
    EXPECT_EQ(counters.Flag(journal), 0) << journal;
  }
}

TEST_F(BatchEntry, LeavesTheOtherFieldsAsTheyAre) {
  {
    Counters counters(GeneralFile());
    counters.Record().SetInteger(GeneralDataRecord::CalendarYear, 2011);
    ASSERT_EQ(counters.File().btUpdate(0), StatusSuccess);
  }
  EXPECT_TRUE(IncrementBatchEntry(3));
  EXPECT_EQ(Counters(GeneralFile()).Record().GetInteger(GeneralDataRecord::CalendarYear), 2011);
}

TEST_F(BatchEntry, IsRefusedWhereTheFileDoesNotOpen) {
  test::ProtectFile(GeneralFile(), /*allowRead=*/false);
  EXPECT_FALSE(IncrementBatchEntry(3));
  std::filesystem::remove(GeneralFile());
  EXPECT_FALSE(IncrementBatchEntry(3));
}

TEST_F(BatchEntry, IsRefusedWhereTheFileIsReadOnly) {
  test::WhereReadOnly(GeneralFile(), [&] { EXPECT_FALSE(IncrementBatchEntry(3)); });
}

// Neither the read nor the update is looked at.
TEST_F(BatchEntry, AnswersTrueWithoutTheRow) {
  {
    Counters counters(GeneralFile());
    ASSERT_EQ(counters.File().btDelete(), StatusSuccess);
  }
  EXPECT_TRUE(IncrementBatchEntry(3));
  EXPECT_EQ(OpenRecordFile(GeneralFile(), GeneralDataRecord::Describe()).ReadRow(GeneralDataRow),
            StatusKeyNotFound);
}

TEST_F(BatchEntry, AnswersTrueWhereTheFileMayOnlyBeRead) {
  test::ProtectFile(GeneralFile(), /*allowRead=*/true);
  EXPECT_TRUE(IncrementBatchEntry(3));
  EXPECT_EQ(Count(3), 0);
}

TEST_F(BatchEntry, OfNoJournalRaises9AndChangesNothing) {
  const RecordBytes before = Counters(GeneralFile()).Record().Bytes();
  EXPECT_EQ(RaisedNumber([] { IncrementBatchEntry(999); }), 9);
  EXPECT_EQ(RaisedNumber([] { IncrementBatchEntry(-1); }), 9);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  EXPECT_EQ(Counters(GeneralFile()).Record().Bytes(), before);
}

TEST_F(BatchEntry, BeyondTheLargestIntegerRaises6AndChangesNothing) {
  {
    Counters counters(GeneralFile());
    counters.Record().SetInteger(GeneralDataRecord::BatchEntryCount, 32767, 3);
    ASSERT_EQ(counters.File().btUpdate(0), StatusSuccess);
  }
  EXPECT_EQ(RaisedNumber([] { IncrementBatchEntry(3); }), 6);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  EXPECT_EQ(Count(3), 32767);
  EXPECT_EQ(Flag(3), 0);
}

TEST_F(BatchEntry, LeavesTheFileClosed) {
  EXPECT_TRUE(IncrementBatchEntry(3));
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
}

TEST_F(BatchEntry, IsSeenByAClientThatReadsTheRowAgain) {
  Counters client(GeneralFile());
  EXPECT_TRUE(IncrementBatchEntry(3));
  EXPECT_EQ(client.Count(3), 0);
  EXPECT_EQ(client.File().btUpdate(0), StatusRecordConflict);
  EXPECT_EQ(client.ReadRow(GeneralDataRow), StatusSuccess);
  EXPECT_EQ(client.Count(3), 1);
}

// --- Journal headers ---

/// A transaction's place in the journals.
struct Reference {
  std::int32_t number;
  std::int16_t period;
  std::int16_t journal;
  std::uint8_t subindex1 = 0;
  std::uint8_t subindex2 = 0;
};

class JournalHeaders : public testing::TestWithParam<double> {
 protected:
  std::filesystem::path HeaderFile() const {
    return company_.Folder() / TovrinFileNames::JrnlHdrFile();
  }

  void AddHeader(std::int32_t record, const Reference& reference) {
    OpenRecordFile headers(HeaderFile(), JrnlHdrRecord::Describe());
    headers.Add([&](Tovrin2Record& header) {
      header.SetLong(JrnlHdrRecord::NRecord, record);
      header.SetLong(JrnlHdrRecord::TrxNumberL, reference.number);
      header.SetInteger(JrnlHdrRecord::Period, reference.period);
      header.SetInteger(JrnlHdrRecord::JournalID, reference.journal);
      header.SetByte(JrnlHdrRecord::Subindex1, reference.subindex1);
      header.SetByte(JrnlHdrRecord::Subindex2, reference.subindex2);
    });
  }

  void AddHeader(const Reference& reference) { AddHeader(++lastRecord_, reference); }

  Company company_{GetParam()};
  std::int32_t lastRecord_ = 0;
};

std::string ReleaseName(const testing::TestParamInfo<double>& tested) {
  return "Release" + std::to_string(static_cast<int>(tested.param * 10));
}

class MaxNRecordTest : public JournalHeaders {};

TEST_P(MaxNRecordTest, IsTheLargestRecordNumber) {
  AddHeader(7, {1, 1, 0});
  AddHeader(300, {2, 1, 3});
  AddHeader(40, {3, 1, 4});
  EXPECT_EQ(MaxNRecord(), 300);
}

TEST_P(MaxNRecordTest, IsANumberBelow1WhereThereIsNoLargerOne) {
  AddHeader(0, {1, 1, 0});
  EXPECT_EQ(MaxNRecord(), 0);
}

TEST_P(MaxNRecordTest, OfNoHeadersIs1) { EXPECT_EQ(MaxNRecord(), 1); }

TEST_P(MaxNRecordTest, WithoutTheFileIsMinus1) {
  AddHeader(7, {1, 1, 0});
  std::filesystem::remove(HeaderFile());
  EXPECT_EQ(MaxNRecord(), -1);
}

TEST_P(MaxNRecordTest, OfAFileThatMayNotBeReadIsMinus1) {
  AddHeader(7, {1, 1, 0});
  test::ProtectFile(HeaderFile(), /*allowRead=*/false);
  EXPECT_EQ(MaxNRecord(), -1);
}

TEST_P(MaxNRecordTest, IsFoundInAReadOnlyFile) {
  AddHeader(7, {1, 1, 0});
  test::WhereReadOnly(HeaderFile(), [&] { EXPECT_EQ(MaxNRecord(), 7); });
}

TEST_P(MaxNRecordTest, LeavesTheFileClosed) {
  EXPECT_EQ(MaxNRecord(), 1);
  EXPECT_FALSE(IsHeldOpen(HeaderFile()));
}

INSTANTIATE_TEST_SUITE_P(Releases, MaxNRecordTest, testing::Values(8.0, 12.9, 13.0, 19.0),
                         ReleaseName);

/// What holds for data of all releases where transactions of one period alone are looked for.
class MaxTrxNumberTest : public JournalHeaders {};

TEST_P(MaxTrxNumberTest, IsTheLargestOfTheJournalInThePeriod) {
  AddHeader({1, 5, 3});
  AddHeader({2, 5, 3});
  AddHeader({3, 5, 3});
  EXPECT_EQ(MaxTrxNumber(5, 3), 3);
}

TEST_P(MaxTrxNumberTest, OfAPeriodWithoutEntriesIs0) {
  EXPECT_EQ(MaxTrxNumber(5, 3), 0) << "no headers at all";
  AddHeader({1, 5, 3});
  EXPECT_EQ(MaxTrxNumber(6, 3), 0);
  EXPECT_EQ(MaxTrxNumber(5, 4), 0);
}

// The transaction number leads the key, so that the journals' entries lie mixed: the search ends at
// the first transaction of another journal or period.
TEST_P(MaxTrxNumberTest, EndsAtTheFirstEntryOfAnotherJournal) {
  AddHeader({1, 5, 3});
  AddHeader({2, 5, 3});
  AddHeader({2, 5, 4});
  AddHeader({3, 5, 3});
  EXPECT_EQ(MaxTrxNumber(5, 3), 2);
}

TEST_P(MaxTrxNumberTest, EndsAtTheFirstEntryOfAnotherPeriod) {
  AddHeader({1, 5, 3});
  AddHeader({2, 4, 3});
  AddHeader({3, 5, 3});
  EXPECT_EQ(MaxTrxNumber(5, 3), 1);
}

TEST_P(MaxTrxNumberTest, PassesOverGapsAndTakesTheLargestOfARunWithSubindexes) {
  AddHeader({1, 5, 3});
  AddHeader({9, 5, 3, 0, 7});
  AddHeader({4, 5, 3, 1});
  EXPECT_EQ(MaxTrxNumber(5, 3), 9);
}

TEST_P(MaxTrxNumberTest, DoesNotSeeTransaction0) {
  AddHeader({0, 5, 3});
  EXPECT_EQ(MaxTrxNumber(5, 3), 0);
}

TEST_P(MaxTrxNumberTest, WithoutTheFileIsMinus1) {
  std::filesystem::remove(HeaderFile());
  EXPECT_EQ(MaxTrxNumber(5, 3), -1);
}

TEST_P(MaxTrxNumberTest, OfAFileThatMayNotBeReadIsMinus1) {
  AddHeader({1, 5, 3});
  test::ProtectFile(HeaderFile(), /*allowRead=*/false);
  EXPECT_EQ(MaxTrxNumber(5, 3), -1);
}

TEST_P(MaxTrxNumberTest, IsFoundInAReadOnlyFile) {
  AddHeader({1, 5, 3});
  test::WhereReadOnly(HeaderFile(), [&] { EXPECT_EQ(MaxTrxNumber(5, 3), 1); });
}

// It releases the file without a close of its own.
TEST_P(MaxTrxNumberTest, LeavesTheFileClosed) {
  AddHeader({1, 5, 3});
  EXPECT_EQ(MaxTrxNumber(5, 3), 1);
  EXPECT_FALSE(IsHeldOpen(HeaderFile()));
}

TEST_P(MaxTrxNumberTest, DisturbsNoPositionOfTheClient) {
  AddHeader({1, 5, 3});
  AddHeader({2, 5, 3});
  OpenRecordFile client(HeaderFile(), JrnlHdrRecord::Describe());
  ASSERT_EQ(client.File().btGetFirst(0), StatusSuccess);
  EXPECT_EQ(MaxTrxNumber(5, 3), 2);
  EXPECT_EQ(client.Record().GetLong(JrnlHdrRecord::TrxNumberL), 1);
  EXPECT_EQ(client.File().btGetNext(0), StatusSuccess);
  EXPECT_EQ(client.Record().GetLong(JrnlHdrRecord::TrxNumberL), 2);
}

INSTANTIATE_TEST_SUITE_P(Releases, MaxTrxNumberTest, testing::Values(8.0, 12.9, 13.0, 19.0),
                         ReleaseName);

class MaxTrxNumberFrom13 : public JournalHeaders {};

TEST_P(MaxTrxNumberFrom13, BeginsAtTransaction1OfThePeriod) {
  AddHeader({1, 2, 9});
  AddHeader({1, 5, 3});
  AddHeader({2, 5, 3});
  EXPECT_EQ(MaxTrxNumber(5, 3), 2);
}

TEST_P(MaxTrxNumberFrom13, TakesNumbersBeyond16Bits) {
  AddHeader({1, 5, 3});
  AddHeader({70000, 5, 3});
  EXPECT_EQ(MaxTrxNumber(5, 3), 70000);
}

TEST_P(MaxTrxNumberFrom13, FindsTheFirstOfALaterRun) {
  AddHeader({8, 5, 3});
  EXPECT_EQ(MaxTrxNumber(5, 3), 8);
}

INSTANTIATE_TEST_SUITE_P(Releases, MaxTrxNumberFrom13, testing::Values(13.0, 19.0), ReleaseName);

/// Below release 13 transaction numbers take two bytes of the key, but the search is written as if
/// they took four: it begins at transaction 1 of period 0.
class MaxTrxNumberBelow13 : public JournalHeaders {};

TEST_P(MaxTrxNumberBelow13, EndsAtAnEarlierPeriodThatHasTransaction1) {
  AddHeader({1, 2, 9});
  AddHeader({1, 5, 3});
  AddHeader({2, 5, 3});
  EXPECT_EQ(MaxTrxNumber(5, 3), 0);
}

// The period is written where the journal is kept: transaction 1 of period 0 is passed over in all
// journals below that number.
TEST_P(MaxTrxNumberBelow13, TakesThePeriodForAJournal) {
  AddHeader({1, 0, 4});
  AddHeader({1, 5, 3});
  EXPECT_EQ(MaxTrxNumber(5, 3), 1);
  AddHeader({1, 0, 6});
  EXPECT_EQ(MaxTrxNumber(5, 3), 0);
}

// The key holds the low 16 bits of a number, the answer is the whole of it.
TEST_P(MaxTrxNumberBelow13, FindsLargeNumbersByTheirLowBits) {
  AddHeader({65537, 5, 3});
  EXPECT_EQ(MaxTrxNumber(5, 3), 65537);
}

INSTANTIATE_TEST_SUITE_P(Releases, MaxTrxNumberBelow13, testing::Values(8.0, 12.9), ReleaseName);

// --- Document numbers ---

/// One of the document numbers in the general file, with its routines.
struct DocumentNumber {
  std::string name;
  std::int16_t row;
  const RecordDescription& (*description)();
  const Field* field;
  std::string (*read)();
  Status (*write)(std::string_view);
};

const DocumentNumber DocumentNumbers[] = {
    {"LastPONumber", 2, DefaultVendorDataRecord::Describe, &DefaultVendorDataRecord::LastPONumber,
     ReadLastPONumber, WriteLastPONumber},
    {"NextInvoiceNumber", 1, DefaultCustomerDataRecord::Describe,
     &DefaultCustomerDataRecord::NextInvoiceNumber, ReadNextInvoiceNumber, WriteNextInvoiceNumber},
    {"NextQuoteNumber", 1, DefaultCustomerDataRecord::Describe,
     &DefaultCustomerDataRecord::NextQuoteNumber, ReadNextQuoteNumber, WriteNextQuoteNumber},
    {"NextSONumber", 1, DefaultCustomerDataRecord::Describe,
     &DefaultCustomerDataRecord::NextSONumber, ReadNextSONumber, WriteNextSONumber},
};

class DocumentNumberTest : public testing::TestWithParam<DocumentNumber> {
 protected:
  std::filesystem::path GeneralFile() const {
    return company_.Folder() / TovrinFileNames::GeneralFile();
  }

  /// The row of the number, read into the record of a file opened for it.
  struct Row : OpenRecordFile {
    explicit Row(const std::filesystem::path& path)
        : OpenRecordFile(path, GetParam().description()) {
      EXPECT_EQ(ReadRow(GetParam().row), StatusSuccess);
    }
  };

  std::string Stored() { return Row(GeneralFile()).Record().GetText(*GetParam().field); }

  void Store(std::string_view number) {
    Row row(GeneralFile());
    row.Record().SetText(*GetParam().field, number);
    ASSERT_EQ(row.File().btUpdate(0), StatusSuccess);
  }

  void DeleteRow() {
    Row row(GeneralFile());
    ASSERT_EQ(row.File().btDelete(), StatusSuccess);
  }

  static std::string Read() { return GetParam().read(); }
  static Status Write(std::string_view number) { return GetParam().write(number); }

  Company company_;
};

TEST_P(DocumentNumberTest, IsReadFromItsRow) {
  Store("INV-1001");
  EXPECT_EQ(Read(), "INV-1001");
}

TEST_P(DocumentNumberTest, IsWrittenToItsRow) {
  EXPECT_EQ(Write("A 77"), StatusSuccess);
  EXPECT_EQ(Stored(), "A 77");
  EXPECT_EQ(Read(), "A 77");
}

TEST_P(DocumentNumberTest, MayBecomeEmpty) {
  Store("77");
  EXPECT_EQ(Write(""), StatusSuccess);
  EXPECT_EQ(Read(), "");
}

TEST_P(DocumentNumberTest, IsCutAtTheWidthOfItsField) {
  const std::size_t width = GetParam().field->width;
  EXPECT_EQ(Write(std::string(width + 5, '9')), StatusSuccess);
  EXPECT_EQ(Read(), std::string(width, '9'));
}

TEST_P(DocumentNumberTest, StandsAloneInItsField) {
  Store("77");
  for (const DocumentNumber& other : DocumentNumbers) {
    if (other.name == GetParam().name) continue;
    EXPECT_EQ(other.write("other"), StatusSuccess);
  }
  EXPECT_EQ(Read(), "77");
}

TEST_P(DocumentNumberTest, WithoutItsRowReadsEmptyAndAnswers4) {
  Store("77");
  DeleteRow();
  EXPECT_EQ(Read(), "");
  EXPECT_EQ(Write("78"), StatusKeyNotFound);
}

// 3 stands for every failure of the open, 12 and 51 among them.
TEST_P(DocumentNumberTest, WithoutTheFileReadsEmptyAndAnswers3) {
  std::filesystem::remove(GeneralFile());
  EXPECT_EQ(Read(), "");
  EXPECT_EQ(Write("78"), StatusFileNotOpen);
}

TEST_P(DocumentNumberTest, InAProtectedFileReadsEmptyAndAnswers3) {
  Store("77");
  test::ProtectFile(GeneralFile(), /*allowRead=*/false);
  EXPECT_EQ(Read(), "");
  EXPECT_EQ(Write("78"), StatusFileNotOpen);
}

TEST_P(DocumentNumberTest, InAFileThatMayOnlyBeReadAnswersTheStatusOfTheUpdate) {
  Store("77");
  test::ProtectFile(GeneralFile(), /*allowRead=*/true);
  EXPECT_EQ(Write("78"), StatusAccessDenied);
  EXPECT_EQ(Read(), "77");
}

// Also a read opens the file for writing, and fails where the file system does not allow that.
TEST_P(DocumentNumberTest, InAReadOnlyFileReadsEmptyAndAnswers3) {
  Store("77");
  test::WhereReadOnly(GeneralFile(), [&] {
    EXPECT_EQ(Read(), "");
    EXPECT_EQ(Write("78"), StatusFileNotOpen);
  });
}

TEST_P(DocumentNumberTest, ThatIsNoUtf8RaisesAndStaysAsItWas) {
  Store("77");
  EXPECT_EQ(RaisedNumber([] { Write("\xff\xfe"); }), 13);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  EXPECT_EQ(Stored(), "77");
}

TEST_P(DocumentNumberTest, LeavesTheFileClosed) {
  Read();
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
  EXPECT_EQ(Write("78"), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(GeneralFile()));
}

TEST_P(DocumentNumberTest, DisturbsNoPositionOfTheClient) {
  Store("77");
  Row client(GeneralFile());
  EXPECT_EQ(Write("78"), StatusSuccess);
  EXPECT_EQ(client.Record().GetText(*GetParam().field), "77");
  EXPECT_EQ(client.File().btUpdate(0), StatusRecordConflict);
}

INSTANTIATE_TEST_SUITE_P(GeneralFile, DocumentNumberTest, testing::ValuesIn(DocumentNumbers),
                         [](const auto& tested) { return tested.param.name; });

// --- Without any company ---

TEST(SharedRoutines, AnswerWithoutACompany) {
  const NoCompany noCompany;
  const CapturedMessages messages;
  EXPECT_EQ(EmployeeIndexFromID("ADAMS"), 0);
  EXPECT_EQ(messages.Texts().size(), 1U);
  EXPECT_FALSE(IncrementBatchEntry(3));
  EXPECT_EQ(MaxNRecord(), -1);
  EXPECT_EQ(MaxTrxNumber(5, 3), -1);
  for (const DocumentNumber& number : DocumentNumbers) {
    EXPECT_EQ(number.read(), "") << number.name;
    EXPECT_EQ(number.write("1"), StatusFileNotOpen) << number.name;
  }
}

}  // namespace
}  // namespace larkmoor
