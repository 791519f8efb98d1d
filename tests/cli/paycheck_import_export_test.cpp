// Paychecks on the command line: transactions with two lists of rows.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journals/payroll_journal.h>

#include "cli/journal_company.h"
#include "support/masters.h"

namespace larkmoor::test {
namespace {

/// A company with an employee, index 7, and one who bears the number of a first row.
class PaycheckCompany : public JournalCompany {
 public:
  explicit PaycheckCompany(const std::string& release = "19") : JournalCompany(release) {
    AddEmployee(Folder(), {"LINDQVIST", 7});
    AddEmployee(Folder(), {"FIRST", 1});
  }

  /// Posts a paycheck with these amounts of pay rows and of labor rows, the latter for job 3, and
  /// gives its `NRecord`.
  std::int32_t PostPaycheck(std::string_view check, const std::vector<double>& pay,
                            const std::vector<double>& labor) const {
    PayrollJournal journal;
    EXPECT_EQ(journal.OpenFile(), StatusSuccess);
    journal.JournalID(5);
    journal.Period(1);
    journal.NRecord(journal.MaxNRecord() + 1);
    journal.TrxNumberL(journal.MaxTrxNumberL(1) + 1);
    journal.CheckNumber(check);
    journal.EmployeeID("LINDQVIST");
    journal.MainAccount("1000");
    std::int16_t row = 0;
    for (const double amount : pay) {
      journal.PayAmount(++row, amount);
      journal.PayEmployeeID(row, "LINDQVIST");
      journal.PayAccount(row, "6000");
    }
    journal.PayAmount(0);  // puts the pay row away
    row = 0;
    for (const double amount : labor) {
      journal.JobAmount(++row, amount);
      journal.JobJobIndex(row, 3);
      journal.JobEmployeeID(row, "LINDQVIST");
      journal.JobAccount(row, "6000");
    }
    EXPECT_EQ(journal.Insert(), StatusSuccess);
    return journal.NRecord();
  }
};

class PaycheckCommands : public testing::Test {
 protected:
  std::string Export(const std::string& fields) {
    return company_.Output("export", {"PayrollJournal", "--fields", fields});
  }
  ProgramResult Import(std::string_view csv, std::vector<std::string> options = {}) {
    return company_.Import("PayrollJournal", csv, std::move(options));
  }
  /// Imports what has to be without a fault.
  void Take(std::string_view csv, const std::string& said) {
    company_.Take("PayrollJournal", csv, said);
  }
  /// Imports where the third line has to be at fault, and nothing be written.
  void ExpectThirdLineRefused(std::string_view csv, const std::string& reason) {
    const ProgramResult result = Import(csv);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "larkmoor: " + company_.Beside("new.csv") + ": line 3: " + reason +
                              "\nlarkmoor: nothing was imported: 1 bad line\n");
    EXPECT_EQ(Export("CheckNumber"), "CheckNumber\n");
  }

  std::string AmountsOnFile() {
    return company_.Output("list", {"JrnlRow", "--fields", "Amount", "--format", "csv"});
  }

  PaycheckCompany company_;
};

using PaycheckExport = PaycheckCommands;
using PaycheckImport = PaycheckCommands;
using PaycheckRecord = PaycheckCommands;

// --- Export ---

TEST_F(PaycheckExport, HasTheLinesOfPayRowsAheadOfThoseOfJobRows) {
  company_.PostPaycheck("A", {100, -20}, {60, 40});
  EXPECT_EQ(Export("CheckNumber,EmployeeID,JobAmount,JobJobIndex,PayAmount,PayEmployeeID"),
            "CheckNumber,EmployeeID,JobAmount,JobJobIndex,PayAmount,PayEmployeeID\n"
            "A,LINDQVIST,,,100,LINDQVIST\n"
            "A,LINDQVIST,,,-20,LINDQVIST\n"
            "A,LINDQVIST,60,3,,\n"
            "A,LINDQVIST,40,3,,\n");
}

TEST_F(PaycheckExport, HasLinesOfOneListWhereTheOtherIsEmptyAndALineWithoutAnyRow) {
  company_.PostPaycheck("labor", {}, {60});
  company_.PostPaycheck("neither", {}, {});
  company_.PostPaycheck("pay", {100}, {});
  EXPECT_EQ(Export("CheckNumber,JobFlag1,JobAmount,PayAmount,PayFlag1"),
            "CheckNumber,JobFlag1,JobAmount,PayAmount,PayFlag1\n"
            "labor,false,60,,\n"
            "neither,,,,\n"
            "pay,,,100,false\n");
}

TEST_F(PaycheckExport, HasTheStoredColumnsOfBothListsAndNoOthers) {
  const std::string csv = company_.Output("export", {"PayrollJournal"});
  const std::string header = "," + csv.substr(0, csv.find('\n')) + ",";
  const auto hasColumn = [&](const std::string& name) {
    return Contains(header, "," + name + ",");
  };
  for (const char* name :
       {"NRecord", "EmployeeID", "MainAccount", "CashAmount", "HoursSalaryAmount(1)",
        "HoursSalaryAmount(20)", "PayAccount", "PayAmount", "PayEmployeeID", "PayLineNo",
        "PayQuantity", "JobAccount", "JobAmount", "JobHours", "JobJobIndex", "JobLevel"}) {
    EXPECT_TRUE(hasColumn(name)) << name;
  }
  // The first reads another employee than it was given; the others hold nothing of their own.
  for (const char* name : {"JobEmployeeID", "JobLineNo", "JobUnknown", "PayMemoAmount",
                           "MainAmount", "CashAccount", "NDistributions", "NLaborDistributions"}) {
    EXPECT_FALSE(hasColumn(name)) << name;
  }
}

// --- Import ---

TEST_F(PaycheckImport, ALineIsOfTheListWhoseColumnsItHasValuesIn) {
  Take(
      "CheckNumber,PayAmount,PayDescription,JobJobIndex,JobAmount,JobHours\n"
      "A,100,Gross,,,\n"
      "A,,Bonus,,,\n"
      "A,,,3,60,8\n"
      "A,,,4,,\n"
      "B,,,3,,2.5\n"
      "C,,,,,\n",
      "3 transactions imported\n");
  EXPECT_EQ(Export("CheckNumber,PayAmount,PayDescription,JobJobIndex,JobAmount,JobHours"),
            "CheckNumber,PayAmount,PayDescription,JobJobIndex,JobAmount,JobHours\n"
            "A,100,Gross,,,\n"
            "A,0,Bonus,,,\n"
            "A,,,3,60,8\n"
            "A,,,4,0,0\n"
            "B,,,3,0,2.5\n"
            "C,,,,,\n");
  EXPECT_EQ(Export("CheckNumber,NDistributions,NLaborDistributions"),
            "CheckNumber,NDistributions,NLaborDistributions\nA,2,2\nB,0,1\nC,0,0\n");
}

TEST_F(PaycheckImport, TakesManyRowsOfBothLists) {
  std::string csv = "CheckNumber,PayAmount,JobJobIndex,JobAmount\n";
  for (int i = 1; i <= 25; ++i) csv += "A," + std::to_string(i) + ",,\n";
  for (int i = 1; i <= 31; ++i) csv += "A,," + std::to_string(i) + "," + std::to_string(-i) + "\n";
  Take(csv, "1 transaction imported\n");
  EXPECT_EQ(Export("CheckNumber,PayAmount,JobJobIndex,JobAmount"), csv);
}

TEST_F(PaycheckImport, ALineWithColumnsOfBothListsIsRefused) {
  ExpectThirdLineRefused(
      "CheckNumber,PayAmount,JobJobIndex,JobAmount\nA,1,,\nA,2,,3\n",
      "columns PayAmount and JobAmount: one is of a pay row and one of a job row, and a line holds "
      "one row");
}

TEST_F(PaycheckImport, APayRowBehindAJobRowIsRefused) {
  ExpectThirdLineRefused("CheckNumber,PayAmount,JobJobIndex\nA,,3\nA,1,\n",
                         "a pay row cannot stand behind a job row of the same transaction");
}

TEST_F(PaycheckImport, AJobRowWithoutAJobIsRefused) {
  const std::string reason =
      "a job row needs a JobJobIndex other than 0: without it, it would be read back as a pay row";
  ExpectThirdLineRefused("CheckNumber,JobJobIndex,JobAmount\nA,3,1\nA,,2\n", reason);
  ExpectThirdLineRefused("CheckNumber,JobJobIndex,JobAmount\nA,3,1\nA,0,2\n", reason);
}

TEST_F(PaycheckImport, ItsListsBeginAnewWithEachPaycheck) {
  Take("CheckNumber,PayAmount,JobJobIndex\nA,,3\nB,1,\nB,,4\n", "2 transactions imported\n");
  EXPECT_EQ(Export("CheckNumber,PayAmount,JobJobIndex"),
            "CheckNumber,PayAmount,JobJobIndex\nA,,3\nB,1,\nB,,4\n");
}

TEST_F(PaycheckImport, EmployeesThatAreNotOnFileAreRefused) {
  const ProgramResult result = Import("CheckNumber,PayEmployeeID\nA,NOBODY\n");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Contains(result.err, "line 2: column PayEmployeeID: \"NOBODY\" is not kept"))
      << result.err;
  EXPECT_EQ(Import("CheckNumber,EmployeeID\nA,NOBODY\n").exitCode, 1);
}

TEST_F(PaycheckImport, PassesOverTheEmployeeOfAJobRow) {
  const ProgramResult result = Import("CheckNumber,JobJobIndex,JobEmployeeID\nA,3,LINDQVIST\n");
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.err,
            "larkmoor: " + company_.Beside("new.csv") + ": columns passed over: JobEmployeeID\n");
}

TEST_F(PaycheckImport, GoesThereAndBackInOlderDataToo) {
  for (const char* release : {"12", "13"}) {
    const PaycheckCompany first(release);
    first.PostPaycheck("A", {100, -20}, {60, 40});
    const std::string exported = first.Output("export", {"PayrollJournal"});
    const PaycheckCompany second(release);
    EXPECT_EQ(second.Output("import", {"PayrollJournal", second.Write("in.csv", exported)}),
              "1 transaction imported\n");
    EXPECT_EQ(second.Output("export", {"PayrollJournal"}), exported) << release;
  }
}

// --- One paycheck ---

TEST_F(PaycheckRecord, ListAndGetTellHowManyRowsEachListHas) {
  company_.PostPaycheck("A", {100, -20}, {60});
  const std::string list = company_.Output("list", {"PayrollJournal", "--format", "json"});
  EXPECT_TRUE(Contains(list, "\"NDistributions\":2")) << list;
  EXPECT_TRUE(Contains(list, "\"NLaborDistributions\":1")) << list;
  EXPECT_EQ(company_.Output("get", {"PayrollJournal", "--where", "EmployeeID=LINDQVIST", "--fields",
                                    "CheckNumber,NLaborDistributions"}),
            "CheckNumber: A\nNLaborDistributions: 1\n");
}

TEST_F(PaycheckRecord, SetKeepsTheRowsOfBothLists) {
  company_.PostPaycheck("A", {100, -20}, {60, 40});
  company_.PostPaycheck("B", {}, {50});
  EXPECT_EQ(company_.Output(
                "set", {"PayrollJournal", "--where", "Period=1", "--all", "WeeksInPayPeriod=2"}),
            "2 transactions changed\n");
  EXPECT_EQ(Export("CheckNumber,WeeksInPayPeriod,PayAmount,JobAmount"),
            "CheckNumber,WeeksInPayPeriod,PayAmount,JobAmount\n"
            "A,2,100,\nA,2,-20,\nA,2,,60\nA,2,,40\nB,2,,50\n");
}

TEST_F(PaycheckRecord, SetDoesNotTouchRows) {
  company_.PostPaycheck("A", {100}, {60});
  for (const char* value : {"PayAmount=1", "JobAmount=1", "NLaborDistributions=0"}) {
    EXPECT_EQ(company_.Run("set", {"PayrollJournal", "--where", "CheckNumber=A", value}).exitCode,
              2)
        << value;
  }
}

TEST_F(PaycheckRecord, DeleteTakesTheRowsOfBothLists) {
  company_.PostPaycheck("A", {100, -20}, {60});
  company_.PostPaycheck("B", {1}, {2});
  EXPECT_EQ(company_.Output("delete", {"PayrollJournal", "--where", "CheckNumber=A"}),
            "1 transaction deleted\n");
  EXPECT_EQ(AmountsOnFile(), "Amount\n1\n2\n");
}

}  // namespace
}  // namespace larkmoor::test
