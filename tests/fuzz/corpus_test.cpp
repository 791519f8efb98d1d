// Every input that a target ever broke on, and those that fuzzing starts from: all of them hold.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/targets.h"

namespace larkmoor::fuzz {
namespace {

namespace fs = std::filesystem;

const fs::path& Corpus() {
  static const fs::path folder = fs::path(LARKMOOR_SOURCE_DIR) / "tests" / "fuzz" / "corpus";
  return folder;
}

/// One file of the corpus.
struct Case {
  Target target;
  fs::path file;
};

std::ostream& operator<<(std::ostream& out, const Case& input) {
  return out << input.file.lexically_relative(Corpus()).string();
}

std::vector<Case> CasesOf(const Target& target) {
  std::vector<Case> cases;
  for (const auto& entry : fs::directory_iterator(Corpus() / target.name)) {
    cases.push_back({target, entry.path()});
  }
  std::ranges::sort(cases, {}, &Case::file);
  return cases;
}

std::vector<Case> AllCases() {
  std::vector<Case> all;
  for (const Target& target : Targets) std::ranges::move(CasesOf(target), std::back_inserter(all));
  return all;
}

std::vector<std::uint8_t> BytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string NameOf(const testing::TestParamInfo<Case>& info) {
  return std::string(info.param.target.name) + "_" + info.param.file.filename().string();
}

class FuzzCorpus : public testing::TestWithParam<Case> {};

TEST_P(FuzzCorpus, HoldsWhatMustHold) {
  EXPECT_NO_THROW(GetParam().target.run(BytesOf(GetParam().file)));
}

INSTANTIATE_TEST_SUITE_P(Each, FuzzCorpus, testing::ValuesIn(AllCases()), NameOf);

TEST(FuzzCorpusFolder, HasAFolderWithFilesForEachTargetAndNoOther) {
  for (const Target& target : Targets) EXPECT_FALSE(CasesOf(target).empty()) << target.name;
  for (const auto& entry : fs::directory_iterator(Corpus())) {
    EXPECT_NE(FindTarget(entry.path().filename().string()), nullptr) << entry.path();
  }
}

}  // namespace
}  // namespace larkmoor::fuzz
