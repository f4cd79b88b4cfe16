#pragma once

#include <unistd.h>

#include <utility>

namespace skypost {

// Owns a file descriptor, which is -1 if the file could not be opened. Closes it on destruction.
class descriptor {
 public:
  explicit descriptor(int number) : number_(number) {}
  descriptor(descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  descriptor& operator=(descriptor&&) = delete;
  ~descriptor() {
    if (number_ >= 0) close(number_);
  }
  int number() const { return number_; }
  bool is_open() const { return number_ >= 0; }

 private:
  int number_;
};

}  // namespace skypost
