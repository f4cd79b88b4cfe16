#pragma once

#include <cstddef>
#include <string_view>

namespace skypost {

// The first `count` characters of `text`, and the rest after them; of a shorter text as much as there is.
// (string_view::substr can throw, and brings the whole exception run time with it.)
constexpr std::string_view head_of(std::string_view text, std::size_t count) {
  return {text.data(), count < text.size() ? count : text.size()};
}
constexpr std::string_view tail_of(std::string_view text, std::size_t count) {
  text.remove_prefix(count < text.size() ? count : text.size());
  return text;
}

// True if every character is an ASCII letter, a digit or one of `others`.
constexpr bool is_alphanumeric(std::string_view text, std::string_view others = {}) {
  constexpr std::string_view LETTERS_AND_DIGITS =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  for (const char character : text)
    if (LETTERS_AND_DIGITS.find(character) == std::string_view::npos &&
        others.find(character) == std::string_view::npos)
      return false;
  return true;
}

// A text in a buffer of fixed capacity. Every append is checked: what does not fit is cut off and
// was_cut() says so from then on, until clear(). The text is NUL-terminated at all times.
class text_buffer {
 public:
  // Over an array that lives at least as long as the text; its last byte is kept for the NUL.
  template <std::size_t size>
  explicit constexpr text_buffer(char (&bytes)[size]) : bytes_(bytes), capacity_(size - 1) {}

  text_buffer(const text_buffer&) = delete;
  text_buffer& operator=(const text_buffer&) = delete;

  [[gnu::format(printf, 2, 3)]] void append(const char* format, ...);
  void append_text(std::string_view text);
  void append_character(char character) { append_text({&character, 1}); }

  // `pattern` with its first "%s" replaced by `value`, whatever either of them holds.
  void append_pattern(const char* pattern, std::string_view value);

  void clear();

  // Replaces every `from` by `to`, in place. With NUL as `to` the text ends there.
  void replace_all(char from, char to);
  void remove_all(char character);

  // For a reader that fills the buffer itself: room for capacity() bytes, then say how many came.
  char* storage() { return bytes_; }
  void set_length(std::size_t length);

  constexpr const char* c_str() const { return bytes_; }
  std::string_view view() const { return {bytes_, length_}; }
  std::size_t length() const { return length_; }
  std::size_t capacity() const { return capacity_; }
  bool empty() const { return length_ == 0; }
  bool was_cut() const { return cut_; }

 private:
  char* bytes_;
  std::size_t capacity_;
  std::size_t length_ = 0;
  bool cut_ = false;
};

// A text_buffer that brings its own room for `text_capacity` characters and the NUL.
template <std::size_t text_capacity>
class fixed_text : public text_buffer {
 public:
  constexpr fixed_text() : text_buffer(bytes_) { bytes_[0] = '\0'; }

 private:
  char bytes_[text_capacity + 1];
};

}  // namespace skypost
