#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "sim/world.h"

namespace skypost::testing {

// The real program against the simulated appliance, every network switched on.
class program : public ::testing::Test {
 protected:
  ~program() override;

  sim::world all;

  // Switches every network off but these.
  void enable_only(std::initializer_list<const integer_field*> enabled);
  // Switches every network off but these two in rapid fire, each at its interval in seconds; 0: that one, too.
  void enable_only_rapid_fire(std::int32_t wunderground, std::int32_t weatherflow);

  // Runs to the end and expects status 0.
  sim::run_result run_well(const std::vector<std::string>& arguments = {});

  // Whatever is run from now on has interposed_calls.cpp preloaded, with SKYPOST_TEST_`what` set.
  static void interpose(const std::string& what, const std::string& value);

  // Waits until it holds, for so many seconds at most.
  static bool comes_true(const std::function<bool()>& holds, int seconds);

  // How many requests came, of one network or of all; each that is not as the network takes it fails the
  // test.
  int requests(const std::string& name = "") const;
};

}  // namespace skypost::testing
