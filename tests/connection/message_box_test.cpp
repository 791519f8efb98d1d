#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <larkmoor/message_box.h>

#include "connection/message_boxes.h"

namespace larkmoor {
namespace {

// Each test starts and ends with the default handler.
class MessageBox : public testing::Test {
 protected:
  void TearDown() override { SetMessageBoxHandler({}); }

  MessageBoxHandler Collector() {
    return [this](std::string_view text) { texts_.emplace_back(text); };
  }

  std::vector<std::string> texts_;
};

std::string ShownOnStandardError(std::string_view text) {
  testing::internal::CaptureStderr();
  ShowMessageBox(text);
  return testing::internal::GetCapturedStderr();
}

TEST_F(MessageBox, GoesToStandardErrorByDefault) {
  EXPECT_EQ(ShownOnStandardError("Error:\r\nno disk"), "Error:\r\nno disk\n");
}

TEST_F(MessageBox, GoesToTheHandlerAsItIs) {
  SetMessageBoxHandler(Collector());
  EXPECT_EQ(ShownOnStandardError("one\r\ntwo"), "");
  ShowMessageBox("");
  EXPECT_EQ(texts_, (std::vector<std::string>{"one\r\ntwo", ""}));
}

TEST_F(MessageBox, SettingGivesBackTheHandlerBefore) {
  SetMessageBoxHandler(Collector());
  const MessageBoxHandler before = SetMessageBoxHandler([](std::string_view) {});
  before("by hand");
  EXPECT_EQ(texts_, std::vector<std::string>{"by hand"});
}

TEST_F(MessageBox, TheDefaultIsGivenBackAsAHandlerThatCanBeCalledAndSetAgain) {
  MessageBoxHandler before = SetMessageBoxHandler(Collector());
  testing::internal::CaptureStderr();
  before("called");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "called\n");
  SetMessageBoxHandler(std::move(before));
  EXPECT_EQ(ShownOnStandardError("set"), "set\n");
}

TEST_F(MessageBox, AnEmptyHandlerBringsBackTheDefault) {
  SetMessageBoxHandler(Collector());
  SetMessageBoxHandler({});
  EXPECT_EQ(ShownOnStandardError("text"), "text\n");
  EXPECT_TRUE(texts_.empty());
}

TEST_F(MessageBox, NothingThatAHandlerThrowsEscapes) {
  SetMessageBoxHandler([](std::string_view) { throw std::runtime_error("no display"); });
  EXPECT_NO_THROW(ShowMessageBox("text"));
  SetMessageBoxHandler([](std::string_view) { throw 42; });
  EXPECT_NO_THROW(ShowMessageBox("text"));
}

TEST_F(MessageBox, AHandlerMayReplaceItselfWhileItRuns) {
  const std::string kept = "what the running handler holds on to";
  SetMessageBoxHandler([this, kept](std::string_view) {
    SetMessageBoxHandler(Collector());
    texts_.push_back(kept);
  });
  ShowMessageBox("first");
  ShowMessageBox("second");
  EXPECT_EQ(texts_, (std::vector<std::string>{kept, "second"}));
}

TEST_F(MessageBox, EachThreadHasAHandlerOfItsOwn) {
  SetMessageBoxHandler(Collector());
  std::vector<std::string> elsewhere;
  std::thread([&elsewhere] {
    SetMessageBoxHandler([&elsewhere](std::string_view text) { elsewhere.emplace_back(text); });
    ShowMessageBox("there");
  }).join();
  ShowMessageBox("here");
  EXPECT_EQ(elsewhere, std::vector<std::string>{"there"});
  EXPECT_EQ(texts_, std::vector<std::string>{"here"});
}

}  // namespace
}  // namespace larkmoor
