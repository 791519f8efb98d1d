// The stamps of writes, by which a record that someone else has changed is known.
#include <sys/wait.h>
#include <unistd.h>

#include <set>

#include <gtest/gtest.h>

#include "engine/store/lmdb/writes.h"

namespace larkmoor::store::lmdb {
namespace {

/// The first stamp that a forked process gives.
Stamp StampOfAChild() {
  int ends[2];
  EXPECT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  if (child == 0) {
    const Stamp stamp = NewStamp();
    _exit(write(ends[1], &stamp, sizeof stamp) == sizeof stamp ? 0 : 1);
  }
  Stamp stamp = 0;
  EXPECT_EQ(read(ends[0], &stamp, sizeof stamp), static_cast<ssize_t>(sizeof stamp));
  EXPECT_EQ(waitpid(child, nullptr, 0), child);
  for (const int end : ends) close(end);
  return stamp;
}

// A server that forks its workers gives each of them what the parent's generator held.
TEST(Stamp, IsGivenOnceAmongAProcessAndItsChildren) {
  std::set<Stamp> stamps{NewStamp()};
  for (int i = 0; i < 5; ++i) stamps.insert(StampOfAChild());
  stamps.insert(NewStamp());
  EXPECT_EQ(stamps.size(), 7U);
}

}  // namespace
}  // namespace larkmoor::store::lmdb
