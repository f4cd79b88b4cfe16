#pragma once

#include <sys/mman.h>

#include <cerrno>
#include <cstring>
#include <new>
#include <string>
#include <type_traits>

#include "common/errors.h"

namespace skypost {

// A value in memory shared with child processes. What they wrote can be read here even if they were killed.
template <typename value>
class shared_value {
 public:
  shared_value() {
    void* const place =
        mmap(nullptr, sizeof(value), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (place == MAP_FAILED) throw tool_error(std::string("no shared memory: ") + std::strerror(errno));
    value_ = new (place) value{};
  }
  ~shared_value() { munmap(value_, sizeof(value)); }
  shared_value(const shared_value&) = delete;
  shared_value& operator=(const shared_value&) = delete;

  value& operator*() const { return *value_; }
  value* operator->() const { return value_; }

 private:
  static_assert(std::is_trivially_destructible_v<value>);
  value* value_;
};

}  // namespace skypost
