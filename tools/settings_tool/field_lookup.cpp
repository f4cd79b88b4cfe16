#include "settings_tool/field_lookup.h"

#include <algorithm>
#include <cctype>
#include <iomanip>
#include <iterator>
#include <numeric>
#include <sstream>
#include <vector>

#include "common/settings_file.h"

namespace skypost {
namespace {

char to_lower(char character) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

// How many letters must be put in, left out or changed to make one word of the other; case does not matter.
std::size_t distance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < one.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < other.size(); ++j) {
      const std::size_t changed = diagonal + (to_lower(one[i]) == to_lower(other[j]) ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

// A word in lower case, without what may or may not be between its parts.
std::string letters_of(std::string_view word) {
  std::string letters;
  for (const char character : word)
    if (character != ' ' && character != '-' && character != '_') letters += to_lower(character);
  return letters;
}

}  // namespace

const field_description& field_named(const std::string& name) {
  const field_description& nearest =
      *std::min_element(std::begin(FIELD_DESCRIPTIONS), std::end(FIELD_DESCRIPTIONS),
                        [&](const field_description& one, const field_description& other) {
                          return distance(name, one.name) < distance(name, other.name);
                        });
  if (name != nearest.name)
    throw tool_error("no setting \"" + name + "\"; did you mean " + nearest.name + "?");
  return nearest;
}

std::string_view group_named(std::string_view word) {
  constexpr std::string_view SWITCH = "_enabled";
  const std::string wanted = letters_of(word);
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    const std::string_view name = row.name;
    const bool is_switch = name.ends_with(SWITCH);
    if (wanted == letters_of(row.group) ||
        (is_switch && wanted == letters_of(name.substr(0, name.size() - SWITCH.size()))))
      return row.group;
  }
  return {};
}

std::string quoted(std::string_view text) {
  std::ostringstream result;
  result << '"' << std::hex << std::setfill('0');
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < ' ' || byte == 0x7f)
      result << "\\x" << std::setw(2) << int{byte};
    else if (character == '"' || character == '\\')
      result << '\\' << character;
    else
      result << character;
  }
  result << '"';
  return result.str();
}

}  // namespace skypost
