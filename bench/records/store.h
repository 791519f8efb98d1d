// What every store of records can do, whatever it keeps them in.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

#include "records/kinds.h"

namespace larkmoor::bench {

/// Ways from record to record: along the walking key, and in physical order.
enum class Path { Next, Previous, Step };

/// A file of records of one kind in a folder, opened or newly made. `Find` and the walks take a
/// record in hand and are false where there is none; the writes act on it. Single writes are each a
/// commit of their own.
template <typename Store>
concept RecordStore = std::constructible_from<Store, const std::filesystem::path&> &&
    requires(Store store, const Probe& probe, const Images& images,
             std::span<const std::byte> image) {
  { Store::Name } -> std::convertible_to<std::string_view>;
  store.Open();
  store.Close();

  { store.Find(probe) } -> std::same_as<bool>;
  { store.Start(Path::Next) } -> std::same_as<bool>;
  { store.Move() } -> std::same_as<bool>;
  store.End();
  { store.InHand() } -> std::same_as<Seen>;
  { store.Count() } -> std::same_as<std::int64_t>;

  store.Insert(image);
  store.SetAmount(0.0);
  store.SetKey(probe);
  store.Delete();
  /// All of them in one commit.
  store.Load(images);
  /// Takes the records behind the first so many out again, in one commit.
  store.KeepFirst(std::int64_t{});
};

/// A store that can tell where on the walking key its record in hand lies, and find one there.
template <typename Store>
concept PercentageStore = RecordStore<Store> && requires(Store store) {
  { store.Percentage() } -> std::same_as<double>;
  { store.FindByPercentage(50.0) } -> std::same_as<bool>;
};

}  // namespace larkmoor::bench
