#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "settings/field_descriptions.h"

// Which of the values that a setting can hold can also be meant.
namespace skypost {

// Whole numbers from `least` to `most`; with `or_unset` also -1, which says that the setting is not set.
struct meant_range {
  std::int32_t least;
  std::int32_t most;
  bool or_unset = false;
};

// The numbers that can be meant for a setting; nothing when all of them can.
std::optional<meant_range> meant_range_of(const settings_field& field);

// True for a class of sensors and a number, as the report names its sensors: "th0".
bool is_sensor_identifier(std::string_view text);

// What the setting takes instead of a number, or a text, that cannot be meant; empty when it can.
std::string fault_of_number(const field_description& row, std::int64_t number);
std::string fault_of_text(const field_description& row, std::string_view text);

}  // namespace skypost
