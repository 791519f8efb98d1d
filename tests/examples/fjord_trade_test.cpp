// The example that posts a month of trade for the demonstration's company, on release 18, where all
// payroll data lies in the employees' records, and on 19, where it lies in rows. What it should
// come to is added up from the same files by sqlite3.
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/journals/assembly_adjustment_journal.h>
#include <larkmoor/journals/cash_disbursement_journal.h>
#include <larkmoor/journals/cash_receipt_journal.h>
#include <larkmoor/journals/inventory_adjustment_journal.h>
#include <larkmoor/journals/jrnl_hdr.h>
#include <larkmoor/journals/jrnl_row.h>
#include <larkmoor/journals/memorized_transactions.h>
#include <larkmoor/journals/payroll_journal.h>
#include <larkmoor/journals/purchase_journal.h>
#include <larkmoor/journals/sales_journal.h>
#include <larkmoor/masters/employee.h>
#include <larkmoor/masters/line_item.h>
#include <larkmoor/masters/vendor.h>

#include "cli/larkmoor_command.h"
#include "cli/ledger_programs.h"
#include "examples/example_programs.h"
#include "support/record_files.h"
#include "support/run_program.h"

namespace larkmoor::test {
namespace {

std::filesystem::path Examples() { return std::filesystem::path(LARKMOOR_SOURCE_DIR) / "examples"; }
std::filesystem::path Data() { return Examples() / "data"; }

bool HasRows(const std::string& release) { return release == "19"; }

void ImportPayLevels(const ExampleCompany& company) {
  const ProgramResult result =
      Larkmoor({"import", company.Folder(), "EmployeeAux5", Data() / "pay_levels.csv"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
}

/// The company of that release with its month of trade.
class FjordTrade : public testing::TestWithParam<std::string> {
 protected:
  FjordTrade() {
    company.Output(LARKMOOR_FJORD_TOOLS, {Data(), GetParam()});
    if (HasRows(GetParam())) ImportPayLevels(company);
    output = company.Output(LARKMOOR_FJORD_TRADE, {Data()});
  }

  const ExampleCompany company;
  std::string output;
};

INSTANTIATE_TEST_SUITE_P(Releases, FjordTrade, testing::Values("18", "19"),
                         [](const auto& info) { return "Release" + info.param; });

/// Orders and quotes, whose journals are 10 and above, post nothing.
constexpr std::int32_t FirstThatDoesNotPost = 10;

/// Calls `add(key, account, cents)` with each posting, the key being the transaction's number.
template <typename Add>
void ForEachPosting(Add&& add) {
  JrnlHdr header;
  ASSERT_EQ(header.OpenFile(), StatusSuccess);
  for (Status status = header.StepFirst(); status == StatusSuccess; status = header.StepNext()) {
    if (header.JournalID() >= FirstThatDoesNotPost) continue;
    add(header.NRecord(), header.MainAccount(), ToCents(header.Amount()));
  }
  JrnlRow row;
  ASSERT_EQ(row.OpenFile(), StatusSuccess);
  for (Status status = row.StepFirst(); status == StatusSuccess; status = row.StepNext()) {
    if (row.JournalID() >= FirstThatDoesNotPost) continue;
    add(row.NRecord(), row.AccountID(), ToCents(row.Amount()));
  }
}

/// The balance of each account; postings without one amount to nothing and are left out.
Balances ReadBalances() {
  Balances balances;
  ForEachPosting([&](std::int32_t, const std::string& account, std::int64_t cents) {
    if (account.empty()) {
      EXPECT_EQ(cents, 0);
    } else {
      balances[account] += cents;
    }
  });
  return balances;
}

template <typename Journal>
void Find(Journal& journal, const std::string& number) {
  ASSERT_EQ(journal.OpenFile(), StatusSuccess);
  ASSERT_EQ(journal.GetForInvoice(number), StatusSuccess);
  ASSERT_EQ(journal.InvoiceNumber(), number);
}

/// The only transaction of a journal whose number, as `number` tells it, is that one.
template <typename Journal, typename Number>
void Walk(Journal& journal, Number number, const std::string& wanted) {
  ASSERT_EQ(journal.OpenFile(), StatusSuccess);
  Status status = journal.ReadFirst(0);
  while (status == StatusSuccess && number(journal) != wanted) status = journal.ReadNext();
  ASSERT_EQ(status, StatusSuccess) << wanted;
}

// --- The whole -----------------------------------------------------------------------------------

TEST_P(FjordTrade, TellsWhatItPosted) {
  EXPECT_EQ(output, ReadFile(Examples() / "expected/fjord_trade.txt"));
}

TEST_P(FjordTrade, EachTransactionIsZeroWithItsRows) {
  std::map<std::int32_t, std::int64_t> sums;
  ForEachPosting([&](std::int32_t transaction, const std::string&, std::int64_t cents) {
    sums[transaction] += cents;
  });
  EXPECT_EQ(sums.size(), 140U + 43U + 7U + 6U + 9U + 1U + 1U + 3U);
  for (const auto& [transaction, cents] : sums) EXPECT_EQ(cents, 0) << transaction;
}

TEST_P(FjordTrade, TheTrialBalanceIsTheSumOfAllFiles) {
  SKIP_WITHOUT_SQLITE();
  const auto answer = AskSqlite(
      {{"Invoice", Data() / "invoices.csv"},
       {"Entry", Data() / "journal.csv"},
       {"Purchase", Data() / "purchases.csv"},
       {"Payment", Data() / "payments.csv"},
       {"Receipt", Data() / "receipts.csv"},
       {"Adjustment", Data() / "adjustments.csv"},
       {"Assembly", Data() / "assemblies.csv"},
       {"Paycheck", Data() / "paychecks.csv"},
       {"Item", Data() / "items.csv"}},
      "with Stock as (select ItemID, AccountID, Amount from Adjustment"
      "  union all select ItemID, AccountID, Amount from Assembly), "
      "Posting as (select AccountID, Amount from Invoice"
      "  union all select '1110', -Amount from Invoice"
      "  union all select AccountID, Amount from Entry"
      "  union all select AccountID, Amount from Purchase"
      "  union all select '2010', -Amount from Purchase"
      "  union all select AccountID, Amount from Payment"
      "  union all select '1020', -Amount from Payment"
      "  union all select AccountID, Amount from Receipt"
      "  union all select '1020', -Amount from Receipt"
      "  union all select AccountID, Amount from Paycheck"
      "  union all select '1020', -Amount from Paycheck"
      "  union all select AccountID, Amount from Stock"
      "  union all select GLInventoryAccount, -Amount from Stock join Item using (ItemID)) "
      "select AccountID, sum(cast(round(Amount * 100) as integer)) from Posting group by "
      "AccountID");
  Balances expected;
  for (const auto& line : answer) expected[line.at(0)] = std::stoll(line.at(1));
  EXPECT_GT(expected.size(), 30U);
  EXPECT_EQ(ReadBalances(), expected);
}

/// The balances by the accounts' IDs: the ledger's names are "TYPE:ID DESCRIPTION".
Balances ByID(const LedgerBalances& balances) {
  Balances byID;
  for (const auto& [name, cents] : balances) {
    const std::size_t at = name.find(':') + 1;
    byID[name.substr(at, name.find(' ', at) - at)] = cents;
  }
  return byID;
}

TEST_P(FjordTrade, OtherProgramsFindTheSameBalances) {
  if (LedgerPrograms().empty()) GTEST_SKIP() << "skipped: no ledger and no hledger";
  const std::string file = company.Folder() + ".ledger";
  const ProgramResult result =
      Larkmoor({"export", company.Folder(), "--as", "ledger", "--output", file});
  EXPECT_EQ(result.err, "");
  for (const std::string& program : LedgerPrograms()) {
    Balances found = ByID(BalancesBy(program, file));
    std::erase_if(found, [](const auto& balance) { return balance.second == 0; });
    Balances expected = ReadBalances();
    std::erase_if(expected, [](const auto& balance) { return balance.second == 0; });
    EXPECT_EQ(found, expected) << program;
  }
}

// --- Its parts -----------------------------------------------------------------------------------

TEST_P(FjordTrade, ABillHasItsItemsAndWhatWasPaidOnIt) {
  PurchaseJournal bills;
  Find(bills, "IW-31002");
  EXPECT_EQ(bills.VendorName(), "Ironwood Power Tools, Inc.");
  EXPECT_EQ(bills.DateDue(), Date::FromYmd(2027, 2, 24));
  EXPECT_EQ(bills.MainAccount(), "2010");
  EXPECT_EQ(bills.AmountPaid(), -500.00);
  LineItem item;
  ASSERT_EQ(item.OpenFile(), StatusSuccess);
  ASSERT_EQ(item.GetForIndex(bills.DetailItemIndex(1)), StatusSuccess);
  EXPECT_EQ(item.ItemID(), "SAW-190");
  EXPECT_EQ(bills.DetailUnitPrice(1), item.Cost());
  Find(bills, "NSH-229");
  EXPECT_EQ(bills.AmountPaid(), bills.APAmount());
  Find(bills, "T-88021");
  EXPECT_EQ(bills.AmountPaid(), 0);
}

TEST_P(FjordTrade, ACheckGoesToTheRemitToAddressAndPaysBills) {
  CashDisbursementJournal payments;
  const auto number = [](auto& payment) { return payment.CheckNumber(); };
  Walk(payments, number, "4105");
  EXPECT_EQ(payments.VendorName(), "Ironwood Power Tools, Inc.");
  EXPECT_EQ(payments.CheckAddr1(), "Lockbox 7731");
  EXPECT_EQ(payments.DetailInvoicePaid(1), "IW-30917");
  PurchaseJournal bills;
  Find(bills, "IW-30917");
  EXPECT_EQ(payments.DetailInvoiceNRecord(1), bills.NRecord());
  EXPECT_EQ(payments.TotalPaidOnInvoice(), -payments.CashAmount());
  Walk(payments, number, "4103");
  EXPECT_EQ(payments.CheckAddr1(), "5 Mill Road") << "the vendor's own address";
  Walk(payments, number, "4101");
  EXPECT_EQ(payments.TotalPaidOnInvoice(), 0) << "on account";
}

TEST_P(FjordTrade, ReceiptsRaiseWhatWasPaidOnTheirInvoices) {
  CashReceiptJournal receipts;
  Walk(
      receipts, [](auto& receipt) { return receipt.ReceiptNum(); }, "R-2");
  EXPECT_EQ(receipts.NDistributions(), 3);
  EXPECT_EQ(receipts.InvoicesPaid(), receipts.CashAmount());
  EXPECT_EQ(receipts.DetailInvoicePaid(2), "10532");
  SalesJournal invoices;
  Find(invoices, "10532");
  EXPECT_EQ(receipts.DetailInvoiceNRecord(2), invoices.NRecord());
  EXPECT_EQ(receipts.DetailAmount(2), -invoices.ARAmount());
  EXPECT_EQ(invoices.AmountReceived(), invoices.ARAmount());
  Find(invoices, "10534");
  EXPECT_EQ(invoices.AmountReceived(), 5345.98) << "in two receipts";
  Find(invoices, "10538");
  EXPECT_EQ(invoices.AmountReceived(), 0);
}

TEST_P(FjordTrade, TheCountTakesAwayWhatWasRusted) {
  InventoryAdjustmentJournal adjustments;
  Walk(
      adjustments, [](auto& adjustment) { return adjustment.Reference(); }, "COUNT-01");
  EXPECT_EQ(adjustments.Description(), "Saw blade 190 mm, 40 teeth");
  EXPECT_EQ(adjustments.MainAccount(), "1230");
  EXPECT_EQ(adjustments.AmountAdjusted(), -53.85);
  EXPECT_EQ(adjustments.DetailQuantity(1), -3);
  EXPECT_EQ(adjustments.DetailReasonToAdjust(1), "Rusted, found at the count");
}

TEST_P(FjordTrade, TheKitsAreBuiltOfWhatTheirBillOfMaterialSays) {
  LineItem kit;
  ASSERT_EQ(kit.OpenFile(), StatusSuccess);
  ASSERT_EQ(kit.GetEqual("KIT-TIMBER"), StatusSuccess);
  ASSERT_EQ(kit.NumberOfComponents(), 4);
  AssemblyAdjustmentJournal assemblies;
  Walk(
      assemblies, [](auto& assembly) { return assembly.Reference(); }, "KITS-01");
  EXPECT_EQ(assemblies.ItemIndex(), kit.Index());
  EXPECT_EQ(ToCents(assemblies.AmountAdjusted()), ToCents(12 * kit.Cost()));
  EXPECT_EQ(assemblies.ReasonForBuild(), "Kits for the spring fair");
  ASSERT_EQ(assemblies.NDistributions(), 5);
  for (std::int16_t row = 1; row <= 4; ++row) {
    EXPECT_EQ(assemblies.DetailComponentItemIndex(row), kit.ComponentIndex(row));
    EXPECT_EQ(assemblies.DetailQuantity(row), -12 * kit.ComponentQuantity(row));
  }
}

TEST_P(FjordTrade, VendorsHaveARemitToAddressOrNone) {
  Vendor vendor;
  ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
  ASSERT_EQ(vendor.GetEqual("KLINGE"), StatusSuccess);
  EXPECT_EQ(vendor.City(), "Køge");
  EXPECT_EQ(vendor.RemitToCity(1), "København");
  ASSERT_EQ(vendor.GetEqual("LÓPEZ"), StatusSuccess);
  EXPECT_EQ(vendor.City(), "Superior");
  EXPECT_EQ(vendor.RemitToName(1), "");
}

// --- Pay -----------------------------------------------------------------------------------------

/// Read by an object of its own, which has no pay level of another employee in hand.
std::vector<double> RatesOf(const std::string& employeeID) {
  Employee employee;
  EXPECT_EQ(employee.OpenFile(), StatusSuccess);
  EXPECT_EQ(employee.GetEqual(employeeID), StatusSuccess);
  return {employee.PayRateAmount(1), employee.PayRateAmount(2), employee.PayRateAmount(3)};
}

TEST_P(FjordTrade, EmployeesHaveTheirRates) {
  EXPECT_EQ(RatesOf("FJORD-M"), (std::vector{21.00, 31.50, 0.0}));
  EXPECT_EQ(RatesOf("IBARRA-J"), (std::vector{24.50, 36.75, 0.0}));
  EXPECT_EQ(RatesOf("THORSEN-L"), (std::vector{19.00, 28.50, 0.0}));
}

TEST_P(FjordTrade, APaycheckHasPayAndHoursForJobs) {
  PayrollJournal paychecks;
  Walk(
      paychecks, [](auto& paycheck) { return paycheck.CheckNumber(); }, "5202");
  EXPECT_EQ(paychecks.EmployeeID(), "IBARRA-J");
  EXPECT_EQ(paychecks.HoursSalaryAmount(1), 40 + 31 + 14);
  EXPECT_EQ(paychecks.HoursSalaryAmount(2), 3);
  ASSERT_EQ(paychecks.NDistributions(), 8);
  EXPECT_EQ(paychecks.PayDescription(8), "Employer’s share, owed");
  EXPECT_EQ(paychecks.PayAmount(8), -167.75);
  ASSERT_EQ(paychecks.NLaborDistributions(), 2);
  EXPECT_EQ(paychecks.JobHours(1), 31);
  EXPECT_EQ(paychecks.JobAmount(2), 343.00);
}

TEST_P(FjordTrade, APaycheckIsPrintedWithBothLists) {
  EXPECT_EQ(company.Output(LARKMOOR_PAYCHECK, {"5202"}),
            ReadFile(Examples() / "expected/paycheck.txt"));
  const ProgramResult result = company.Run(LARKMOOR_PAYCHECK, {"4105"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "No paycheck 4105.\n");
}

TEST_P(FjordTrade, OneInvoiceIsKeptAsAPattern) {
  MemorizedTransactions patterns;
  ASSERT_EQ(patterns.OpenFile(), StatusSuccess);
  ASSERT_EQ(patterns.StepFirst(), StatusSuccess);
  EXPECT_EQ(patterns.MemorizedID(), "CARE-CEDAR");
  EXPECT_EQ(patterns.RecordType(), 0) << "sales";
  EXPECT_EQ(patterns.TotalAmount(), 180.00);
  EXPECT_EQ(patterns.DetailGLAccount(1), "4050");
  EXPECT_EQ(patterns.StepNext(), StatusEndOfFile);
}

// --- What is missing -----------------------------------------------------------------------------

TEST(FjordTradeWithoutPayLevels, IsRefusedAndWritesNothing) {
  const ExampleCompany company;
  company.Output(LARKMOOR_FJORD_TOOLS, {Data()});
  const Balances before = ReadBalances();
  const ProgramResult result = company.Run(LARKMOOR_FJORD_TRADE, {Data()});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.err.ends_with("from release 19 on import this file first\n")) << result.err;
  EXPECT_EQ(ReadBalances(), before);
  Vendor vendor;
  ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
  EXPECT_EQ(vendor.RecordCount(), 0);
}

}  // namespace
}  // namespace larkmoor::test
