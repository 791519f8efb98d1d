// What tests stand on: folders that go away, companies of any release, messages caught.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <larkmoor/company.h>
#include <larkmoor/message_box.h>

namespace larkmoor::test {

/// A new empty folder, taken away with all it holds at the end.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// A company in a temporary folder, and the thread's company path set to it.
class Company {
 public:
  explicit Company(double release = 19.0);
  ~Company();
  Company(const Company&) = delete;
  Company& operator=(const Company&) = delete;

  [[nodiscard]] std::filesystem::path Folder() const { return folder_.Path() / "company"; }
  /// The folder with a separator behind it, as clients name it.
  [[nodiscard]] std::string Path() const { return Folder().string() + "/"; }

 private:
  TempFolder folder_;
  std::string pathBefore_;
};

/// Catches the thread's message boxes for its lifetime.
class CapturedMessages {
 public:
  CapturedMessages();
  ~CapturedMessages();
  CapturedMessages(const CapturedMessages&) = delete;
  CapturedMessages& operator=(const CapturedMessages&) = delete;

  [[nodiscard]] const std::vector<std::string>& Texts() const { return texts_; }

 private:
  std::vector<std::string> texts_;
  MessageBoxHandler before_;
};

}  // namespace larkmoor::test
