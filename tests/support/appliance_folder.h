#pragma once

#include <filesystem>
#include <string>

namespace skypost::testing {

// An empty appliance in a folder of its own: SKYPOST_ROOT points to it while it lives.
class appliance_folder {
 public:
  appliance_folder();
  ~appliance_folder();
  appliance_folder(const appliance_folder&) = delete;
  appliance_folder& operator=(const appliance_folder&) = delete;

  // Where one of the appliance's own paths lies in the folder; its parent folders are made.
  std::filesystem::path path(const std::string& appliance_path) const;
  void write(const std::string& appliance_path, const std::string& content) const;

 private:
  std::filesystem::path root_;
};

}  // namespace skypost::testing
