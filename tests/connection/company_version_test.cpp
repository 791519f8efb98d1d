// The release that a company's version file tells.
#include "connection/company_version.h"

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "connection/shared_state.h"
#include "support/company.h"
#include "support/record_files.h"

namespace larkmoor {
namespace {

/// The release that a version file of these bytes tells.
double ReleaseOf(std::string_view content) {
  const test::TempFolder folder;
  test::WriteFile(folder.Path() / "VERSION.TXT", content);
  Shared().gCompanyPath = folder.Path().string() + "/";
  return ReadCompanyVersion();
}

constexpr double Tolerance = 1e-9;

TEST(CompanyVersion, From9OnIs3Less) {
  EXPECT_NEAR(ReleaseOf("9"), 6.0, Tolerance);
  EXPECT_NEAR(ReleaseOf("9.5"), 6.5, Tolerance);
  EXPECT_NEAR(ReleaseOf("12.00"), 9.0, Tolerance);
  EXPECT_NEAR(ReleaseOf("15.9"), 12.9, Tolerance);
  EXPECT_NEAR(ReleaseOf("22.00"), 19.0, Tolerance);
}

TEST(CompanyVersion, From8Point6ToBelow9Is3Point6Less) {
  EXPECT_NEAR(ReleaseOf("8.6"), 5.0, Tolerance);
  EXPECT_NEAR(ReleaseOf("8.99"), 5.39, Tolerance);
}

TEST(CompanyVersion, Below8Point6Is4Less) {
  EXPECT_NEAR(ReleaseOf("8.59"), 4.59, Tolerance);
  EXPECT_NEAR(ReleaseOf("8"), 4.0, Tolerance);
  EXPECT_NEAR(ReleaseOf("5"), 1.0, Tolerance);
}

TEST(CompanyVersion, Of4Is0AndBelow4IsNegative) {
  EXPECT_EQ(ReleaseOf("4"), 0);
  EXPECT_NEAR(ReleaseOf("3"), -1.0, Tolerance);
}

TEST(CompanyVersion, LetterFGivesWayToTheLastFiveCharacters) {
  EXPECT_NEAR(ReleaseOf("F12.00"), 9.0, Tolerance);
  EXPECT_NEAR(ReleaseOf("F112.00"), 9.0, Tolerance);
  EXPECT_NEAR(ReleaseOf("Final 13.50"), 10.5, Tolerance);
  EXPECT_NEAR(ReleaseOf("F\xff\xfe\x80"
                        "12.00"),
              9.0, Tolerance);
}

// "F9.00" is five characters long: the letter stays, and with it there is no leading number.
TEST(CompanyVersion, LetterFStaysInAFieldOfUpToFiveCharacters) {
  EXPECT_EQ(ReleaseOf("F9.00"), 0);
  EXPECT_EQ(ReleaseOf("F12"), 0);
  EXPECT_EQ(ReleaseOf("F"), 0);
}

TEST(CompanyVersion, LetterFBeforeOtherTextLeavesThatText) {
  EXPECT_EQ(ReleaseOf("F12.00 (beta)"), 0);
  EXPECT_NEAR(ReleaseOf("F12.00x"), -2.0, Tolerance) << "the last five characters are \"2.00x\"";
}

TEST(CompanyVersion, SmallLetterFIsNoNumber) { EXPECT_EQ(ReleaseOf("f12.00"), 0); }

TEST(CompanyVersion, FirstFieldEndsAtACommaOrALineBreak) {
  EXPECT_NEAR(ReleaseOf("F12.00,99999"), 9.0, Tolerance);
  EXPECT_NEAR(ReleaseOf("F12.00\r\n99999"), 9.0, Tolerance);
  EXPECT_NEAR(ReleaseOf("F12.00\n99999"), 9.0, Tolerance);
  EXPECT_NEAR(ReleaseOf("12,99"), 9.0, Tolerance);
  EXPECT_EQ(ReleaseOf(",12.00"), 0);
  EXPECT_EQ(ReleaseOf("\r\n12.00"), 0);
  EXPECT_EQ(ReleaseOf("0,12.00"), 0);
}

TEST(CompanyVersion, NumberEndsWhereTheTextIsNoNumberAnyMore) {
  EXPECT_NEAR(ReleaseOf("12.50abc"), 9.5, Tolerance);
  EXPECT_NEAR(ReleaseOf("12.5.7"), 9.5, Tolerance);
  EXPECT_NEAR(ReleaseOf("12-7"), 9.0, Tolerance);
  EXPECT_NEAR(ReleaseOf(std::string_view("12\0.5", 5)), 9.0, Tolerance);
  EXPECT_NEAR(ReleaseOf("12\xff"), 9.0, Tolerance);
}

TEST(CompanyVersion, LeadingBlanksArePassedOver) {
  EXPECT_NEAR(ReleaseOf("   12.00"), 9.0, Tolerance);
}

TEST(CompanyVersion, TextWithoutALeadingNumberIs0) {
  EXPECT_EQ(ReleaseOf(""), 0);
  EXPECT_EQ(ReleaseOf("Peachtree 12"), 0);
  EXPECT_EQ(ReleaseOf("."), 0);
  EXPECT_EQ(ReleaseOf("0.00"), 0);
  EXPECT_EQ(ReleaseOf("\xff\xfe\x80\x81"), 0);
  EXPECT_EQ(ReleaseOf(std::string_view("\0\0\0\0", 4)), 0);
  EXPECT_EQ(ReleaseOf("\xef\xbb\xbf"
                      "12.00"),
            0)
      << "a mark of UTF-8 is no digit";
}

TEST(CompanyVersion, HugeFilesAreReadLikeSmallOnes) {
  const std::string megabytes(4'000'000, 'x');
  EXPECT_NEAR(ReleaseOf("12.00" + megabytes), 9.0, Tolerance);
  EXPECT_NEAR(ReleaseOf("F12.00," + megabytes), 9.0, Tolerance);
  EXPECT_NEAR(ReleaseOf("F" + megabytes + "12.00"), 9.0, Tolerance);
  EXPECT_EQ(ReleaseOf(megabytes), 0);
}

TEST(CompanyVersion, FileNameMatchesInAnyCase) {
  const test::TempFolder folder;
  test::WriteFile(folder.Path() / "Version.txt", "12.00");
  Shared().gCompanyPath = folder.Path().string() + "/";
  EXPECT_NEAR(ReadCompanyVersion(), 9.0, Tolerance);
}

TEST(CompanyVersion, MissingFileIs0) {
  const test::TempFolder folder;
  Shared().gCompanyPath = folder.Path().string() + "/";
  EXPECT_EQ(ReadCompanyVersion(), 0);
}

TEST(CompanyVersion, FolderInPlaceOfTheFileIs0) {
  const test::TempFolder folder;
  std::filesystem::create_directory(folder.Path() / "VERSION.TXT");
  Shared().gCompanyPath = folder.Path().string() + "/";
  EXPECT_EQ(ReadCompanyVersion(), 0);
}

TEST(CompanyVersion, PipeInPlaceOfTheFileIs0AndNotWaitedFor) {
  const test::TempFolder folder;
  ASSERT_EQ(mkfifo((folder.Path() / "VERSION.TXT").c_str(), 0600), 0);
  Shared().gCompanyPath = folder.Path().string() + "/";
  EXPECT_EQ(ReadCompanyVersion(), 0);
}

}  // namespace
}  // namespace larkmoor
