#include "run/run_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

#include "common/field_descriptions.h"
#include "run/rapid_fire.h"

namespace skypost::testing {
namespace {

TEST(RunList, HasARapidFireNetworkForEveryRapidVariant) {
  for (const run_step& step : run_list()) {
    if (step.upload->rapid_variant == nullptr) continue;
    EXPECT_TRUE(std::any_of(std::begin(RAPID_FIRE_NETWORKS), std::end(RAPID_FIRE_NETWORKS),
                            [&](const rapid_fire_network& row) {
                              return row.upload == step.upload && row.enabled == step.enabled &&
                                     row.rapid_enabled != nullptr;
                            }))
        << step.name.text;
  }
}

// A network missing from run_list.def would have a switch that does nothing; a misspelt group would split a network.
TEST(RunList, HasAStepForTheSwitchOfEveryGroup) {
  std::map<std::string, int> switches;
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    const bool is_of_a_step = std::any_of(run_list().begin(), run_list().end(),
                                          [&](const run_step& step) { return step.enabled == &row.field; });
    switches[row.group] += is_of_a_step ? 1 : 0;
  }
  for (const char* const common : {"record", "appliance", "position", "sensors"}) switches.erase(common);
  for (const auto& [group, count] : switches) EXPECT_EQ(count, 1) << "run_list.def has no step for " << group;
}

}  // namespace
}  // namespace skypost::testing
