#include "end_to_end/program.h"

namespace skypost::testing {

void program::switch_aprs_off() {
  all.board.settings.set_integer(cwop_enabled, 0);
  all.board.settings.set_integer(aprs_enabled, 0);
  all.board.save_settings();
}

void program::enable_only(std::initializer_list<const integer_field*> enabled) {
  all.board.switch_all_networks_off();
  for (const integer_field* field : enabled) all.board.settings.set_integer(*field, 1);
  all.board.save_settings();
}

sim::run_result program::run_well(const std::vector<std::string>& arguments) {
  sim::run_result run = all.board.run(arguments);
  EXPECT_EQ(run.signal, 0);
  EXPECT_EQ(run.status, 0);
  return run;
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
