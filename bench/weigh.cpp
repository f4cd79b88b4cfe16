// The measuring half of scripts/weigh. Runs a program over every network, on a simulated appliance with a report of
// 150 KB.
//
//   skypost-weigh COMMAND...
//
// prints one figure per line with its name: the report's size in bytes, the program's peak memory in KiB, and its
// processor time in microseconds, without and with its children.

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>

#include "base/paths.h"
#include "measured_run.h"
#include "sim/report.h"
#include "sim/world.h"

namespace skypost {
namespace {

// An afternoon in June.
constexpr std::time_t MOMENT = 1'718'634'912;
constexpr int ROUNDS = 2;

// A station's report with seven of ten lines repeated for a sensor that the settings do not select: th10 for th0.
std::string report_of_150_kilobytes() {
  static const std::regex SENSOR("_([a-z]+)([0-9]+)_");
  std::istringstream lines(sim::lifelike_report(MOMENT));
  std::string report;
  int number = 0;
  for (std::string line; std::getline(lines, line); ++number) {
    report += line + '\n';
    if (number % 10 < 7) report += std::regex_replace(line, SENSOR, "_$011$2_") + '\n';
  }
  return report;
}

void weigh(const words& command) {
  const std::string report = report_of_150_kilobytes();
  sim::world all;
  all.data->set_report(report);
  setenv("SKYPOST_ROOT", all.board.root().c_str(), 1);
  setenv("HOME", all.board.root().c_str(), 1);
  // Otherwise the second run would skip the gated network.
  const auto forget_last_run = [&] { std::filesystem::remove(all.board.path(LAST_RUN_PATH)); };

  const long peak = peak_memory_of(command);
  cpu_time sum;
  for (int i = 0; i < ROUNDS; ++i) {
    forget_last_run();
    const cpu_time time = cpu_time_of(command);
    sum.own += time.own;
    sum.with_children += time.with_children;
  }
  std::printf("report %zu\npeak %ld\nown %.0f\nall %.0f\n", report.size(), peak, sum.own / ROUNDS,
              sum.with_children / ROUNDS);
}

}  // namespace
}  // namespace skypost

int main(int count, char** arguments) {
  if (count < 2) {
    std::fputs("usage: skypost-weigh COMMAND...\n", stderr);
    return 2;
  }
  try {
    skypost::weigh({arguments + 1, arguments + count});
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "skypost-weigh: %s\n", fault.what());
    return 1;
  }
}
