#include "support/company.h"

#include <cstdlib>
#include <stdexcept>

#include "connection/shared_state.h"

namespace larkmoor::test {

TempFolder::TempFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "larkmoor-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = name;
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

Company::Company(double release) : pathBefore_(Shared().gCompanyPath) {
  CreateCompany(Folder(), {.Release = release, .Name = "Harbour Trading"});
  Shared().gCompanyPath = Path();
}

Company::~Company() { Shared().gCompanyPath = pathBefore_; }

CapturedMessages::CapturedMessages()
    : before_(SetMessageBoxHandler([this](std::string_view text) { texts_.emplace_back(text); })) {}

CapturedMessages::~CapturedMessages() { SetMessageBoxHandler(before_); }

}  // namespace larkmoor::test
