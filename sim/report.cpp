#include "sim/report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <span>

namespace skypost::sim {
namespace {

struct unit {
  const char* name;  // "" for an index
  double factor;
  double offset;
};

constexpr unit CELSIUS[] = {{"_c", 1, 0}, {"_f", 1.8, 32}};
constexpr unit PERCENT[] = {{"_rel", 1, 0}};
constexpr unit HPA[] = {{"_hpa", 1, 0}, {"_inhg", 0.02953, 0}, {"_mmhg", 0.750062, 0}};
constexpr unit SPEED[] = {{"_ms", 1, 0}, {"_kmh", 3.6, 0}, {"_mph", 2.237, 0}, {"_kn", 1.944, 0}};
constexpr unit MILLIMETRES[] = {{"_mm", 1, 0}, {"_in", 0.03937, 0}};
constexpr unit INDEX[] = {{"", 1, 0}};
constexpr unit WATTS[] = {{"_wqm", 1, 0}};

enum extremes { HIGHEST = 1, LOWEST = 2, BOTH = 3 };

// A quantity over the day: a cosine around its mean that peaks at an hour; each further sensor of
// the class reads `step` more. What cannot be negative stays at 0, at night or between showers.
struct quantity {
  const char* name;
  std::span<const unit> units;
  int decimals;
  extremes kept;
  double mean, swing, peak_hour, step;
  bool never_negative;

  double at(std::time_t time, int number) const {
    std::tm local{};
    localtime_r(&time, &local);
    const double hour = local.tm_hour + local.tm_min / 60.0;
    const double value =
        mean + step * number + swing * std::cos(2 * std::numbers::pi * (hour - peak_hour) / 24);
    return never_negative ? std::max(value, 0.0) : value;
  }
};

// clang-format off
constexpr quantity OUTDOOR[] = {
    {"temp",      CELSIUS,     1, BOTH,    14.2,  6.4, 15, 0.3, false},
    {"hum",       PERCENT,     0, BOTH,    62,   21,    4, 1,   false},
    {"dew",       CELSIUS,     1, BOTH,     6.3,  1.6, 11, 0.2, false},
    {"heatindex", CELSIUS,     1, BOTH,    14.4,  6.6, 15, 0.3, false},
};
constexpr quantity INDOOR[] = {
    {"temp",      CELSIUS,     1, BOTH,    21.4,  0.8, 18, 0.5, false},
    {"hum",       PERCENT,     0, BOTH,    44,    3,    7, 1,   false},
    {"dew",       CELSIUS,     1, BOTH,     8.6,  0.4, 18, 0.2, false},
    {"press",     HPA,         1, BOTH,   987.4,  2.1, 10, 0.1, false},
    {"sealevel",  HPA,         1, BOTH,  1013.2,  2.1, 10, 0.1, false},
    {"altimeter", HPA,         1, BOTH,  1014,    2.1, 10, 0.1, false},
};
constexpr quantity TEMPERATURE[] = {
    {"temp",      CELSIUS,     1, BOTH,    11.8,  2.2, 16, 1.1, false},
};
constexpr quantity WIND[] = {
    {"speed",     SPEED,       1, HIGHEST,  3.6,  1.7, 14, 0.4, true},
    {"gustspeed", SPEED,       1, HIGHEST,  6.4,  2.8, 14, 0.6, true},
    {"chill",     CELSIUS,     1, LOWEST,  12.9,  6.6, 15, 0.3, false},
};
constexpr quantity RAIN[] = {
    {"rate",      MILLIMETRES, 1, HIGHEST,  0.4,  1.4,  6, 0.1, true},
};
constexpr quantity UV[] = {
    {"index",     INDEX,       1, HIGHEST,  0.8,  5.1, 13, 0.1, true},
};
constexpr quantity SOLAR[] = {
    {"radiation", WATTS,       1, HIGHEST, 90,  640,   13, 5,   true},
};

struct sensor_class {
  const char* prefix;
  int sensors;
  std::span<const quantity> quantities;
};
constexpr sensor_class CLASSES[] = {
    {"th",   8, OUTDOOR},
    {"thb",  2, INDOOR},
    {"t",    6, TEMPERATURE},
    {"wind", 2, WIND},
    {"rain", 2, RAIN},
    {"uv",   1, UV},
    {"sol",  2, SOLAR},
};

// The extremes of month and year are `reach` times as far from the mean as those of the day.
struct period {
  const char* name;
  std::time_t seconds;  // 0: since midnight
  double reach;
  double rain;  // mm
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

class report_writer {
 public:
  explicit report_writer(std::time_t now) : now_(now) {}

  std::string take() { return std::move(text_); }

  void line(const std::string& key, const std::string& value) { text_ += key + ' ' + value + '\n'; }

  void reading(const std::string& key, const quantity& what, double value) {
    for (const unit& in : what.units) {
      char number[40];
      std::snprintf(number, sizeof number, "%.*f", what.decimals, value * in.factor + in.offset);
      line(key + in.name, number);
    }
  }

  void extreme(const std::string& key, const quantity& what, double value, std::time_t when) {
    reading(key, what, value);
    line(key + "_time", digits_of(when));
  }

  // Mean and extremes of a quantity in a period, from samples of its curve.
  void summary(const period& over, const std::string& sensor, int number, const quantity& what) {
    constexpr int SAMPLES = 48;
    const std::time_t start = over.seconds != 0 ? now_ - over.seconds : midnight();
    std::time_t highest = now_, lowest = now_;
    double sum = 0;
    for (int i = 0; i < SAMPLES; ++i) {
      const std::time_t time = start + (now_ - start) * i / (SAMPLES - 1);
      sum += what.at(time, number);
      if (what.at(time, number) > what.at(highest, number)) highest = time;
      if (what.at(time, number) < what.at(lowest, number)) lowest = time;
    }
    const double centre = what.mean + what.step * number;
    const auto stretched = [&](std::time_t time) {
      const double value = centre + (what.at(time, number) - centre) * over.reach;
      return what.never_negative ? std::max(value, 0.0) : value;
    };
    const std::string key = std::string(over.name) + '_' + sensor + '_' + what.name;
    reading(key, what, sum / SAMPLES);
    if ((what.kept & HIGHEST) != 0) extreme(key + "max", what, stretched(highest), highest);
    if ((what.kept & LOWEST) != 0) extreme(key + "min", what, stretched(lowest), lowest);
  }

  // What has no curve: directions, totals, the pressure's tendency and height.
  void directions(const std::string& key, int number) {
    constexpr std::array<std::array<const char*, 3>, 2> NAMES = {{{"225", "SW", "SW"}, {"67", "ONO", "ENE"}}};
    const auto& names = NAMES[static_cast<std::size_t>(number) % NAMES.size()];
    line(key + "_deg", names[0]);
    line(key + "_de", names[1]);
    line(key + "_en", names[2]);
  }

  void rain_total(const period& over, const std::string& sensor) {
    static constexpr quantity TOTAL = {"total", MILLIMETRES, 1, BOTH, 0, 0, 0, 0, true};
    reading(std::string(over.name) + '_' + sensor + "_total", TOTAL, over.rain);
  }

 private:
  std::time_t midnight() const {
    std::tm local{};
    localtime_r(&now_, &local);
    return now_ - local.tm_hour * 3600 - local.tm_min * 60 - local.tm_sec;
  }

  static std::string digits_of(std::time_t time) {
    std::tm local{};
    localtime_r(&time, &local);
    char digits[20];
    std::strftime(digits, sizeof digits, "%Y%m%d%H%M%S", &local);
    return digits;
  }

  std::time_t now_;
  std::string text_;
};

void write_sensor(report_writer& report, const sensor_class& kind, int number, std::time_t now) {
  const std::string sensor = kind.prefix + std::to_string(number);
  const std::string prefix = kind.prefix;
  for (const quantity& what : kind.quantities)
    report.reading("actual_" + sensor + '_' + what.name, what, what.at(now, number));
  if (prefix == "wind") report.directions("actual_" + sensor + "_dir", number);
  if (prefix == "thb") report.line("actual_" + sensor + "_height_m", "212.0");

  for (const period& over : PERIODS) {
    for (const quantity& what : kind.quantities) report.summary(over, sensor, number, what);
    if (prefix == "wind") report.directions(std::string(over.name) + '_' + sensor + "_maindir", number);
    if (prefix == "rain") report.rain_total(over, sensor);
    if (prefix == "thb") report.line(std::string(over.name) + '_' + sensor + "_press_trend", "1");
  }
}

}  // namespace

std::string lifelike_report(std::time_t now) {
  report_writer report(now);
  report.line("actual_sunrise_standard_local", "05:41");
  report.line("actual_sunset_standard_local", "20:37");
  for (const sensor_class& kind : CLASSES)
    for (int number = 0; number < kind.sensors; ++number) write_sensor(report, kind, number, now);
  return report.take();
}

}  // namespace skypost::sim
