// What scripts/weigh judges and no shell can measure:
//
//   skypost-weigh GLIBC-PROGRAM STATIC-PROGRAM BARE-PROGRAM SHELL-UPLOADER
//
// prints figures, one a line with its name: memory in KiB, processor time in microseconds. All programs run on one
// simulated appliance, with one lifelike report.

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <regex>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "measured_run.h"
#include "sim/report.h"
#include "sim/world.h"

namespace skypost {
namespace {

// An afternoon in June: reports of one moment are equal, and so are the instructions that read them.
constexpr std::time_t MOMENT = 1'718'634'912;

void print(const std::string& name, double value) { std::printf("%s %.0f\n", name.c_str(), value); }

// The mean of `rounds` runs. Each round tries all of them, so that the machine's other work disturbs them alike.
void print_own_times(int rounds, std::span<const std::pair<const char*, words>> programs) {
  std::vector<double> sums(programs.size());
  for (int i = 0; i < rounds; ++i)
    for (std::size_t k = 0; k < programs.size(); ++k) sums[k] += cpu_time_of(programs[k].second).own;
  for (std::size_t k = 0; k < programs.size(); ++k) print(programs[k].first, sums[k] / rounds);
}

// Percent-encoded for a URL.
std::string encoded(std::string_view text) {
  std::string url;
  for (const char character : text) {
    const unsigned char byte = static_cast<unsigned char>(character);
    char code[4];
    std::snprintf(code, sizeof code, "%%%02X", byte);
    url += std::isalnum(byte) != 0 ? std::string(1, character) : code;
  }
  return url;
}

// The value of `name` in the lines of an endpoint file.
std::string server_of(const std::string& lines, const std::string& name) {
  const std::size_t line = ('\n' + lines).find('\n' + name + " = ");
  const std::size_t value = line + name.size() + 3;
  return lines.substr(value, lines.find('\n', value) - value);
}

// A report of 150 KB: seven in ten lines are repeated for another sensor, th10 after th0, which the settings do not
// select.
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

class scales {
 public:
  scales() : report_(report_of_150_kilobytes()) {
    all_.data->set_report(report_);
    setenv("SKYPOST_ROOT", all_.board.root().c_str(), 1);
    setenv("HOME", all_.board.root().c_str(), 1);
    print("report", static_cast<double>(report_.size()));
  }

  void weigh_start_up(const std::string& name, const std::string& program) {
    print(name + "_start_peak", static_cast<double>(trace({program, "-x"}).peak));
    print(name + "_start_instructions", instructions({program, "-x"}));
  }

  // Over every network.
  void weigh_full_run(const std::string& name, const std::string& program) {
    forget_last_run();
    print(name + "_run_peak", static_cast<double>(trace({program}).peak));
    forget_last_run();
    print(name + "_run_instructions", instructions({program}));
    double time = 0;
    constexpr int ROUNDS = 3;
    for (int i = 0; i < ROUNDS; ++i) {
      forget_last_run();
      time += cpu_time_of({program}).own;
    }
    print(name + "_run_time", time / ROUNDS);
  }

  // What the report costs, compared with a report of one line, in a run without networks.
  void weigh_reading(const std::string& name, const std::string& program) {
    all_.board.switch_all_networks_off();
    all_.board.save_settings();
    all_.data->set_report("actual_th0_temp_c 21.3\n");
    const double without = instructions({program});
    all_.data->set_report(report_);
    print(name + "_report_instructions", instructions({program}) - without);
  }

  void choose_weather_underground() {
    all_.board.switch_all_networks_off();
    all_.board.settings.set_integer(wunderground_enabled, 1);
    all_.board.save_settings();
  }

  // The shell script with the station's account.
  words shell_uploader(const std::string& script, const std::string& client) const {
    const settings_record& settings = all_.board.settings;
    return {script, client,
            server_of(all_.peers.endpoints(), "wunderground") + "/weatherstation/updateweatherstation.php",
            encoded(settings.text(wunderground_id)), encoded(settings.text(wunderground_password))};
  }

  void weigh_one_request(const std::string& name, const words& command) {
    constexpr int ROUNDS = 50;
    all_.peers.forget_requests();
    double time = 0;
    for (int i = 0; i < ROUNDS; ++i) time += cpu_time_of(command).with_children;
    print(name + "_request_time", time / ROUNDS);
    print(name + "_request_processes", trace(command).processes);

    const std::vector<sim::request_seen> requests = all_.peers.requests();
    if (requests.size() != ROUNDS + 1) throw std::runtime_error(name + ": not every run sent a request");
    for (const sim::request_seen& seen : requests)
      if (!seen.fault.empty()) throw std::runtime_error(name + ": " + seen.fault);
  }

 private:
  double instructions(const words& command) const {
    return static_cast<double>(instructions_of(all_.board.root() / "valgrind", command));
  }

  // Otherwise a network that is not served by every run would be skipped.
  void forget_last_run() const { std::filesystem::remove(all_.board.path(LAST_RUN_PATH)); }

  sim::world all_;
  std::string report_;
};

void weigh(const std::string& glibc, const std::string& board, const std::string& bare,
           const std::string& script) {
  const std::pair<const char*, words> starts[] = {
      {"glibc_start_time", {glibc, "-x"}}, {"static_start_time", {board, "-x"}}, {"bare_start_time", {bare}}};
  print_own_times(1'000, starts);
  const std::pair<const char*, words> wget[] = {{"wget_start_time", {"/usr/bin/wget", "--version"}}};
  print_own_times(200, wget);

  scales all;
  const std::pair<const char*, std::string> programs[] = {{"glibc", glibc}, {"static", board}};
  for (const auto& [name, program] : programs) all.weigh_start_up(name, program);
  for (const auto& [name, program] : programs) all.weigh_full_run(name, program);
  for (const auto& [name, program] : programs) all.weigh_reading(name, program);
  all.choose_weather_underground();
  for (const auto& [name, program] : programs) all.weigh_one_request(name, {program});
  for (const char* const client : {"wget", "curl"})
    all.weigh_one_request(client, all.shell_uploader(script, client));
}

}  // namespace
}  // namespace skypost

int main(int count, char** arguments) {
  if (count != 5) {
    std::fputs("usage: skypost-weigh GLIBC-PROGRAM STATIC-PROGRAM BARE-PROGRAM SHELL-UPLOADER\n", stderr);
    return 2;
  }
  try {
    skypost::weigh(arguments[1], arguments[2], arguments[3], arguments[4]);
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "skypost-weigh: %s\n", fault.what());
    return 1;
  }
}
