// A row's function and what the row says that it sends belong together: the previews and the golden texts come
// from the one, what leaves the appliance from the other.

#include "run/run_list.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <string>

#include "base/process_state.h"
#include "channels/channels.h"
#include "run/rapid_fire.h"
#include "settings/field_descriptions.h"
#include "support/station.h"

namespace {

std::string* caught_command = nullptr;

}  // namespace

// Stands in for the C library's while a test wants to see the command.
extern "C" std::FILE* popen(const char* command, const char* mode) {
  if (caught_command != nullptr) {
    *caught_command = command;
    errno = ENOMEM;
    return nullptr;
  }
  using popen_function = std::FILE*(const char*, const char*);
  static const auto next = reinterpret_cast<popen_function*>(dlsym(RTLD_NEXT, "popen"));
  return next(command, mode);
}

namespace skypost::testing {
namespace {

TEST(RunList, SendsWhatItsRowsSay) {
  flags = {};
  fill_settings(station_settings);
  live_record = fully_equipped_station();
  for (const run_step& step : run_list()) {
    SCOPED_TRACE(step.name.text);
    // A file's function names its text, a session composes its packet: end_to_end/preview_test.cpp compares both with
    // what the row says.
    if (step.what->by == carrier::aprs || step.what->by == carrier::file) continue;
    error_text.append_text("left by another network");
    // A second may pass between the two.
    const std::string before = composed_now(*step.what);
    std::string command;
    caught_command = &command;
    EXPECT_EQ(step.call(), -1);
    caught_command = nullptr;
    // Of the mail, the command is the mail program's.
    EXPECT_TRUE(step.what->by == carrier::mail || command == before || command == composed_now(*step.what))
        << command;
    const std::string reason = "Cannot allocate memory";
    EXPECT_EQ(error_text.view(), step.what == &WUNDERGROUND ? "error open pipe (" + reason + "): " + command
                                 : step.what == &BORGERVEJR ? "error pipe open: " + command + ": " + reason
                                                            : "error open pipe " + command + ": " + reason);
  }
}

TEST(RunList, HasARapidFireNetworkForEveryRapidForm) {
  for (const run_step& step : run_list()) {
    const http_network* const network = as_http_network(*step.what);
    if (network == nullptr || network->rapid_form == nullptr) continue;
    EXPECT_TRUE(std::any_of(std::begin(RAPID_FIRE_NETWORKS), std::end(RAPID_FIRE_NETWORKS),
                            [&](const rapid_fire_network& row) {
                              return row.enabled == step.enabled && row.rapid_enabled != nullptr;
                            }))
        << step.name.text;
  }
}

// A network whose row was forgotten would have a switch that does nothing; one misspelt group would split it in
// two.
TEST(RunList, HasAStepForTheSwitchOfEveryGroup) {
  std::map<std::string, int> switches;
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    const bool is_of_a_step = std::any_of(run_list().begin(), run_list().end(),
                                          [&](const run_step& step) { return step.enabled == &row.field; });
    switches[row.group] += is_of_a_step ? 1 : 0;
  }
  for (const char* const common : {"record", "appliance", "position", "sensors"}) switches.erase(common);
  for (const auto& [group, count] : switches) EXPECT_EQ(count, 1) << "run_list.cpp has no step for " << group;
}

}  // namespace
}  // namespace skypost::testing
