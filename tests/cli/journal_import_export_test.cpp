#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "automation/automation.h"
#include "cli/journal_company.h"
#include "engine/records/jrnl_hdr.h"
#include "engine/records/jrnl_row.h"
#include "support/masters.h"

namespace larkmoor::test {
namespace {

using automation::Member;
using automation::Storage;
using automation::ValueType;

constexpr const char* Fields =
    "InvoiceNumber,TrxDate,MainAccount,ARAmount,DetailGLAccount,DetailDescription,DetailAmount";

class JournalExport : public testing::Test {
 protected:
  std::string Export(std::vector<std::string> options) {
    options.insert(options.begin(), "SalesJournal");
    return company_.Output("export", options);
  }

  JournalCompany company_;
};

// --- Export ---

TEST_F(JournalExport, HasALineForEachRowWithTheTransactionRepeated) {
  company_.Post(SampleInvoice{.number = "A-1",
                              .date = "2026-01-05",
                              .amount = 107.5,
                              .rows = {{"4000", -100, "Axe, \"large\""}, {"2000", -7.5, "Tax"}}});
  company_.Post(SampleInvoice{
      .number = "A-2", .date = "2026-01-06", .amount = 20, .rows = {{"4000", -20, "Saw"}}});
  EXPECT_EQ(Export({"--fields", Fields}),
            std::string(Fields) +
                "\nA-1,2026-01-05,1100,107.5,4000,\"Axe, \"\"large\"\"\",-100\n"
                "A-1,2026-01-05,1100,107.5,2000,Tax,-7.5\n"
                "A-2,2026-01-06,1100,20,4000,Saw,-20\n");
}

TEST_F(JournalExport, ATransactionWithoutRowsIsALineWithEmptyRowColumns) {
  company_.Post(SampleInvoice{.number = "A-1", .date = "2026-01-05", .rows = {{"4000", -1}}});
  company_.Post(SampleInvoice{.number = "A-2", .date = "2026-01-06"});
  EXPECT_EQ(Export({"--fields", "InvoiceNumber,DetailAmount,DetailFlag1,DetailGLAccount"}),
            "InvoiceNumber,DetailAmount,DetailFlag1,DetailGLAccount\n"
            "A-1,-1,false,4000\n"
            "A-2,,,\n");
}

TEST_F(JournalExport, HasALineForEachTransactionWhereNoRowColumnIsAskedFor) {
  company_.Post(
      SampleInvoice{.number = "A-1", .date = "2026-01-05", .rows = {{"4000", -1}, {"4000", -2}}});
  EXPECT_EQ(Export({"--fields", "InvoiceNumber,NDistributions"}),
            "InvoiceNumber,NDistributions\nA-1,2\n");
}

TEST_F(JournalExport, GivesTheTransactionsOfItsOwnJournalInTheOrderOfInsertion) {
  company_.Post(SampleInvoice{.number = "B", .date = "2026-03-01", .period = 3});
  company_.PostOrder("SO-1", 5);
  company_.Post(SampleEntry{"GJ-1", "2026-01-01", {{"1000", 5}, {"6000", -5}}});
  company_.Post(SampleInvoice{.number = "Q", .date = "2026-02-01", .isQuote = true});
  company_.Post(SampleInvoice{.number = "A", .date = "2026-01-01"});
  EXPECT_EQ(Export({"--fields", "InvoiceNumber,Quote"}),
            "InvoiceNumber,Quote\nB,false\nQ,true\nA,false\n");
  EXPECT_EQ(Export({"--key", "7", "--fields", "InvoiceNumber"}), "InvoiceNumber\nA\nB\nQ\n");
  EXPECT_EQ(company_.Output("export", {"SalesOrderJournal", "--fields", "InvoiceNumber"}),
            "InvoiceNumber\nSO-1\n");
  EXPECT_EQ(company_.Output("export", {"GeneralJournal", "--fields", "Reference,DetailAmount"}),
            "Reference,DetailAmount\nGJ-1,5\nGJ-1,-5\n");
}

TEST_F(JournalExport, WhereChoosesWholeTransactions) {
  company_.Post(
      SampleInvoice{.number = "A", .date = "2026-01-01", .rows = {{"4000", -1}, {"4000", -2}}});
  company_.Post(SampleInvoice{.number = "B", .date = "2026-01-02", .rows = {{"4000", -3}}});
  EXPECT_EQ(Export({"--where", "InvoiceNumber=A", "--fields", "InvoiceNumber,DetailAmount"}),
            "InvoiceNumber,DetailAmount\nA,-1\nA,-2\n");
  const ProgramResult result =
      company_.Run("export", {"SalesJournal", "--where", "DetailAmount=-1"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_TRUE(Contains(result.err, "DetailAmount is of the rows of a transaction")) << result.err;
}

TEST_F(JournalExport, HasTheStoredColumnsAndNoOthers) {
  const std::string csv = Export({});
  const std::string header = "," + csv.substr(0, csv.find('\n')) + ",";
  const auto hasColumn = [&](const std::string& name) {
    return Contains(header, "," + name + ",");
  };
  for (const char* name : {"NRecord", "TrxNumberL", "MainAccount", "SalesRepID", "NumOrderLines",
                           "ARAmount", "TrxDate", "JournalID", "Period", "DetailGLAccount",
                           "DetailAmount", "DetailDisplayedLine", "DetailQuantity"}) {
    EXPECT_TRUE(hasColumn(name)) << name;
  }
  // What belongs to the company or to nothing, or shows what other columns show.
  for (const char* name : {"MaxNRecord", "MaxTrxNumberL", "NextInvoiceNumber", "NextQuoteNumber",
                           "Quote", "Key", "TrxNumber", "NDistributions", "ARAccount", "Unused1",
                           "DetailUnused1", "ReimbursableExpense", "LinkJournalRowEx"}) {
    EXPECT_FALSE(hasColumn(name)) << name;
  }
}

TEST_F(JournalExport, AnAccountThatIsGoneIsToldWithItsTransactionAndColumn) {
  const std::int32_t nRecord =
      company_.Post(SampleInvoice{.number = "A", .date = "2026-01-01", .rows = {{"6000", -1}}});
  ASSERT_EQ(company_.Run("delete", {"Chart", "--where", "AccountID=6000"}).exitCode, 0);
  const ProgramResult result = company_.Run("export", {"SalesJournal"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err,
                       "larkmoor: SalesJournal " + std::to_string(nRecord) + ": DetailGLAccount: "))
      << result.err;
}

// --- There and back ---

/// A value that no other call gives, as far as the type has so many.
class DistinctValues {
 public:
  Variant Of(const Member& member) {
    ++count_;
    if (member.storage == Storage::Date) return Date(45000.0 + count_ + 0.25);
    switch (member.type) {
      case ValueType::Boolean:
        return count_ % 2 == 0;
      case ValueType::String:
        return "É " + std::to_string(count_) + ",\n\"x\"";
      case ValueType::Double:
      case ValueType::Single:
        return 0.5 + count_;
      default:
        return static_cast<std::int16_t>(count_);
    }
  }

 private:
  std::int16_t count_ = 0;
};

/// A list of rows, and the properties by which they are added.
struct RowsToFill {
  std::string_view list;
  std::string_view count;
  std::string_view position;
};

std::vector<RowsToFill> RowsOf(const automation::Class& type) {
  if (FindMember(type, "PayAmount") == nullptr) return {{"", "NDistributions", "DetailAmount"}};
  return {{"pay", "NDistributions", "PayAmount"}, {"job", "NLaborDistributions", "JobAmount"}};
}

/// The values of properties that store something by hand.
const std::map<std::string_view, Variant> ValuesByHand = {
    {"DetailGLAccount", "4000"}, {"EmployeeID", "REP"},    {"JobAccount", "4000"},
    {"JobHours", 8.25},          {"JobLevel", 6},          {"MainAccount", "1100"},
    {"PayAccount", "4000"},      {"PayEmployeeID", "REP"}, {"SalesRepID", "REP"},
};

/// The indexes of the elements that the property has of the transaction, or of the row.
std::vector<std::vector<Variant>> IndexesOf(const Member& member, std::int16_t row) {
  if (member.arguments.empty()) return {{}};
  if (member.ofRow) return {{row}};
  std::vector<std::vector<Variant>> indexes;
  for (std::int16_t i = member.clampLow; i <= member.clampHigh; ++i) indexes.push_back({i});
  return indexes;
}

/// Sets every property that stores something of the transaction, or of a row of the list.
void FillAll(automation::Object& journal, DistinctValues& values, std::int16_t row = 0,
             std::string_view list = {}) {
  for (const Member& member : journal.Type().members) {
    if (member.isOperation || member.let == nullptr) continue;
    if (member.ofRow != (row > 0) || member.rowList != list) continue;
    const auto byHand = ValuesByHand.find(member.name);
    const bool isField = member.storage == Storage::Field || member.storage == Storage::Date;
    if (!isField && byHand == ValuesByHand.end()) continue;
    for (const std::vector<Variant>& indexes : IndexesOf(member, row)) {
      journal.Let(member.name, isField ? values.Of(member) : byHand->second, indexes);
    }
  }
}

/// The same for the transaction and each of so many rows of each list.
void FillEverything(automation::Object& journal, std::int16_t rows) {
  DistinctValues values;
  FillAll(journal, values);
  for (const RowsToFill& list : RowsOf(journal.Type())) {
    journal.Let(list.count, rows);
    for (std::int16_t row = 1; row <= rows; ++row) {
      journal.Get(list.position, {row});
      FillAll(journal, values, row, list.list);
    }
    if (list.list == "pay") journal.Get(list.position, {std::int16_t{0}});  // puts the row away
  }
}

void PostEverything(const std::string& name, std::int16_t code, std::int16_t rows) {
  automation::Object journal(name);
  ASSERT_EQ(journal.Call("OpenFile"), StatusSuccess);
  FillEverything(journal, rows);
  journal.Let("JournalID", code);
  journal.Let("Period", std::int16_t{4});
  journal.Let("NRecord", journal.Get("MaxNRecord").ToLong() + 1);
  ASSERT_EQ(journal.Call("Insert"), StatusSuccess);
}

/// All records of a file, byte for byte.
std::vector<RecordBytes> RecordsOf(const CommandCompany& company,
                                   const RecordDescription& description) {
  OpenRecordFile file(std::filesystem::path(company.Folder()) / description.fileName, description);
  std::vector<RecordBytes> records;
  for (Status status = file.File().btStepFirst(); status == StatusSuccess;
       status = file.File().btStepNext()) {
    records.push_back(file.Record().Bytes());
  }
  return records;
}

struct JournalToTry {
  std::string name;
  std::vector<std::int16_t> codes;
};

void PrintTo(const JournalToTry& journal, std::ostream* out) { *out << journal.name; }

class JournalThereAndBack : public testing::TestWithParam<JournalToTry> {};

TEST_P(JournalThereAndBack, NothingIsLost) {
  JournalCompany first;
  AddEmployee(first.Folder(), {"REP", 7});
  for (const std::int16_t code : GetParam().codes) {
    for (const std::int16_t rows : {std::int16_t{3}, std::int16_t{0}, std::int16_t{12}}) {
      PostEverything(GetParam().name, code, rows);
    }
  }
  const std::string exported = first.Output("export", {GetParam().name});

  JournalCompany second;
  AddEmployee(second.Folder(), {"REP", 7});
  EXPECT_EQ(second.Output("import", {GetParam().name, second.Write("in.csv", exported)}),
            std::to_string(3 * GetParam().codes.size()) + " transactions imported\n");
  EXPECT_EQ(second.Output("export", {GetParam().name}), exported);
  EXPECT_EQ(RecordsOf(second, JrnlHdrRecord::Describe()),
            RecordsOf(first, JrnlHdrRecord::Describe()));
  EXPECT_EQ(RecordsOf(second, JrnlRowRecord::Describe()),
            RecordsOf(first, JrnlRowRecord::Describe()));
}

/// Those that keep the rows of a transaction apart.
std::vector<JournalToTry> JournalsThereAre() {
  std::vector<JournalToTry> journals = {
      {"GeneralJournal", {0}},
      {"CashReceiptJournal", {1}},
      {"CashDisbursementJournal", {2}},
      {"SalesJournal", {3, 12}},
      {"PurchaseJournal", {4}},
      {"PayrollJournal", {5}},
      {"InventoryAdjustmentJournal", {7}},
      {"AssemblyAdjustmentJournal", {8}},
      {"PurchaseOrderJournal", {10}},
      {"SalesOrderJournal", {11}},
  };
  std::erase_if(journals, [](const JournalToTry& each) {
    return automation::FindClass(each.name) == nullptr;
  });
  return journals;
}

INSTANTIATE_TEST_SUITE_P(Each, JournalThereAndBack, testing::ValuesIn(JournalsThereAre()),
                         [](const auto& each) { return each.param.name; });

// --- Import ---

class JournalImport : public testing::Test {
 protected:
  ProgramResult Import(std::string_view csv, std::vector<std::string> options = {}) {
    return company_.Import("SalesJournal", csv, std::move(options));
  }

  /// Imports what has to be without a fault.
  void Take(std::string_view csv, const std::string& said) {
    company_.Take("SalesJournal", csv, said);
  }

  std::string Place(const std::string& place) {
    return "larkmoor: " + company_.Beside("new.csv") + ": " + place;
  }

  std::string Rows(const std::string& fields = "InvoiceNumber,DetailAmount") {
    const std::string csv = company_.Output("export", {"SalesJournal", "--fields", fields});
    return csv.substr(csv.find('\n') + 1);
  }

  JournalCompany company_;
};

TEST_F(JournalImport, NeighboursThatAgreeInTheTransactionAreItsRows) {
  Take(
      "InvoiceNumber,CustomerName,DetailAmount\n"
      "1,Berg,-1\n"
      "1,Berg,-2\n"
      "1,Dahl,-3\n"
      "2,Dahl,-4\n"
      "1,Berg,-5\n",
      "4 transactions imported\n");
  EXPECT_EQ(Rows("InvoiceNumber,CustomerName,NDistributions,DetailAmount"),
            "1,Berg,2,-1\n1,Berg,2,-2\n1,Dahl,1,-3\n2,Dahl,1,-4\n1,Berg,1,-5\n");
}

TEST_F(JournalImport, NeighboursWithOneNRecordAreItsRows) {
  Take("NRecord,InvoiceNumber,DetailAmount\n7,A,-1\n7,A,-2\n9,A,-3\n", "2 transactions imported\n");
  EXPECT_EQ(Rows("NRecord,DetailAmount"), "7,-1\n7,-2\n9,-3\n");
}

TEST_F(JournalImport, ALineWithoutAnyValueOfARowAddsNone) {
  Take("InvoiceNumber,DetailAmount,DetailDescription\n1,,\n2,0,\n3,,\n3,-1,Axe\n",
       "3 transactions imported\n");
  EXPECT_EQ(Rows("InvoiceNumber,NDistributions"), "1,0\n2,1\n3,1\n");
}

TEST_F(JournalImport, WithoutRowColumnsEachLineIsATransaction) {
  Take("InvoiceNumber\n1\n1\n", "2 transactions imported\n");
}

TEST_F(JournalImport, GivesNumbersThatAreMissing) {
  company_.Post(SampleInvoice{.number = "old", .date = "2026-01-01"});
  Take("InvoiceNumber,Period,DetailAmount\na,1,-1\nb,2,-1\nc,1,-1\nd,2,-1\n",
       "4 transactions imported\n");
  EXPECT_EQ(Rows("InvoiceNumber,NRecord,Period,TrxNumberL,JournalID"),
            "old,2,1,1,3\na,3,1,2,3\nb,4,2,1,3\nc,5,1,3,3\nd,6,2,2,3\n");
}

TEST_F(JournalImport, KeepsNumbersThatAreGivenAndCountsOnFromThem) {
  Take(
      "InvoiceNumber,NRecord,TrxNumberL,DetailAmount\n"
      "a,,,-1\nb,100,20,-1\nc,,,-1\nd,0,0,-1\n",
      "4 transactions imported\n");
  EXPECT_EQ(Rows("InvoiceNumber,NRecord,TrxNumberL"), "a,2,1\nb,100,20\nc,101,21\nd,102,0\n");
}

TEST_F(JournalImport, TakesANumberUnderItsOtherNameToo) {
  Take("InvoiceNumber,TrxNumber\na,30\nb,\n", "2 transactions imported\n");
  EXPECT_EQ(Rows("InvoiceNumber,TrxNumberL"), "a,30\nb,31\n");
}

TEST_F(JournalImport, ImportsQuotesUnderTheirCode) {
  Take("InvoiceNumber,JournalID,DetailAmount\n1,12,-1\n2,3,-1\n", "2 transactions imported\n");
  EXPECT_EQ(Rows("InvoiceNumber,Quote"), "1,true\n2,false\n");
}

TEST_F(JournalImport, MapsColumns) {
  const ProgramResult result =
      Import("no,what,sum\n1,Axe,-5\n1,Saw,-6\n",
             {"--map", "no=InvoiceNumber", "what=DetailDescription", "sum=DetailAmount"});
  EXPECT_EQ(result.out, "1 transaction imported\n") << result.err;
  EXPECT_EQ(Rows("InvoiceNumber,DetailDescription,DetailAmount"), "1,Axe,-5\n1,Saw,-6\n");
}

TEST_F(JournalImport, PassesOverColumnsThatStandForNothingStored) {
  const ProgramResult result =
      Import("InvoiceNumber,Quote,NDistributions,NextInvoiceNumber,DetailAmount\n1,true,9,77,-1\n");
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.err, Place("columns passed over: Quote, NDistributions, NextInvoiceNumber\n"));
  EXPECT_EQ(Rows("Quote,NDistributions"), "false,1\n");
}

TEST_F(JournalImport, LinesOfOneNRecordMustAgreeInTheTransaction) {
  const ProgramResult result = Import("NRecord,InvoiceNumber,DetailAmount\n7,A,-1\n7,B,-2\n");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err,
            Place("line 3: column InvoiceNumber: differs from line 2 of the same transaction\n") +
                "larkmoor: nothing was imported: 1 bad line\n");
}

TEST_F(JournalImport, ATransactionThatIsOnFileIsRefusedAndKeepsItsRows) {
  const std::int32_t nRecord =
      company_.Post(SampleInvoice{.number = "old", .date = "2026-01-01", .rows = {{"4000", -5}}});
  const ProgramResult result = Import(
      "NRecord,InvoiceNumber,DetailAmount\n" + std::to_string(nRecord) + ",new,-1\n90,good,-2\n",
      {"--keep-going"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, Place("line 2: Btrieve error 5: Duplicate Key Value\n") +
                            "larkmoor: 1 bad line left out\n");
  EXPECT_EQ(Rows(), "old,-5\ngood,-2\n");
}

TEST_F(JournalImport, ABadLineLeavesOutItsWholeTransaction) {
  const ProgramResult result =
      Import("InvoiceNumber,DetailAmount\n1,-1\n1,much\n1,-3\n2,-4\n", {"--keep-going"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.out, "1 transaction imported\n");
  EXPECT_EQ(result.err,
            Place("line 3: column DetailAmount: \"much\" is no number of that type\n") +
                "larkmoor: 1 bad line left out, and with them 2 lines that may belong to the same "
                "transactions\n");
  EXPECT_EQ(Rows(), "2,-4\n");
}

TEST_F(JournalImport, AMalformedLineLeavesOutTheTransactionsOnBothSides) {
  const ProgramResult result =
      Import("InvoiceNumber,DetailAmount\n1,-1\n2,-2\n,,\n3,-3\n3,-4\n4,-5\n", {"--keep-going"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err, Place("line 4: 3 fields where the header has 2\n")))
      << result.err;
  EXPECT_EQ(Rows(), "1,-1\n4,-5\n");
}

TEST_F(JournalImport, WhereALineIsBadNothingIsWritten) {
  const ProgramResult result =
      Import("InvoiceNumber,DetailAmount,DetailGLAccount\n1,-1,4000\n2,-2,no such\n");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_TRUE(Contains(result.err, Place("line 3: column DetailGLAccount: DetailGLAccount->Chart")))
      << result.err;
  EXPECT_EQ(Rows(), "");
  EXPECT_EQ(company_.Output("list", {"JrnlRow", "--fields", "NRecord", "--format", "csv"}),
            "NRecord\n");
}

TEST_F(JournalImport, ValuesThatTheJournalWouldDropAreRefused) {
  const ProgramResult rep = Import("InvoiceNumber,SalesRepID\n1,NOBODY\n");
  EXPECT_EQ(rep.exitCode, 1);
  EXPECT_TRUE(Contains(rep.err, Place("line 2: column SalesRepID: \"NOBODY\" is not kept: Error "
                                      "getting SalesRep index: ")))
      << rep.err;
  const ProgramResult code = Import("InvoiceNumber,JournalID\n1,4\n");
  EXPECT_EQ(code.exitCode, 1);
  EXPECT_TRUE(Contains(code.err, Place("line 2: column JournalID: 4 is not the code of a "
                                       "transaction of SalesJournal\n")))
      << code.err;
}

TEST_F(JournalImport, AMainAccountIsRefusedByDataThatHasNone) {
  const JournalCompany old("11");
  const ProgramResult result = old.Run(
      "import", {"SalesJournal", old.Write("in.csv", "InvoiceNumber,MainAccount\n1,1100\n")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err, "line 2: column MainAccount: \"1100\" is not kept"))
      << result.err;
}

TEST_F(JournalImport, FailsWhereTheRowsCannotBeWritten) {
  ASSERT_EQ(company_.Run("owner", {"JrnlRow.dat", "--set", "kept", "--allow-read"}).exitCode, 0);
  const ProgramResult result = Import("InvoiceNumber,DetailAmount\n1,-1\n", {"--keep-going"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: SalesJournal 2: its rows could not be written\n");
  EXPECT_EQ(Rows(), "");
}

// --- One transaction ---

class JournalRecord : public testing::Test {
 protected:
  JournalRecord() {
    company_.Post(SampleInvoice{.number = "A",
                                .date = "2026-01-05",
                                .amount = 30,
                                .rows = {{"4000", -10, "Axe"}, {"4000", -20, "Saw"}}});
    company_.Post(SampleInvoice{
        .number = "B", .date = "2026-01-06", .amount = 5, .rows = {{"4000", -5, "File"}}});
  }

  std::string List(const std::string& fields) {
    return company_.Output("list", {"SalesJournal", "--fields", fields, "--format", "csv"});
  }
  std::string AmountsOnFile() {
    return company_.Output("list", {"JrnlRow", "--fields", "Amount", "--format", "csv"});
  }
  void ExpectWrongUsage(const std::string& command, const std::vector<std::string>& arguments,
                        const std::string& reason) {
    const ProgramResult result = company_.Run(command, arguments);
    EXPECT_EQ(result.exitCode, 2) << command;
    EXPECT_TRUE(Contains(result.err, reason)) << result.err;
  }

  JournalCompany company_;
};

TEST_F(JournalRecord, ListShowsTransactionsWithTheNumberOfTheirRows) {
  EXPECT_EQ(List("InvoiceNumber,NDistributions"), "InvoiceNumber,NDistributions\nA,2\nB,1\n");
  const std::string all = company_.Output("list", {"SalesJournal", "--format", "csv"});
  const std::string header = "," + all.substr(0, all.find('\n')) + ",";
  EXPECT_TRUE(Contains(header, ",NDistributions,"));
  EXPECT_FALSE(Contains(header, ",Detail"));
}

TEST_F(JournalRecord, ListShowsRowsWhereTheirColumnsAreNamed) {
  EXPECT_EQ(List("InvoiceNumber,DetailDescription"),
            "InvoiceNumber,DetailDescription\nA,Axe\nA,Saw\nB,File\n");
  EXPECT_EQ(company_.Output("list", {"SalesJournal", "--fields", "DetailDescription", "--format",
                                     "csv", "--limit", "2"}),
            "DetailDescription\nAxe\nSaw\n");
}

TEST_F(JournalRecord, GetShowsATransactionWithoutItsRows) {
  EXPECT_EQ(company_.Output("get", {"SalesJournal", "--where", "InvoiceNumber=A", "--fields",
                                    "ARAmount,NDistributions"}),
            "ARAmount: 30\nNDistributions: 2\n");
  ExpectWrongUsage("get",
                   {"SalesJournal", "--where", "InvoiceNumber=A", "--fields", "DetailAmount"},
                   "DetailAmount is of the rows of a transaction");
}

TEST_F(JournalRecord, SetChangesATransactionAndKeepsItsRows) {
  EXPECT_EQ(company_.Output("set", {"SalesJournal", "--where", "InvoiceNumber=A", "CustomerPO=77",
                                    "MainAccount=1000"}),
            "1 transaction changed\n");
  EXPECT_EQ(List("InvoiceNumber,CustomerPO,MainAccount,DetailAmount"),
            "InvoiceNumber,CustomerPO,MainAccount,DetailAmount\n"
            "A,77,1000,-10\nA,77,1000,-20\nB,,1100,-5\n");
}

TEST_F(JournalRecord, SetOfAllChangesEachTransactionOnce) {
  EXPECT_EQ(
      company_.Output("set", {"SalesJournal", "--where", "MainAccount=1100", "--all", "Terms=net"}),
      "2 transactions changed\n");
  EXPECT_EQ(List("InvoiceNumber,Terms,NDistributions"),
            "InvoiceNumber,Terms,NDistributions\nA,net,2\nB,net,1\n");
}

TEST_F(JournalRecord, SetDoesNotTouchRowsNorTheNumberThatTheyBear) {
  ExpectWrongUsage("set", {"SalesJournal", "--where", "InvoiceNumber=A", "DetailAmount=1"},
                   "DetailAmount is of the rows of a transaction");
  ExpectWrongUsage("set", {"SalesJournal", "--where", "InvoiceNumber=A", "Quote=true"},
                   "SalesJournal.Quote is read-only");
  const ProgramResult result =
      company_.Run("set", {"SalesJournal", "--where", "InvoiceNumber=A", "NRecord=50"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: NRecord of a transaction that is on file cannot be changed\n");
}

TEST_F(JournalRecord, DeleteTakesTheRowsToo) {
  EXPECT_EQ(company_.Output("delete", {"SalesJournal", "--where", "InvoiceNumber=A"}),
            "1 transaction deleted\n");
  EXPECT_EQ(AmountsOnFile(), "Amount\n-5\n");
  EXPECT_EQ(company_.Output("delete", {"SalesJournal", "--where", "Period=1", "--all"}),
            "1 transaction deleted\n");
  EXPECT_EQ(AmountsOnFile(), "Amount\n");
}

TEST_F(JournalRecord, DeleteOfAllGoesOnBehindADeletedTransaction) {
  EXPECT_EQ(company_.Output("delete", {"SalesJournal", "--where", "Period=1", "--all"}),
            "2 transactions deleted\n");
  EXPECT_EQ(AmountsOnFile(), "Amount\n");
}

TEST_F(JournalRecord, InsertIsWrongUsage) {
  ExpectWrongUsage("insert", {"SalesJournal", "InvoiceNumber=C"},
                   "a transaction of SalesJournal has rows: import it from a file");
}

TEST_F(JournalRecord, MemorizedTransactionsAreWrongUsageAndTheirRecordsAreTheWay) {
  for (const char* command : {"list", "export"}) {
    ExpectWrongUsage(command, {"MemorizedTransactions"},
                     "MemorizedTransactions has but one row in memory");
  }
  ExpectWrongUsage("delete", {"MemorizedTransactions", "--where", "NRecord=1"},
                   "go by MemorizedHdr and MemorizedRow instead");
  for (const char* record : {"MemorizedHdr", "MemorizedRow"}) {
    EXPECT_EQ(company_.Output("export", {record, "--fields", "NRecord"}), "NRecord\n");
  }
}

TEST_F(JournalRecord, NoMatchFails) {
  const ProgramResult result =
      company_.Run("delete", {"SalesJournal", "--where", "InvoiceNumber=X"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "larkmoor: no transaction of SalesJournal matches\n");
}

}  // namespace
}  // namespace larkmoor::test
