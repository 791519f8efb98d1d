// The classes User and Roles: both show the rights, and only a role keeps them.
#include <gtest/gtest.h>

#include <larkmoor/further/roles.h>
#include <larkmoor/further/user.h>
#include <larkmoor/status.h>

#include "support/company.h"

namespace larkmoor {
namespace {

class UserTest : public testing::Test {
 protected:
  UserTest() { EXPECT_EQ(users_.OpenFile(), StatusSuccess); }

  test::Company company_;
  User users_;
};

TEST_F(UserTest, OfTheRightsKeepsCrystalAccessAlone) {
  users_.UserName("Anna");
  users_.CrystalAccess(3);
  users_.CreditCardAccess(1);
  users_.Sales_Tasks_Quotes(2);
  users_.System_Tasks_Unpost(4);
  EXPECT_EQ(users_.CreditCardAccess(), 0);
  ASSERT_EQ(users_.Insert(), StatusSuccess);
  ASSERT_EQ(users_.GetEqual("Anna"), StatusSuccess);
  EXPECT_EQ(users_.CrystalAccess(), 3);
  EXPECT_EQ(users_.Sales_Tasks_Quotes(), 0);
  EXPECT_EQ(users_.System_Tasks_Unpost(), 0);
}

TEST_F(UserTest, DropsTheUnknownNumbersAndKeepsTheUnknownBytes) {
  users_.Unknown1(1);
  users_.Unknown2(2);
  users_.Unknown3(0, 3);
  users_.Unknown4(4);
  EXPECT_EQ(users_.Unknown1(), 0);
  EXPECT_EQ(users_.Unknown2(), 0);
  EXPECT_EQ(users_.Unknown3(0), 3);
  EXPECT_EQ(users_.Unknown4(), 0);
}

TEST_F(UserTest, KeepsThePasswordAsItStands) {
  users_.UserName("Anna");
  users_.Password(" s3cret ");
  ASSERT_EQ(users_.Insert(), StatusSuccess);
  users_.Password("");
  ASSERT_EQ(users_.GetEqual("Anna"), StatusSuccess);
  EXPECT_EQ(users_.Password(), " s3cret ");
}

TEST_F(UserTest, SecondUserOfANameIsRefused) {
  users_.UserName("Anna");
  ASSERT_EQ(users_.Insert(), StatusSuccess);
  EXPECT_EQ(users_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(users_.GetEqual("anna"), StatusKeyNotFound);
}

TEST_F(UserTest, RoleKeepsItsRights) {
  Roles roles;
  ASSERT_EQ(roles.OpenFile(), StatusSuccess);
  roles.RoleID("CLERK");
  roles.CreditCardAccess(1);
  roles.CrystalAccess(2);
  roles.System_Tasks_Unpost(-3);
  roles.Unknown1(4);
  roles.Unknown4(5);
  ASSERT_EQ(roles.Insert(), StatusSuccess);
  Roles reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.StepFirst(), StatusSuccess);
  EXPECT_EQ(reader.CreditCardAccess(), 1);
  EXPECT_EQ(reader.CrystalAccess(), 2);
  EXPECT_EQ(reader.GeneralLedger_Maint_Budgets(), 0);
  EXPECT_EQ(reader.System_Tasks_Unpost(), -3);
  EXPECT_EQ(reader.Unknown1(), 4);
  EXPECT_EQ(reader.Unknown4(), 0);
}

}  // namespace
}  // namespace larkmoor
