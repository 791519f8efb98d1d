#include "trials/shapes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <larkmoor/company.h>
#include <larkmoor/status.h>

#include "engine/store/driver.h"
#include "support/company.h"

namespace larkmoor::trials {
namespace {

namespace fs = std::filesystem;
using store::FileDescription;
using store::KeySegment;
using store::SegmentType;
using store::Step;
using test::Bytes;
using test::Dice;

store::Driver& Store() { return store::DefaultDriver(); }

void FillSegment(const KeySegment& segment, Bytes& record, Dice& dice) {
  static constexpr std::string_view Texts[] = {"", "A", "AB", "Fjord", "\xE5s", "Harbour Trading"};
  switch (segment.type) {
    case SegmentType::Byte:
      return test::Poke(record, segment.offset, static_cast<std::uint8_t>(dice.Below(4)));
    case SegmentType::Integer:
      return test::Poke(record, segment.offset, static_cast<std::int16_t>(dice.Below(300) - 100));
    case SegmentType::Long:
    case SegmentType::Day:
      return test::Poke(record, segment.offset, std::int32_t{dice.Below(100'000) - 1000});
    case SegmentType::Double:
    case SegmentType::Date:
      return test::Poke(record, segment.offset, 36526 + dice.Below(400) / 4.0);
    case SegmentType::ZeroText:
    case SegmentType::Text:
      return test::PokeText(record, segment.offset, segment.width,
                            std::string(dice.OneOf(Texts)) + std::to_string(dice.Below(50)));
    case SegmentType::Guid:
      return test::Poke(record, segment.offset + 8U, std::int64_t{dice.Below(1000)});
  }
}

/// A file in a folder, with so many random records.
class ShapeMaker {
 public:
  ShapeMaker(const fs::path& folder, std::string name)
      : dice_(1), shape_{.name = std::move(name), .path = {}} {
    shape_.path = folder / (shape_.name + ".dat");
  }
  /// Goes on with a file that is there.
  explicit ShapeMaker(const fs::path& path)
      : dice_(1), shape_{.name = path.stem().string(), .path = path} {}

  ShapeMaker& Create(const FileDescription& description) {
    test::MustSucceed(Store().Create(shape_.path, description), "create");
    return *this;
  }

  ShapeMaker& Insert(int records) {
    const auto file = Open();
    const auto batch = Store().BeginBatch();
    for (int i = 0; i < records; ++i) {
      Bytes record = RandomRecord(file->Description(), dice_);
      const Status status = file->Insert(FirstKey(*file), record);
      if (status != StatusDuplicateKey) test::MustSucceed(status, "insert");
    }
    test::MustSucceed(batch->Commit(), "commit");
    return *this;
  }

  /// Deletes most records, each in a commit of its own, so that their room is free.
  ShapeMaker& DeleteMost() {
    const auto file = Open();
    Bytes record(file->Description().recordLength);
    for (Status status = file->StepTo(Step::First, record); status == StatusSuccess;
         status = file->StepTo(Step::Next, record)) {
      if (!dice_.OneIn(5)) test::MustSucceed(file->Delete(), "delete");
    }
    return *this;
  }

  /// Goes on with small commits, which use room again that the ones before them gave up.
  ShapeMaker& Age() {
    constexpr int Commits = 8;
    for (int i = 0; i < Commits; ++i) {
      Insert(1);
      const auto file = Open();
      Bytes record(file->Description().recordLength);
      test::MustSucceed(file->StepTo(Step::First, record), "step");
      test::MustSucceed(file->Delete(), "delete");
    }
    return *this;
  }

  ShapeMaker& Protect() {
    test::MustSucceed(Store().SetOwner(shape_.path, "someone", true), "set owner");
    shape_.isProtected = true;
    return *this;
  }

  [[nodiscard]] Shape Made() const { return shape_; }

 private:
  [[nodiscard]] std::unique_ptr<store::File> Open() const {
    std::unique_ptr<store::File> file;
    test::MustSucceed(Store().Open(shape_.path, store::OpenMode::Normal, file), "open");
    return file;
  }

  static std::int16_t FirstKey(const store::File& file) {
    return file.Description().keys.front().number;
  }

  Dice dice_;
  Shape shape_;
};

/// Records that fill pages of their own.
FileDescription LongRecords() {
  FileDescription description = test::SampleFile();
  description.recordLength = 20'000;
  return description;
}

std::vector<Shape> MakeShapes(const fs::path& folder) {
  const FileDescription sample = test::SampleFile();
  std::vector<Shape> shapes{
      ShapeMaker(folder, "empty").Create(sample).Made(),
      ShapeMaker(folder, "small").Create(sample).Insert(5).Age().Made(),
      ShapeMaker(folder, "strict").Create(test::StrictFile()).Insert(40).Age().Made(),
      ShapeMaker(folder, "large").Create(sample).Insert(300).Age().Made(),
      ShapeMaker(folder, "deleted").Create(sample).Insert(300).DeleteMost().Insert(20).Age().Made(),
      ShapeMaker(folder, "long").Create(LongRecords()).Insert(12).Age().Made(),
      ShapeMaker(folder, "protected").Create(sample).Insert(30).Protect().Made(),
  };
  const fs::path company = folder / "company";
  CreateCompany(company, {.Release = 19.0, .Name = "Harbour Trading"});
  for (const char* name : {"Address", "Chart", "Company", "Customer", "Employee", "General",
                           "JrnlHdr", "JrnlRow", "LineItem", "User"}) {
    shapes.push_back(ShapeMaker(company / (std::string(name) + ".dat")).Insert(30).Age().Made());
  }
  return shapes;
}

}  // namespace

Bytes RandomRecord(const FileDescription& description, Dice& dice) {
  Bytes record(description.recordLength);
  // Runs of bytes with nothing between them, as records are.
  for (int runs = dice.Below(12); runs > 0; --runs) {
    const std::size_t from = dice.PlaceIn(record.size());
    const std::size_t to = std::min(record.size(), from + dice.PlaceIn(1000));
    for (std::size_t place = from; place < to; ++place) {
      record[place] = static_cast<std::byte>(dice.Below(256));
    }
  }
  for (const store::KeyDescription& key : description.keys) {
    for (const KeySegment& segment : key.segments) FillSegment(segment, record, dice);
  }
  for (const store::KeyDescription& key : description.keys) {
    if (!key.autoIncrement) continue;
    const KeySegment& number = key.segments.front();
    std::ranges::fill(std::span(record).subspan(number.offset, number.width), std::byte{0});
  }
  return record;
}

const std::vector<Shape>& Shapes() {
  static const test::TempFolder folder;
  static const std::vector<Shape> shapes = MakeShapes(folder.Path());
  return shapes;
}

}  // namespace larkmoor::trials
