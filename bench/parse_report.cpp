// Measures how long it takes to parse a report, compared with bare loops that only search for the same keys, in
// microseconds of processor time. `scripts/bench` printed these figures on an AMD EPYC with Debian 12. The ARM figures
// are from qemu, so only their ratios count.
//
// "lifelike" reports contain the station's keys, "missing" ones do not; the number is the size in KB. "empty" is the
// cost of everything but searching.
//
//                                           parser     strstr     memmem
//   x86-64, glibc            lifelike/150      784        154        769
//                            missing/490     3,623      1,020      3,653
//                            empty               3
//   x86-64, glibc, no AVX-512
//                            lifelike/150      796        820        770
//                            missing/490     3,644      4,489      3,667
//   x86-64, musl             lifelike/150    1,462      3,874      1,452
//                            missing/490     6,573     24,067      6,533
//                            empty               3
//   armel, glibc             lifelike/150    1,821      5,359      1,636
//                            missing/490     9,035     32,978      8,687
//                            empty              38
//   armel, musl              lifelike/150    3,313     10,648      3,228
//                            missing/490    18,009     67,701     17,828
//                            empty              28
//   arm64, glibc             lifelike/150    2,058      9,509      1,813
//                            missing/490    10,934     60,711     10,397
//                            empty              40
//   arm64, musl              lifelike/150    3,329     10,042      3,272
//                            missing/490    17,990     65,374     18,087
//                            empty              23
//
// The parser uses memmem, because strstr is faster only with AVX-512, which no board has. Splitting the patterns at
// compile time saved 6 to 7 of the 23 to 38 microseconds on ARM, 0.2 to 0.4 percent of a lifelike report: not worth two
// more members per row.
//
// This program uses no heap and no exceptions, so that it builds for boards.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <iterator>
#include <string_view>

#include "base/text.h"
#include "live/live_table.h"
#include "live/report_parser.h"
#include "sim/sensors.h"

namespace skypost {
namespace {

using key_text = fixed_text<63>;

// Every key that the parser looks up, in order.
key_text keys[std::size(LIVE_TABLE)];

fixed_text<500'000> report;

void prepare_station() {
  sim::select_sensors(station_settings);
  for (std::size_t i = 0; i < std::size(LIVE_TABLE); ++i) {
    const live_row& row = LIVE_TABLE[i];
    keys[i].append_pattern(row.key, station_settings.text(row.sensor));
  }
}

void append_line(std::string_view key) {
  const bool is_time = key.ends_with("_time");
  const bool is_word = key.ends_with(' ') && key.find("_dir_") != key.npos;
  report.append_text(key);
  report.append_text(is_time ? " 20240617143512\n" : is_word ? " NNE\n" : " 21.3\n");
}

// Appends the same quantities for one more sensor of each class: th6 for th0.
void append_other_sensors(int number) {
  for (const live_row& row : LIVE_TABLE)
    for (const auto& [setting, sensor] : sim::SENSORS) {
      if (row.sensor.offset != setting.offset) continue;
      const std::string_view selected = sensor;
      key_text other;
      key_text key;
      other.append_text(head_of(selected, selected.size() - 1));
      other.append("%d", number);
      key.append_pattern(row.key, other.view());
      append_line(key.view());
    }
}

// Makes a report of about `size` bytes from other sensors, with or without the station's own keys.
void make_report(std::size_t size, bool has_keys) {
  report.clear();
  int other = 6;
  for (std::size_t i = 0; i < std::size(keys); ++i) {
    if (has_keys) append_line(keys[i].view());
    while (report.length() < size * i / std::size(keys)) append_other_sensors(other++);
  }
}

const char* volatile found;

void parse() {
  reset_live_record(live_record);
  parse_live_reply(report.c_str(), station_settings, live_record);
}

void bare_strstr() {
  for (const key_text& key : keys) found = std::strstr(report.c_str(), key.c_str());
}

void bare_memmem() {
  for (const key_text& key : keys)
    found = static_cast<const char*>(memmem(report.c_str(), report.length(), key.c_str(), key.length()));
}

// Returns the best of eight rounds, which other work on the machine disturbs less than their mean.
double microseconds(void (*read)()) {
  constexpr std::clock_t ROUND = CLOCKS_PER_SEC / 10;
  double best = 1e9;
  for (int round = 0; round < 8; ++round) {
    const std::clock_t start = std::clock();
    std::clock_t now = start;
    int times = 0;
    for (; now - start < ROUND; now = std::clock(), ++times) read();
    best = std::min(best, static_cast<double>(now - start) * 1e6 / CLOCKS_PER_SEC / times);
  }
  return best;
}

void measure(const char* name, std::size_t size, bool has_keys) {
  make_report(size, has_keys);
  std::printf("%-14s %10.0f %10.0f %10.0f\n", name, microseconds(parse), microseconds(bare_strstr),
              microseconds(bare_memmem));
}

}  // namespace
}  // namespace skypost

int main() {
  skypost::prepare_station();
  std::printf("%-14s %10s %10s %10s\n", "", "parser", "strstr", "memmem");
  skypost::measure("lifelike/150", 150'000, true);
  skypost::measure("missing/490", 490'000, false);
  skypost::measure("empty", 0, false);
}
