#include "base/text.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace skypost {

void text_buffer::append(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const std::size_t room = capacity_ - length_;
  const int wanted = std::vsnprintf(bytes_ + length_, room + 1, format, arguments);
  va_end(arguments);
  if (wanted < 0 || static_cast<std::size_t>(wanted) > room) {
    cut_ = true;
    length_ += std::strlen(bytes_ + length_);
  } else {
    length_ += static_cast<std::size_t>(wanted);
  }
}

void text_buffer::append_text(std::string_view text) {
  const std::size_t room = capacity_ - length_;
  if (text.size() > room) {
    cut_ = true;
    text = head_of(text, room);
  }
  std::memcpy(bytes_ + length_, text.data(), text.size());
  length_ += text.size();
  bytes_[length_] = '\0';
}

void text_buffer::append_pattern(const char* pattern, std::string_view value) {
  const char* const place = std::strstr(pattern, "%s");
  if (place == nullptr) {
    append_text(pattern);
    return;
  }
  append_text({pattern, static_cast<std::size_t>(place - pattern)});
  append_text(value);
  append_text(place + 2);
}

void text_buffer::clear() {
  length_ = 0;
  cut_ = false;
  bytes_[0] = '\0';
}

void text_buffer::replace_all(char from, char to) {
  for (std::size_t i = 0; i < length_; ++i)
    if (bytes_[i] == from) bytes_[i] = to;
}

void text_buffer::remove_all(char character) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < length_; ++i)
    if (bytes_[i] != character) bytes_[kept++] = bytes_[i];
  set_length(kept);
}

void text_buffer::set_length(std::size_t length) {
  length_ = length < capacity_ ? length : capacity_;
  bytes_[length_] = '\0';
}

}  // namespace skypost
