// Many processes and threads on one company: a short form of what larkmoor_company_load does for as
// long as it is told.
#include <regex>

#include <gtest/gtest.h>

#include "support/run_program.h"

namespace larkmoor::test {
namespace {

ProgramResult RunLoad(const std::vector<std::string>& arguments) {
  std::vector<std::string> command{LARKMOOR_COMPANY_LOAD};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return RunProgram(command);
}

TEST(CompanyLoad, ProcessesAndThreadsLoseTearAndRepeatNothing) {
  const ProgramResult result = RunLoad({"--pieces", "1000", "--seed", "20"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.err, "");
  const std::regex line(R"(\{"seconds": [\d.]+, "seed": 20, "processes": 8, "workers": 12, )"
                        R"("reads_per_second": [\d.]+, "writes_per_second": [\d.]+, )"
                        R"("transactions_per_second": [\d.]+, "conflicts_per_second": [\d.]+, )"
                        R"("longest_wait_ms": \d+\}\n)");
  EXPECT_TRUE(std::regex_match(result.out, line)) << result.out;
}

TEST(CompanyLoad, RefusesArgumentsThatItDoesNotKnow) {
  EXPECT_EQ(RunLoad({"--minutes", "1"}).exitCode, 2);
  EXPECT_EQ(RunLoad({"--seconds"}).exitCode, 2);
}

}  // namespace
}  // namespace larkmoor::test
