#pragma once

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace skypost::testing {

// Mounts a file system of 64 KiB at `directory`, for this thread and the programs that it starts.
class small_disk {
 public:
  explicit small_disk(std::filesystem::path directory) : directory_(std::move(directory)) {
    std::filesystem::create_directories(directory_);
    is_mounted_ = unshare(CLONE_NEWNS) == 0 &&
                  mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                  mount("none", directory_.c_str(), "tmpfs", 0, "size=64k") == 0;
  }
  ~small_disk() {
    if (is_mounted_) umount2(directory_.c_str(), MNT_DETACH);
  }
  small_disk(const small_disk&) = delete;
  small_disk& operator=(const small_disk&) = delete;

  // False if this user may not mount.
  bool is_mounted() const { return is_mounted_; }

  // Uses up every free block.
  void fill() const {
    const int file = open((directory_ / "filler").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const std::string block(4'096, 'f');
    while (write(file, block.data(), block.size()) > 0) {
    }
    close(file);
  }

 private:
  std::filesystem::path directory_;
  bool is_mounted_ = false;
};

}  // namespace skypost::testing
