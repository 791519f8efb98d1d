// What a new company can do before anyone has entered a setting.
#include <gtest/gtest.h>

#include <larkmoor/company.h>
#include <larkmoor/error.h>
#include <larkmoor/larkmoor.h>

#include "support/company.h"

namespace larkmoor::test {
namespace {

constexpr double Releases[] = {8.0, 12.9, 13.0, 19.0};

TEST(FirstSettings, GiveTheNumbersOfTheFirstPapers) {
  for (const double release : Releases) {
    const Company company(release);
    SalesJournal sales;
    EXPECT_EQ(sales.NextInvoiceNumber(), "1001") << release;
    EXPECT_EQ(sales.NextQuoteNumber(), "1001") << release;
    EXPECT_EQ(SalesOrderJournal().NextSONumber(), "1001") << release;
    EXPECT_EQ(PurchaseOrderJournal().LastPONumber(), "1000") << release;
    sales.NextInvoiceNumber("1002");
    EXPECT_EQ(SalesJournal().NextInvoiceNumber(), "1002") << release;
  }
}

TEST(FirstSettings, LetBatchesBeCounted) {
  for (const double release : Releases) {
    const Company company(release);
    SalesJournal sales;
    ASSERT_EQ(sales.OpenFile(), StatusSuccess);
    EXPECT_EQ(sales.IncrementBatchCount(), -1);
    GeneralData general;
    ASSERT_EQ(general.OpenFile(), StatusSuccess);
    ASSERT_EQ(general.Read(), StatusSuccess);
    EXPECT_EQ(general.BatchEntryCount(tovJournalCodeSales), 1) << release;
    EXPECT_EQ(general.BatchFlag(tovJournalCodeSales), 255) << release;
  }
}

TEST(FirstSettings, GiveCustomersAndVendorsTheirShipMethods) {
  const Company company;
  Customer customer;
  ASSERT_EQ(customer.OpenFile(), StatusSuccess);
  customer.ShipVia(3);
  EXPECT_EQ(customer.ShipVia(), 2) << "written from 1, read from 0";
  DefaultShipMethod methods;
  ASSERT_EQ(methods.OpenFile(), StatusSuccess);
  ASSERT_EQ(methods.Read(), StatusSuccess);
  for (std::int16_t i = 1; i <= 10; ++i) EXPECT_NE(methods.Description(i), "") << i;
}

TEST(FirstSettings, HaveACalendarOfTwelveMonthsFromTheFirstDayOn) {
  const TempFolder folder;
  const std::string path = (folder.Path() / "company").string();
  CreateCompany(path, {.FiscalYearStart = Date::FromYmd(2023, 10, 31)});
  Btrieve connection;
  ASSERT_EQ(connection.Connect(path), StatusSuccess);
  GeneralData general;
  ASSERT_EQ(general.OpenFile(), StatusSuccess);
  ASSERT_EQ(general.Read(), StatusSuccess);
  EXPECT_EQ(general.CalendarYear(), 2023);
  EXPECT_EQ(general.NumberOfPeriods(), 12);
  EXPECT_EQ(general.CurrentPeriod(), 1);
  EXPECT_EQ(general.PeriodStartDate(1), Date::FromYmd(2023, 10, 31));
  EXPECT_EQ(general.PeriodEndDate(1), Date::FromYmd(2023, 11, 29));
  EXPECT_EQ(general.PeriodStartDate(2), Date::FromYmd(2023, 11, 30)) << "November is too short";
  EXPECT_EQ(general.PeriodEndDate(4), Date::FromYmd(2024, 2, 28));
  EXPECT_EQ(general.PeriodStartDate(5), Date::FromYmd(2024, 2, 29));
  EXPECT_EQ(general.PeriodEndDate(12), Date::FromYmd(2024, 10, 30));
  EXPECT_EQ(general.PeriodStartDate(13), Date::FromYmd(2024, 10, 31));
  EXPECT_TRUE(general.PeriodStartDate(0).IsNull());
  EXPECT_TRUE(general.PeriodStartDate(25).IsNull());
}

TEST(FirstSettings, RefuseAFirstDayThatIsNoDate) {
  const TempFolder folder;
  const CompanyOptions options{.FiscalYearStart = Date(1e9)};
  EXPECT_THROW(CreateCompany(folder.Path() / "company", options), Error);
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / "company"));
}

}  // namespace
}  // namespace larkmoor::test
