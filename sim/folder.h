#pragma once

#include <filesystem>
#include <string>

namespace skypost::sim {

// An appliance's files in a temporary folder. At first there are none.
class folder {
 public:
  folder();
  ~folder();
  folder(const folder&) = delete;
  folder& operator=(const folder&) = delete;

  const std::filesystem::path& root() const { return root_; }
  // Keep the folder.
  void keep_files() { keep_ = true; }

  // Where one of the appliance's paths is here. Creates its folder.
  std::filesystem::path path(const std::string& appliance_path) const;
  void write(const std::string& appliance_path, const std::string& content) const;
  std::string read(const std::string& appliance_path) const;  // empty if there is none

 private:
  std::filesystem::path root_;
  bool keep_ = false;
};

// The whole file; empty if there is none.
std::string read_file(const std::filesystem::path& path);

}  // namespace skypost::sim
