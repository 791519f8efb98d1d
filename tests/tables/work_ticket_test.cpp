// The class WorkTicket: the numbers of its records.
#include <gtest/gtest.h>

#include <larkmoor/status.h>
#include <larkmoor/tables/work_ticket.h>

#include "support/company.h"

namespace larkmoor {
namespace {

class WorkTicketTest : public testing::Test {
 protected:
  WorkTicketTest() { EXPECT_EQ(tickets_.OpenFile(), StatusSuccess); }

  test::Company company_;
  WorkTicket tickets_;
};

TEST_F(WorkTicketTest, InsertNumbersATicketThatHasNoNumber) {
  tickets_.RecordNumber(40);
  ASSERT_EQ(tickets_.Insert(), StatusSuccess);
  tickets_.RecordNumber(0);
  ASSERT_EQ(tickets_.Insert(), StatusSuccess);
  EXPECT_EQ(tickets_.RecordNumber(), 41);
  EXPECT_EQ(tickets_.Insert(), StatusDuplicateKey);
}

TEST_F(WorkTicketTest, GetEqualReadsTheTicketOfThatRecordNumber) {
  tickets_.Number("WT-7");
  ASSERT_EQ(tickets_.Insert(), StatusSuccess);
  tickets_.Number("");
  EXPECT_EQ(tickets_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(tickets_.Number(), "WT-7");
  EXPECT_EQ(tickets_.GetEqual(2), StatusKeyNotFound);
}

}  // namespace
}  // namespace larkmoor
