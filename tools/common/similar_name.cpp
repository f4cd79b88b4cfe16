#include "common/similar_name.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <string_view>

namespace skypost {
namespace {

char to_lower(char character) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

// Levenshtein distance, ignoring case.
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

}  // namespace

std::string suggestion_for(const std::string& word, const std::vector<std::string>& names) {
  const std::string& nearest =
      *std::min_element(names.begin(), names.end(), [&](const std::string& one, const std::string& other) {
        return distance(word, one) < distance(word, other);
      });
  return distance(word, nearest) * 2 <= word.size() ? "; did you mean " + nearest + '?' : "";
}

}  // namespace skypost
