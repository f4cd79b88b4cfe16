#pragma once

#include <filesystem>
#include <string>

namespace skypost::sim {

// An appliance's files in a folder, which is removed with it. At first there are none.
class folder {
 public:
  folder();
  ~folder();
  folder(const folder&) = delete;
  folder& operator=(const folder&) = delete;

  const std::filesystem::path& root() const { return root_; }
  // From now on the folder stays.
  void keep_files() { keep_ = true; }

  // Where one of the appliance's own paths lies; its folder is made.
  std::filesystem::path path(const std::string& appliance_path) const;
  void write(const std::string& appliance_path, const std::string& content) const;
  std::string read(const std::string& appliance_path) const;  // empty when there is no such file

 private:
  std::filesystem::path root_;
  bool keep_ = false;
};

// The whole file; empty when there is none.
std::string read_file(const std::filesystem::path& path);

}  // namespace skypost::sim
