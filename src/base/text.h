#pragma once

#include <cstddef>
#include <string_view>

namespace skypost {

// The first `count` characters of a text, and the text after them. `count` may exceed the length. (string_view::substr
// can throw, and links the exception runtime.)
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

// A text in a buffer of fixed capacity, always NUL-terminated. If something does not fit, the text is truncated and
// was_cut() is true until clear().
class text_buffer {
 public:
  // Uses `bytes`, which must outlive this object; the last byte is reserved for the NUL.
  template <std::size_t size>
  explicit constexpr text_buffer(char (&bytes)[size]) : bytes_(bytes), capacity_(size - 1) {}

  text_buffer(const text_buffer&) = delete;
  text_buffer& operator=(const text_buffer&) = delete;

  [[gnu::format(printf, 2, 3)]] void append(const char* format, ...);
  void append_text(std::string_view text);
  void append_character(char character) { append_text({&character, 1}); }

  // Appends `pattern` with its first "%s" replaced by `value`; nothing else in it is interpreted.
  void append_pattern(const char* pattern, std::string_view value);

  void clear();

  // Ends the text before the first `character`, if there is one.
  void cut_at(char character) { set_length(head_of(view(), view().find(character)).size()); }
  void replace_all(char from, char to);
  void remove_all(char character);

  // For read() and the like: fill up to capacity() bytes, then call set_length().
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

// A text_buffer with its own storage.
template <std::size_t text_capacity>
class fixed_text : public text_buffer {
 public:
  constexpr fixed_text() : text_buffer(bytes_) { bytes_[0] = '\0'; }

 private:
  char bytes_[text_capacity + 1];
};

}  // namespace skypost
