#pragma once

#include <string>
#include <string_view>

#include "common/field_descriptions.h"

namespace skypost {

// The setting of that name, or nullptr.
const field_description* find_field(std::string_view name);

// The setting of that name. Throws tool_error, with the most similar name, if there is none.
const field_description& field_named(const std::string& name);

// The group of settings that `name` can refer to, that of a network or another by its own name. Empty if there is
// none.
std::string_view group_named(std::string_view name);

// "; did you mean windfinder?" for a name that resembles a group's; otherwise nothing.
std::string suggested_group(const std::string& name);

}  // namespace skypost
