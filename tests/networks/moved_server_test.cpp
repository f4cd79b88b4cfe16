// A network that has moved: what the endpoint file names takes the place of server and path, and of nothing else in
// the command. The row that a command's server comes from is also the one whose success text counts.

#include <gtest/gtest.h>

#include <cstdio>
#include <regex>
#include <string>

#include "base/endpoints.h"
#include "networks/networks.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

class MovedServer : public ::testing::Test {
 protected:
  ~MovedServer() override { reset_endpoints(); }

  static void read(std::string lines) {
    std::FILE* const file = fmemopen(lines.data(), lines.size(), "r");
    read_endpoints(file, "endpoints");
    std::fclose(file);
  }

  std::string command_of(const outgoing& network) const {
    return composed(network, settings, fully_equipped_station());
  }

  settings_record settings{};
};

TEST_F(MovedServer, IsInTheCommandInPlaceOfServerAndPath) {
  fill_settings(settings);
  const std::string moved = "https://moved.example:8443/new~/a-b_c.php";
  for (const outgoing* const what : everything_handed_out()) {
    if (what->carried_by != carrier::http || what == &METEONEWS) continue;
    SCOPED_TRACE(what->id);
    reset_endpoints();
    const std::string as_ever = command_of(*what);
    read(endpoint_name(static_cast<const http_network*>(what)->reply.server) + (" = " + moved));
    const std::regex url("\"https?://[^?\"]+");
    EXPECT_EQ(command_of(*what),
              std::regex_replace(as_ever, url, '"' + moved, std::regex_constants::format_first_only));
  }
}

TEST_F(MovedServer, OfIdokepsProServiceHasARowOfItsOwn) {
  fill_settings(settings);
  settings.set_integer(idokep_enabled, 2);
  read("idokep = http://a.example/one\nidokep_pro = http://b.example/two\n");
  EXPECT_NE(command_of(IDOKEP).find("\"http://b.example/two?user="), std::string::npos);
}

}  // namespace
}  // namespace skypost::testing
