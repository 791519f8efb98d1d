#include "engine/record_description.h"

#include <string>

namespace larkmoor {

const Field* RecordDescription::FindField(std::string_view fieldName) const {
  for (const Field& field : fields) {
    if (field.name == fieldName) return &field;
  }
  return nullptr;
}

std::uint32_t RecordDescription::LengthFor(double release) const {
  std::uint32_t result = 0;
  for (const RecordLength& step : lengths) {
    if (release >= step.from) result = step.length;
  }
  return result;
}

store::FileDescription RecordDescription::FileFor(double release) const {
  store::FileDescription file{std::string(name), release, LengthFor(release), {}};
  for (const RecordKey& key : keys) {
    if (release < key.from || release >= key.below) continue;
    file.keys.push_back({key.number,
                         key.unique,
                         key.modifiable,
                         key.autoIncrement,
                         {key.segments.begin(), key.segments.end()}});
  }
  return file;
}

}  // namespace larkmoor
