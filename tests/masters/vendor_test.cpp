// The class Vendor: its file, its finders and the key that they go along, and the fields with rules
// of their own. Its addresses are told in vendor_addresses_test.cpp; purchases account and ship
// method in vendor_look_ups_test.cpp.
#include "engine/records/vendor.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/masters/vendor.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "engine/tovrin_file.h"
#include "engine/tovrin_file_names.h"
#include "support/child_process.h"
#include "support/company.h"
#include "support/errors.h"
#include "support/failing_disk.h"
#include "support/masters.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::AddVendor;
using test::Company;
using test::IsHeldOpen;
using test::OpenRecordFile;
using test::RaisedNumber;
using test::TakenAway;

class VendorTest : public testing::Test {
 protected:
  std::filesystem::path VendorFile() const {
    return company_.Folder() / TovrinFileNames::VendorFile();
  }

  Company company_;
};

/// Three vendors whose indexes go against their IDs, laid in a third order, and an object open on
/// them.
class OpenVendorTest : public VendorTest {
 protected:
  OpenVendorTest() {
    AddVendor(company_.Folder(), {"BAKER", 20});
    AddVendor(company_.Folder(), {"ADAMS", 30});
    AddVendor(company_.Folder(), {"CLARK", 10});
    EXPECT_EQ(vendor_.OpenFile(), StatusSuccess);
  }

  Vendor vendor_;
};

using VendorLifecycle = VendorTest;
using VendorFinders = OpenVendorTest;
using VendorKeyNumber = OpenVendorTest;
using VendorPercentage = OpenVendorTest;
using VendorWrites = OpenVendorTest;
using VendorStoredFields = VendorTest;

// --- Opening and closing ---

TEST_F(VendorLifecycle, FileIsVendorDat) {
  Vendor vendor;
  ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(company_.Folder() / "Vendor.dat"));
}

TEST_F(VendorLifecycle, OperationsBeforeOpenFileAnswer3) {
  Vendor vendor;
  EXPECT_EQ(vendor.GetEqual("ADAMS"), StatusFileNotOpen);
  EXPECT_EQ(vendor.GetForIndex(1), StatusFileNotOpen);
  EXPECT_EQ(vendor.GetGreaterThan(""), StatusFileNotOpen);
  EXPECT_EQ(vendor.GetGreaterThanOrEqual(""), StatusFileNotOpen);
  EXPECT_EQ(vendor.GetLessThan("Z"), StatusFileNotOpen);
  EXPECT_EQ(vendor.GetLessThanOrEqual("Z"), StatusFileNotOpen);
  EXPECT_EQ(vendor.GetFirst(), StatusFileNotOpen);
  EXPECT_EQ(vendor.GetLast(), StatusFileNotOpen);
  EXPECT_EQ(vendor.GetNext(), StatusFileNotOpen);
  EXPECT_EQ(vendor.GetPrevious(), StatusFileNotOpen);
  EXPECT_EQ(vendor.GetByPercent(50), StatusFileNotOpen);
  EXPECT_EQ(vendor.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(vendor.Insert(), StatusFileNotOpen);
  EXPECT_EQ(vendor.Update(), StatusFileNotOpen);
  EXPECT_EQ(vendor.Delete(), StatusFileNotOpen);
  EXPECT_EQ(vendor.RecordCount(), 0);
  EXPECT_EQ(vendor.CloseFile(), StatusSuccess);
}

TEST_F(VendorLifecycle, FailedOpenFileLeavesItClosed) {
  Vendor vendor;
  {
    const TakenAway away(VendorFile());
    EXPECT_EQ(vendor.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(vendor.StepFirst(), StatusFileNotOpen);
    EXPECT_EQ(vendor.CloseFile(), StatusSuccess);
  }
  EXPECT_EQ(vendor.OpenFile(), StatusSuccess);
}

TEST_F(VendorLifecycle, FileOfAnotherOwnerAnswers51) {
  test::ProtectFile(VendorFile(), /*allowRead=*/false);
  EXPECT_EQ(Vendor().OpenFile(), StatusInvalidOwner);
}

TEST_F(VendorLifecycle, ReadOnlyFileDoesNotOpen) {
  test::WhereReadOnly(VendorFile(), [] { EXPECT_EQ(Vendor().OpenFile(), StatusPermission); });
}

TEST_F(VendorLifecycle, CloseFileClosesAndAnswers0EachTime) {
  Vendor vendor;
  ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
  EXPECT_EQ(vendor.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(VendorFile()));
  EXPECT_EQ(vendor.CloseFile(), StatusSuccess);
}

TEST_F(VendorLifecycle, CloseFileOfAFileThatIsNoLongerOpenAnswers3) {
  Vendor vendor;
  ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
  ASSERT_EQ(TovrinFile().btReset(), StatusSuccess);
  EXPECT_EQ(vendor.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(vendor.CloseFile(), StatusSuccess);
}

TEST_F(VendorLifecycle, CloseFileThatFailsAnswersItsStatusAndClosesAllTheSame) {
  test::RunInChild([&] {
    Vendor vendor;
    ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
    ASSERT_EQ(vendor.Insert(), StatusSuccess);
    test::BreakDisk(VendorFile());
    EXPECT_EQ(vendor.CloseFile(), StatusIOError);
    EXPECT_EQ(vendor.CloseFile(), StatusSuccess);
  });
}

TEST_F(VendorLifecycle, FailedSecondOpenFileReleasesTheFileAndKeepsTheMark) {
  Vendor vendor;
  ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
  {
    const TakenAway away(VendorFile());
    EXPECT_EQ(vendor.OpenFile(), StatusFileNotFound);
  }
  EXPECT_FALSE(IsHeldOpen(VendorFile()));
  EXPECT_EQ(vendor.StepFirst(), StatusFileNotOpen);
  EXPECT_EQ(vendor.CloseFile(), StatusFileNotOpen);
  EXPECT_EQ(vendor.CloseFile(), StatusSuccess);
}

TEST_F(VendorLifecycle, SecondOpenFileStartsAnew) {
  AddVendor(company_.Folder(), {"ADAMS", 7});
  Vendor vendor;
  ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
  ASSERT_EQ(vendor.GetForIndex(7), StatusSuccess);
  EXPECT_EQ(vendor.OpenFile(), StatusSuccess);
  EXPECT_EQ(vendor.VendorID(), "");
  EXPECT_EQ(vendor.Update(), StatusInvalidPositioning);
  EXPECT_EQ(vendor.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(VendorFile()));
}

TEST_F(VendorLifecycle, DestructionClosesTheFile) {
  {
    Vendor vendor;
    ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
    ASSERT_TRUE(IsHeldOpen(VendorFile()));
  }
  EXPECT_FALSE(IsHeldOpen(VendorFile()));
}

// --- Finders ---

TEST_F(VendorFinders, GetEqualReadsTheVendorOfExactlyThatID) {
  ASSERT_EQ(vendor_.GetEqual("ADAMS"), StatusSuccess);
  EXPECT_EQ(vendor_.Index(), 30);
  for (const char* id : {"ADAM", "ADAMSON", "Adams", "ADAMS ", ""}) {
    EXPECT_EQ(vendor_.GetEqual(id), StatusKeyNotFound) << id;
  }
  EXPECT_EQ(vendor_.VendorID(), "ADAMS") << "a read that finds nothing leaves the record";
}

TEST_F(VendorFinders, GetGreaterThanReadsTheNextHigherID) {
  ASSERT_EQ(vendor_.GetGreaterThan(""), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "ADAMS");
  ASSERT_EQ(vendor_.GetGreaterThan("ADAMS"), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "BAKER");
  ASSERT_EQ(vendor_.GetGreaterThan("BAKE"), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "BAKER");
  EXPECT_EQ(vendor_.GetGreaterThan("CLARK"), StatusEndOfFile);
}

TEST_F(VendorFinders, GetGreaterThanOrEqualReadsThatIDOrTheNextHigher) {
  ASSERT_EQ(vendor_.GetGreaterThanOrEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "BAKER");
  ASSERT_EQ(vendor_.GetGreaterThanOrEqual("BAKER1"), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "CLARK");
  ASSERT_EQ(vendor_.GetGreaterThanOrEqual(""), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "ADAMS");
  EXPECT_EQ(vendor_.GetGreaterThanOrEqual("CLARKE"), StatusEndOfFile);
}

TEST_F(VendorFinders, GetLessThanReadsTheNextLowerID) {
  ASSERT_EQ(vendor_.GetLessThan("ZZZ"), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "CLARK");
  ASSERT_EQ(vendor_.GetLessThan("CLARK"), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "BAKER");
  EXPECT_EQ(vendor_.GetLessThan("ADAMS"), StatusEndOfFile);
}

TEST_F(VendorFinders, GetLessThanOrEqualReadsThatIDOrTheNextLower) {
  ASSERT_EQ(vendor_.GetLessThanOrEqual("BAKER"), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "BAKER");
  ASSERT_EQ(vendor_.GetLessThanOrEqual("BAKE"), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "ADAMS");
  ASSERT_EQ(vendor_.GetLessThanOrEqual("ZZZ"), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "CLARK");
  EXPECT_EQ(vendor_.GetLessThanOrEqual("ADAM"), StatusEndOfFile);
}

TEST_F(VendorFinders, GetForIndexReadsTheVendorOfThatIndex) {
  ASSERT_EQ(vendor_.GetForIndex(20), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "BAKER");
  EXPECT_EQ(vendor_.GetForIndex(21), StatusKeyNotFound);
}

TEST_F(VendorFinders, StepsGoInTheOrderOfInsertion) {
  ASSERT_EQ(vendor_.StepFirst(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "BAKER");
  ASSERT_EQ(vendor_.StepNext(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "ADAMS");
  ASSERT_EQ(vendor_.StepLast(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "CLARK");
  EXPECT_EQ(vendor_.StepNext(), StatusEndOfFile);
  ASSERT_EQ(vendor_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "ADAMS");
  EXPECT_EQ(vendor_.GetNext(), StatusInvalidPositioning) << "a step leaves no place on a key";
}

// --- The key that walks and writes go along ---

TEST_F(VendorKeyNumber, OfANewObjectIsThatOfTheIDs) {
  EXPECT_EQ(vendor_.GetNext(), StatusInvalidPositioning);
  ASSERT_EQ(vendor_.GetFirst(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "ADAMS");
  ASSERT_EQ(vendor_.GetLast(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "CLARK");
  ASSERT_EQ(vendor_.GetPrevious(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "BAKER");
}

TEST_F(VendorKeyNumber, FollowsTheFindersByID) {
  const std::function<Status()> finders[] = {
      [&] { return vendor_.GetEqual("BAKER"); }, [&] { return vendor_.GetGreaterThan("ADAMS"); },
      [&] { return vendor_.GetGreaterThanOrEqual("ADAMSON"); },
      [&] { return vendor_.GetLessThan("CLARK"); },
      [&] { return vendor_.GetLessThanOrEqual("CLAP"); }};
  for (const auto& find : finders) {
    ASSERT_EQ(vendor_.GetForIndex(20), StatusSuccess);
    ASSERT_EQ(find(), StatusSuccess);
    ASSERT_EQ(vendor_.VendorID(), "BAKER");
    ASSERT_EQ(vendor_.GetNext(), StatusSuccess);
    EXPECT_EQ(vendor_.VendorID(), "CLARK");
    EXPECT_EQ(vendor_.GetNext(), StatusEndOfFile);
  }
}

TEST_F(VendorKeyNumber, FollowsTheFinderByIndex) {
  ASSERT_EQ(vendor_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(vendor_.GetNext(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "ADAMS");
  ASSERT_EQ(vendor_.GetFirst(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "CLARK");
  EXPECT_EQ(vendor_.GetPrevious(), StatusEndOfFile);
  ASSERT_EQ(vendor_.GetLast(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "ADAMS");
}

TEST_F(VendorKeyNumber, FollowsAFinderThatFindsNothing) {
  ASSERT_EQ(vendor_.GetForIndex(99), StatusKeyNotFound);
  ASSERT_EQ(vendor_.GetFirst(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "CLARK");
}

TEST_F(VendorKeyNumber, IsNotTouchedBySteps) {
  ASSERT_EQ(vendor_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(vendor_.StepFirst(), StatusSuccess);
  ASSERT_EQ(vendor_.GetFirst(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "CLARK");
}

TEST_F(VendorKeyNumber, IsThatOfTheNextWrite) {
  ASSERT_EQ(vendor_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  ASSERT_EQ(vendor_.GetNext(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "ADAMS");
  vendor_.VendorID("AMES");
  vendor_.Index(25);
  ASSERT_EQ(vendor_.Insert(), StatusSuccess);
  ASSERT_EQ(vendor_.GetPrevious(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "BAKER");
}

TEST_F(VendorKeyNumber, IsSetBackByOpenFile) {
  ASSERT_EQ(vendor_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(vendor_.OpenFile(), StatusSuccess);
  ASSERT_EQ(vendor_.GetFirst(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "ADAMS");
}

// --- Percentages ---

TEST_F(VendorPercentage, OfTheFirstIs0AndOfTheLast100AlongTheKeyInUse) {
  ASSERT_EQ(vendor_.GetFirst(), StatusSuccess);
  EXPECT_EQ(vendor_.FindByPercent(), 0);
  ASSERT_EQ(vendor_.GetLast(), StatusSuccess);
  EXPECT_EQ(vendor_.FindByPercent(), 100);
  ASSERT_EQ(vendor_.GetForIndex(10), StatusSuccess);
  ASSERT_EQ(vendor_.VendorID(), "CLARK");
  EXPECT_EQ(vendor_.FindByPercent(), 0);
}

// What FindByPercent gives is no status.
TEST_F(VendorPercentage, OfNoRecordIs0) {
  EXPECT_EQ(vendor_.FindByPercent(), 0);
  EXPECT_EQ(Vendor().FindByPercent(), 0);
}

TEST_F(VendorPercentage, IsWhereGetByPercentReads) {
  ASSERT_EQ(vendor_.GetByPercent(100), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "CLARK");
  ASSERT_EQ(vendor_.GetByPercent(0), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "ADAMS");
  ASSERT_EQ(vendor_.GetNext(), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "BAKER");
  ASSERT_EQ(vendor_.GetForIndex(20), StatusSuccess);
  ASSERT_EQ(vendor_.GetByPercent(0), StatusSuccess);
  EXPECT_EQ(vendor_.VendorID(), "CLARK");
}

// --- Writes ---

TEST_F(VendorWrites, InsertGivesTheNextIndex) {
  vendor_.VendorID("DUNN");
  ASSERT_EQ(vendor_.Insert(), StatusSuccess);
  EXPECT_EQ(vendor_.Index(), 31);
  EXPECT_EQ(vendor_.RecordCount(), 4);
}

TEST_F(VendorWrites, InsertOfAnIDThatIsThereAnswers5) {
  vendor_.VendorID("ADAMS");
  EXPECT_EQ(vendor_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(vendor_.RecordCount(), 3);
}

TEST_F(VendorWrites, UpdateRewritesAndDeleteTakesAwayTheVendorInHand) {
  ASSERT_EQ(vendor_.GetEqual("BAKER"), StatusSuccess);
  vendor_.Contact("Rosa");
  ASSERT_EQ(vendor_.Update(), StatusSuccess);
  Vendor other;
  ASSERT_EQ(other.OpenFile(), StatusSuccess);
  ASSERT_EQ(other.GetForIndex(20), StatusSuccess);
  EXPECT_EQ(other.Contact(), "Rosa");
  ASSERT_EQ(other.Delete(), StatusSuccess);
  EXPECT_EQ(other.RecordCount(), 2);
  EXPECT_EQ(vendor_.Update(), StatusRecordConflict);
}

// --- VendorSinceDate ---

// Unlike other dates it is converted at once and never stored as the empty one.

TEST(VendorSinceDate, KeepsADateAndATextThatIsOne) {
  Vendor vendor;
  EXPECT_TRUE(vendor.VendorSinceDate().IsNull());
  vendor.VendorSinceDate(Date::FromYmd(2004, 2, 29));
  EXPECT_EQ(vendor.VendorSinceDate(), Variant(Date::FromYmd(2004, 2, 29)));
  vendor.VendorSinceDate("2011-07-01");
  EXPECT_EQ(vendor.VendorSinceDate(), Variant(Date::FromYmd(2011, 7, 1)));
  vendor.VendorSinceDate(std::int32_t{38000});
  EXPECT_EQ(vendor.VendorSinceDate(), Variant(Date(38000)));
}

TEST(VendorSinceDate, Keeps31December1999AsNoOtherDateDoes) {
  const Date lastDay = Date::FromYmd(1999, 12, 31);
  Vendor vendor;
  vendor.VendorSinceDate(lastDay);
  EXPECT_EQ(vendor.VendorSinceDate(), Variant(lastDay));
  vendor.LastInvoiceDate(lastDay);
  EXPECT_TRUE(vendor.LastInvoiceDate().IsNull());
}

TEST(VendorSinceDate, TakesTheNumber1AsADateAsNoOtherDateDoes) {
  Vendor vendor;
  vendor.VendorSinceDate(std::int16_t{1});
  EXPECT_EQ(vendor.VendorSinceDate(), Variant(Date::FromYmd(1899, 12, 31)));
  vendor.LastInvoiceDate(std::int16_t{1});
  EXPECT_TRUE(vendor.LastInvoiceDate().IsNull());
}

TEST(VendorSinceDate, OfNullOrADateThatMeansEmptyRaises94AndStaysAsItWas) {
  Vendor vendor;
  const Variant before = Date::FromYmd(2004, 2, 29);
  vendor.VendorSinceDate(before);
  const Variant samples[] = {Null,
                             Date(2),
                             Date::FromYmd(1900, 1, 1),
                             Date::FromYmd(1900, 12, 31, 23, 59),
                             "1900-07-15",
                             std::int16_t{2},
                             Date(65537)};
  for (const Variant& value : samples) {
    EXPECT_EQ(RaisedNumber([&] { vendor.VendorSinceDate(value); }), 94) << value;
    EXPECT_EQ(vendor.VendorSinceDate(), before) << value;
  }
}

TEST(VendorSinceDate, OfATextThatIsNoDateRaises13AndStaysAsItWas) {
  Vendor vendor;
  const Variant before = Date::FromYmd(2004, 2, 29);
  vendor.VendorSinceDate(before);
  for (const char* value : {"", "some day", "2004-02-30"}) {
    EXPECT_EQ(RaisedNumber([&] { vendor.VendorSinceDate(value); }), 13) << value;
    EXPECT_EQ(vendor.VendorSinceDate(), before) << value;
  }
}

TEST_F(VendorStoredFields, VendorSinceDateOfAnotherWriterReadsLikeOtherDates) {
  OpenRecordFile file(VendorFile(), VendorRecord::Describe());
  file.Add([](Tovrin2Record& record) {
    record.SetText(VendorRecord::VendorID, "A");
    record.SetDate(VendorRecord::VendorSinceDate, 65537);
  });
  file.Add([](Tovrin2Record& record) {
    record.SetText(VendorRecord::VendorID, "B");
    record.SetDate(VendorRecord::VendorSinceDate, 36525.75);
  });
  Vendor vendor;
  ASSERT_EQ(vendor.OpenFile(), StatusSuccess);
  ASSERT_EQ(vendor.GetEqual("A"), StatusSuccess);
  EXPECT_TRUE(vendor.VendorSinceDate().IsNull());
  ASSERT_EQ(vendor.GetEqual("B"), StatusSuccess);
  EXPECT_EQ(vendor.VendorSinceDate(), Variant(Date(36525.75)));
}

// --- Further fields ---

// Unlike the customers' flags.
TEST(VendorFormsDeliveryFlags, AreStoredAsTheyAre) {
  Vendor vendor;
  vendor.FormsDeliveryFlags2(7);
  for (const std::int32_t flags : {1, 4, 6, -1, 0}) {
    vendor.FormsDeliveryFlags(flags);
    EXPECT_EQ(vendor.FormsDeliveryFlags(), flags);
    EXPECT_EQ(vendor.FormsDeliveryFlags2(), 7);
  }
}

TEST(VendorUnused, Reads0AndDropsWrites) {
  Vendor vendor;
  for (const std::int16_t index :
       {std::int16_t{-1}, std::int16_t{0}, std::int16_t{1}, std::int16_t{32767}}) {
    vendor.Unused1(index, 7);
    EXPECT_EQ(vendor.Unused1(index), 0) << index;
    vendor.Unused2(index, 7);
    EXPECT_EQ(vendor.Unused2(index), 0) << index;
    vendor.Unused3(index, 7);
    EXPECT_EQ(vendor.Unused3(index), 0) << index;
    vendor.Unused5(index, 7);
    EXPECT_EQ(vendor.Unused5(index), 0) << index;
  }
  vendor.Unused4(7);
  EXPECT_EQ(vendor.Unused4(), 0);
  vendor.Unused6(70000);
  EXPECT_EQ(vendor.Unused6(), 0);
}

}  // namespace
}  // namespace larkmoor
