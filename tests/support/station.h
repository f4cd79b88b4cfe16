#pragma once

#include <string>
#include <vector>

#include "compose/outgoing.h"

namespace skypost::testing {

// A station with every value known, no two of them alike where they could be taken for one another.
LiveRecord fully_equipped_station();

// One that knows only outdoor temperature 21.5 °C, humidity 57 % and dew point 10.0 °C.
LiveRecord sparse_station();

// Default settings with an identifier and a password for every network, each different, some with characters
// that mean something to a shell or in a URL. A text that has no value of its own holds its field's name.
void fill_settings(settings_record& settings);

// The same with every flag on and a sensor for each value.
void switch_everything_on(settings_record& settings);

// Lines of an endpoint file by which every network and every APRS server is on this machine, spoken to as ever.
std::string local_servers();

// Both in rapid fire at their intervals in seconds, or off at 0.
void set_rapid_fire(settings_record& settings, std::int32_t wunderground, std::int32_t weatherflow);

// A board with a hardware address of its own, of unknown kind.
inline constexpr board ORDINARY_BOARD = {nullptr, "00:1A:2B:3C:4D:5E"};

// 2012-05-06 07:08:09 local time in Berlin, 05:08:09 UTC. Sets TZ.
moment spring_morning();

// What is handed out at that time, by an ordinary board.
std::string composed(const outgoing& what, const settings_record& settings, const LiveRecord& live);

// What is handed out at this moment, from the station of this process.
std::string composed_now(const outgoing& what);

// Everything that the run list can hand out, the rapid-fire forms too.
std::vector<const outgoing*> everything_handed_out();

// The whole file; fails the test when it cannot be read.
std::string read_whole_file(const std::string& path);

}  // namespace skypost::testing
