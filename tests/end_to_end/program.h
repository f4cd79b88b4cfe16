#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sim/world.h"

namespace skypost::testing {

// The real program against the simulated appliance, every network switched on.
class program : public ::testing::Test {
 protected:
  sim::world all;

  // The two that pause for seven seconds.
  void switch_aprs_off();
  // Every network but these.
  void enable_only(std::initializer_list<const integer_field*> enabled);

  // Runs to the end and expects status 0.
  sim::run_result run_well(const std::vector<std::string>& arguments = {});

  // How many requests came, of one network or of all; each that is not as the network takes it fails the
  // test.
  int requests(const std::string& name = "") const;
};

}  // namespace skypost::testing
