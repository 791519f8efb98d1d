// One thread's way into an environment: its read transaction, its batch, its single writes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <lmdb.h>

#include "engine/store/driver.h"
#include "engine/store/lmdb/environment.h"

namespace larkmoor::store::lmdb {

/// No commit has that number.
constexpr std::size_t UnknownState = 0;

/// A thread's share in an environment. All objects of the thread that have the file open share it,
/// so that reads see what the thread's batch has written.
class ThreadView {
 public:
  explicit ThreadView(EnvironmentRef environment) : environment_(std::move(environment)) {}
  ~ThreadView();
  ThreadView(const ThreadView&) = delete;
  ThreadView& operator=(const ThreadView&) = delete;

  /// The calling thread's view of the file at that path.
  static Status Of(const std::filesystem::path& path, std::shared_ptr<ThreadView>& view);

  [[nodiscard]] Environment& Env() const { return *environment_; }
  [[nodiscard]] bool InBatch() const { return batch_ != nullptr; }

 private:
  friend class Reading;
  friend class Steady;
  friend class Writing;
  friend class ThreadBatch;

  Status BeginRead();
  void EndRead();
  /// Lets steady reads see what the thread has just written.
  void NoteOwnWrite();

  EnvironmentRef environment_;
  MDB_txn* read_ = nullptr;
  std::size_t state_ = UnknownState;  ///< that `read_` reads
  bool steady_ = false;               ///< `read_` stays begun between readings
  MDB_txn* batch_ = nullptr;
  Status batchFailure_ = StatusSuccess;
};

/// A moment in which the thread reads one state of the file: what it has written in its batch, or
/// what was committed last. Nothing is held between two readings unless they are to be steady, so
/// that nobody's writes are kept from reusing room.
class Reading {
 public:
  explicit Reading(ThreadView& view);
  ~Reading();
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  [[nodiscard]] Status Failure() const { return failure_; }
  [[nodiscard]] MDB_txn* Transaction() const { return transaction_; }
  [[nodiscard]] MDB_dbi Tree() const { return view_.Env().Tree(); }
  /// Whether this is the batch's own transaction, whose state may change under a cursor.
  [[nodiscard]] bool InBatch() const { return transaction_ == view_.batch_; }
  /// Number of the state: as long as it is the same, so is every page of the tree. `UnknownState`
  /// where that cannot be told, and in a batch.
  [[nodiscard]] std::size_t State() const { return InBatch() ? UnknownState : view_.state_; }

 private:
  ThreadView& view_;
  MDB_txn* transaction_ = nullptr;
  Status failure_ = StatusSuccess;
  bool own_ = false;
};

/// Keeps one state for all readings of the thread as long as it lives. Inside another one it does
/// nothing.
class Steady final : public SteadyReads {
 public:
  explicit Steady(std::shared_ptr<ThreadView> view);
  ~Steady() override;
  Steady(const Steady&) = delete;
  Steady& operator=(const Steady&) = delete;

 private:
  std::shared_ptr<ThreadView> view_;
  bool own_;
};

/// One write: a commit of its own, or a part of the thread's batch.
class Writing {
 public:
  explicit Writing(ThreadView& view);
  ~Writing();
  Writing(const Writing&) = delete;
  Writing& operator=(const Writing&) = delete;

  [[nodiscard]] Status Failure() const { return failure_; }
  [[nodiscard]] MDB_txn* Transaction() const { return transaction_; }
  [[nodiscard]] MDB_dbi Tree() const { return view_.Env().Tree(); }
  /// Ends the write: commits where `code` is success. A failure in a batch spoils what the batch
  /// has of this file.
  Status Finish(int code);

 private:
  ThreadView& view_;
  MDB_txn* transaction_ = nullptr;
  Status failure_ = StatusSuccess;
  bool own_ = false;
};

/// Starts a batch for the calling thread, or joins the one under way.
std::unique_ptr<Batch> BeginThreadBatch();

}  // namespace larkmoor::store::lmdb
