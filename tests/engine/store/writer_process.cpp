// A process beside the tests: works on sample files as it is told, to be watched, interrupted and
// killed.
//
//   larkmoor_writer_process remote FILE               does what it is asked to, line by line
//   larkmoor_writer_process fill FILE COUNT           inserts records that ask for their number
//   larkmoor_writer_process count FILE ROUNDS         raises every record's account ROUNDS times
//   larkmoor_writer_process batches FIRST SECOND ROUNDS
//                                                     writes to both files in batches, in that
//                                                     order
//   larkmoor_writer_process work FILE SEED            writes at random until it is killed
//   larkmoor_writer_process walk FILE                 reads the file over and over until it is
//   killed
//
// It prints "ready" when the file is open. It ends with 0 when its work is done, and with 1 and a
// word of explanation where a status was not what it must be.

#include <cstdint>
#include <exception>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <larkmoor/status.h>

#include "engine/store/driver.h"
#include "support/random_work.h"
#include "support/sample_files.h"

namespace larkmoor::test {
namespace {

using store::Seek;
using store::Step;
using Arguments = std::vector<std::string>;

void Print(const std::string& line) { std::cout << line << std::endl; }

Cursor Open(const std::string& path) { return {store::DefaultDriver(), path}; }

Status Find(Cursor& file, std::int32_t number) {
  return file.Get(Seek::Equal, SampleKey::Number, {.number = number});
}

/// Answers each line of the input with a line that begins with a status. The lines: "insert NUMBER
/// VALUE", "read NUMBER" and "next" (which answer with the record's value too), "update NUMBER
/// VALUE" and "delete" of the record in hand, "batch", "commit", "drop", and "lengthen FROM COUNT",
/// which inserts many records in one commit.
int Remote(Cursor file) {
  std::unique_ptr<store::Batch> batch;
  std::string line;
  while (std::getline(std::cin, line)) {
    std::istringstream words(line);
    std::string verb;
    std::int32_t number = 0;
    std::int32_t value = 0;
    words >> verb >> number >> value;
    Status status = StatusSuccess;
    if (verb == "insert") {
      status = file.Insert(SampleKey::Number, MadeSample(number, value));
    } else if (verb == "read") {
      status = Find(file, number);
    } else if (verb == "next") {
      status = file.Get(Seek::Next, SampleKey::Number);
    } else if (verb == "update") {
      status = file.Update(SampleKey::Number, MadeSample(number, value));
    } else if (verb == "delete") {
      status = file.Delete();
    } else if (verb == "batch") {
      batch = store::DefaultDriver().BeginBatch();
    } else if (verb == "commit") {
      status = batch->Commit();
    } else if (verb == "drop") {
      batch.reset();
    } else if (verb == "lengthen") {
      const auto gathered = store::DefaultDriver().BeginBatch();
      for (std::int32_t i = number; i < number + value && status == StatusSuccess; ++i) {
        status = file.Insert(SampleKey::Number, MadeSample(i, i));
      }
      if (status == StatusSuccess) status = gathered->Commit();
    } else {
      throw std::runtime_error("unknown request " + line);
    }
    Print(std::to_string(status) +
          (verb == "read" || verb == "next" ? " " + std::to_string(file.InHand().account) : ""));
  }
  return 0;
}

int FillFile(Cursor file, int count) {
  for (int i = 0; i < count; ++i) MustSucceed(file.Insert(SampleKey::Number, {}), "insert");
  return 0;
}

/// Raises the account of every record, reading again as often as someone else was quicker.
int Count(Cursor file, int rounds) {
  for (int i = 0; i < rounds; ++i) {
    for (Status step = file.StepTo(Step::First); step == StatusSuccess;
         step = file.StepTo(Step::Next)) {
      Status status = StatusRecordConflict;
      while (status == StatusRecordConflict) {
        Sample counter = file.InHand();
        MustSucceed(Find(file, counter.number), "read");
        counter = file.InHand();
        ++counter.account;
        status = file.Update(SampleKey::Number, counter);
      }
      MustSucceed(status, "update");
    }
  }
  return 0;
}

int Batches(Cursor first, Cursor second, int rounds) {
  const auto batch = store::DefaultDriver().BeginBatch();
  for (int i = 0; i < rounds; ++i) {
    MustSucceed(first.Insert(SampleKey::Number, {}), "insert into the first file");
    MustSucceed(second.Insert(SampleKey::Number, {}), "insert into the second file");
    MustSucceed(batch->Commit(), "commit");
  }
  return 0;
}

[[noreturn]] void WorkForEver(Cursor file, std::uint32_t seed) {
  std::vector<Cursor> files;
  files.push_back(std::move(file));
  RandomWork work(store::DefaultDriver(), std::move(files), {}, seed, Print);
  for (;;) work.Work();
}

[[noreturn]] void WalkForEver(Cursor file) {
  for (;;) {
    NumbersByKey(file, SampleKey::Name);
    NumbersByStep(file);
  }
}

int Run(const Arguments& arguments) {
  const std::string& verb = arguments.at(0);
  Cursor file = Open(arguments.at(1));
  if (verb == "batches") {
    Cursor second = Open(arguments.at(2));
    Print("ready");
    return Batches(std::move(file), std::move(second), std::stoi(arguments.at(3)));
  }
  Print("ready");
  if (verb == "remote") return Remote(std::move(file));
  if (verb == "fill") return FillFile(std::move(file), std::stoi(arguments.at(2)));
  if (verb == "count") return Count(std::move(file), std::stoi(arguments.at(2)));
  if (verb == "walk") WalkForEver(std::move(file));
  if (verb == "work") {
    WorkForEver(std::move(file), static_cast<std::uint32_t>(std::stoul(arguments.at(2))));
  }
  throw std::runtime_error("unknown work " + verb);
}

}  // namespace
}  // namespace larkmoor::test

int main(int count, char** arguments) {
  try {
    return larkmoor::test::Run({arguments + 1, arguments + count});
  } catch (const std::exception& error) {
    std::cout << "failed: " << error.what() << std::endl;
    return 1;
  }
}
