// The class Contact: the walk along the contacts of a customer, and a file that stays open until
// the object goes.
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include <larkmoor/masters/contact.h>
#include <larkmoor/status.h>

#include "engine/tovrin_file_names.h"
#include "support/company.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

using test::IsHeldOpen;

/// Contacts 1 to 3: "Cole" of customer 7, "Adams" and "Baker" of customer 5.
class ContactTest : public testing::Test {
 protected:
  ContactTest() {
    EXPECT_EQ(contacts_.OpenFile(), StatusSuccess);
    Add(7, "Cole");
    Add(5, "Adams");
    Add(5, "Baker");
    EXPECT_EQ(contacts_.OpenFile(), StatusSuccess);
  }

  void Add(std::int32_t customer, std::string_view name) {
    contacts_.RecordNumber(0);
    contacts_.CustomerRecord(customer);
    contacts_.LastName(name);
    EXPECT_EQ(contacts_.Insert(), StatusSuccess) << name;
  }

  std::filesystem::path File() const { return company_.Folder() / TovrinFileNames::ContactFile(); }

  test::Company company_;
  Contact contacts_;
};

using ContactRecords = ContactTest;
using ContactScan = ContactTest;
using ContactLifecycle = ContactTest;

// --- Numbers ---

TEST_F(ContactRecords, GetEqualReadsTheContactOfThatNumber) {
  EXPECT_EQ(contacts_.GetEqual(2), StatusSuccess);
  EXPECT_EQ(contacts_.LastName(), "Adams");
  EXPECT_EQ(contacts_.GetEqual(4), StatusKeyNotFound);
}

TEST_F(ContactRecords, InsertRefusesANumberThatIsTaken) {
  contacts_.RecordNumber(3);
  EXPECT_EQ(contacts_.Insert(), StatusDuplicateKey);
}

// --- The walk along a customer's contacts ---

TEST_F(ContactScan, StartsAtTheFirstContactOfTheCustomer) {
  EXPECT_EQ(contacts_.GetFirstForCustomerIndex(5), StatusSuccess);
  EXPECT_EQ(contacts_.LastName(), "Adams");
}

TEST_F(ContactScan, OfACustomerWithoutContactsStartsAtTheNextCustomerThatHasSome) {
  EXPECT_EQ(contacts_.GetFirstForCustomerIndex(6), StatusSuccess);
  EXPECT_EQ(contacts_.CustomerRecord(), 7);
}

TEST_F(ContactScan, BeyondTheLastCustomerAnswers9) {
  EXPECT_EQ(contacts_.GetFirstForCustomerIndex(8), StatusEndOfFile);
}

TEST_F(ContactScan, GoesOnToTheNextCustomer) {
  ASSERT_EQ(contacts_.GetFirstForCustomerIndex(5), StatusSuccess);
  EXPECT_EQ(contacts_.GetNextByCustomerIndex(), StatusSuccess);
  EXPECT_EQ(contacts_.LastName(), "Baker");
  EXPECT_EQ(contacts_.GetNextByCustomerIndex(), StatusSuccess);
  EXPECT_EQ(contacts_.CustomerRecord(), 7);
  EXPECT_EQ(contacts_.GetNextByCustomerIndex(), StatusEndOfFile);
}

TEST_F(ContactScan, GoesByRecordNumberAfterGetEqual) {
  ASSERT_EQ(contacts_.GetEqual(1), StatusSuccess);
  EXPECT_EQ(contacts_.GetNextByCustomerIndex(), StatusSuccess);
  EXPECT_EQ(contacts_.RecordNumber(), 2);
}

TEST_F(ContactScan, HasNoPlaceToGoOnFromBeforeTheFirstRead) {
  EXPECT_EQ(contacts_.GetNextByCustomerIndex(), StatusInvalidPositioning);
}

// --- CloseFile ---

TEST_F(ContactLifecycle, CloseFileAnswers0AndTheObjectStillReads) {
  Contact contact;
  ASSERT_EQ(contact.OpenFile(), StatusSuccess);
  EXPECT_EQ(contact.CloseFile(), StatusSuccess);
  EXPECT_EQ(contact.GetEqual(1), StatusSuccess);
  EXPECT_EQ(contact.LastName(), "Cole");
}

TEST_F(ContactLifecycle, EndOfTheObjectReleasesTheFile) {
  { const Contact last = std::move(contacts_); }
  EXPECT_FALSE(IsHeldOpen(File()));
}

TEST_F(ContactLifecycle, CloseFileLeavesTheFileHeldOpen) {
  ASSERT_EQ(contacts_.CloseFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(File()));
}

}  // namespace
}  // namespace larkmoor
