#include "sim/report.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <iomanip>
#include <numbers>
#include <span>
#include <sstream>
#include <string_view>
#include <vector>

#include "base/moment.h"

namespace skypost::sim {
namespace {

// A quantity is reported in each of its units, converted from the first.
struct unit {
  const char* suffix;  // "" for an index
  double factor = 1;
  double offset = 0;
  int decimals = 1;
};

constexpr unit CELSIUS[] = {{"_c"}, {"_f", 1.8, 32}};
constexpr unit PERCENT[] = {{"_rel", 1, 0, 0}};
constexpr unit HPA[] = {{"_hpa"}, {"_inhg", 0.02953}, {"_mmhg", 0.750062}};
constexpr unit SPEED[] = {{"_ms"}, {"_kmh", 3.6}, {"_mph", 2.237}, {"_kn", 1.944}};
constexpr unit MILLIMETRES[] = {{"_mm"}, {"_in", 0.03937}};
constexpr unit INDEX[] = {{""}};
constexpr unit WATTS[] = {{"_wqm"}};

enum extremes { HIGHEST, LOWEST, BOTH };

// A cosine over the day that peaks at `peak_hour`. Each further sensor of the class reads `step` more.
struct quantity {
  const char* name;
  std::span<const unit> units;
  extremes reported = BOTH;
  double mean = 0, swing = 0, peak_hour = 0, step = 0;

  // `reach` stretches the swing. Only temperatures go below 0; solar radiation, for example, stays at 0 all night.
  double at(std::time_t time, int number, double reach = 1) const {
    const std::tm local = moment_at(time).local;
    const double hour = local.tm_hour + local.tm_min / 60.0;
    const double phase = 2 * std::numbers::pi * (hour - peak_hour) / 24;
    const double value = mean + step * number + swing * reach * std::cos(phase);
    return units.data() == CELSIUS ? value : std::max(value, 0.0);
  }
};

struct sensor_class {
  std::string_view prefix;
  int sensors;
  std::initializer_list<quantity> quantities;
};

struct period {
  const char* name;
  std::time_t seconds;  // 0: since midnight
  double reach;         // distance of its extremes from the mean, relative to the day's
  double rain;          // mm
};

// clang-format off
constexpr sensor_class CLASSES[] = {
    {"th",   8, {{"temp",      CELSIUS,     BOTH,      14.2,   6.4, 15, 0.3},
                 {"hum",       PERCENT,     BOTH,      62,    21,    4, 1},
                 {"dew",       CELSIUS,     BOTH,       6.3,   1.6, 11, 0.2},
                 {"heatindex", CELSIUS,     BOTH,      14.4,   6.6, 15, 0.3}}},
    {"thb",  2, {{"temp",      CELSIUS,     BOTH,      21.4,   0.8, 18, 0.5},
                 {"hum",       PERCENT,     BOTH,      44,     3,    7, 1},
                 {"dew",       CELSIUS,     BOTH,       8.6,   0.4, 18, 0.2},
                 {"press",     HPA,         BOTH,     987.4,   2.1, 10, 0.1},
                 {"sealevel",  HPA,         BOTH,    1013.2,   2.1, 10, 0.1},
                 {"altimeter", HPA,         BOTH,    1014,     2.1, 10, 0.1}}},
    {"t",    6, {{"temp",      CELSIUS,     BOTH,      11.8,   2.2, 16, 1.1}}},
    {"wind", 2, {{"speed",     SPEED,       HIGHEST,    3.6,   1.7, 14, 0.4},
                 {"gustspeed", SPEED,       HIGHEST,    6.4,   2.8, 14, 0.6},
                 {"chill",     CELSIUS,     LOWEST,    12.9,   6.6, 15, 0.3}}},
    {"rain", 2, {{"rate",      MILLIMETRES, HIGHEST,    0.4,   1.4,  6, 0.1}}},
    {"uv",   1, {{"index",     INDEX,       HIGHEST,    0.8,   5.1, 13, 0.1}}},
    {"sol",  2, {{"radiation", WATTS,       HIGHEST,   90,   640,   13, 5}}},
};

constexpr period PERIODS[] = {
    {"last15m",    900, 1,     0.3},
    {"last60m",   3600, 1,     2.4},
    {"last24h",  86400, 1,     8.5},
    {"day1",         0, 1,     6.4},
    {"month1",       0, 1.5,  31.3},
    {"year1",        0, 2.6, 287.4},
};
// clang-format on

struct report_writer {
  std::time_t now;
  std::ostringstream text;

  void add_sensor(const sensor_class& kind, int number) {
    const std::string sensor = '_' + std::string(kind.prefix) + std::to_string(number) + '_';
    for (const quantity& row : kind.quantities)
      add_value("actual" + sensor + row.name, row, row.at(now, number));
    if (kind.prefix == "wind") add_direction("actual" + sensor + "dir");
    if (kind.prefix == "thb") text << "actual" << sensor << "height_m 212.0\n";

    for (const period& over : PERIODS) {
      const std::string key = over.name + sensor;
      for (const quantity& row : kind.quantities) add_summary(key + row.name, over, row, number);
      if (kind.prefix == "wind") add_direction(key + "maindir");
      if (kind.prefix == "rain") add_value(key + "total", {"total", MILLIMETRES}, over.rain);
      if (kind.prefix == "thb") text << key << "press_trend 1\n";
    }
  }

  void add_value(const std::string& key, const quantity& row, double value) {
    for (const unit& in : row.units)
      text << key << in.suffix << ' ' << std::fixed << std::setprecision(in.decimals)
           << value * in.factor + in.offset << '\n';
  }

  void add_direction(const std::string& key) {
    for (const char* const rest : {"_deg 225\n", "_de SW\n", "_en SW\n"}) text << key << rest;
  }

  // Adds mean and extremes, from samples of the curve.
  void add_summary(const std::string& key, const period& over, const quantity& row, int number) {
    constexpr int SAMPLES = 48;
    const std::tm local = moment_at(now).local;
    const std::time_t today = local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec;
    const std::time_t length = over.seconds != 0 ? over.seconds : today;
    std::vector<std::time_t> times = {now};
    for (int i = 0; i < SAMPLES - 1; ++i) times.push_back(now - length + length * i / (SAMPLES - 1));

    const auto value_at = [&](std::time_t time) { return row.at(time, number); };
    double sum = 0;
    for (const std::time_t time : times) sum += value_at(time);
    add_value(key, row, sum / SAMPLES);

    const auto add_extreme = [&](const std::string& extreme, std::time_t time) {
      add_value(extreme, row, row.at(time, number, over.reach));
      const std::tm then = moment_at(time).local;
      text << extreme << "_time " << std::put_time(&then, "%Y%m%d%H%M%S") << '\n';
    };
    if (row.reported != LOWEST) add_extreme(key + "max", *std::ranges::max_element(times, {}, value_at));
    if (row.reported != HIGHEST) add_extreme(key + "min", *std::ranges::min_element(times, {}, value_at));
  }
};

}  // namespace

std::string lifelike_report(std::time_t now) {
  report_writer report = {now, {}};
  report.text << "actual_sunrise_standard_local 05:41\nactual_sunset_standard_local 20:37\n";
  for (const sensor_class& kind : CLASSES)
    for (int number = 0; number < kind.sensors; ++number) report.add_sensor(kind, number);
  return report.text.str();
}

}  // namespace skypost::sim
