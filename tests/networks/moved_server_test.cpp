// A network that has moved: what the endpoint file names takes the place of server and path, and of nothing else in
// the command. The row that a command's server comes from is also the one whose success text counts.

#include <gtest/gtest.h>

#include <string>

#include "base/endpoints.h"
#include "channels/channels.h"
#include "networks/networks.h"
#include "support/golden.h"
#include "support/pattern.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

class MovedServer : public ::testing::Test {
 protected:
  ~MovedServer() override { reset_endpoints(); }

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
    read_endpoint_lines(endpoint_name(static_cast<const http_network*>(what)->reply.server) +
                        (" = " + moved));
    const std::string url = first_match(as_ever, "\"https?://[^?\"]+").at(0);
    EXPECT_EQ(command_of(*what), replaced(as_ever, url, '"' + moved));
  }
}

TEST_F(MovedServer, OfIdokepsProServiceHasARowOfItsOwn) {
  fill_settings(settings);
  settings.set_integer(idokep_enabled, 2);
  read_endpoint_lines("idokep = http://a.example/one\nidokep_pro = http://b.example/two\n");
  EXPECT_NE(command_of(IDOKEP).find("\"http://b.example/two?user="), std::string::npos);
}

// A server of today refuses a name without a version, and throws packets by way of TCPXX* away. CWOP's keep theirs.
TEST_F(MovedServer, OfAprsIsToldAnotherSoftwareAndPath) {
  fill_settings(settings);
  read_endpoint_lines("aprs_software = nimbulog 1.0\naprs_path = TCPIP*\n");
  const std::string version = " vers nimbulog 1.0\r\n";
  EXPECT_TRUE(command_of(CWOP).starts_with("User N0CALL pass -1" + version + "N0CALL>APRS,TCPXX*:@"));
  const std::string call_sign(settings.text(aprs_call_sign));
  EXPECT_TRUE(command_of(APRS).starts_with("User " + call_sign + " pass 12345" + version + call_sign +
                                           ">APRS,TCPIP*:@"));
}

}  // namespace
}  // namespace skypost::testing
