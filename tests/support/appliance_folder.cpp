#include "support/appliance_folder.h"

#include <cstdlib>
#include <fstream>

namespace skypost::testing {

namespace fs = std::filesystem;

appliance_folder::appliance_folder() {
  std::string name = (fs::temp_directory_path() / "skypost-test-XXXXXX").string();
  root_ = mkdtemp(name.data());
  setenv("SKYPOST_ROOT", root_.c_str(), 1);
}

appliance_folder::~appliance_folder() {
  unsetenv("SKYPOST_ROOT");
  fs::remove_all(root_);
}

fs::path appliance_folder::path(const std::string& appliance_path) const {
  fs::path path = root_ / fs::path(appliance_path).relative_path();
  fs::create_directories(path.parent_path());
  return path;
}

void appliance_folder::write(const std::string& appliance_path, const std::string& content) const {
  std::ofstream(path(appliance_path), std::ios::binary) << content;
}

}  // namespace skypost::testing
