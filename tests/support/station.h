#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "compose/upload.h"

namespace skypost::testing {

// live/golden/report: every key, no two of one kind with the same value, and before them longer keys that begin like
// some of them.
std::string full_report();

// Puts another value after a key of a report, or leaves the line out if that is empty; false if there is no such key.
bool replace_value(std::string& report, const std::string& key, const std::string& value);

// Selects the sensors of that report, for each value another.
settings_record sensors_of_the_report();

// What a report says of these sensors. Sets TZ.
LiveRecord parsed(const std::string& report);

// A station with every value known, no two of them alike where they could be taken for one another. Sets TZ.
LiveRecord fully_equipped_station();

// One that knows only outdoor temperature 21.5 °C, humidity 57 % and dew point 10.0 °C.
LiveRecord sparse_station();

// Sets the field of this name, a number from its decimal text; false if there is none.
bool set_field(settings_record& settings, std::string_view name, const std::string& value);

// Default settings with those of golden/settings: an identifier and a password for every network, each different, some
// with characters that mean something to a shell or in a URL. A text that is not there holds its field's name.
void fill_settings(settings_record& settings);

// The same with every flag on and a sensor for each value.
void switch_everything_on(settings_record& settings);

// Lines of an endpoint file that put every network and every APRS server on this machine, reached by the same protocol.
std::string local_servers();

// Reads them on top of those in effect; returns what that prints.
std::string read_endpoint_lines(std::string lines);

// Both in rapid fire at their intervals in seconds, or off at 0.
void set_rapid_fire(settings_record& settings, std::int32_t wunderground, std::int32_t weatherflow);

// A board with a hardware address of its own, of unknown kind.
inline constexpr board ORDINARY_BOARD = {nullptr, "00:1A:2B:3C:4D:5E"};

// 2012-05-06 07:08:09 local time in Berlin, 05:08:09 UTC. Sets TZ.
moment spring_morning();

// What is sent at that time by an ordinary board.
std::string composed(const upload& what, const settings_record& settings, const LiveRecord& live);

// What is sent now, from the station of this process.
std::string composed_now(const upload& what);

// Everything that the run list can send, rapid-fire variants too.
std::vector<const upload*> every_upload();

}  // namespace skypost::testing
