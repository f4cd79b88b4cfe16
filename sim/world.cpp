#include "sim/world.h"

#include <ctime>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "base/paths.h"
#include "sim/report.h"

namespace skypost::sim {
namespace {

constexpr std::uint16_t CWOP_PORT = 14580;

constexpr std::string_view ENDPOINTS[][2] = {
#define ENDPOINT(name, kind, value) {#name, #kind},
#include "endpoints/endpoints.def"
};

// Without a simulated server, the program would send the account to the real one.
void require_server_for_every_endpoint(const std::string& lines) {
  for (const auto& [name, kind] : ENDPOINTS)
    if ((kind == "url" || kind == "host" || kind == "host_and_port") &&
        ('\n' + lines).find('\n' + std::string(name) + " = ") == std::string::npos)
      throw std::logic_error("sim/networks.cpp has no server for the endpoint " + std::string(name));
}

}  // namespace

world::world() : data(lifelike_report(std::time(nullptr))), peers(board.root() / "certificate.pem") {
  cwop.emplace(aprs_network::cwop, CWOP_PORT, CWOP_ID, APRS_PASSCODE);
  aprs.emplace(aprs_network::general, std::uint16_t{0}, APRS_CALL_SIGN, APRS_PASSCODE);
  board.settings.set_integer(aprs_port, aprs->port());
  board.save_settings();
  board.install_mail_program(mail.port());
  write_endpoints();
}

std::string installed_aprs_entries() {
  std::istringstream lines(read_file(INSTALLED_ENDPOINTS));
  std::string entries;
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with("aprs_")) entries += line + '\n';
  return entries;
}

void world::write_endpoints(bool second_servers, const std::string& aprs_entries) const {
  const std::string lines =
      peers.endpoints(second_servers) + aprs_entries +
      "cwop_first = 127.0.0.1\ncwop_second = 127.0.0.1\nborgervejr_recipient = " + MAIL_RECIPIENT + '\n';
  require_server_for_every_endpoint(lines);
  board.write(ENDPOINTS_PATH, lines);
}

}  // namespace skypost::sim
