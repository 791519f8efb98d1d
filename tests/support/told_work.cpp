#include "support/told_work.h"

#include <sstream>
#include <stdexcept>

namespace larkmoor::test {
namespace {

constexpr const char* TryWord = "try";

std::string ValueWord(std::int32_t value) { return value == 0 ? "-" : std::to_string(value); }

Change ChangeIn(const std::string& word) {
  const auto colon = word.find(':');
  const auto equals = word.find('=');
  const std::string value = word.substr(equals + 1);
  return {.file = std::stoul(word.substr(0, colon)),
          .number = std::stoi(word.substr(colon + 1, equals - colon - 1)),
          .value = value == "-" ? 0 : std::stoi(value)};
}

/// Names the first record in which two contents differ.
std::string Difference(const Content& found, const Content& expected) {
  const auto valueIn = [](const Content& content, std::int32_t number) {
    const auto record = content.find(number);
    return record == content.end() ? "missing" : "of value " + std::to_string(record->second);
  };
  Content all = found;
  all.insert(expected.begin(), expected.end());
  for (const auto& [number, value] : all) {
    const std::string is = valueIn(found, number);
    const std::string must = valueIn(expected, number);
    if (is != must) return "record " + std::to_string(number) + " is " + is + " and not " + must;
  }
  return {};
}

}  // namespace

void Apply(const Change& change, Content& content) {
  if (change.value == 0) {
    content.erase(change.number);
  } else {
    content[change.number] = change.value;
  }
}

std::string TryLine(const std::vector<Change>& changes) {
  std::string line = TryWord;
  for (const Change& change : changes) {
    line += ' ' + std::to_string(change.file) + ':' + std::to_string(change.number) + '=' +
            ValueWord(change.value);
  }
  return line;
}

std::vector<Change> ChangesIn(const std::string& line) {
  std::istringstream words(line);
  std::string word;
  words >> word;
  if (word != TryWord) throw std::runtime_error("a writer said: " + line);
  std::vector<Change> changes;
  while (words >> word) changes.push_back(ChangeIn(word));
  return changes;
}

Content ContentOf(Cursor& file, const Share& share) {
  Content content;
  Status status = file.StepTo(store::Step::First);
  for (; status == StatusSuccess; status = file.StepTo(store::Step::Next)) {
    const Sample sample = file.InHand();
    if (sample != MadeSample(sample.number, sample.stamp)) {
      std::ostringstream text;
      text << "a record was never written like this: " << sample;
      throw std::runtime_error(text.str());
    }
    if (share.Has(sample.number) && !content.emplace(sample.number, sample.stamp).second) {
      throw std::runtime_error("record " + std::to_string(sample.number) + " comes twice");
    }
  }
  if (status != StatusEndOfFile) {
    throw std::runtime_error("a walk ended in status " + std::to_string(status));
  }
  return content;
}

void Expectation::Follow(const std::string& line) {
  if (line == DoneLine) {
    for (State& file : files_) file.done = file.tried;
    ++done_;
    return;
  }
  for (const Change& change : ChangesIn(line)) Apply(change, files_.at(change.file).tried);
}

std::string Expectation::Mismatch(const Content& found, std::size_t file) {
  State& state = files_.at(file);
  std::string mismatch;
  if (found != state.tried && found != state.done) mismatch = Difference(found, state.done);
  state = {found, found};
  return mismatch;
}

void Expectation::Note(const Change& change) {
  State& state = files_.at(change.file);
  Apply(change, state.done);
  Apply(change, state.tried);
}

}  // namespace larkmoor::test
