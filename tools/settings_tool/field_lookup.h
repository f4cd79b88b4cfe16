#pragma once

#include <string>
#include <string_view>

#include "settings/field_descriptions.h"

namespace skypost {

// The setting of that name. Throws tool_error with the most similar name when there is none.
const field_description& field_named(const std::string& name);

// The group that an owner may mean by `word`: its own name, or that of its switch without "_enabled"; letter
// case, blanks, hyphens and underscores do not matter ("Weather Underground", "weather-underground", "wunderground").
// Empty when there is none.
std::string_view group_named(std::string_view word);

// A text between quotes, without anything that a terminal would obey.
std::string quoted(std::string_view text);

}  // namespace skypost
