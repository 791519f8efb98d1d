// The DetailQuantity of orders, which lies in another field of the row than older releases knew.
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "connection/shared_state.h"
#include "engine/records/jrnl_row.h"
#include "support/company.h"
#include "support/journal_traits.h"

namespace larkmoor {
namespace {

using test::Company;
using test::JournalFiles;

template <typename Journal>
using OrderQuantityTest = test::SharedJournalFixture<Journal>;

using Orders = testing::Types<PurchaseOrderJournal, SalesOrderJournal>;
TYPED_TEST_SUITE(OrderQuantityTest, Orders, test::JournalNames);

/// One of the two quantities of the rows on file.
std::vector<double> Quantities(const JournalFiles& files, const Field& field) {
  return files.OfRows(1, [&](Tovrin2Record& row) { return row.GetDouble(field); });
}

TYPED_TEST(OrderQuantityTest, IsTheQuantityFromRelease19On) {
  for (const double release : {18.9, 19.0}) {
    const Company company(release);
    const JournalFiles files(company.Folder());
    TypeParam journal;
    ASSERT_EQ(journal.OpenFile(), StatusSuccess);
    journal.NRecord(1);
    journal.DetailQuantity(1, 10);
    journal.DetailQuantity(2, 20);
    EXPECT_EQ(journal.DetailQuantity(1), 10) << release;
    ASSERT_EQ(journal.Insert(), StatusSuccess);
    const bool isNew = release >= 19.0;
    const auto& stored = isNew ? JrnlRowRecord::Quantity : JrnlRowRecord::QuantityOrdered;
    const auto& other = isNew ? JrnlRowRecord::QuantityOrdered : JrnlRowRecord::Quantity;
    EXPECT_EQ(Quantities(files, stored), (std::vector<double>{10, 20})) << release;
    EXPECT_EQ(Quantities(files, other), (std::vector<double>{0, 0})) << release;
  }
}

TYPED_TEST(OrderQuantityTest, GoesByTheReleaseThatWasOpenedLast) {
  this->LoadTwoRows(this->Code, [](Tovrin2Record& row, std::int16_t number) {
    row.SetDouble(JrnlRowRecord::Quantity, 10.0 * number);
    row.SetDouble(JrnlRowRecord::QuantityOrdered, 100.0 * number);
  });
  EXPECT_EQ(this->journal_.DetailQuantity(2), 20);
  Shared().gDataVersion = 18.9;
  EXPECT_EQ(this->journal_.DetailQuantity(2), 200);
  EXPECT_EQ(this->journal_.DetailQuantity(1), 100);
}

}  // namespace
}  // namespace larkmoor
