// What reads of a store of records are to find.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "engine/store/key_encoding.h"
#include "records/kinds.h"

namespace larkmoor::bench {

/// The first record of a transaction, and where it lies on the walking key.
struct Placed : Sought {
  double percent = 0;
};

/// The records of transactions from 1 on, as reads of any store show them.
template <typename Kind>
class Expected {
 public:
  explicit Expected(std::int32_t records) {
    std::vector<Entry> walk = ReadAll(records / Kind::InTransaction);
    std::ranges::stable_sort(walk, {}, &Entry::key);
    std::vector<double> percents(walk.size());
    const double whole = static_cast<double>(walk.size() - 1);
    for (const Entry& entry : walk) {
      percents[entry.record] = 100.0 * static_cast<double>(byKey_.size()) / whole;
      byKey_.push_back(inOrder_[entry.record]);
    }
    ChooseSome(percents);
  }

  /// In the order of insertion, and along the walking key.
  [[nodiscard]] const std::vector<Seen>& InOrder() const { return inOrder_; }
  [[nodiscard]] const std::vector<Seen>& ByKey() const { return byKey_; }
  /// Some from all over the file in no order, the same for every store.
  [[nodiscard]] const std::vector<Placed>& Some() const { return some_; }

 private:
  static constexpr std::size_t Most = 100'000;
  static constexpr std::int32_t AtOnce = 200;

  /// A record's value of the walking key, and its place in the order of insertion.
  struct Entry {
    std::string key;
    std::size_t record;
  };

  std::vector<Entry> ReadAll(std::int32_t transactions) {
    std::vector<Entry> walk;
    const store::FileDescription file = FileOf<Kind>();
    const store::KeyDescription& key = *file.FindKey(Kind::WalkKey);
    for (std::int32_t first = 1; first <= transactions; first += AtOnce) {
      const Images images = ImagesOf<Kind>(first, std::min(AtOnce, transactions - first + 1));
      for (std::size_t i = 0; i < images.Count(); ++i) {
        const store::EncodedKey encoded = store::EncodeKeyOf(key, images[i]);
        const auto* bytes = reinterpret_cast<const char*>(encoded.Bytes().data());
        walk.push_back({std::string(bytes, encoded.Bytes().size()), inOrder_.size()});
        inOrder_.push_back(See<Kind>(images[i]));
      }
    }
    return walk;
  }

  void ChooseSome(const std::vector<double>& percents) {
    std::vector<std::size_t> firsts;
    for (std::size_t i = 0; i < inOrder_.size(); i += Kind::InTransaction) firsts.push_back(i);
    std::ranges::shuffle(firsts, std::minstd_rand(7));
    firsts.resize(std::min(firsts.size(), Most));
    for (const std::size_t first : firsts) {
      some_.push_back({{ProbeOf(inOrder_[first].transaction), inOrder_[first]}, percents[first]});
    }
  }

  std::vector<Seen> inOrder_;
  std::vector<Seen> byKey_;
  std::vector<Placed> some_;
};

}  // namespace larkmoor::bench
