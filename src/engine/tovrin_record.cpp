#include "engine/tovrin_record.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <optional>
#include <utility>

#include "engine/guid.h"
#include "engine/runtime_error.h"
#include "engine/text.h"

namespace larkmoor {
namespace {

static_assert(std::endian::native == std::endian::little, "records are little-endian");

constexpr double EmptyDate = 2.0;

bool Within(int index, std::uint16_t count) {
  return index >= 0 && index < std::max<int>(count, 1);
}

/// Where an element starts in the record.
std::size_t PlaceOf(const Field& field, int index, int index2) {
  if (!Within(index, field.count) || !Within(index2, field.count2)) {
    RaiseRuntimeError(errors::SubscriptOutOfRange);
  }
  const auto element = static_cast<std::size_t>(index) * std::max<std::size_t>(field.count2, 1) +
                       static_cast<std::size_t>(index2);
  return field.offset + element * field.width;
}

/// The bytes of an element, or none where they lie beyond the record.
std::span<std::byte> ElementIn(RecordBytes& bytes, const Field& field, int index, int index2) {
  const std::size_t place = PlaceOf(field, index, index2);
  if (place + field.width > bytes.size()) return {};
  return std::span(bytes).subspan(place, field.width);
}

}  // namespace

Tovrin2Record::Tovrin2Record(const RecordDescription& description)
    : description_(&description),
      buffer_(std::make_shared<RecordBytes>(
          description.LengthFor(std::numeric_limits<double>::infinity()))) {}

void Tovrin2Record::AttachBuffer(RecordBufferHandle buffer) { buffer_ = std::move(buffer); }

void Tovrin2Record::ClearBuffer() { std::fill(buffer_->begin(), buffer_->end(), std::byte{0}); }

template <typename T>
T Tovrin2Record::Load(const Field& field, int index, int index2) const {
  T value{};
  const auto element = ElementIn(*buffer_, field, index, index2);
  if (element.size() >= sizeof value) std::memcpy(&value, element.data(), sizeof value);
  return value;
}

template <typename T>
void Tovrin2Record::Store(const Field& field, T value, int index, int index2) {
  const auto element = ElementIn(*buffer_, field, index, index2);
  if (element.size() >= sizeof value) std::memcpy(element.data(), &value, sizeof value);
}

std::uint8_t Tovrin2Record::GetByte(const Field& field, int index, int index2) const {
  return Load<std::uint8_t>(field, index, index2);
}
bool Tovrin2Record::GetBoolean(const Field& field, int index, int index2) const {
  return Load<std::int16_t>(field, index, index2) != 0;
}
std::int16_t Tovrin2Record::GetInteger(const Field& field, int index, int index2) const {
  return Load<std::int16_t>(field, index, index2);
}
std::int32_t Tovrin2Record::GetLong(const Field& field, int index, int index2) const {
  return Load<std::int32_t>(field, index, index2);
}
float Tovrin2Record::GetSingle(const Field& field, int index, int index2) const {
  return Load<float>(field, index, index2);
}
double Tovrin2Record::GetDouble(const Field& field, int index, int index2) const {
  return Load<double>(field, index, index2);
}
Currency Tovrin2Record::GetCurrency(const Field& field, int index, int index2) const {
  return Currency::FromScaled(Load<std::int64_t>(field, index, index2));
}

double Tovrin2Record::GetDate(const Field& field, int index, int index2) const {
  const double value = field.type == FieldType::Day
                           ? static_cast<double>(Load<std::int32_t>(field, index, index2))
                           : Load<double>(field, index, index2);
  return value == 0 ? EmptyDate : value;
}

std::string Tovrin2Record::GetText(const Field& field, int index, int index2) const {
  const auto element = ElementIn(*buffer_, field, index, index2);
  if (element.empty()) return {};
  if (field.type == FieldType::Guid) {
    return GuidFieldToText(std::span<const std::byte, 16>(element.data(), 16));
  }
  const std::string_view text(reinterpret_cast<const char*>(element.data()), element.size());
  return FromWindows1252(text.substr(0, text.find('\0')));
}

void Tovrin2Record::SetByte(const Field& field, std::uint8_t value, int index, int index2) {
  Store(field, value, index, index2);
}
void Tovrin2Record::SetBoolean(const Field& field, bool value, int index, int index2) {
  Store<std::int16_t>(field, value ? -1 : 0, index, index2);
}
void Tovrin2Record::SetInteger(const Field& field, std::int16_t value, int index, int index2) {
  Store(field, value, index, index2);
}
void Tovrin2Record::SetLong(const Field& field, std::int32_t value, int index, int index2) {
  Store(field, value, index, index2);
}
void Tovrin2Record::SetSingle(const Field& field, float value, int index, int index2) {
  Store(field, value, index, index2);
}
void Tovrin2Record::SetDouble(const Field& field, double value, int index, int index2) {
  Store(field, value, index, index2);
}
void Tovrin2Record::SetCurrency(const Field& field, Currency value, int index, int index2) {
  Store(field, value.Scaled(), index, index2);
}

void Tovrin2Record::SetDate(const Field& field, double value, int index, int index2) {
  if (field.type != FieldType::Day) return Store(field, value, index, index2);
  const double day = std::trunc(value);
  if (!(std::abs(day) <= std::numeric_limits<std::int32_t>::max()))
    RaiseRuntimeError(errors::Overflow);
  Store(field, static_cast<std::int32_t>(day), index, index2);
}

void Tovrin2Record::SetText(const Field& field, std::string_view value, int index, int index2) {
  const auto element = ElementIn(*buffer_, field, index, index2);
  if (field.type == FieldType::Guid) {
    const GuidBytes bytes = GuidFieldFromText(value);
    if (!element.empty()) std::copy(bytes.begin(), bytes.end(), element.begin());
    return;
  }
  std::string text = ToWindows1252(value);
  text.resize(std::min(text.find('\0'), std::min<std::size_t>(text.size(), field.width)));
  if (element.empty()) return;
  std::fill(element.begin(), element.end(), std::byte{0});
  std::memcpy(element.data(), text.data(), text.size());
}

}  // namespace larkmoor
