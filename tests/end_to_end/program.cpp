#include "end_to_end/program.h"

#include <chrono>
#include <cstdlib>
#include <thread>

#include "support/pattern.h"
#include "support/station.h"

namespace skypost::testing {

program::~program() {
  unsetenv("LD_PRELOAD");
  for (const char* const what : {"FAIL", "HASTE", "CLOCK", "TIME", "TRACE"})
    unsetenv((std::string("SKYPOST_TEST_") + what).c_str());
}

void program::enable_only(std::initializer_list<const integer_field*> enabled) {
  all.board.switch_all_networks_off();
  for (const integer_field* field : enabled) all.board.settings.set_integer(*field, 1);
  all.board.save_settings();
}

void program::enable_only_rapid_fire(std::int32_t wunderground, std::int32_t weatherflow) {
  all.board.switch_all_networks_off();
  set_rapid_fire(all.board.settings, wunderground, weatherflow);
  all.board.save_settings();
}

sim::run_result program::run_well(const std::vector<std::string>& arguments) {
  sim::run_result run = all.board.run(arguments);
  EXPECT_EQ(run.signal, 0);
  EXPECT_EQ(run.status, 0);
  return run;
}

void program::interpose(const std::string& what, const std::string& value) {
  setenv("LD_PRELOAD", INTERPOSED_CALLS, 1);
  setenv(("SKYPOST_TEST_" + what).c_str(), value.c_str(), 1);
}

int program::traced(const std::string& pattern) const {
  return static_cast<int>(all_matches(all.board.read("/trace"), pattern).size());
}

bool program::comes_true(const std::function<bool()>& holds, int seconds) {
  for (int i = 0; i < seconds * 20; ++i) {
    if (holds()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return false;
}

int program::requests(const std::string& name) const {
  int count = 0;
  for (const sim::request_seen& seen : all.peers.requests()) {
    if (!name.empty() && name != seen.network->name) continue;
    EXPECT_EQ(seen.fault, "") << seen.network->name << ": " << seen.request;
    ++count;
  }
  return count;
}

}  // namespace skypost::testing
