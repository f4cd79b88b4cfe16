#include "support/appliance_folder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

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
  const fs::path path = root_ / fs::path(appliance_path).relative_path();
  fs::create_directories(path.parent_path());
  return path;
}

void appliance_folder::write(const std::string& appliance_path, const std::string& content) const {
  std::ofstream(path(appliance_path), std::ios::binary) << content;
}

void appliance_folder::write_alarm_script() const {
  write("/home/nimbulog/alarm",
        "#!/bin/sh\nfor argument; do printf '%s\\0' \"$argument\"; done >> \"${0%/*}/alarms\"\n");
  fs::permissions(path("/home/nimbulog/alarm"), fs::perms::owner_all);
}

std::string appliance_folder::alarms() const {
  std::ifstream file(path("/home/nimbulog/alarms"), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace skypost::testing
