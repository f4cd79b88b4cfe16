#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "compose/upload.h"

namespace skypost::testing {

// Returns live/golden/report. It has every key, different values for keys of one kind, and before them some longer keys
// that begin like them.
std::string full_report();

// Replaces the value of a key, or removes its line if `value` is empty. Returns false if the report lacks the key.
bool replace_value(std::string& report, const std::string& key, const std::string& value);

// Settings that select the sensors of full_report(), a different one for each value.
settings_record sensors_of_the_report();

// Parses a report with sensors_of_the_report(). Sets TZ.
LiveRecord parsed(const std::string& report);

// A station that has every value; values that could be confused with each other differ. Sets TZ.
LiveRecord fully_equipped_station();

// A station whose only values are outdoor temperature 21.5 °C, humidity 57 % and dew point 10.0 °C. Sets TZ.
LiveRecord sparse_station();

// Sets the field called `name`; a number is given in decimal. Returns false if there is no such field.
bool set_field(settings_record& settings, std::string_view name, const std::string& value);

// Default settings overridden by golden/settings, which has a different identifier and password for every network, some
// with characters special to a shell or a URL. A text that is empty in both holds its field's name.
void fill_settings(settings_record& settings);

// Like fill_settings, with every flag on and a sensor for each value.
void switch_everything_on(settings_record& settings);

// Lines of an endpoint file that move every network and APRS server to this machine, with their protocols unchanged.
std::string local_servers();

// Reads lines of an endpoint file, keeping the endpoints that they do not name. Returns the errors printed.
std::string read_endpoint_lines(std::string lines);

// Sets the rapid-fire intervals of both networks in seconds; 0 switches a network off.
void set_rapid_fire(settings_record& settings, std::int32_t wunderground, std::int32_t weatherflow);

// A board with a hardware address of its own, of unknown kind.
inline constexpr board ORDINARY_BOARD = {nullptr, "00:1A:2B:3C:4D:5E"};

// 2012-05-06 07:08:09 local time in Berlin, 05:08:09 UTC. Sets TZ.
moment spring_morning();

// The text that ORDINARY_BOARD sends on spring_morning().
std::string composed(const upload& what, const settings_record& settings, const LiveRecord& live);

// The text composed from current_station().
std::string composed_now(const upload& what);

// All uploads of the run list, including rapid-fire variants.
std::vector<const upload*> every_upload();

}  // namespace skypost::testing
