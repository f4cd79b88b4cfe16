#include "support/station.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <stdexcept>

#include "common/field_descriptions.h"
#include "endpoints/endpoint_file.h"
#include "endpoints/endpoints.h"
#include "live/report_parser.h"
#include "run/run_list.h"
#include "settings/defaults.h"
#include "sim/sensors.h"
#include "support/golden.h"

namespace skypost::testing {

std::string full_report() { return read_whole_file(TESTS_DIRECTORY "/live/golden/report"); }

settings_record sensors_of_the_report() {
  settings_record settings{};
  sim::select_sensors(settings);
  settings.set_text(sensor_hum, "th1");
  settings.set_text(sensor_dew, "th2");
  settings.set_text(sensor_indoor, "thb1");
  return settings;
}

bool replace_value(std::string& report, const std::string& key, const std::string& value) {
  const std::size_t line = report.find('\n' + key + ' ') + 1;
  if (line == 0) return false;
  const std::size_t end = report.find('\n', line) + 1;
  report.replace(line, end - line, value.empty() ? "" : key + ' ' + value + '\n');
  return true;
}

LiveRecord parsed(const std::string& report) {
  setenv("TZ", "Europe/Berlin", 1);
  LiveRecord live;
  reset_live_record(live);
  parse_live_reply(report.c_str(), sensors_of_the_report(), live);
  return live;
}

LiveRecord fully_equipped_station() { return parsed(full_report()); }

LiveRecord sparse_station() {
  return parsed("actual_th0_temp_c 21.5\nactual_th1_hum_rel 57\nactual_th2_dew_c 10.0\n");
}

void fill_settings(settings_record& settings) {
  std::memset(&settings, 0, sizeof settings);
  set_default_settings(settings);
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.field.is_text() && settings.text(row.as_text()).empty() &&
        row.group != std::string_view("sensors"))
      settings.set_text(row.as_text(), row.name);
  std::istringstream lines(read_whole_file(TESTS_DIRECTORY "/golden/settings"));
  for (std::string name, value; lines >> name && std::getline(lines >> std::ws, value);)
    EXPECT_TRUE(set_field(settings, name, value)) << name;
}

bool set_field(settings_record& settings, std::string_view name, const std::string& value) {
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (row.name != name) continue;
    row.field.is_text() ? settings.set_text(row.as_text(), value)
                        : settings.set_integer(row.as_integer(), std::stoi(value));
    return true;
  }
  return false;
}

void switch_everything_on(settings_record& settings) {
  fill_settings(settings);
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.field.kind == field_kind::flag) settings.set_integer(row.as_integer(), 1);
  sim::select_sensors(settings);
}

std::string local_servers() {
  std::string lines;
  for (int row = 0; row < static_cast<int>(endpoint::COUNT); ++row) {
    const std::string server = endpoint_value(endpoint{row});
    const std::size_t scheme_end = server.find("://");
    const std::string scheme = scheme_end == std::string::npos ? "" : server.substr(0, scheme_end + 3);
    const bool is_server = server.find('.') != std::string::npos && server.find('@') == std::string::npos;
    if (is_server) lines += std::string(endpoint_name(endpoint{row})) + " = " + scheme + "127.0.0.1\n";
  }
  return lines;
}

std::string read_endpoint_lines(std::string lines) {
  std::FILE* const file = fmemopen(lines.data(), lines.size(), "r");
  ::testing::internal::CaptureStderr();
  read_endpoints(file, "endpoints");
  std::fclose(file);
  return ::testing::internal::GetCapturedStderr();
}

void set_rapid_fire(settings_record& settings, std::int32_t wunderground, std::int32_t weatherflow) {
  settings.set_integer(wunderground_enabled, wunderground != 0);
  settings.set_integer(wunderground_rapid_enabled, wunderground != 0);
  settings.set_integer(wunderground_rapid_interval, wunderground);
  settings.set_integer(weatherflow_enabled, weatherflow != 0);
  settings.set_integer(weatherflow_rapid_enabled, weatherflow != 0);
  settings.set_integer(weatherflow_rapid_interval, weatherflow);
}

moment spring_morning() {
  setenv("TZ", "Europe/Berlin", 1);
  return moment_at(1'336'280'889);
}

std::string composed(const upload& what, const settings_record& settings, const LiveRecord& live) {
  upload_text text;
  what.compose(text, {settings, live, spring_morning(), ORDINARY_BOARD});
  EXPECT_FALSE(text.was_cut());
  return text.c_str();
}

std::string composed_now(const upload& what) {
  upload_text text;
  what.compose(text, *current_station());
  return text.c_str();
}

std::vector<const upload*> every_upload() {
  std::vector<const upload*> all;
  for_each_upload([&](const upload& one) {
    for (const upload* const other : all)
      if (std::string_view(other->id) == one.id)
        throw std::logic_error("run_list.def hands out two texts with the id " + std::string(one.id));
    all.push_back(&one);
  });
  return all;
}

}  // namespace skypost::testing
