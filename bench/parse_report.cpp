// How long it takes to read a report, beside bare loops that only look for the same keys. A name is
// where the station's keys are in the report, its size in KB, and who reads it.
//
// Wanted: absent/490 within 1.3 times of the better bare loop, lifelike/150 within 2 times.
//
// Ways to search that were tried, in microseconds, on a 2.6 GHz Xeon with Debian 12's C library; the
// second column without AVX-512:
//
//                                           absent/490     lifelike/150
//   the parser, on strstr                   1,490   2,720     234     508
//   strstr                                  1,475   2,760     212     511
//   memmem                                  3,830   3,770     889     959
//   steps of m - 3, table of 4,096 bytes    2,190   2,190     467     468
//   steps of m - 3, table of 256 bytes      3,580   3,580     690     697
//   shift table over groups of 4 bytes     10,900  10,900   1,670   1,740
//   Horspool's shift table                 11,950  11,770   1,810   1,900
//   16 positions at a time by two bytes     7,700   7,710   1,270   1,320
//   memchr for the first byte              11,710  13,430   1,730   1,870
//   string_view::find                      11,540  13,730   1,720   1,910
//
// (Steps of m - 3: of a key of m bytes every such step hits one of its groups of 4, which a hashed table
// knows; it beats strstr only without AVX-512.) The parser around strstr costs 12 microseconds, 9
// with -O2: not worth an option of its own.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "base/text.h"
#include "live/live_table.h"
#include "live/report_parser.h"
#include "settings/record.h"

namespace skypost {
namespace {

// Where the keys that the station asks for are among those of its other sensors.
enum place : std::uint8_t { EARLY, LATE, ABSENT, LIFELIKE };
constexpr const char* PLACE_NAMES[] = {"early", "late", "absent", "lifelike"};

struct selection {
  const text_field* field;
  const char* sensor_class;
  const char* number = "0";
};
constexpr selection SELECTIONS[] = {
    // clang-format off
    {&sensor_temp,   "th"},
    {&sensor_hum,    "th"},
    {&sensor_dew,    "th"},
    {&sensor_press,  "thb"},
    {&sensor_wind,   "wind"},
    {&sensor_rain,   "rain"},
    {&sensor_uv,     "uv"},
    {&sensor_indoor, "thb"},
    {&sensor_solar,  "sol"},
    {&sensor_extra_temp0, "t", "0"},
    {&sensor_extra_temp1, "t", "1"},
    {&sensor_extra_temp2, "t", "2"},
    {&sensor_extra_temp3, "t", "3"},
    {&sensor_extra_temp4, "t", "4"},
    {&sensor_extra_temp5, "t", "5"},
    // clang-format on
};

void select_sensors() {
  for (const selection& row : SELECTIONS)
    station_settings.set_text(*row.field, std::string(row.sensor_class) + row.number);
}

std::string key_of(const char* pattern, std::string_view sensor) {
  fixed_text<63> key;
  key.append_pattern(pattern, sensor);
  return key.c_str();
}

// Every key that the parser looks up, in its order.
std::vector<std::string> wanted_keys() {
  std::vector<std::string> keys;
  for (const live_row& row : LIVE_TABLE)
    keys.push_back(
        key_of(row.key, row.sensor == nullptr ? std::string_view{} : station_settings.text(*row.sensor)));
  return keys;
}

std::string line_of(const std::string& key) {
  const bool is_time = key.find("_time") != std::string::npos;
  const bool is_word = key.find("_dir_") != std::string::npos && key.back() == ' ';
  return key + (is_time ? " 20240617143512\n" : is_word ? " NNE\n" : " 21.3\n");
}

// The same quantities of one more sensor of each class.
void add_other_sensors(std::vector<std::string>& lines, int number) {
  for (const live_row& row : LIVE_TABLE)
    for (const selection& selected : SELECTIONS)
      if (row.sensor == selected.field)
        lines.push_back(line_of(key_of(row.key, selected.sensor_class + std::to_string(number))));
}

std::size_t length_of(const std::vector<std::string>& lines) {
  std::size_t length = 0;
  for (const std::string& line : lines) length += line.size();
  return length;
}

// A report of about `size` bytes.
std::string make_report(std::size_t size, place where) {
  std::vector<std::string> own;
  if (where != ABSENT)
    for (const std::string& key : wanted_keys()) own.push_back(line_of(key));
  const std::size_t room = size - length_of(own);
  std::vector<std::string> lines;
  for (int number = 6; length_of(lines) < room; ++number) add_other_sensors(lines, number);
  while (length_of(lines) > room) lines.pop_back();
  for (std::size_t i = 0; i < own.size(); ++i) {
    const std::size_t spread = lines.size() * i / own.size();
    const std::size_t position = where == EARLY ? i : where == LATE ? lines.size() : spread;
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(position), own[i]);
  }
  std::string report;
  for (const std::string& line : lines) report += line;
  return report;
}

void parse(const std::string& report, const std::vector<std::string>&) {
  reset_live_record();
  parse_live_reply(report.c_str());
  benchmark::DoNotOptimize(live_record);
}

void bare_strstr(const std::string& report, const std::vector<std::string>& keys) {
  for (const std::string& key : keys) benchmark::DoNotOptimize(std::strstr(report.c_str(), key.c_str()));
}

void bare_memmem(const std::string& report, const std::vector<std::string>& keys) {
  for (const std::string& key : keys)
    benchmark::DoNotOptimize(memmem(report.data(), report.size(), key.data(), key.size()));
}

struct reader {
  const char* name;
  void (*read)(const std::string& report, const std::vector<std::string>& keys);
};
constexpr reader READERS[] = {{"parse", parse}, {"strstr", bare_strstr}, {"memmem", bare_memmem}};

void measure(benchmark::State& state, const reader& reader, std::size_t size, place where) {
  const std::vector<std::string> keys = wanted_keys();
  const std::string report = make_report(size, where);
  for (auto _ : state) reader.read(report, keys);
}

// One below the other what is to be compared.
void add_benchmarks() {
  for (const int kilobytes : {20, 150, 490})
    for (const place where : {EARLY, LATE, LIFELIKE, ABSENT})
      for (const reader& reader : READERS) {
        const std::string name =
            std::string(PLACE_NAMES[where]) + "/" + std::to_string(kilobytes) + "/" + reader.name;
        const std::size_t size = static_cast<std::size_t>(kilobytes) * 1'000;
        benchmark::RegisterBenchmark(name.c_str(), measure, reader, size, where)
            ->Unit(benchmark::kMicrosecond);
      }
}

}  // namespace
}  // namespace skypost

int main(int argument_count, char** arguments) {
  skypost::select_sensors();
  skypost::add_benchmarks();
  benchmark::Initialize(&argument_count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
