#include "sim/folder.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <system_error>

namespace skypost::sim {

namespace fs = std::filesystem;

folder::folder() {
  std::string name = (fs::temp_directory_path() / "skypost-appliance-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category(), name);
  root_ = name;
}

folder::~folder() {
  std::error_code ignored;
  if (!keep_) fs::remove_all(root_, ignored);
}

fs::path folder::path(const std::string& appliance_path) const {
  fs::path place = root_ / fs::path(appliance_path).relative_path();
  fs::create_directories(place.parent_path());
  return place;
}

void folder::write(const std::string& appliance_path, const std::string& content) const {
  std::ofstream(path(appliance_path), std::ios::binary) << content;
}

std::string folder::read(const std::string& appliance_path) const { return read_file(path(appliance_path)); }

std::string read_file(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace skypost::sim
