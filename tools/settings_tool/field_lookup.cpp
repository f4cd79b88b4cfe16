#include "settings_tool/field_lookup.h"

#include <vector>

#include "common/errors.h"
#include "common/networks.h"
#include "common/printable.h"
#include "common/similar_name.h"

namespace skypost {

const field_description* find_field(std::string_view name) {
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (name == row.name) return &row;
  return nullptr;
}

const field_description& field_named(const std::string& name) {
  if (const field_description* const row = find_field(name)) return *row;
  std::vector<std::string> names;
  for (const field_description& row : FIELD_DESCRIPTIONS) names.emplace_back(row.name);
  throw tool_error("no setting " + quoted(name) + suggestion_for(name, names));
}

std::string_view group_named(std::string_view name) {
  for (const run_step& step : run_list())
    if (is_network_name(name, step)) return description_of(*step.enabled).group;
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (is_same_name(name, row.group)) return row.group;
  return {};
}

std::string suggested_group(const std::string& name) {
  std::vector<std::string> names;
  for (const run_step& step : run_list()) names.push_back(switch_name(step));
  for (const field_description& row : FIELD_DESCRIPTIONS) names.emplace_back(row.group);
  return suggestion_for(name, names);
}

}  // namespace skypost
