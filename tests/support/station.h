#pragma once

#include <string>

#include "base/moment.h"
#include "live/live_record.h"
#include "settings/record.h"

namespace skypost::testing {

// The words and times of day in a live record.
inline constexpr live_text LiveRecord::*LIVE_TEXTS[] = {
    // clang-format off
    &LiveRecord::winddirstr,              &LiveRecord::winddirstren,
    &LiveRecord::todaymaxtemptimestr,     &LiveRecord::todaymintemptimestr,
    &LiveRecord::todaymaxdewtimestr,      &LiveRecord::todaymindewtimestr,  &LiveRecord::todayminchilltimestr,
    &LiveRecord::todaymaxhumtimestr,      &LiveRecord::todayminhumtimestr,
    &LiveRecord::todaymaxuvtimestr,       &LiveRecord::todaymaxsolartimestr,
    &LiveRecord::todaymaxsealeveltimestr, &LiveRecord::todayminsealeveltimestr,
    &LiveRecord::todaymaxgusttimestr,     &LiveRecord::todaymaxwindtimestr, &LiveRecord::todaymaxrainratetimestr,
    &LiveRecord::sunrise,                 &LiveRecord::sunset,
    // clang-format on
};

// A station with every value known, no two of them alike where they could be taken for one another.
LiveRecord fully_equipped_station();

// One that knows only outdoor temperature 21.5 °C, humidity 57 % and dew point 10.0 °C.
LiveRecord sparse_station();

// Default settings with an identifier and a password for every network, each different, each with
// characters that a shell or a URL would take for its own in one of the passwords.
void fill_settings(settings_record& settings);

// 2012-05-06 07:08:09 local time in Berlin, 05:08:09 UTC. Sets TZ.
moment spring_morning();

// The whole file; fails the test when it cannot be read.
std::string read_whole_file(const std::string& path);

}  // namespace skypost::testing
