#include "sim/world.h"

#include <ctime>
#include <stdexcept>
#include <string>
#include <string_view>

#include "base/paths.h"
#include "sim/report.h"

namespace skypost::sim {
namespace {

constexpr std::uint16_t CWOP_PORT = 14580;
constexpr int CWOP_PASSCODE = -1;

constexpr std::string_view ENDPOINTS[][2] = {
#define ENDPOINT(name, kind, value) {#name, #kind},
#include "base/endpoints.def"
};

// Without a replacement, the program would send the account to the real server.
void require_server_for_every_endpoint(const std::string& lines) {
  for (const auto& [name, kind] : ENDPOINTS)
    if ((kind == "url" || kind == "host" || kind == "host_and_port") &&
        ('\n' + lines).find('\n' + std::string(name) + " = ") == std::string::npos)
      throw std::logic_error("sim/networks.cpp has no server for the endpoint " + std::string(name));
}

}  // namespace

world::world() : data(lifelike_report(std::time(nullptr))), peers(board.root() / "certificate.pem") {
  cwop.emplace(CWOP_PORT, CWOP_ID, CWOP_PASSCODE);
  aprs.emplace(std::uint16_t{0}, APRS_CALL_SIGN, APRS_PASSCODE);
  board.settings.set_integer(aprs_port, aprs->port());
  board.save_settings();
  board.install_mail_program(mail.port());
  write_endpoints();
}

void world::write_endpoints(bool on_nslu2) const {
  const std::string lines =
      peers.endpoints(on_nslu2) +
      "cwop_first = 127.0.0.1\ncwop_second = 127.0.0.1\nborgervejr_recipient = " + MAIL_RECIPIENT + '\n';
  require_server_for_every_endpoint(lines);
  board.write(ENDPOINTS_PATH, lines);
}

}  // namespace skypost::sim
