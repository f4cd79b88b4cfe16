#pragma once

#include <sys/resource.h>

namespace skypost::testing {

// During its lifetime, this process can open no further file, so popen() fails.
class no_more_files {
 public:
  no_more_files() {
    getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit none = {.rlim_cur = 0, .rlim_max = before_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
  }
  ~no_more_files() { setrlimit(RLIMIT_NOFILE, &before_); }
  no_more_files(const no_more_files&) = delete;
  no_more_files& operator=(const no_more_files&) = delete;

 private:
  rlimit before_{};
};

}  // namespace skypost::testing
