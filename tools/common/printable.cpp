#include "common/printable.h"

#include <cstdio>

namespace skypost {
namespace {

unsigned byte_at(std::string_view text, std::size_t place) {
  return place < text.size() ? static_cast<unsigned char>(text[place]) : 0;
}

// How many bytes the well-formed character that `text` begins with has; 0 when it begins with none.
std::size_t character_length(std::string_view text) {
  struct form {
    unsigned lead, lead_mask;  // of the first byte
    std::size_t length;
    unsigned least;  // the first character that needs so many bytes
  };
  constexpr form FORMS[] = {
      {0x00, 0x80, 1, 0x0}, {0xc0, 0xe0, 2, 0x80}, {0xe0, 0xf0, 3, 0x800}, {0xf0, 0xf8, 4, 0x10000}};
  for (const form& row : FORMS) {
    if ((byte_at(text, 0) & row.lead_mask) != row.lead) continue;
    unsigned character = byte_at(text, 0) & ~row.lead_mask;
    for (std::size_t i = 1; i < row.length; ++i) {
      if ((byte_at(text, i) & 0xc0U) != 0x80) return 0;
      character = character << 6U | (byte_at(text, i) & 0x3fU);
    }
    const bool is_control = character < 0x20 || (character >= 0x7f && character < 0xa0);
    const bool is_surrogate = character >= 0xd800 && character < 0xe000;
    return is_control || is_surrogate || character < row.least || character > 0x10ffff ? 0 : row.length;
  }
  return 0;
}

}  // namespace

std::string printable(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t length = character_length(text);
    if (length != 0) {
      result += text.substr(0, length);
    } else {
      char escape[5];
      std::snprintf(escape, sizeof escape, "\\x%02x", byte_at(text, 0));
      result += escape;
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
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
