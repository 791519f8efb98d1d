// Many writes in one commit: who sees what when, and what is left where nobody commits.
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include <larkmoor/bulk_write.h>
#include <larkmoor/error.h>
#include <larkmoor/status.h>
#include <larkmoor/tables/address.h>

#include "connection/shared_routines.h"
#include "connection/shared_state.h"
#include "engine/records/default_vendor_data.h"
#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/record_files.h"
#include "support/worker.h"

namespace larkmoor {
namespace {

using test::OnAnotherThread;
using test::Worker;

/// A company with an open table.
class BulkWriteTest : public testing::Test {
 protected:
  BulkWriteTest() { EXPECT_EQ(address_.OpenFile(), StatusSuccess); }

  void Add(const std::string& city) {
    address_.AddressRecordNumber(0);
    address_.City(city);
    ASSERT_EQ(address_.Insert(), StatusSuccess);
  }

  /// What `look` finds on another thread, at a table that is opened there.
  template <typename Look>
  auto Elsewhere(Look look) {
    return OnAnotherThread([path = company_.Path(), look] {
      Shared().gCompanyPath = path;
      Address address;
      EXPECT_EQ(address.OpenFile(), StatusSuccess);
      return look(address);
    });
  }

  std::int32_t CountElsewhere() {
    return Elsewhere([](Address& address) { return address.RecordCount(); });
  }

  test::Company company_;
  Address address_;
};

TEST_F(BulkWriteTest, ShowsItsWritesToTheThreadsOwnReads) {
  const BulkWrite bulk;
  Add("Ghent");
  Add("Bruges");
  EXPECT_EQ(address_.RecordCount(), 2);
  EXPECT_EQ(address_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(address_.City(), "Ghent");
}

TEST_F(BulkWriteTest, ShowsItsWritesToTheThreadsOtherObjects) {
  Address openBefore;
  ASSERT_EQ(openBefore.OpenFile(), StatusSuccess);
  const BulkWrite bulk;
  Add("Ghent");
  Address openedAfterwards;
  ASSERT_EQ(openedAfterwards.OpenFile(), StatusSuccess);
  for (Address* other : {&openBefore, &openedAfterwards}) {
    EXPECT_EQ(other->StepFirst(), StatusSuccess);
    EXPECT_EQ(other->City(), "Ghent");
  }
}

TEST_F(BulkWriteTest, ShowsItsWritesToOtherThreadsAtCommit) {
  BulkWrite bulk;
  Add("Ghent");
  EXPECT_EQ(CountElsewhere(), 0);
  EXPECT_EQ(bulk.Commit(), StatusSuccess);
  EXPECT_EQ(CountElsewhere(), 1);
}

TEST_F(BulkWriteTest, GoesOnGatheringAfterCommit) {
  BulkWrite bulk;
  Add("Ghent");
  ASSERT_EQ(bulk.Commit(), StatusSuccess);
  Add("Bruges");
  EXPECT_EQ(CountElsewhere(), 1);
  EXPECT_EQ(bulk.Commit(), StatusSuccess);
  EXPECT_EQ(CountElsewhere(), 2);
}

TEST_F(BulkWriteTest, CommitOfNothingAnswers0) {
  BulkWrite bulk;
  EXPECT_EQ(bulk.Commit(), StatusSuccess);
  EXPECT_EQ(bulk.Commit(), StatusSuccess);
}

TEST_F(BulkWriteTest, DropsWhatWasNotCommitted) {
  Add("Ghent");
  {
    const BulkWrite bulk;
    Add("Bruges");
    ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
    address_.City("Ypres");
    ASSERT_EQ(address_.Update(), StatusSuccess);
  }
  EXPECT_EQ(address_.RecordCount(), 1);
  ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(address_.City(), "Ghent");
}

TEST_F(BulkWriteTest, DropsOnlyWhatCameAfterTheLastCommit) {
  {
    BulkWrite bulk;
    Add("Ghent");
    ASSERT_EQ(bulk.Commit(), StatusSuccess);
    Add("Bruges");
  }
  EXPECT_EQ(address_.RecordCount(), 1);
  EXPECT_EQ(CountElsewhere(), 1);
}

TEST_F(BulkWriteTest, DropsDeletesToo) {
  Add("Ghent");
  {
    const BulkWrite bulk;
    ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
    ASSERT_EQ(address_.Delete(), StatusSuccess);
    EXPECT_EQ(address_.RecordCount(), 0);
  }
  EXPECT_EQ(address_.GetEqual(1), StatusSuccess);
}

TEST_F(BulkWriteTest, GivesDroppedNumbersAgain) {
  {
    const BulkWrite bulk;
    Add("Ghent");
    EXPECT_EQ(address_.AddressRecordNumber(), 1);
  }
  Add("Bruges");
  EXPECT_EQ(address_.AddressRecordNumber(), 1);
}

TEST_F(BulkWriteTest, CommitsUpdatesAndDeletes) {
  Add("Ghent");
  Add("Bruges");
  BulkWrite bulk;
  ASSERT_EQ(address_.GetEqual(1), StatusSuccess);
  ASSERT_EQ(address_.Delete(), StatusSuccess);
  ASSERT_EQ(address_.GetEqual(2), StatusSuccess);
  address_.City("Ypres");
  ASSERT_EQ(address_.Update(), StatusSuccess);
  ASSERT_EQ(bulk.Commit(), StatusSuccess);
  EXPECT_EQ(CountElsewhere(), 1);
  EXPECT_EQ(Elsewhere([](Address& address) {
              address.StepFirst();
              return address.City();
            }),
            "Ypres");
}

TEST_F(BulkWriteTest, StatusesOfSingleWritesStayAsTheyAre) {
  const BulkWrite bulk;
  EXPECT_EQ(address_.Update(), StatusInvalidPositioning);
  Add("Ghent");
  EXPECT_EQ(address_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(address_.Update(), StatusSuccess);
  EXPECT_EQ(address_.Delete(), StatusSuccess);
  EXPECT_EQ(address_.Delete(), StatusInvalidPositioning);
}

TEST_F(BulkWriteTest, FailedWriteLosesNothingOfWhatWasGathered) {
  BulkWrite bulk;
  Add("Ghent");
  ASSERT_EQ(address_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(bulk.Commit(), StatusSuccess);
  EXPECT_EQ(CountElsewhere(), 1);
}

TEST_F(BulkWriteTest, GathersTheWritesOfSeveralFiles) {
  ASSERT_EQ(WriteLastPONumber("77"), StatusSuccess);
  {
    const BulkWrite bulk;
    Add("Ghent");
    ASSERT_EQ(WriteLastPONumber("78"), StatusSuccess);
    EXPECT_EQ(ReadLastPONumber(), "78");
  }
  EXPECT_EQ(address_.RecordCount(), 0);
  EXPECT_EQ(ReadLastPONumber(), "77");

  BulkWrite bulk;
  Add("Bruges");
  ASSERT_EQ(WriteLastPONumber("79"), StatusSuccess);
  ASSERT_EQ(bulk.Commit(), StatusSuccess);
  EXPECT_EQ(CountElsewhere(), 1);
  EXPECT_EQ(Elsewhere([](Address&) { return ReadLastPONumber(); }), "79");
}

TEST_F(BulkWriteTest, KeepsWritesOfAnObjectThatIsClosedBeforeTheCommit) {
  BulkWrite bulk;
  Add("Ghent");
  ASSERT_EQ(address_.CloseFile(), StatusSuccess);
  EXPECT_EQ(bulk.Commit(), StatusSuccess);
  EXPECT_EQ(CountElsewhere(), 1);
}

TEST_F(BulkWriteTest, LeavesTheObjectsWorkingAfterItsEnd) {
  {
    const BulkWrite bulk;
    Add("Ghent");
  }
  Add("Bruges");
  EXPECT_EQ(CountElsewhere(), 1);
  EXPECT_EQ(address_.StepFirst(), StatusSuccess);
  EXPECT_EQ(address_.City(), "Bruges");
}

TEST_F(BulkWriteTest, OtherWritersOfTheFileWaitForTheCommit) {
  std::optional<BulkWrite> bulk(std::in_place);
  Add("Ghent");
  Worker writer([path = company_.Path()] {
    Shared().gCompanyPath = path;
    Address address;
    EXPECT_EQ(address.OpenFile(), StatusSuccess);
    const Status status = address.Insert();
    return status == StatusSuccess ? address.AddressRecordNumber() : -status;
  });
  EXPECT_FALSE(writer.EndsWithin(std::chrono::milliseconds(100)));
  EXPECT_EQ(bulk->Commit(), StatusSuccess);
  bulk.reset();
  ASSERT_TRUE(writer.EndsWithin(std::chrono::seconds(20)));
  EXPECT_EQ(writer.Get(), 2) << "the number after those that were committed";
}

TEST_F(BulkWriteTest, ReadersDoNotWait) {
  const BulkWrite bulk;
  Add("Ghent");
  Worker reader([path = company_.Path()] {
    Shared().gCompanyPath = path;
    Address address;
    EXPECT_EQ(address.OpenFile(), StatusSuccess);
    return address.StepFirst();
  });
  ASSERT_TRUE(reader.EndsWithin(std::chrono::seconds(20)));
  EXPECT_EQ(reader.Get(), StatusEndOfFile);
}

TEST_F(BulkWriteTest, IsOneAThread) {
  std::optional<BulkWrite> bulk(std::in_place);
  try {
    const BulkWrite second;
    ADD_FAILURE() << "a second one was made";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), 5);
    EXPECT_EQ(error.Source(), "Larkmoor");
    EXPECT_EQ(error.Description(), "Invalid procedure call or argument");
    EXPECT_EQ(error.BtrieveStatus(), StatusSuccess);
  }
  Add("Ghent");
  EXPECT_EQ(CountElsewhere(), 0) << "the first one still gathers";
  bulk.reset();
  EXPECT_NO_THROW(BulkWrite());
}

TEST_F(BulkWriteTest, OfAnotherThreadIsNotInTheWay) {
  const BulkWrite bulk;
  OnAnotherThread([] {
    EXPECT_NO_THROW(BulkWrite());
    return 0;
  });
}

static_assert(!std::is_copy_constructible_v<BulkWrite> && !std::is_move_constructible_v<BulkWrite>);

// --- Many records ---

TEST_F(BulkWriteTest, LoadsThousandsOfRecords) {
  constexpr int Count = 5000;
  BulkWrite bulk;
  for (int i = 1; i <= Count; ++i) {
    address_.AddressRecordNumber(0);
    address_.CustomerRecordNumber(Count - i);
    ASSERT_EQ(address_.Insert(), StatusSuccess);
  }
  ASSERT_EQ(bulk.Commit(), StatusSuccess);
  EXPECT_EQ(CountElsewhere(), Count);
  ASSERT_EQ(address_.GetFirstForCustomer(0), StatusSuccess);
  EXPECT_EQ(address_.AddressRecordNumber(), Count);
}

}  // namespace
}  // namespace larkmoor
