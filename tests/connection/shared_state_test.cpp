// The facts that all objects of a thread share, one instance a thread.
#include "connection/shared_state.h"

#include <gtest/gtest.h>

#include "support/worker.h"

namespace larkmoor {
namespace {

using test::OnAnotherThread;

void ExpectBlank(const SharedState& state) {
  EXPECT_EQ(state.gCompanyPath, "");
  EXPECT_EQ(state.gPreferredIni, "");
  EXPECT_EQ(state.gDataVersion, 0);
  EXPECT_EQ(state.gConnectCount, 0);
  EXPECT_EQ(state.gErrorNumber, 0);
  EXPECT_EQ(state.gErrorText, "");
  EXPECT_FALSE(state.gJrnlHdrReadMode);
}

TEST(SharedState, IsBlankOnANewThread) {
  OnAnotherThread([] { ExpectBlank(Shared()); });
}

TEST(SharedState, IsOneInstanceWithinAThread) {
  EXPECT_EQ(&Shared(), &Shared());
  Shared().gCompanyPath = "C:\\Co\\";
  EXPECT_EQ(Shared().gCompanyPath, "C:\\Co\\");
}

TEST(SharedState, DoesNotReachOtherThreads) {
  Shared() = {.gCompanyPath = "C:\\Co\\",
              .gPreferredIni = "PAW70.INI",
              .gDataVersion = 13.0,
              .gConnectCount = 2,
              .gErrorNumber = 7,
              .gErrorText = "text",
              .gJrnlHdrReadMode = true};
  OnAnotherThread([] { ExpectBlank(Shared()); });
  Shared() = {};
}

TEST(SharedState, IsNotChangedByOtherThreads) {
  Shared() = {};
  OnAnotherThread([] {
    Shared().gCompanyPath = "C:\\Elsewhere\\";
    Shared().gConnectCount = 5;
  });
  ExpectBlank(Shared());
}

TEST(SharedState, EndsWithItsThread) {
  OnAnotherThread([] { Shared().gConnectCount = 5; });
  OnAnotherThread([] { EXPECT_EQ(Shared().gConnectCount, 0); });
}

}  // namespace
}  // namespace larkmoor
