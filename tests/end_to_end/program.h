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

  // Switches off every network except these.
  void enable_only(std::initializer_list<const integer_field*> enabled);
  // Switches everything off except rapid fire of these two networks at these intervals in seconds, 0 for off.
  void enable_only_rapid_fire(std::int32_t wunderground, std::int32_t weatherflow);

  // Runs the program and expects exit status 0.
  sim::run_result run_well(const std::vector<std::string>& arguments = {});

  // Preloads interposed_calls.cpp into all later programs, with SKYPOST_TEST_`what` set.
  static void interpose(const std::string& what, const std::string& value);

  // How often the pattern occurs in /trace, for which TRACE was interposed.
  int traced(const std::string& pattern) const;

  // Waits up to `seconds` until `holds` returns true.
  static bool comes_true(const std::function<bool()>& holds, int seconds);

  // The number of requests to one network, or to all. A malformed request fails the test.
  int requests(const std::string& name = "") const;
};

}  // namespace skypost::testing
