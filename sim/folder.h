#pragma once

#include <filesystem>
#include <string>

namespace skypost::sim {

// A temporary folder for an appliance's files, initially empty; deleted at the end unless keep_files() was called.
class folder {
 public:
  folder();
  ~folder();
  folder(const folder&) = delete;
  folder& operator=(const folder&) = delete;

  const std::filesystem::path& root() const { return root_; }
  void keep_files() { keep_ = true; }

  // The place of an appliance's path in this folder. Creates its directory.
  std::filesystem::path path(const std::string& appliance_path) const;
  void write(const std::string& appliance_path, const std::string& content) const;
  std::string read(const std::string& appliance_path) const;  // empty if there is no file

 private:
  std::filesystem::path root_;
  bool keep_ = false;
};

// The content of a file; empty if there is no file.
std::string read_file(const std::filesystem::path& path);

}  // namespace skypost::sim
