#include "engine/store/lmdb/transactions.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <map>
#include <utility>

#include <larkmoor/status.h>

#include "engine/store/lmdb/failure.h"

namespace larkmoor::store::lmdb {

/// The batch of a thread: the files that it has written to, and the folders that it has locked.
///
/// Two batches that write to the same files in different orders would wait for each other for ever,
/// so that batches take turns by folder. A second folder is taken only where it is free: 85
/// otherwise.
class ThreadBatch {
 public:
  ~ThreadBatch() { End(false); }

  Status Join(const std::shared_ptr<ThreadView>& view);
  Status End(bool commit);

 private:
  struct Folder {
    std::filesystem::path path;
    int descriptor;
  };
  Status LockFolder(const std::filesystem::path& path);

  std::vector<std::shared_ptr<ThreadView>> views_;
  std::vector<Folder> folders_;
};

namespace {

/// The calling thread's views and its batch.
struct ThreadState {
  std::map<Environment*, std::weak_ptr<ThreadView>> views;
  ThreadBatch* batch = nullptr;
};

ThreadState& State() {
  thread_local ThreadState state;
  return state;
}

/// The handle of a batch; a joined one leaves everything to the outer.
class BatchHandle final : public Batch {
 public:
  BatchHandle() {
    if (State().batch != nullptr) return;
    own_ = std::make_unique<ThreadBatch>();
    State().batch = own_.get();
  }
  ~BatchHandle() override {
    if (own_) State().batch = nullptr;
  }
  BatchHandle(const BatchHandle&) = delete;
  BatchHandle& operator=(const BatchHandle&) = delete;

  Status Commit() override { return own_ ? own_->End(true) : StatusSuccess; }

 private:
  std::unique_ptr<ThreadBatch> own_;
};

}  // namespace

std::unique_ptr<Batch> BeginThreadBatch() { return std::make_unique<BatchHandle>(); }

namespace {

/// Commits. LMDB tells a write that the disk, a quota or a limit cut short as a plain I/O failure.
Status Commit(MDB_txn* transaction, Environment& environment) {
  environment.File().LockCommitting();
  const int code = mdb_txn_commit(transaction);
  environment.NoteCommit();
  environment.File().UnlockCommitting();
  return code == EIO && !environment.File().CanGrow() ? StatusDiskFull : StatusOf(code);
}

}  // namespace

Status ThreadBatch::LockFolder(const std::filesystem::path& path) {
  for (const Folder& folder : folders_) {
    if (folder.path == path) return StatusSuccess;
  }
  const int descriptor = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return OpenStatusOf(errno);
  const int wait = folders_.empty() ? 0 : LOCK_NB;
  int result = 0;
  do {
    result = flock(descriptor, LOCK_EX | wait);
  } while (result != 0 && errno == EINTR);
  if (result != 0) {
    close(descriptor);
    return errno == EWOULDBLOCK ? StatusFileInUse : StatusIOError;
  }
  folders_.push_back({path, descriptor});
  return StatusSuccess;
}

Status ThreadBatch::Join(const std::shared_ptr<ThreadView>& view) {
  const Status status = LockFolder(view->Env().Folder());
  if (status == StatusSuccess) views_.push_back(view);
  return status;
}

Status ThreadBatch::End(bool commit) {
  Status result = StatusSuccess;
  for (const std::shared_ptr<ThreadView>& view : views_) {
    MDB_txn* transaction = std::exchange(view->batch_, nullptr);
    if (transaction == nullptr) continue;
    const Status failure = std::exchange(view->batchFailure_, StatusSuccess);
    if (result == StatusSuccess) result = failure;
    if (commit && result == StatusSuccess) {
      result = Commit(transaction, view->Env());
    } else {
      mdb_txn_abort(transaction);
      view->Env().NoteState();  // a long one may have written pages already
    }
    view->NoteOwnWrite();
  }
  views_.clear();
  for (const Folder& folder : folders_) close(folder.descriptor);
  folders_.clear();
  return result;
}

ThreadView::~ThreadView() {
  if (read_ != nullptr) mdb_txn_abort(read_);
}

Status ThreadView::Of(const std::filesystem::path& path, std::shared_ptr<ThreadView>& view) {
  EnvironmentRef environment;
  const Status status = EnvironmentRef::Acquire(path, environment);
  if (status != StatusSuccess) return status;
  auto& views = State().views;
  std::erase_if(views, [](const auto& entry) { return entry.second.expired(); });
  std::weak_ptr<ThreadView>& known = views[environment.Get()];
  view = known.lock();
  if (view == nullptr) {
    view = std::make_shared<ThreadView>(std::move(environment));
    known = view;
  }
  return StatusSuccess;
}

Status ThreadView::BeginRead() {
  if (!Env().BeginPlainRead()) return StatusIOError;
  const int code = read_ != nullptr ? mdb_txn_renew(read_)
                                    : mdb_txn_begin(Env().Handle(), nullptr, MDB_RDONLY, &read_);
  if (code != MDB_SUCCESS) {
    Env().EndPlainRead();
    return StatusOf(code);
  }
  // LMDB takes the number of the last commit first, and then what the file holds as of that number
  // from a page that the next commit but one writes over. Who is held up in between reads the state
  // of a later commit under the number of an earlier one.
  const std::size_t number = mdb_txn_id(read_);
  state_ = number == Env().LastCommit() ? number : UnknownState;
  return StatusSuccess;
}

void ThreadView::EndRead() {
  mdb_txn_reset(read_);
  Env().EndPlainRead();
}

void ThreadView::NoteOwnWrite() {
  if (!steady_) return;
  EndRead();
  steady_ = BeginRead() == StatusSuccess;
}

Reading::Reading(ThreadView& view) : view_(view), transaction_(view.batch_) {
  if (transaction_ != nullptr) return;
  own_ = !view_.steady_;
  if (own_) failure_ = view_.BeginRead();
  if (failure_ == StatusSuccess) transaction_ = view_.read_;
}

Reading::~Reading() {
  if (own_ && transaction_ != nullptr) view_.EndRead();
}

Steady::Steady(std::shared_ptr<ThreadView> view) : view_(std::move(view)), own_(!view_->steady_) {
  if (own_) view_->steady_ = view_->BeginRead() == StatusSuccess;
}

Steady::~Steady() {
  if (own_ && std::exchange(view_->steady_, false)) view_->EndRead();
}

Writing::Writing(ThreadView& view) : view_(view) {
  if (view_.batch_ != nullptr) {
    failure_ = view_.batchFailure_;
    transaction_ = view_.batch_;
    return;
  }
  own_ = State().batch == nullptr;
  if (!own_) {
    const auto shared = State().views[&view_.Env()].lock();
    failure_ = State().batch->Join(shared);
    if (failure_ != StatusSuccess) return;
  }
  // Whoever died while reading must not keep room from being used again.
  int dead = 0;
  mdb_reader_check(view_.Env().Handle(), &dead);
  failure_ = StatusOf(mdb_txn_begin(view_.Env().Handle(), nullptr, 0, &transaction_));
  // Those who read without a place in the readers' table may be at the pages that the last commit
  // set free.
  view_.Env().File().LockCommitting();
  view_.Env().File().UnlockCommitting();
  if (!own_) view_.batch_ = transaction_;
}

Writing::~Writing() {
  if (own_ && transaction_ != nullptr) mdb_txn_abort(transaction_);
}

Status Writing::Finish(int code) {
  const Status status = StatusOf(code);
  if (!own_) return view_.batchFailure_ = status;
  if (status != StatusSuccess) return status;
  const Status committed = Commit(std::exchange(transaction_, nullptr), view_.Env());
  view_.NoteOwnWrite();
  return committed;
}

}  // namespace larkmoor::store::lmdb
