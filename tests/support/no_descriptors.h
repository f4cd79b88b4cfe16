#pragma once

#include <sys/resource.h>

namespace skypost::testing {

// While it lives, the process can open nothing more: EMFILE, "Too many open files".
class no_descriptors {
 public:
  no_descriptors() {
    getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit none{.rlim_cur = 0, .rlim_max = before_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
  }
  ~no_descriptors() { setrlimit(RLIMIT_NOFILE, &before_); }
  no_descriptors(const no_descriptors&) = delete;
  no_descriptors& operator=(const no_descriptors&) = delete;

 private:
  rlimit before_{};
};

}  // namespace skypost::testing
