#include "common/network_names.h"

#include "base/text.h"

namespace skypost {
namespace {

// Removes the next character that counts from `name` and returns it in lower case; '\0' at the end.
char take_character(std::string_view& name) {
  while (!name.empty()) {
    const char character = name.front();
    name.remove_prefix(1);
    if (character == ' ' || character == '-' || character == '_') continue;
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
  }
  return '\0';
}

}  // namespace

bool is_same_name(std::string_view one, std::string_view other) {
  for (;;) {
    const char character = take_character(one);
    if (character != take_character(other)) return false;
    if (character == '\0') return true;
  }
}

bool is_row_name(std::string_view name, const row_names& row) {
  const std::string_view text = row.row;
  const std::size_t slash = text.find('/');
  return is_same_name(name, text) || is_same_name(name, row.upload) ||
         (slash != text.npos &&
          (is_same_name(name, head_of(text, slash)) || is_same_name(name, tail_of(text, slash + 1))));
}

bool is_network_name(std::string_view name, const row_names& row) {
  const std::string_view enabled = tail_of(row.network_on, 1);
  return is_same_name(name, row.network) || is_same_name(name, head_of(enabled, enabled.rfind('_')));
}

}  // namespace skypost
