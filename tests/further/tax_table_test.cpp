// The class TaxTable: payroll tax tables, found by their ID.
#include <cstdint>
#include <filesystem>
#include <string_view>

#include <gtest/gtest.h>

#include <larkmoor/further/tax_table.h>
#include <larkmoor/status.h>

#include "support/company.h"
#include "support/record_files.h"
#include "support/taken_away.h"

namespace larkmoor {
namespace {

using test::Company;
using test::IsHeldOpen;
using test::TakenAway;

class TaxTableTest : public testing::Test {
 protected:
  std::filesystem::path TaxTableFile() const { return company_.Folder() / "TaxTable.dat"; }

  Company company_;
};

class OpenTaxTableTest : public TaxTableTest {
 protected:
  OpenTaxTableTest() { EXPECT_EQ(table_.OpenFile(), StatusSuccess); }

  void Add(std::string_view id, std::int32_t formulaClass) {
    table_.CodeID(id);
    table_.FormulaClass(formulaClass);
    ASSERT_EQ(table_.Insert(), StatusSuccess);
  }

  TaxTable table_;
};

using TaxTableLifecycle = TaxTableTest;
using TaxTableFinders = OpenTaxTableTest;
using TaxTableWrites = OpenTaxTableTest;
using TaxTableBrackets = OpenTaxTableTest;

TEST_F(TaxTableLifecycle, FileIsTaxTableDat) {
  TaxTable table;
  EXPECT_EQ(table.CloseFile(), StatusSuccess);
  ASSERT_EQ(table.OpenFile(), StatusSuccess);
  EXPECT_TRUE(IsHeldOpen(TaxTableFile()));
  EXPECT_EQ(table.CloseFile(), StatusSuccess);
  EXPECT_FALSE(IsHeldOpen(TaxTableFile()));
  EXPECT_EQ(table.CloseFile(), StatusSuccess);
}

TEST_F(TaxTableLifecycle, OpenFileAnswers12WithoutTheFileAndCanBeTriedAgain) {
  TaxTable table;
  {
    const TakenAway away(TaxTableFile());
    EXPECT_EQ(table.OpenFile(), StatusFileNotFound);
    EXPECT_EQ(table.CloseFile(), StatusSuccess);
    EXPECT_EQ(table.GetEqual("FIT"), StatusFileNotOpen);
  }
  EXPECT_EQ(table.OpenFile(), StatusSuccess);
}

TEST_F(TaxTableFinders, GetEqualFindsTheTableOfThatID) {
  Add("FIT", 1);
  Add("FICA", 2);
  ASSERT_EQ(table_.GetEqual("FIT"), StatusSuccess);
  EXPECT_EQ(table_.FormulaClass(), 1);
  ASSERT_EQ(table_.GetEqual("FICA"), StatusSuccess);
  EXPECT_EQ(table_.FormulaClass(), 2);
  for (const char* id : {"fit", "FIT ", "FI", ""}) {
    EXPECT_EQ(table_.GetEqual(id), StatusKeyNotFound) << id;
  }
  EXPECT_EQ(table_.CodeID(), "FICA") << "a search in vain leaves the record in hand";
}

TEST_F(TaxTableFinders, StepsGoInTheOrderOfInsertion) {
  Add("FIT", 1);
  Add("FICA", 2);
  ASSERT_EQ(table_.StepFirst(), StatusSuccess);
  EXPECT_EQ(table_.CodeID(), "FIT");
  ASSERT_EQ(table_.StepNext(), StatusSuccess);
  EXPECT_EQ(table_.CodeID(), "FICA");
  EXPECT_EQ(table_.StepNext(), StatusEndOfFile);
  ASSERT_EQ(table_.StepLast(), StatusSuccess);
  ASSERT_EQ(table_.StepPrevious(), StatusSuccess);
  EXPECT_EQ(table_.CodeID(), "FIT");
}

TEST_F(TaxTableWrites, SecondTableOfAnIDIsRefused) {
  Add("FIT", 1);
  EXPECT_EQ(table_.Insert(), StatusDuplicateKey);
  EXPECT_EQ(table_.RecordCount(), 1);
}

TEST_F(TaxTableWrites, UpdateAndDeleteChangeTheTableThatWasFound) {
  Add("FIT", 1);
  Add("FICA", 2);
  ASSERT_EQ(table_.GetEqual("FIT"), StatusSuccess);
  table_.FormulaClass(3);
  ASSERT_EQ(table_.Update(), StatusSuccess);
  ASSERT_EQ(table_.GetEqual("FICA"), StatusSuccess);
  ASSERT_EQ(table_.Delete(), StatusSuccess);
  EXPECT_EQ(table_.GetEqual("FICA"), StatusKeyNotFound);
  ASSERT_EQ(table_.GetEqual("FIT"), StatusSuccess);
  EXPECT_EQ(table_.FormulaClass(), 3);
}

TEST_F(TaxTableBrackets, HaveFourValuesEach) {
  for (const std::int16_t bracket : {std::int16_t{0}, std::int16_t{1}, std::int16_t{2}}) {
    table_.GrossMoreThan(bracket, 1000.0 * bracket);
    table_.Withhold(bracket, 100.0 * bracket);
    table_.Plus(bracket, 10.0 * bracket);
    table_.V9Flag(bracket, static_cast<std::uint8_t>(bracket));
  }
  Add("FIT", 1);
  TaxTable reader;
  ASSERT_EQ(reader.OpenFile(), StatusSuccess);
  ASSERT_EQ(reader.GetEqual("FIT"), StatusSuccess);
  for (const std::int16_t bracket : {std::int16_t{0}, std::int16_t{1}, std::int16_t{2}}) {
    EXPECT_EQ(reader.GrossMoreThan(bracket), 1000.0 * bracket);
    EXPECT_EQ(reader.Withhold(bracket), 100.0 * bracket);
    EXPECT_EQ(reader.Plus(bracket), 10.0 * bracket);
    EXPECT_EQ(reader.V9Flag(bracket), bracket);
  }
}

}  // namespace
}  // namespace larkmoor
