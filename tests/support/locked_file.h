#pragma once

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

namespace skypost::testing {

// Another process that keeps a file locked.
class locked_file {
 public:
  explicit locked_file(const std::filesystem::path& path) {
    int ready[2];
    if (pipe2(ready, O_CLOEXEC) != 0) return;
    process_ = fork();
    char byte = 0;
    if (process_ == 0) {
      struct flock whole {};
      whole.l_type = F_WRLCK;
      const int file = open(path.c_str(), O_RDWR | O_CLOEXEC);
      if (fcntl(file, F_SETLK, &whole) == 0 && write(ready[1], &byte, 1) == 1) pause();
      _exit(1);
    }
    close(ready[1]);
    is_locked_ = read(ready[0], &byte, 1) == 1;
    close(ready[0]);
  }
  ~locked_file() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  locked_file(const locked_file&) = delete;
  locked_file& operator=(const locked_file&) = delete;

  bool is_locked() const { return is_locked_; }

 private:
  pid_t process_ = -1;
  bool is_locked_ = false;
};

}  // namespace skypost::testing
