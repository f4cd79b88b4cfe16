#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "sim/world.h"

namespace skypost::testing {

// The real program on the simulated appliance, with every network switched on.
class program : public ::testing::Test {
 protected:
  ~program() override;

  sim::world all;

  // Switches every network off but these.
  void enable_only(std::initializer_list<const integer_field*> enabled);
  // Switches every network off but these two in rapid fire, each at its interval in seconds; 0 switches it off.
  void enable_only_rapid_fire(std::int32_t wunderground, std::int32_t weatherflow);

  // Runs to the end and expects status 0.
  sim::run_result run_well(const std::vector<std::string>& arguments = {});

  // From now on interposed_calls.cpp is preloaded into what is run, with SKYPOST_TEST_`what` set.
  static void interpose(const std::string& what, const std::string& value);

  // Waits until it holds, up to `seconds`.
  static bool comes_true(const std::function<bool()>& holds, int seconds);

  // The number of requests that came for one network, or for all; a malformed one fails the test.
  int requests(const std::string& name = "") const;
};

}  // namespace skypost::testing
