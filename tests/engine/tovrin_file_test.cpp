// The generic file class: how it opens, what its buffers hold, what it answers when it is closed.

#include "engine/tovrin_file.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/status.h>

#include "engine/guid.h"
#include "engine/store/driver.h"
#include "support/company.h"
#include "support/sample_files.h"
#include "support/worker.h"

namespace larkmoor::test {
namespace {

namespace fs = std::filesystem;

constexpr std::int16_t Normal = TovrinFile::NormalMode;
constexpr std::int16_t ReadOnly = TovrinFile::ReadOnlyMode;

class TovrinFileTest : public testing::Test {
 protected:
  [[nodiscard]] const fs::path& Folder() const { return folder_.Path(); }

  /// Makes "Sample.dat" with records of these numbers, each named after its own.
  fs::path Make(std::initializer_list<std::int32_t> numbers) {
    fs::path path = Folder() / "Sample.dat";
    EXPECT_EQ(store::DefaultDriver().Create(path, SampleFile()), StatusSuccess);
    Cursor file(store::DefaultDriver(), path);
    for (const std::int32_t number : numbers) {
      Fill(file, {{.number = number, .name = std::to_string(number)}});
    }
    return path;
  }

  static Status Open(TovrinFile& file, const fs::path& path, std::int16_t mode = Normal) {
    return file.btOpen(path.string(), mode);
  }

  /// The record in the file's buffer.
  static Sample InHand(const TovrinFile& file) { return Sample::FromBytes(*file.RecordBuffer()); }

  static void Put(TovrinFile& file, const Sample& sample) {
    *file.RecordBuffer() = sample.ToBytes();
  }

  static Status Find(TovrinFile& file, std::int32_t number) {
    file.KeyLong(number, 0);
    return file.btGetEqual(SampleKey::Number);
  }

 private:
  TempFolder folder_;
};

/// A file that is its key: whoever finds a record in it has exactly these bytes in the key buffer.
class KeyWriters : public TovrinFileTest {
 protected:
  KeyWriters() {
    const fs::path path = Folder() / "Keys.dat";
    EXPECT_EQ(store::DefaultDriver().Create(
                  path, {.name = "Keys",
                         .release = 19,
                         .recordLength = KeyBufferLength,
                         .keys = {{.number = 0,
                                   .segments = {{store::SegmentType::Text, 0, KeyBufferLength}}}}}),
              StatusSuccess);
    EXPECT_EQ(Open(file_, path), StatusSuccess);
    EXPECT_EQ(Open(writer_, path), StatusSuccess);
  }

  /// Whether the key buffer holds these bytes at that offset and `elsewhere` at all others.
  testing::AssertionResult Holds(std::string_view bytes, std::size_t offset = 0,
                                 char elsewhere = '\0') {
    Bytes expected(KeyBufferLength, static_cast<std::byte>(elsewhere));
    std::memcpy(expected.data() + offset, bytes.data(), bytes.size());
    *writer_.RecordBuffer() = expected;
    EXPECT_EQ(writer_.btInsert(0), StatusSuccess);
    const Status status = file_.btGetEqual(0);
    EXPECT_EQ(writer_.btDelete(), StatusSuccess);
    if (status == StatusSuccess) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "the key buffer holds something else, " << status;
  }

  void FillKeyBuffer(char value) { file_.KeyString(std::string(255, value), 255, 0); }

  TovrinFile file_;

 private:
  TovrinFile writer_;
};

using namespace std::string_view_literals;

// Key writers ------------------------------------------------------------------------------------

TEST_F(KeyWriters, ANewKeyBufferIsZeroBytes) { EXPECT_TRUE(Holds("")); }

TEST_F(KeyWriters, KeyByteWritesOneByte) {
  FillKeyBuffer('x');
  file_.KeyByte(0xFE, 3);
  EXPECT_TRUE(Holds("\xFE"sv, 3, 'x'));
}

TEST_F(KeyWriters, KeyWordWritesTwoBytesTheLowOneFirst) {
  FillKeyBuffer('x');
  file_.KeyWord(0x0102, 1);
  EXPECT_TRUE(Holds("\x02\x01"sv, 1, 'x'));
  file_.KeyWord(-2, 1);
  EXPECT_TRUE(Holds("\xFE\xFF"sv, 1, 'x'));
}

TEST_F(KeyWriters, KeyLongWritesFourBytesTheLowestFirst) {
  FillKeyBuffer('x');
  file_.KeyLong(0x01020304, 2);
  EXPECT_TRUE(Holds("\x04\x03\x02\x01"sv, 2, 'x'));
  file_.KeyLong(-1, 2);
  EXPECT_TRUE(Holds("\xFF\xFF\xFF\xFF"sv, 2, 'x'));
}

TEST_F(KeyWriters, KeyDoubleWritesEightBytes) {
  FillKeyBuffer('x');
  file_.KeyDouble(-2.5, 5);
  EXPECT_TRUE(Holds("\0\0\0\0\0\0\x04\xC0"sv, 5, 'x'));
}

TEST_F(KeyWriters, KeyTextWritesTheTextAtItsOwnLength) {
  FillKeyBuffer('x');
  file_.KeyText("Caf\u00E9 \u20AC", 4);
  EXPECT_TRUE(Holds("Caf\xE9 \x80"sv, 4, 'x'));
  file_.KeyText("", 4);
  EXPECT_TRUE(Holds("Caf\xE9 \x80"sv, 4, 'x'));
}

TEST_F(KeyWriters, KeyTextWritesTheBytesOfAGuid) {
  const auto bytes = "\x3F\x25\x04\xE0\x4F\x89\x41\xD3\x9A\x0C\x03\x05\xE8\x2C\x33\x01"sv;
  for (const char* text :
       {"3F2504E0-4F89-41D3-9A0C-0305E82C3301", "{3f2504e0-4f89-41d3-9a0c-0305e82c3301}"}) {
    FillKeyBuffer('x');
    file_.KeyText(text, 2);
    EXPECT_TRUE(Holds(bytes, 2, 'x')) << text;
  }
}

TEST_F(KeyWriters, KeyTextWritesWhatIsAlmostAGuidAsText) {
  file_.KeyText("3F2504E0-4F89-41D3-9A0C-0305E82C330X", 0);
  EXPECT_TRUE(Holds("3F2504E0-4F89-41D3-9A0C-0305E82C330X"sv));
}

TEST_F(KeyWriters, KeyStringWritesExactlyItsLength) {
  FillKeyBuffer('x');
  file_.KeyString("AB", 5, 1);
  EXPECT_TRUE(Holds("AB\0\0\0"sv, 1, 'x'));
  file_.KeyString("CDEFGHIJ", 5, 1);
  EXPECT_TRUE(Holds("CDEFG"sv, 1, 'x'));
  file_.KeyString("\u00C4\u00D6\u00DC", 2, 1);
  EXPECT_TRUE(
      Holds("\xC4\xD6"
            "EFG"sv,
            1, 'x'));
  file_.KeyString("anything", 0, 1);
  EXPECT_TRUE(
      Holds("\xC4\xD6"
            "EFG"sv,
            1, 'x'));
}

TEST_F(KeyWriters, KeyStringOfATextWithItsZeroCharacterHoldsATerminatedText) {
  FillKeyBuffer('x');
  const std::string text = "Smith";
  file_.KeyString(text + '\0', static_cast<std::int16_t>(text.size() + 1), 0);
  EXPECT_TRUE(Holds("Smith\0"sv, 0, 'x'));
}

TEST_F(KeyWriters, KeyStringWritesAGuidAsText) {
  file_.KeyString("3F2504E0-4F89-41D3-9A0C-0305E82C3301", 8, 0);
  EXPECT_TRUE(Holds("3F2504E0"sv));
}

TEST_F(KeyWriters, KeyTerminatedAddsAZeroByte) {
  FillKeyBuffer('x');
  file_.KeyTerminated("Ab", 3);
  EXPECT_TRUE(Holds("Ab\0"sv, 3, 'x'));
  file_.KeyTerminated("", 3);
  EXPECT_TRUE(Holds("\0b\0"sv, 3, 'x'));
}

TEST_F(KeyWriters, WhatLiesOutsideTheBufferIsDropped) {
  FillKeyBuffer('x');
  const std::int16_t outside[] = {255, 256, 1000, 32767, -8, -100, -32768};
  for (const std::int16_t offset : outside) {
    file_.KeyByte(1, offset);
    file_.KeyWord(1, offset);
    file_.KeyLong(1, offset);
    file_.KeyDouble(1, offset);
    file_.KeyText("A", offset);
    file_.KeyString("A", 4, offset);
    file_.KeyTerminated("A", offset);
  }
  file_.KeyByte(1, -1);
  file_.KeyString("A", -3, 0);
  EXPECT_TRUE(Holds(std::string(255, 'x')));
}

TEST_F(KeyWriters, WhatLiesPartlyOutsideTheBufferDisturbsNothingElse) {
  FillKeyBuffer('x');
  const std::string untouched(255, 'x');
  file_.KeyLong(0x01020304, 253);
  EXPECT_TRUE(Holds(untouched) || Holds("\x04\x03"sv, 253, 'x'));
  FillKeyBuffer('x');
  file_.KeyLong(0x01020304, -2);
  EXPECT_TRUE(Holds(untouched) || Holds("\x02\x01"sv, 0, 'x'));
}

TEST_F(KeyWriters, TheLastByteOfTheBufferCanBeWritten) {
  file_.KeyByte(7, 254);
  EXPECT_TRUE(Holds("\x07"sv, 254));
  file_.KeyLong(0x01020304, 251);
  EXPECT_TRUE(Holds("\x04\x03\x02\x01"sv, 251));
}

TEST_F(KeyWriters, ReadsLeaveTheKeyBuffer) {
  file_.KeyText("sought", 0);
  EXPECT_EQ(file_.btGetFirst(0), StatusEndOfFile);
  EXPECT_EQ(file_.btGetGreaterOrEqual(0), StatusEndOfFile);
  ASSERT_TRUE(Holds("sought"));
  EXPECT_EQ(file_.btGetFirst(0), StatusEndOfFile);
  EXPECT_TRUE(Holds("sought"));
}

TEST_F(KeyWriters, TheKeyBufferLastsOverACloseAndAnOpen) {
  file_.KeyText("kept", 6);
  EXPECT_EQ(file_.btClose(), StatusSuccess);
  file_.KeyByte('!', 10);
  EXPECT_EQ(Open(file_, Folder() / "Keys.dat"), StatusSuccess);
  EXPECT_TRUE(Holds("kept!", 6));
}

// Closed objects ---------------------------------------------------------------------------------

/// Every operation that needs an open file, by name.
std::vector<std::pair<std::string, std::function<Status(TovrinFile&)>>> OperationsOnAFile() {
  static double percent;
  return {
      {"btClose", [](TovrinFile& f) { return f.btClose(); }},
      {"btInsert", [](TovrinFile& f) { return f.btInsert(0); }},
      {"btUpdate", [](TovrinFile& f) { return f.btUpdate(0); }},
      {"btDelete", [](TovrinFile& f) { return f.btDelete(); }},
      {"btGetEqual", [](TovrinFile& f) { return f.btGetEqual(0); }},
      {"btGetGreaterThan", [](TovrinFile& f) { return f.btGetGreaterThan(0); }},
      {"btGetGreaterOrEqual", [](TovrinFile& f) { return f.btGetGreaterOrEqual(0); }},
      {"btGetLessThan", [](TovrinFile& f) { return f.btGetLessThan(0); }},
      {"btGetLessOrEqual", [](TovrinFile& f) { return f.btGetLessOrEqual(0); }},
      {"btGetFirst", [](TovrinFile& f) { return f.btGetFirst(0); }},
      {"btGetLast", [](TovrinFile& f) { return f.btGetLast(0); }},
      {"btGetNext", [](TovrinFile& f) { return f.btGetNext(0); }},
      {"btGetPrevious", [](TovrinFile& f) { return f.btGetPrevious(0); }},
      {"btStepFirst", [](TovrinFile& f) { return f.btStepFirst(); }},
      {"btStepLast", [](TovrinFile& f) { return f.btStepLast(); }},
      {"btStepNext", [](TovrinFile& f) { return f.btStepNext(); }},
      {"btStepPrevious", [](TovrinFile& f) { return f.btStepPrevious(); }},
      {"btFindPercentage", [](TovrinFile& f) { return f.btFindPercentage(0, percent); }},
      {"btGetByPercentage", [](TovrinFile& f) { return f.btGetByPercentage(0, 50); }},
  };
}

/// Expects the object to answer like one that is not open. A key number that no file has changes
/// nothing about that.
void ExpectClosed(TovrinFile& file) {
  for (const auto& [name, operation] : OperationsOnAFile()) {
    EXPECT_EQ(operation(file), StatusFileNotOpen) << name;
  }
  EXPECT_EQ(file.btGetFirst(99), StatusFileNotOpen);
  EXPECT_EQ(file.btInsert(99), StatusFileNotOpen);
  EXPECT_EQ(file.btRecordCount(), 0);
  EXPECT_EQ(file.btDataVersion(), 0.0);
  EXPECT_EQ(file.Description(), nullptr);
}

TEST_F(TovrinFileTest, AnObjectThatNeverOpenedAnswers3) {
  TovrinFile file;
  ExpectClosed(file);
  EXPECT_EQ(file.ActualLength(), 0);
  EXPECT_EQ(file.RecordByte(0), 0);
}

TEST_F(TovrinFileTest, AClosedObjectAnswers3) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({1})), StatusSuccess);
  EXPECT_EQ(file.btClose(), StatusSuccess);
  ExpectClosed(file);
}

TEST_F(TovrinFileTest, AFailedPercentageLeavesItsArgument) {
  TovrinFile file;
  double percent = 42;
  EXPECT_EQ(file.btFindPercentage(0, percent), StatusFileNotOpen);
  EXPECT_EQ(percent, 42);
}

// Opening ----------------------------------------------------------------------------------------

TEST_F(TovrinFileTest, AnOpenFileTellsItsReleaseAndItsRecords) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({1, 2, 3})), StatusSuccess);
  EXPECT_EQ(file.btDataVersion(), SampleFile().release);
  EXPECT_EQ(file.btRecordCount(), 3);
  EXPECT_EQ(file.RecordBuffer()->size(), SampleFile().recordLength);
  ASSERT_NE(file.Description(), nullptr);
  EXPECT_EQ(file.Description()->name, "Sample");
}

TEST_F(TovrinFileTest, BothSeparatorsAreTaken) {
  Make({1});
  fs::create_directories(Folder() / "deep" / "er");
  fs::rename(Folder() / "Sample.dat", Folder() / "deep" / "er" / "Sample.dat");
  const std::string folder = Folder().string();
  for (const char* rest : {"/deep/er/Sample.dat", "\\deep\\er\\Sample.dat", "\\deep/er\\Sample.dat",
                           "/deep\\er/Sample.dat"}) {
    TovrinFile file;
    EXPECT_EQ(file.btOpen(folder + rest, Normal), StatusSuccess) << rest;
    EXPECT_EQ(file.btRecordCount(), 1) << rest;
  }
}

TEST_F(TovrinFileTest, TheNameMatchesInAnyCase) {
  Make({1});
  for (const char* name : {"Sample.dat", "sample.dat", "SAMPLE.DAT", "Sample.Dat"}) {
    TovrinFile file;
    EXPECT_EQ(Open(file, Folder() / name), StatusSuccess) << name;
  }
  TovrinFile file;
  EXPECT_EQ(Open(file, Folder() / "Samples.dat"), StatusFileNotFound);
}

TEST_F(TovrinFileTest, ObjectsThatSpellTheNameDifferentlyShareTheFile) {
  TovrinFile file;
  TovrinFile other;
  ASSERT_EQ(Open(file, Make({1})), StatusSuccess);
  ASSERT_EQ(Open(other, Folder() / "SAMPLE.DAT"), StatusSuccess);
  ASSERT_EQ(file.btStepFirst(), StatusSuccess);
  ASSERT_EQ(other.btStepFirst(), StatusSuccess);
  ASSERT_EQ(other.btDelete(), StatusSuccess);
  EXPECT_EQ(file.btDelete(), StatusRecordConflict);
}

TEST_F(TovrinFileTest, AnEmptyOrImpossibleNameAnswers11) {
  Make({1});
  TovrinFile file;
  EXPECT_EQ(file.btOpen("", Normal), StatusInvalidFileName);
  EXPECT_EQ(file.btOpen("", ReadOnly), StatusInvalidFileName);
  EXPECT_EQ(file.btOpen(Folder().string() + "/", Normal), StatusInvalidFileName);
  EXPECT_EQ(file.btOpen(Folder().string() + "\\", Normal), StatusInvalidFileName);
  EXPECT_EQ(file.btOpen((Folder() / "Sample.dat").string() + '\0', Normal), StatusInvalidFileName);
  EXPECT_EQ(file.btOpen((Folder() / std::string(300, 'x')).string(), Normal),
            StatusInvalidFileName);
  ExpectClosed(file);
}

TEST_F(TovrinFileTest, AMissingFileOrFolderAnswers12) {
  TovrinFile file;
  EXPECT_EQ(Open(file, Folder() / "Sample.dat"), StatusFileNotFound);
  EXPECT_EQ(Open(file, Folder() / "Sample.dat", ReadOnly), StatusFileNotFound);
  EXPECT_EQ(Open(file, Folder() / "none" / "Sample.dat"), StatusFileNotFound);
  ExpectClosed(file);
}

TEST_F(TovrinFileTest, TheReadOnlyModeRefusesWrites) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({1}), ReadOnly), StatusSuccess);
  ASSERT_EQ(file.btStepFirst(), StatusSuccess);
  EXPECT_EQ(file.btInsert(0), StatusAccessDenied);
  EXPECT_EQ(file.btUpdate(0), StatusAccessDenied);
  EXPECT_EQ(file.btDelete(), StatusAccessDenied);
  EXPECT_EQ(file.btRecordCount(), 1);
}

TEST_F(TovrinFileTest, AProtectedFileAnswers51) {
  const fs::path path = Make({1});
  ASSERT_EQ(store::DefaultDriver().SetOwner(path, "someone", false), StatusSuccess);
  TovrinFile file;
  EXPECT_EQ(Open(file, path), StatusInvalidOwner);
  EXPECT_EQ(Open(file, path, ReadOnly), StatusInvalidOwner);
  ExpectClosed(file);
}

TEST_F(TovrinFileTest, AnOpenOnAnOpenObjectOpensAnew) {
  const fs::path path = Make({1, 2});
  TovrinFile file;
  ASSERT_EQ(Open(file, path), StatusSuccess);
  ASSERT_EQ(file.btGetFirst(0), StatusSuccess);
  ASSERT_EQ(Open(file, path, ReadOnly), StatusSuccess);
  EXPECT_EQ(file.btGetNext(0), StatusInvalidPositioning);
  EXPECT_EQ(file.btDelete(), StatusAccessDenied);

  const fs::path other = Folder() / "Strict.dat";
  ASSERT_EQ(store::DefaultDriver().Create(other, StrictFile()), StatusSuccess);
  ASSERT_EQ(Open(file, other), StatusSuccess);
  EXPECT_EQ(file.btDataVersion(), StrictFile().release);
  EXPECT_EQ(file.btRecordCount(), 0);
}

TEST_F(TovrinFileTest, AnOpenThatFailsHasClosedWhatWasOpen) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({1})), StatusSuccess);
  EXPECT_EQ(Open(file, Folder() / "None.dat"), StatusFileNotFound);
  ExpectClosed(file);
}

TEST_F(TovrinFileTest, AnObjectReleasesItsFileWhenItEnds) {
  const fs::path path = Make({1});
  {
    TovrinFile file;
    ASSERT_EQ(Open(file, path), StatusSuccess);
    EXPECT_EQ(store::DefaultDriver().Compact(path), StatusFileInUse);
  }
  EXPECT_EQ(store::DefaultDriver().Compact(path), StatusSuccess);
}

// Reading and writing ----------------------------------------------------------------------------

TEST_F(TovrinFileTest, EachReadGoesItsWay) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({10, 20, 30})), StatusSuccess);
  const auto expectFound = [&](Status (TovrinFile::*read)(std::int16_t), std::int32_t sought,
                               std::int32_t found) {
    file.KeyLong(sought, 0);
    EXPECT_EQ((file.*read)(SampleKey::Number), StatusSuccess);
    EXPECT_EQ(InHand(file).number, found);
  };
  expectFound(&TovrinFile::btGetEqual, 20, 20);
  expectFound(&TovrinFile::btGetGreaterThan, 20, 30);
  expectFound(&TovrinFile::btGetGreaterOrEqual, 20, 20);
  expectFound(&TovrinFile::btGetGreaterOrEqual, 11, 20);
  expectFound(&TovrinFile::btGetLessThan, 20, 10);
  expectFound(&TovrinFile::btGetLessOrEqual, 20, 20);
  expectFound(&TovrinFile::btGetLessOrEqual, 29, 20);
  expectFound(&TovrinFile::btGetFirst, 20, 10);
  expectFound(&TovrinFile::btGetNext, 20, 20);
  expectFound(&TovrinFile::btGetLast, 20, 30);
  expectFound(&TovrinFile::btGetPrevious, 20, 20);

  EXPECT_EQ(file.btStepFirst(), StatusSuccess);
  EXPECT_EQ(InHand(file).number, 10);
  EXPECT_EQ(file.btStepNext(), StatusSuccess);
  EXPECT_EQ(InHand(file).number, 20);
  EXPECT_EQ(file.btStepLast(), StatusSuccess);
  EXPECT_EQ(InHand(file).number, 30);
  EXPECT_EQ(file.btStepPrevious(), StatusSuccess);
  EXPECT_EQ(InHand(file).number, 20);
}

TEST_F(TovrinFileTest, ACompoundKeyIsWrittenPieceByPiece) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({})), StatusSuccess);
  Put(file, {.account = -70000, .group = 200, .name = "Smith"});
  ASSERT_EQ(file.btInsert(SampleKey::Place), StatusSuccess);
  file.KeyTerminated("Smith", 5);
  file.KeyLong(-70000, 1);
  EXPECT_EQ(file.btGetEqual(SampleKey::Place), StatusKeyNotFound);
  file.KeyByte(200, 0);
  EXPECT_EQ(file.btGetEqual(SampleKey::Place), StatusSuccess);
}

TEST_F(TovrinFileTest, NextOnAnotherKeyThanThatOfThePrecedingReadAnswers7) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({1, 2})), StatusSuccess);
  ASSERT_EQ(file.btGetFirst(SampleKey::Name), StatusSuccess);
  ASSERT_EQ(file.btGetFirst(SampleKey::Number), StatusSuccess);
  EXPECT_EQ(file.btGetNext(SampleKey::Name), StatusDifferentKeyNumber);
  EXPECT_EQ(file.btGetNext(SampleKey::Number), StatusSuccess);
}

TEST_F(TovrinFileTest, WhatIsWrittenIsTheRecordBuffer) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({})), StatusSuccess);
  Put(file, {.number = 5, .name = "first"});
  ASSERT_EQ(file.btInsert(SampleKey::Number), StatusSuccess);
  Put(file, {.number = 5, .name = "second"});
  ASSERT_EQ(file.btUpdate(SampleKey::Number), StatusSuccess);
  TovrinFile reader;
  ASSERT_EQ(Open(reader, Folder() / "Sample.dat"), StatusSuccess);
  ASSERT_EQ(Find(reader, 5), StatusSuccess);
  EXPECT_EQ(InHand(reader).name, "second");
  ASSERT_EQ(reader.btDelete(), StatusSuccess);
  EXPECT_EQ(file.btRecordCount(), 0);
}

TEST_F(TovrinFileTest, AnInsertPutsTheGivenNumberIntoTheBuffer) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({7})), StatusSuccess);
  Put(file, {.name = "new"});
  ASSERT_EQ(file.btInsert(SampleKey::Number), StatusSuccess);
  EXPECT_EQ(InHand(file), (Sample{.number = 8, .name = "new"}));
}

TEST_F(TovrinFileTest, AnotherObjectOfTheProcessIsSomeoneElse) {
  TovrinFile file;
  TovrinFile other;
  ASSERT_EQ(Open(file, Make({1})), StatusSuccess);
  ASSERT_EQ(Open(other, Folder() / "Sample.dat"), StatusSuccess);
  ASSERT_EQ(file.btStepFirst(), StatusSuccess);
  ASSERT_EQ(other.btStepFirst(), StatusSuccess);
  Put(other, {.number = 1, .name = "other"});
  ASSERT_EQ(other.btUpdate(SampleKey::Number), StatusSuccess);
  Put(file, {.number = 1, .name = "mine"});
  EXPECT_EQ(file.btUpdate(SampleKey::Number), StatusRecordConflict);
  EXPECT_EQ(file.btDelete(), StatusRecordConflict);
}

TEST_F(TovrinFileTest, PercentagesRunFrom0To100) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({1, 2, 3})), StatusSuccess);
  double percent = -1;
  ASSERT_EQ(file.btGetByPercentage(SampleKey::Number, 100), StatusSuccess);
  EXPECT_EQ(InHand(file).number, 3);
  EXPECT_EQ(file.btFindPercentage(SampleKey::Number, percent), StatusSuccess);
  EXPECT_EQ(percent, 100.0);
  ASSERT_EQ(file.btGetByPercentage(SampleKey::Number, 0), StatusSuccess);
  EXPECT_EQ(file.btFindPercentage(SampleKey::Number, percent), StatusSuccess);
  EXPECT_EQ(percent, 0.0);
  EXPECT_EQ(file.btGetNext(SampleKey::Number), StatusSuccess);
  EXPECT_EQ(InHand(file).number, 2);
}

// The record buffer ------------------------------------------------------------------------------

TEST_F(TovrinFileTest, TheRecordBufferIsSharedWithWhoeverHoldsItsHandle) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({1, 2})), StatusSuccess);
  const RecordBufferHandle handle = file.RecordBuffer();
  ASSERT_EQ(file.btGetFirst(0), StatusSuccess);
  EXPECT_EQ(Sample::FromBytes(*handle).number, 1);
  ASSERT_EQ(file.btStepNext(), StatusSuccess);
  EXPECT_EQ(Sample::FromBytes(*handle).number, 2);
  Poke(*handle, SampleOffset::Stamp, std::int32_t{77});
  ASSERT_EQ(file.btUpdate(0), StatusSuccess);
  ASSERT_EQ(Find(file, 2), StatusSuccess);
  EXPECT_EQ(InHand(file).stamp, 77);
  EXPECT_EQ(file.RecordBuffer(), handle);
}

TEST_F(TovrinFileTest, ObjectsHaveRecordBuffersOfTheirOwn) {
  TovrinFile file;
  TovrinFile other;
  ASSERT_EQ(Open(file, Make({1, 2})), StatusSuccess);
  ASSERT_EQ(Open(other, Folder() / "Sample.dat"), StatusSuccess);
  ASSERT_EQ(file.btStepFirst(), StatusSuccess);
  ASSERT_EQ(other.btStepLast(), StatusSuccess);
  EXPECT_EQ(InHand(file).number, 1);
}

TEST_F(TovrinFileTest, TheRecordBufferOutlivesItsFile) {
  RecordBufferHandle handle;
  {
    TovrinFile file;
    ASSERT_EQ(Open(file, Make({1})), StatusSuccess);
    handle = file.RecordBuffer();
    ASSERT_EQ(file.btStepFirst(), StatusSuccess);
    EXPECT_EQ(file.btClose(), StatusSuccess);
    EXPECT_EQ(Sample::FromBytes(*handle).number, 1);
    EXPECT_EQ(file.RecordByte(0), 1);
  }
  EXPECT_EQ(Sample::FromBytes(*handle).number, 1);
}

TEST_F(TovrinFileTest, AFailedReadLeavesTheRecordBuffer) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({1})), StatusSuccess);
  ASSERT_EQ(file.btStepFirst(), StatusSuccess);
  Poke(*file.RecordBuffer(), SampleOffset::Stamp, std::int32_t{5});
  const RecordBytes before = *file.RecordBuffer();
  EXPECT_EQ(Find(file, 9), StatusKeyNotFound);
  EXPECT_EQ(file.btStepNext(), StatusEndOfFile);
  EXPECT_EQ(file.btGetNext(0), StatusInvalidPositioning);
  EXPECT_EQ(*file.RecordBuffer(), before);
}

TEST_F(TovrinFileTest, RecordByteReadsTheBufferAndGives0Outside) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({0x010203FF})), StatusSuccess);
  ASSERT_EQ(file.btStepFirst(), StatusSuccess);
  EXPECT_EQ(file.RecordByte(0), 0xFF);
  EXPECT_EQ(file.RecordByte(1), 3);
  EXPECT_EQ(file.RecordByte(3), 1);
  Poke(*file.RecordBuffer(), SampleOffset::End - 1, std::uint8_t{200});
  EXPECT_EQ(file.RecordByte(SampleOffset::End - 1), 200);
  for (const std::int32_t outside :
       {-1, std::int32_t{SampleOffset::End}, 100000, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(file.RecordByte(outside), 0) << outside;
  }
}

TEST_F(TovrinFileTest, ActualLengthIsThatOfTheRecordLastRead) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({1})), StatusSuccess);
  EXPECT_EQ(Find(file, 9), StatusKeyNotFound);
  EXPECT_EQ(file.ActualLength(), 0);
  ASSERT_EQ(Find(file, 1), StatusSuccess);
  EXPECT_EQ(file.ActualLength(), SampleOffset::End);
  EXPECT_EQ(Find(file, 9), StatusKeyNotFound);
  EXPECT_EQ(file.ActualLength(), SampleOffset::End);
}

// The engine as a whole --------------------------------------------------------------------------

TEST_F(TovrinFileTest, ResetClosesAllFilesOfTheThreadAndKeepsTheirRecordBuffers) {
  const fs::path path = Make({1, 2});
  TovrinFile first;
  TovrinFile second;
  ASSERT_EQ(Open(first, path), StatusSuccess);
  ASSERT_EQ(Open(second, path, ReadOnly), StatusSuccess);
  ASSERT_EQ(first.btStepFirst(), StatusSuccess);
  ASSERT_EQ(second.btStepLast(), StatusSuccess);
  TovrinFile unopened;
  EXPECT_EQ(unopened.btReset(), StatusSuccess);
  for (TovrinFile* file : {&first, &second, &unopened}) ExpectClosed(*file);
  EXPECT_EQ(InHand(first).number, 1);
  EXPECT_EQ(InHand(second).number, 2);

  ASSERT_EQ(Open(first, path), StatusSuccess);
  EXPECT_EQ(first.btStepFirst(), StatusSuccess);
}

TEST_F(TovrinFileTest, ResetClosesTheObjectItIsCalledOn) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({1})), StatusSuccess);
  EXPECT_EQ(file.btReset(), StatusSuccess);
  ExpectClosed(file);
  EXPECT_EQ(file.btReset(), StatusSuccess);
}

TEST_F(TovrinFileTest, ResetLeavesTheFilesOfOtherThreads) {
  TovrinFile file;
  ASSERT_EQ(Open(file, Make({1})), StatusSuccess);
  OnAnotherThread([path = Folder() / "Sample.dat"] {
    TovrinFile other;
    EXPECT_EQ(Open(other, path), StatusSuccess);
    EXPECT_EQ(other.btReset(), StatusSuccess);
    EXPECT_EQ(other.btStepFirst(), StatusFileNotOpen);
  });
  EXPECT_EQ(file.btStepFirst(), StatusSuccess);
}

TEST_F(TovrinFileTest, ResetPassesOverObjectsThatAreGone) {
  const fs::path path = Make({1});
  TovrinFile first;
  auto gone = std::make_unique<TovrinFile>();
  TovrinFile last;
  for (TovrinFile* file : {&first, gone.get(), &last}) ASSERT_EQ(Open(*file, path), StatusSuccess);
  gone.reset();
  EXPECT_EQ(last.btReset(), StatusSuccess);
  ExpectClosed(first);
  ExpectClosed(last);
}

TEST_F(TovrinFileTest, VersionTellsThreeBlocksWithTheirIds) {
  const fs::path path = Make({});
  TovrinFile file;
  std::array<std::byte, TovrinFile::VersionBufferSize> buffer{};
  ASSERT_EQ(file.btVersion(path.string(), buffer), StatusSuccess);
  std::vector<int> ids;
  for (const std::size_t block : {0U, 5U, 10U}) {
    EXPECT_GE(Peek<std::int16_t>(buffer, block), 0);
    EXPECT_GE(Peek<std::int16_t>(buffer, block + 2), 0);
    ids.push_back(Peek<std::uint8_t>(buffer, block + 4));
  }
  std::sort(ids.begin(), ids.end());
  EXPECT_EQ(ids, (std::vector<int>{78, 83, 87}));
  ExpectClosed(file);
}

TEST_F(TovrinFileTest, NewGuidsDifferAndHaveTheTextForm) {
  TovrinFile file;
  const std::string guid = file.btNewGUID();
  const auto bytes = ParseGuid(guid);
  ASSERT_TRUE(bytes) << guid;
  EXPECT_EQ(FormatGuid(*bytes), guid);
  EXPECT_NE(file.btNewGUID(), guid);
}

}  // namespace
}  // namespace larkmoor::test
