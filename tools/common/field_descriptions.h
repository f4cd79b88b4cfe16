#pragma once

#include <string_view>

#include "settings/fields.h"

// The settings as the owner sees them, for the tools, the simulation and the tests.
namespace skypost {

struct field_description {
  const settings_field& field;
  const char* name;
  const char* group;  // the network or the part of the appliance that it belongs to
  const char* meaning;

  // Call these only for a field of that kind.
  const text_field& as_text() const { return static_cast<const text_field&>(field); }
  const integer_field& as_integer() const { return static_cast<const integer_field&>(field); }
};

// All settings, group by group.
inline constexpr field_description FIELD_DESCRIPTIONS[] = {
#define FIELD(name, kind, group, offset, size, meaning) {name, #name, group, meaning},
#include "settings/fields.def"
};

constexpr const field_description& description_of(const settings_field& field) {
  const field_description* row = FIELD_DESCRIPTIONS;
  while (row->field.offset != field.offset) ++row;
  return *row;
}

// A field named like a password must be marked secret, or the tools would show it.
consteval bool is_every_password_secret() {
  for (const field_description& row : FIELD_DESCRIPTIONS)
    for (const std::string_view word : {"password", "passcode", "secret", "key", "account"})
      if (std::string_view(row.name).find(word) != std::string_view::npos && !row.field.is_secret())
        return false;
  return true;
}
static_assert(is_every_password_secret(), "a field of fields.def is named like a password but not secret");

}  // namespace skypost
