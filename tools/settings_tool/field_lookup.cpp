#include "settings_tool/field_lookup.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <numeric>
#include <vector>

#include "common/errors.h"
#include "common/networks.h"
#include "common/printable.h"

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

}  // namespace

const field_description& field_named(const std::string& name) {
  const field_description& nearest =
      *std::min_element(std::begin(FIELD_DESCRIPTIONS), std::end(FIELD_DESCRIPTIONS),
                        [&](const field_description& one, const field_description& other) {
                          return distance(name, one.name) < distance(name, other.name);
                        });
  if (name != nearest.name)
    throw tool_error("no setting " + quoted(name) + "; did you mean " + nearest.name + "?");
  return nearest;
}

std::string_view group_named(std::string_view name) {
  for (const run_step& step : run_list())
    if (is_network_name(name, step)) return description_of(*step.enabled).group;
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (is_same_name(name, row.group)) return row.group;
  return {};
}

}  // namespace skypost
