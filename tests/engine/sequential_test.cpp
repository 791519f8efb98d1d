#include "engine/sequential.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "support/company.h"
#include "support/sample_files.h"

namespace larkmoor::test {
namespace {

constexpr std::size_t RecordLength = SampleOffset::End;

/// An empty file with unique numbers, open.
class Sequential : public testing::Test {
 protected:
  Sequential() {
    const std::filesystem::path path = folder_.Path() / "Sample.dat";
    EXPECT_EQ(store::DefaultDriver().Create(path, SampleFile()), StatusSuccess);
    EXPECT_EQ(file_.btOpen(path.string(), TovrinFile::NormalMode), StatusSuccess);
  }

  void Insert(std::int32_t number, std::string_view name) {
    const Bytes bytes = Sample{.number = number, .name = std::string(name)}.ToBytes();
    *file_.RecordBuffer() = RecordBytes(bytes.begin(), bytes.end());
    EXPECT_EQ(file_.btInsert(0), StatusSuccess);
  }

  SequentialResult Load(const std::string& text) {
    std::istringstream in(text);
    return LoadSequential(file_, in);
  }

  /// A record with that number in the sequential form.
  static std::string Record(std::int32_t number, const std::string& lineEnd = "\r\n") {
    const Bytes bytes = Sample{.number = number}.ToBytes();
    return std::to_string(RecordLength) + "," +
           std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()) + lineEnd;
  }

  void ExpectNothingLoaded(const std::string& text, const std::string& problem) {
    const SequentialResult result = Load(text);
    EXPECT_EQ(result.problem, problem);
    EXPECT_EQ(result.status, StatusSuccess);
    EXPECT_EQ(result.records, 0);
    EXPECT_EQ(file_.btRecordCount(), 0);
  }

  TempFolder folder_;
  TovrinFile file_;
};

TEST_F(Sequential, SaveWritesTheRecordsInPhysicalOrder) {
  Insert(7, "b");
  Insert(3, "a");
  std::ostringstream out;
  const SequentialResult result = SaveSequential(file_, std::nullopt, out);
  EXPECT_EQ(result.status, StatusSuccess);
  EXPECT_EQ(result.problem, "");
  EXPECT_EQ(result.records, 2);
  const std::string text = out.str();
  ASSERT_EQ(text.size(), 2 * (3 + RecordLength + 2));
  EXPECT_EQ(text.substr(0, 4), "64,\x07");
  EXPECT_EQ(text.substr(3 + RecordLength, 6), "\r\n64,\x03");
  EXPECT_TRUE(text.ends_with("\r\n"));
}

TEST_F(Sequential, SaveWritesTheRecordsAlongAKey) {
  Insert(7, "b");
  Insert(3, "a");
  std::ostringstream out;
  EXPECT_EQ(SaveSequential(file_, SampleKey::Name, out).records, 2);
  EXPECT_EQ(out.str().substr(0, 4), "64,\x03");
}

TEST_F(Sequential, SaveOfAnEmptyFileWritesNothing) {
  std::ostringstream out;
  const SequentialResult result = SaveSequential(file_, std::nullopt, out);
  EXPECT_EQ(result.status, StatusSuccess);
  EXPECT_EQ(result.records, 0);
  EXPECT_EQ(out.str(), "");
}

TEST_F(Sequential, SaveTellsAStreamThatFails) {
  Insert(7, "b");
  std::ostringstream out;
  out.setstate(std::ios::badbit);
  EXPECT_EQ(SaveSequential(file_, std::nullopt, out).problem, "record 1 could not be written");
}

TEST_F(Sequential, SaveAndLoadAnswerTheFilesStatus) {
  std::ostringstream out;
  EXPECT_EQ(SaveSequential(file_, SampleKey::Missing, out).status, StatusInvalidKeyNumber);
  file_.btClose();
  EXPECT_EQ(SaveSequential(file_, std::nullopt, out).status, StatusFileNotOpen);
  EXPECT_EQ(Load(Record(1)).status, StatusFileNotOpen);
}

TEST_F(Sequential, LoadAddsWhatSaveWrote) {
  Insert(7, "a\r\nb");
  Insert(3, "\x1a");
  std::ostringstream out;
  SaveSequential(file_, std::nullopt, out);
  while (file_.btStepFirst() == StatusSuccess) file_.btDelete();
  const SequentialResult result = Load(out.str());
  EXPECT_EQ(result.problem, "");
  EXPECT_EQ(result.records, 2);
  std::ostringstream again;
  SaveSequential(file_, std::nullopt, again);
  EXPECT_EQ(again.str(), out.str());
}

TEST_F(Sequential, LoadTakesAnEndMarkAndPlainLineFeeds) {
  EXPECT_EQ(Load(Record(1, "\n") + Record(2) + '\x1A').records, 2);
  EXPECT_EQ(file_.btRecordCount(), 2);
}

TEST_F(Sequential, LoadOfNothingAddsNothing) {
  ExpectNothingLoaded("", "");
  ExpectNothingLoaded("\x1A", "");
}

TEST_F(Sequential, LoadAddsNothingWhereARecordIsMalformed) {
  const std::string good = Record(1);
  const std::string noLength = "record 2 does not start with its length and a comma";
  ExpectNothingLoaded(good + "sixty-four,", noLength);
  ExpectNothingLoaded(good + ",", noLength);
  ExpectNothingLoaded(good + "-64,", noLength);
  ExpectNothingLoaded(good + "64", noLength);
  ExpectNothingLoaded(good + "\r\n", noLength);
  ExpectNothingLoaded(good + "99999999999999999999999,", noLength);
  ExpectNothingLoaded(good + "63,", "record 2 has 63 bytes, the file's records have 64");
  ExpectNothingLoaded(good + "4294967360,",
                      "record 2 has 4294967360 bytes, the file's records "
                      "have 64");
  ExpectNothingLoaded(good + Record(2).substr(0, 40), "record 2 is cut short");
  ExpectNothingLoaded(good + Record(2, ""), "record 2 does not end with a line end");
  ExpectNothingLoaded(good + Record(2, "\r"), "record 2 does not end with a line end");
  ExpectNothingLoaded(good + Record(2, "x\n"), "record 2 does not end with a line end");
  ExpectNothingLoaded(good + '\x1A' + Record(2), "record 2 stands behind the end mark");
}

TEST_F(Sequential, LoadAddsNothingWhereTheFileRefusesARecord) {
  const SequentialResult result = Load(Record(1) + Record(2) + Record(1));
  EXPECT_EQ(result.status, StatusDuplicateKey);
  EXPECT_EQ(result.problem, "record 3 was refused");
  EXPECT_EQ(result.records, 0);
  EXPECT_EQ(file_.btRecordCount(), 0);
}

TEST_F(Sequential, BothTellTheirProgress) {
  std::vector<std::int64_t> told;
  const store::Progress note = [&](std::int64_t done, std::int64_t total) {
    told.insert(told.end(), {done, total});
  };
  std::istringstream in(Record(1) + Record(2));
  LoadSequential(file_, in, note);
  EXPECT_EQ(told, (std::vector<std::int64_t>{1, 0, 2, 0}));
  told.clear();
  std::ostringstream out;
  SaveSequential(file_, std::nullopt, out, note);
  EXPECT_EQ(told, (std::vector<std::int64_t>{1, 2, 2, 2}));
}

}  // namespace
}  // namespace larkmoor::test
