// The whole command line of every HTTP network, byte for byte, against the texts in golden/. A wrong
// unit, a parameter out of its order or a value from the wrong field shows as a difference there.

#include <gtest/gtest.h>

#include "networks/weather_underground.h"
#include "support/station.h"
#include "transport/command.h"

namespace skypost::testing {
namespace {

struct command_case {
  const char* name;
  const http_network* network;
};

constexpr command_case CASES[] = {
    {"weather_underground", &WEATHER_UNDERGROUND},
    {"weather_underground_rapid", &WEATHER_UNDERGROUND_RAPID},
    {"weatherflow", &WEATHERFLOW},
    {"weatherflow_rapid", &WEATHERFLOW_RAPID},
    {"metoffice_wow", &METOFFICE_WOW},
    {"pwsweather", &PWSWEATHER},
    {"weatherbug", &WEATHERBUG},
};

class HttpCommand : public ::testing::TestWithParam<command_case> {
 protected:
  std::string compose(const LiveRecord& live) {
    settings_record settings;
    fill_settings(settings);
    command_text command;
    GetParam().network->compose(command, settings, live, spring_morning());
    return command.c_str();
  }

  std::string golden(const char* station) {
    return read_whole_file(std::string(GOLDEN_DIRECTORY "/") + GetParam().name + "." + station);
  }
};

TEST_P(HttpCommand, OfAFullyEquippedStation) {
  EXPECT_EQ(compose(fully_equipped_station()) + "\n", golden("full"));
}

TEST_P(HttpCommand, OfAStationWithOnlyTheOutdoorValues) {
  EXPECT_EQ(compose(sparse_station()) + "\n", golden("sparse"));
}

INSTANTIATE_TEST_SUITE_P(Networks, HttpCommand, ::testing::ValuesIn(CASES),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace skypost::testing
