#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "settings/field_descriptions.h"
#include "settings/record.h"

// Which of the values that a setting can hold can also be meant.
namespace skypost {

// Whole numbers from `least` to `most`; with `or_unset` also -1, which says that the setting is not set.
struct meant_range {
  std::int32_t least;
  std::int32_t most;
  bool or_unset = false;
};

inline constexpr std::int32_t UNSET_NUMBER = -1;

// The numbers that can be meant for a setting; nothing when all of them can.
std::optional<meant_range> meant_range_of(const settings_field& field);

// A line on a setting with a range whose number cannot be meant or is not set: the setting, what is wrong, the
// consequence (", so this is sent. "), and what to set. Empty when the number can be meant.
std::string finding_of_number(const integer_field& field, const settings_record& settings,
                              const std::string& consequence);

// A half of the position. Each part can be meant alone; a whole beyond 90 or 180 degrees cannot.
struct coordinate {
  const char* name;
  const integer_field& degrees;
  const integer_field& minutes;
  const integer_field& seconds;
};

inline constexpr coordinate POSITION[] = {
    {"latitude", latitude_degrees, latitude_minutes, latitude_seconds},
    {"longitude", longitude_degrees, longitude_minutes, longitude_seconds},
};

// What is wrong with a whole of which each part can be meant: "a latitude of 90 degrees 59 minutes
// is more than 90 degrees". Empty when nothing is.
std::string fault_of_whole(const coordinate& one, const settings_record& settings);

// True for a class of sensors and a number, as the report names its sensors: "th0".
bool is_sensor_identifier(std::string_view text);

// What the setting takes instead of a number, or a text, that cannot be meant; empty when it can.
std::string fault_of_number(const field_description& row, std::int64_t number);
std::string fault_of_text(const field_description& row, std::string_view text);

}  // namespace skypost
