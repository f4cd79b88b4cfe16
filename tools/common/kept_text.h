#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace skypost {

// A FILE* that collects what is written to it.
class kept_text {
 public:
  kept_text() : stream_(open_memstream(&bytes_, &length_)) {}
  ~kept_text() {
    std::fclose(stream_);
    std::free(bytes_);
  }
  kept_text(const kept_text&) = delete;
  kept_text& operator=(const kept_text&) = delete;

  std::FILE* stream() { return stream_; }
  std::string text() {
    std::fflush(stream_);
    return {bytes_, length_};
  }

 private:
  char* bytes_ = nullptr;
  std::size_t length_ = 0;
  std::FILE* stream_;
};

}  // namespace skypost
