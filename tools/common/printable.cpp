#include "common/printable.h"

#include <clocale>
#include <cstdio>
#include <cuchar>

namespace skypost {
namespace {

// Length of the harmless character at the start of `text`, or 0. Requires a UTF-8 locale.
std::size_t harmless_length(std::string_view text) {
  std::mbstate_t state{};
  char32_t character = 0;
  const std::size_t length = std::mbrtoc32(&character, text.data(), text.size(), &state);
  if (length > text.size()) return 0;  // invalid or incomplete
  const bool is_control = character < 0x20 || (character >= 0x7f && character < 0xa0);
  const bool is_bidirectional_control = character == 0x061c || character == 0x200e || character == 0x200f ||
                                        (character >= 0x202a && character <= 0x202e) ||
                                        (character >= 0x2066 && character <= 0x2069);
  const bool is_beyond_unicode = character > 0x10ffff;  // glibc accepts some of them
  return is_control || is_bidirectional_control || is_beyond_unicode ? 0 : length;
}

}  // namespace

std::string printable(std::string_view text) {
  static const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  const locale_t previous = uselocale(utf8);
  std::string result;
  while (!text.empty()) {
    const std::size_t length = harmless_length(text);
    if (length != 0) {
      result += text.substr(0, length);
    } else {
      char escape[5];
      std::snprintf(escape, sizeof escape, "\\x%02x", static_cast<unsigned char>(text.front()));
      result += escape;
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
  uselocale(previous);
  return result;
}

std::string quoted(std::string_view text) {
  std::string escaped;
  for (const char character : text) {
    if (character == '"' || character == '\\') escaped += '\\';
    escaped += character;
  }
  return '"' + printable(escaped) + '"';
}

std::vector<std::string> printable_lines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(printable(line));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

}  // namespace skypost
