#pragma once

#include <string>
#include <string_view>

#include "common/field_descriptions.h"

namespace skypost {

// The setting of that name, or nullptr.
const field_description* find_field(std::string_view name);

// The setting of that name. If there is none, throws tool_error, which may suggest a similar name.
const field_description& field_named(const std::string& name);

// The group of settings that `name` refers to: a network's, or any other by its own name. Empty if there is none.
std::string_view group_named(std::string_view name);

// Returns "; did you mean windfinder?" if `name` resembles a group's, otherwise an empty text.
std::string suggested_group(const std::string& name);

}  // namespace skypost
