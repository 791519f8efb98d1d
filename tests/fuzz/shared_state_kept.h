// A target leaves no trace of its company in the facts that all objects of a thread share.
#pragma once

#include "connection/shared_state.h"

namespace larkmoor::fuzz {

/// The thread's shared facts as they were before, once this goes away.
class SharedStateKept {
 public:
  SharedStateKept() : before_(Shared()) {}
  ~SharedStateKept() { Shared() = before_; }
  SharedStateKept(const SharedStateKept&) = delete;
  SharedStateKept& operator=(const SharedStateKept&) = delete;

 private:
  SharedState before_;
};

}  // namespace larkmoor::fuzz
