// The whole command line of every HTTP network, byte for byte, against the texts in golden/. A wrong
// unit, a parameter out of its order or a value from the wrong field shows as a difference there.

#include <gtest/gtest.h>

#include <cstdlib>

#include "base/process_state.h"
#include "support/every_network.h"
#include "support/station.h"
#include "transport/command.h"

namespace skypost::testing {
namespace {

class HttpCommand : public ::testing::TestWithParam<named_network> {
 protected:
  // What MeteoNews asks the board for.
  void SetUp() override {
    hardware_address.clear();
    hardware_address.append_text("00:1A:2B:3C:4D:5E");
    unsetenv("NIMBULOGHW");
  }
  void TearDown() override { hardware_address.clear(); }

  std::string compose(const LiveRecord& live) {
    settings_record settings;
    fill_settings(settings);
    command_text command;
    GetParam().network->compose(command, settings, live, spring_morning());
    return command.c_str();
  }

  std::string golden(const char* station) {
    return read_whole_file(std::string(TESTS_DIRECTORY "/networks/golden/") + GetParam().name + "." +
                           station);
  }
};

TEST_P(HttpCommand, OfAFullyEquippedStation) {
  EXPECT_EQ(compose(fully_equipped_station()) + "\n", golden("full"));
}

TEST_P(HttpCommand, OfAStationWithOnlyTheOutdoorValues) {
  EXPECT_EQ(compose(sparse_station()) + "\n", golden("sparse"));
}

INSTANTIATE_TEST_SUITE_P(Networks, HttpCommand, ::testing::ValuesIn(EVERY_HTTP_NETWORK),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace skypost::testing
