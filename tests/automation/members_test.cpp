// Every member of every class, by the table that makes them known at run time: a class is covered
// here from the day it is in the dictionary. What it does by hand is tested under its own name.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <ostream>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/date.h>
#include <larkmoor/status.h>
#include <larkmoor/variant.h>

#include "automation/automation.h"
#include "automation/elements.h"
#include "automation/samples.h"
#include "engine/tovrin_file.h"
#include "support/company.h"
#include "support/errors.h"

namespace larkmoor {
namespace {

using automation::Class;
using automation::Member;
using automation::Object;
using automation::Storage;
using automation::ValueType;
using test::Element;
using test::ElementsOf;
using test::Indexes;
using test::IsStored;
using test::RaisedNumber;
using test::RangesOf;
using test::ShowsField;
using test::ValueSample;
using test::Which;

constexpr std::int32_t SubscriptOutOfRange = 9;
constexpr std::int32_t NoSuchMember = 438;

constexpr int SmallestIndex = std::numeric_limits<std::int16_t>::min();
constexpr int LargestIndex = std::numeric_limits<std::int16_t>::max();

// Companies of these releases have the longest records and the shortest.
constexpr double Newest = 19;
constexpr double Oldest = 8;

constexpr double EmptyDate = 2;
constexpr double OtherEmptyDate = 65537;

// --- The classes under test ---

/// A class, and the release of the data that it works on.
struct Subject {
  const Class* type;
  double release;
};

void PrintTo(const Subject& subject, std::ostream* out) {
  *out << subject.type->name << " on data of release " << subject.release;
}

std::string ClassName(const testing::TestParamInfo<Subject>& info) {
  return std::string(info.param.type->name);
}

/// Equality under which Null is itself.
bool IsSame(const Variant& left, const Variant& right) {
  return left == right || (left.IsNull() && right.IsNull());
}

bool HasOperation(const Class& type, std::string_view name) {
  const Member* member = FindMember(type, name);
  return member != nullptr && member->isOperation && member->arguments.empty();
}

bool IsDate(const Member& member) { return IsStored(member) && member.storage == Storage::Date; }
bool IsDead(const Member& member) { return member.storage == Storage::Dead; }
bool IsOneWay(const Member& member) {
  return !member.isOperation && (member.get == nullptr || member.let == nullptr);
}
bool IsClamped(const Member& member) { return IsStored(member) && member.clamps; }
bool IsRepeating(const Member& member) {
  return IsStored(member) && !member.clamps && !RangesOf(member).empty();
}

/// Whether a class shows a transaction with its rows.
bool ShowsRows(const Class& type) { return std::ranges::any_of(type.members, &Member::ofRow); }

/// Whether a class stands for one row that its file always has, so that it is never inserted.
bool HasOneRow(const Class& type) {
  return HasOperation(type, "Update") && !HasOperation(type, "Insert");
}
bool AddsRows(const Class& type) { return type.record != nullptr && !HasOneRow(type); }

/// The classes for which `isWanted` holds, on data of that release.
template <typename Predicate>
auto ClassesThat(Predicate&& isWanted, double release) {
  std::vector<Subject> subjects;
  for (const Class* type : automation::Classes()) {
    if (isWanted(*type)) subjects.push_back({type, release});
  }
  return testing::ValuesIn(subjects);
}

/// The classes with a member for which `isWanted` holds, on data of that release.
auto ClassesWith(bool (*isWanted)(const Member&), double release) {
  return ClassesThat([=](const Class& type) { return std::ranges::any_of(type.members, isWanted); },
                     release);
}

std::vector<const Member*> MembersThat(bool (*isWanted)(const Member&), const Class& type) {
  std::vector<const Member*> members;
  for (const Member& member : type.members) {
    if (isWanted(member)) members.push_back(&member);
  }
  return members;
}

// --- An object on a company of its own ---

class MembersTest : public testing::TestWithParam<Subject> {
 protected:
  void SetUp() override {
    if (object_.File() == nullptr) return;
    ASSERT_EQ(Do("OpenFile"), StatusSuccess) << Type().name;
  }

  static const Class& Type() { return *GetParam().type; }

  Status Do(std::string_view operation) { return object_.Call(operation).ToInteger(); }

  /// An operation of the class, or where it has none of that name the file's own.
  template <typename InFile>
  Variant DoOr(std::string_view operation, InFile inFile) {
    if (HasOperation(Type(), operation)) return object_.Call(operation);
    return Variant(inFile(*object_.File()));
  }

  std::int32_t RecordCount() {
    return DoOr("RecordCount", [](TovrinFile& file) { return file.btRecordCount(); }).ToLong();
  }
  Status Insert() {
    return DoOr("Insert", [](TovrinFile& file) { return file.btInsert(0); }).ToInteger();
  }
  /// A transaction without rows answers as if it were not there: the file is asked instead.
  Status StepLast() {
    if (ShowsRows(Type())) return object_.File()->btStepLast();
    return DoOr("StepLast", [](TovrinFile& file) { return file.btStepLast(); }).ToInteger();
  }
  Status ReadOneRow() { return HasOperation(Type(), "Read") ? Do("Read") : Do("StepFirst"); }

  /// The bytes of the record in hand; none of a class without a file.
  RecordBytes& Bytes() {
    return object_.File() != nullptr ? *object_.File()->RecordBuffer() : none_;
  }
  /// Puts something into every byte, so that one that is changed shows.
  void FillBytes() { std::ranges::fill(Bytes(), std::byte{0x5A}); }

  std::vector<Element> Elements(Which which) { return ElementsOf(Type(), which); }

  /// Whether an element reads `kept`, or blank where this release's record ends before it.
  testing::AssertionResult Reads(const Element& element, const Variant& kept) {
    const Variant expected = element.LiesIn(Bytes()) ? kept : BlankOf(element);
    const Variant value = element.Get(object_);
    if (IsSame(value, expected)) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << element << " reads \"" << value << "\", not \"" << expected << '"';
  }

  test::Company company_{GetParam().release};
  Object object_{Type()};

 private:
  RecordBytes none_;
};

// --- Record files ---

using RecordFiles = MembersTest;

TEST_P(RecordFiles, OpenInANewCompanyAndCountAnInsertedRecord) {
  const std::int32_t before = RecordCount();
  ASSERT_EQ(Insert(), StatusSuccess);
  EXPECT_EQ(RecordCount(), before + 1);
}

INSTANTIATE_TEST_SUITE_P(NewestRelease, RecordFiles, ClassesThat(AddsRows, Newest), ClassName);
INSTANTIATE_TEST_SUITE_P(OldestRelease, RecordFiles, ClassesThat(AddsRows, Oldest), ClassName);

// --- Stored properties ---

class StoredMembers : public MembersTest {
 protected:
  using ValueSampleOf = ValueSample (*)(const Element&);

  /// Sets every property and puts the record into the file.
  void Write(ValueSampleOf sampleOf) {
    if (HasOneRow(Type())) {
      ASSERT_EQ(ReadOneRow(), StatusSuccess);
    }
    for (const Element& element : Elements(Which::All)) {
      element.Let(object_, sampleOf(element).written);
    }
    ASSERT_EQ(HasOneRow(Type()) ? Do("Update") : Insert(), StatusSuccess);
  }

  /// Closes, opens and finds the record that was written last.
  void ReadAgain() {
    ASSERT_EQ(Do("CloseFile"), StatusSuccess);
    ASSERT_EQ(Do("OpenFile"), StatusSuccess);
    ASSERT_EQ(HasOneRow(Type()) ? ReadOneRow() : StepLast(), StatusSuccess);
  }

  void ExpectKept(std::string_view what, ValueSampleOf sampleOf) {
    SCOPED_TRACE(what);
    ASSERT_NO_FATAL_FAILURE(Write(sampleOf));
    ASSERT_NO_FATAL_FAILURE(ReadAgain());
    for (const Element& element : Elements(Which::All)) {
      EXPECT_TRUE(Reads(element, sampleOf(element).read));
    }
  }

  /// Sets one property, and expects it to read so and no byte but its own to change.
  void ExpectWriteStaysInside(const Element& element, const ValueSample& sample) {
    FillBytes();
    RecordBytes before = Bytes();
    element.Let(object_, sample.written);
    EXPECT_TRUE(Reads(element, sample.read));
    std::ranges::copy(element.BytesIn(Bytes()), element.BytesIn(before).begin());
    EXPECT_TRUE(Bytes() == before)
        << element << " := \"" << sample.written << "\" changes bytes outside the field";
  }
};

TEST_P(StoredMembers, KeepTheirSmallestAndLargestAndEachItsOwnValueInTheFile) {
  ExpectKept("the smallest values", test::SmallestOf);
  ExpectKept("the largest values", test::LargestOf);
  ExpectKept("a value for each", test::OwnOf);
}

TEST_P(StoredMembers, ChangeNoBytesButTheirOwnAndCutTextAtItsWidth) {
  for (const Element& element : Elements(Which::FirstAndLast)) {
    ExpectWriteStaysInside(element, SmallestOf(element));
    ExpectWriteStaysInside(element, LargestOf(element));
    ExpectWriteStaysInside(element, OwnOf(element));
    if (element.StoredIn().type == FieldType::Text) {
      ExpectWriteStaysInside(element, TooLongOf(element));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(NewestRelease, StoredMembers, ClassesWith(test::IsStored, Newest),
                         ClassName);
INSTANTIATE_TEST_SUITE_P(OldestRelease, StoredMembers, ClassesWith(test::IsStored, Oldest),
                         ClassName);

// --- Properties of a transaction's rows ---

bool IsOfRow(const Member& member) { return ShowsField(member) && member.ofRow; }

/// Whether a class has one list of rows and finds a transaction by its number: payroll has two, and
/// memorized transactions cannot be searched.
bool ListsRows(const Class& type) {
  return FindMember(type, "DetailAmount") != nullptr && FindMember(type, "GetEqual") != nullptr;
}

class RowMembers : public MembersTest {
 protected:
  static constexpr std::int16_t ShownRow = 1;

  /// Has a row in hand, as those properties want it that do not move to the row they are asked for.
  static void TakeRowInHand(Object& object) { object.Get("DetailAmount", {ShownRow}); }

  /// Writes a transaction in which nothing but this property is set.
  void WriteTransactionWith(const Element& element, std::int32_t number) {
    ASSERT_EQ(Do("CloseFile"), StatusSuccess);
    ASSERT_EQ(Do("OpenFile"), StatusSuccess);
    object_.Let("NRecord", number);
    TakeRowInHand(object_);
    element.Let(object_, LargestOf(element).written);
    ASSERT_EQ(Insert(), StatusSuccess);
  }

  /// The row of that transaction as the file has it.
  static void ReadRowOf(std::int32_t number, TovrinFile& rows) {
    rows.KeyLong(number, 0);
    ASSERT_EQ(rows.btGetEqual(0), StatusSuccess);
  }
};

TEST_P(RowMembers, AreReadAgainAndLieInTheirFieldOnFile) {
  std::int32_t number = 0;
  for (const Member* member : MembersThat(IsOfRow, Type())) {
    const Element element{&Type(), member, Indexes(member->arguments.size(), ShownRow)};
    ASSERT_NO_FATAL_FAILURE(WriteTransactionWith(element, ++number)) << element;
    Object reader(Type());
    ASSERT_EQ(reader.Call("OpenFile"), StatusSuccess);
    ASSERT_EQ(reader.Call("GetEqual", {number}), StatusSuccess);
    TakeRowInHand(reader);
    EXPECT_EQ(element.Get(reader), LargestOf(element).read) << element;

    TovrinFile rows;
    ASSERT_EQ(rows.btOpen(company_.Path() + "JrnlRow.dat", TovrinFile::ReadOnlyMode),
              StatusSuccess);
    ASSERT_NO_FATAL_FAILURE(ReadRowOf(number, rows)) << element;
    const Field& field = element.StoredIn();
    EXPECT_TRUE(
        std::ranges::any_of(std::span(*rows.RecordBuffer()).subspan(field.offset, field.width),
                            [](std::byte each) { return each != std::byte{0}; }))
        << element << " left nothing in " << field.name;
  }
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RowMembers);
INSTANTIATE_TEST_SUITE_P(NewestRelease, RowMembers, ClassesThat(ListsRows, Newest), ClassName);
INSTANTIATE_TEST_SUITE_P(OldestRelease, RowMembers, ClassesThat(ListsRows, Oldest), ClassName);

// --- Several names of one field ---

bool SharesFields(const Class& type) {
  std::set<std::uint32_t> places;
  return std::ranges::any_of(type.members, [&places](const Member& member) {
    return IsStored(member) && !places.insert(member.field->offset).second;
  });
}

/// Pairs of values of a class that lie in one place, under two names.
std::vector<std::pair<Element, Element>> SharedPlaces(const Class& type) {
  std::vector<std::pair<Element, Element>> pairs;
  const std::vector<Element> elements = ElementsOf(type, Which::FirstAndLast);
  for (const Element& one : elements) {
    for (const Element& other : elements) {
      const bool areApart = one.member == other.member || one.Place() != other.Place();
      if (!areApart) pairs.emplace_back(one, other);
    }
  }
  return pairs;
}

using SharedFields = MembersTest;

TEST_P(SharedFields, ShowUnderEachNameWhatWasSetUnderAnother) {
  for (const auto& [set, shown] : SharedPlaces(Type())) {
    for (const ValueSample& sample : {LargestOf(set), OwnOf(set), SmallestOf(set)}) {
      set.Let(object_, sample.written);
      EXPECT_TRUE(Reads(shown, sample.read))
          << "after " << set << " := \"" << sample.written << '"';
    }
  }
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SharedFields);
INSTANTIATE_TEST_SUITE_P(NewestRelease, SharedFields, ClassesThat(SharesFields, Newest), ClassName);

// --- Indexes ---

class RepeatingMembers : public MembersTest {
 protected:
  void ExpectError9(const Member& member, const Indexes& indexes) {
    const Element outside{&Type(), &member, indexes};
    const Element first{&Type(), &member, Indexes(indexes.size(), 0)};
    FillBytes();
    const RecordBytes before = Bytes();
    EXPECT_EQ(RaisedNumber([&] { return outside.Get(object_); }), SubscriptOutOfRange) << outside;
    EXPECT_EQ(RaisedNumber([&] { return outside.Let(object_, OwnOf(first).written), 0; }),
              SubscriptOutOfRange)
        << outside << " set";
    EXPECT_TRUE(Bytes() == before) << outside << " changes the record";
  }
};

TEST_P(RepeatingMembers, RaiseError9OutsideTheirRangeAndChangeNothing) {
  for (const Member* member : MembersThat(IsRepeating, Type())) {
    const auto ranges = RangesOf(*member);
    for (std::size_t i = 0; i < ranges.size(); ++i) {
      for (const int outside : {-1, ranges[i].last + 1, LargestIndex}) {
        Indexes indexes(ranges.size(), 0);
        indexes[i] = static_cast<std::int16_t>(outside);
        ExpectError9(*member, indexes);
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(NewestRelease, RepeatingMembers, ClassesWith(IsRepeating, Newest),
                         ClassName);
INSTANTIATE_TEST_SUITE_P(OldestRelease, RepeatingMembers, ClassesWith(IsRepeating, Oldest),
                         ClassName);

class ClampedMembers : public MembersTest {
 protected:
  /// Expects an index outside the range to mean the nearest one inside.
  void ExpectMeant(const Member& member, int outside, std::int16_t inside) {
    const Element beyond{&Type(), &member, {static_cast<std::int16_t>(outside)}};
    const Element nearest{&Type(), &member, {inside}};
    ExpectSetAndRead(beyond, nearest, LargestOf(nearest));
    ExpectSetAndRead(nearest, beyond, OwnOf(nearest));
  }

 private:
  void ExpectSetAndRead(const Element& set, const Element& read, const ValueSample& sample) {
    set.Let(object_, sample.written);
    EXPECT_TRUE(Reads(read, sample.read)) << "after " << set << " was set";
  }
};

TEST_P(ClampedMembers, TakeTheNearestIndexForOneOutsideTheirRange) {
  for (const Member* member : MembersThat(IsClamped, Type())) {
    for (const int below : {SmallestIndex, member->clampLow - 1}) {
      ExpectMeant(*member, below, member->clampLow);
    }
    for (const int above : {member->clampHigh + 1, LargestIndex}) {
      ExpectMeant(*member, above, member->clampHigh);
    }
  }
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ClampedMembers);
INSTANTIATE_TEST_SUITE_P(NewestRelease, ClampedMembers, ClassesWith(IsClamped, Newest), ClassName);
INSTANTIATE_TEST_SUITE_P(OldestRelease, ClampedMembers, ClassesWith(IsClamped, Oldest), ClassName);

// --- Dates ---

class DateMembers : public MembersTest {
 protected:
  std::vector<Element> Dates() {
    std::vector<Element> dates = Elements(Which::FirstAndLast);
    std::erase_if(dates, [](const Element& element) { return !IsDate(*element.member); });
    return dates;
  }

  /// Sets a date, and expects that number in the record's bytes and Null to be read.
  void ExpectStoredAndNull(const Element& date, const Variant& value, double number) {
    date.Let(object_, OwnOf(date).written);
    date.Let(object_, value);
    if (date.LiesIn(Bytes())) {
      EXPECT_EQ(Stored(date), number) << date << " := \"" << value << '"';
    }
    EXPECT_TRUE(Reads(date, Null)) << "after it was set to \"" << value << '"';
  }

 private:
  double Stored(const Element& date) {
    const std::span<const std::byte> bytes = date.BytesIn(Bytes());
    if (date.StoredIn().type == FieldType::Day) return Load<std::int32_t>(bytes);
    return Load<double>(bytes);
  }

  template <typename T>
  static T Load(std::span<const std::byte> bytes) {
    T value;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
  }
};

TEST_P(DateMembers, ReadNullInANewRecord) {
  for (const Element& date : Dates()) EXPECT_TRUE(Reads(date, Null));
}

TEST_P(DateMembers, StoreTheEmptyDateForWhatIsNoneAndReadNull) {
  for (const Element& date : Dates()) {
    ExpectStoredAndNull(date, Null, EmptyDate);
    ExpectStoredAndNull(date, "", EmptyDate);
    ExpectStoredAndNull(date, std::int16_t{1}, EmptyDate);
    ExpectStoredAndNull(date, "not a date", EmptyDate);
  }
}

// The two days before 1900 are no days either: as numbers they are 0 and 1.
TEST_P(DateMembers, ReadNullOfTheDaysOf1900AndDatesOfTheDaysAround) {
  for (const Element& date : Dates()) {
    for (const Date& day : {Date::FromYmd(1900, 1, 1), Date::FromYmd(1900, 12, 31)}) {
      date.Let(object_, day);
      EXPECT_TRUE(Reads(date, Null)) << day;
    }
    for (const Date& day : {Date::FromYmd(1899, 12, 29), Date::FromYmd(1901, 1, 1)}) {
      date.Let(object_, day);
      EXPECT_TRUE(Reads(date, day));
    }
  }
}

TEST_P(DateMembers, StoreTheOtherEmptyDateFor31December1999AndReadNull) {
  for (const Element& date : Dates()) {
    ExpectStoredAndNull(date, Date::FromYmd(1999, 12, 31), OtherEmptyDate);
  }
}

INSTANTIATE_TEST_SUITE_P(NewestRelease, DateMembers, ClassesWith(IsDate, Newest), ClassName);
INSTANTIATE_TEST_SUITE_P(OldestRelease, DateMembers, ClassesWith(IsDate, Oldest), ClassName);

// --- Properties that stand for nothing ---

/// What a dead property reads, in the kind that it reads it in.
Variant DefaultOf(const Member& member) {
  const bool isPlain = member.deadText.data() == nullptr;
  const Variant text(isPlain ? "0" : member.deadText);
  switch (member.type) {
    case ValueType::Integer:
      return text.ToInteger();
    case ValueType::Long:
      return text.ToLong();
    case ValueType::Byte:
      return text.ToByte();
    case ValueType::Boolean:
      return text.ToBoolean();
    case ValueType::Single:
      return text.ToSingle();
    case ValueType::Double:
      return text.ToDouble();
    case ValueType::Currency:
      return text.ToCurrency();
    case ValueType::Date:
      return Date(text.ToDouble());
    case ValueType::String:
      return member.deadText;
    case ValueType::Variant:
      break;
  }
  if (isPlain) return std::int16_t{0};
  if (member.deadText == "Null") return Null;
  return member.deadText == "Empty" ? Variant() : text;
}

/// A value of the property's type that it does not read by default.
Variant OtherValue(const Member& member) {
  switch (member.type) {
    case ValueType::String:
    case ValueType::Variant:
      return "something";
    case ValueType::Boolean:
      return true;
    case ValueType::Date:
      return Date::FromYmd(2024, 2, 29);
    default:
      return std::uint8_t{7};
  }
}

class DeadMembers : public MembersTest {
 protected:
  void ExpectDead(const Member& member, const Indexes& indexes) {
    const Element element{&Type(), &member, indexes};
    ExpectDefault(element);
    FillBytes();
    const RecordBytes before = Bytes();
    if (member.let != nullptr) element.Let(object_, OtherValue(member));
    EXPECT_TRUE(Bytes() == before) << element << " changes the record";
    ExpectDefault(element);
  }

 private:
  void ExpectDefault(const Element& element) {
    if (element.member->get == nullptr) return;
    const Variant value = element.Get(object_);
    const Variant expected = DefaultOf(*element.member);
    EXPECT_TRUE(IsSame(value, expected)) << element << " reads \"" << value << '"';
    EXPECT_EQ(value.GetKind(), expected.GetKind()) << element;
  }
};

TEST_P(DeadMembers, ReadTheirDefaultAndDropWhatIsWrittenWhateverTheIndex) {
  for (const Member* member : MembersThat(IsDead, Type())) {
    for (const int index : {0, -1, LargestIndex}) {
      ExpectDead(*member, Indexes(member->arguments.size(), static_cast<std::int16_t>(index)));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(NewestRelease, DeadMembers, ClassesWith(IsDead, Newest), ClassName);
INSTANTIATE_TEST_SUITE_P(OldestRelease, DeadMembers, ClassesWith(IsDead, Oldest), ClassName);

// --- Read-only and write-only properties ---

using OneWayMembers = MembersTest;

TEST_P(OneWayMembers, RaiseError438TheOtherWay) {
  for (const Member* member : MembersThat(IsOneWay, Type())) {
    const Element element{&Type(), member, Indexes(member->arguments.size(), 0)};
    if (member->get == nullptr) {
      EXPECT_EQ(RaisedNumber([&] { return element.Get(object_); }), NoSuchMember) << element;
    }
    if (member->let == nullptr) {
      EXPECT_EQ(RaisedNumber([&] { return element.Let(object_, ""), 0; }), NoSuchMember)
          << element << " set";
    }
  }
}

INSTANTIATE_TEST_SUITE_P(NewestRelease, OneWayMembers, ClassesWith(IsOneWay, Newest), ClassName);

}  // namespace
}  // namespace larkmoor
