#include "fuzz/restored_file.h"

#include <fstream>
#include <iterator>

#include <larkmoor/status.h>

#include "engine/store/driver.h"
#include "fuzz/input_reader.h"

namespace larkmoor::fuzz {

void Overwrite(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

RestoredFile::RestoredFile(const store::FileDescription& description,
                           const std::function<void(test::Cursor&)>& fill)
    : path_(folder_.Path() / (description.name + ".dat")) {
  Must(store::DefaultDriver().Create(path_, description) == StatusSuccess, "the file can be made");
  if (fill) {
    test::Cursor file(store::DefaultDriver(), path_);
    fill(file);
  }
  std::ifstream made(path_, std::ios::binary);
  bytes_.assign(std::istreambuf_iterator<char>(made), {});
}

}  // namespace larkmoor::fuzz
