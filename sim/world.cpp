#include "sim/world.h"

#include <algorithm>
#include <ctime>
#include <stdexcept>
#include <string>

#include "base/paths.h"
#include "run/run_list.h"
#include "sim/report.h"

namespace skypost::sim {
namespace {

constexpr std::uint16_t CWOP_PORT = 14580;
constexpr int CWOP_PASSCODE = -1;

// Without a peer, a step would send the station's account to the network's real server.
void require_peer_of_every_network() {
  const auto networks = http_networks();
  for (const run_step& step : run_list()) {
    const auto plays = [&](const network_row& row) { return row.name == std::string_view(step.name.text); };
    if (step.what->by == carrier::http && std::none_of(networks.begin(), networks.end(), plays))
      throw std::logic_error("sim/networks.cpp has no row for \"" + std::string(step.name.text) + '"');
  }
}

}  // namespace

world::world() : data(lifelike_report(std::time(nullptr))), peers(board.root() / "certificate.pem") {
  require_peer_of_every_network();
  cwop.emplace(CWOP_PORT, CWOP_ID, CWOP_PASSCODE);
  aprs.emplace(std::uint16_t{0}, APRS_CALL_SIGN, APRS_PASSCODE);
  board.settings.set_integer(aprs_port, aprs->port());
  board.save_settings();
  board.install_mail_program(mail.port());
  write_endpoints();
}

void world::write_endpoints(bool on_nslu2) const {
  board.write(ENDPOINTS_PATH, peers.endpoints(on_nslu2) +
                                  "cwop_first = 127.0.0.1\ncwop_second = 127.0.0.1\n"
                                  "borgervejr_recipient = " +
                                  MAIL_RECIPIENT + '\n');
}

}  // namespace skypost::sim
