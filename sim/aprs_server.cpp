#include "sim/aprs_server.h"

#include <regex>

namespace skypost::sim {
namespace {

// Time stamp, position, wind, temperature, rain, pressure and humidity, known or not; luminosity.
bool is_weather_packet(const std::string& packet, const std::string& call_sign) {
  static const std::regex FORMAT(
      R"(@\d{6}z\d{4}\.\d\d[NS]/\d{5}\.\d\d[EW]_(\d{3}|\.{3})/(\d{3}|\.{3})g(\d{3}|\.{3}))"
      R"(t(-?\d{2,3}|\.{3})r(\d{3}|\.{3})p(\d{3}|\.{3})P(\d{3}|\.{3})b(\d{5}|\.{5})h(\d\d|\.\.)([Ll]\d{3})?e\w+)");
  const std::string header = call_sign + ">APRS,TCPXX*:";
  return packet.starts_with(header) && std::regex_match(packet.substr(header.size()), FORMAT);
}

}  // namespace

aprs_server::aprs_server(std::uint16_t port, std::string call_sign, int passcode)
    : call_sign_(std::move(call_sign)),
      passcode_(passcode),
      server_(port, "APRS server", [this](connection& client) { talk(client); }) {}

std::vector<aprs_session_seen> aprs_server::sessions() const {
  const std::lock_guard lock(mutex_);
  return sessions_;
}

void aprs_server::talk(connection& client) {
  client.write("# aprs-simulator 1.0\r\n");
  aprs_session_seen seen{};
  seen.login = client.read_line().value_or("");
  seen.packet = client.read_line().value_or("");
  const std::string wanted = "User " + call_sign_ + " pass " + std::to_string(passcode_) + " vers nimbulog";
  seen.accepted = seen.login == wanted && is_weather_packet(seen.packet, call_sign_);
  seen.reply =
      seen.accepted ? "# logresp " + call_sign_ + " unverified, server SIMULATED" : "# invalid login";
  std::this_thread::sleep_for(delay_.load());
  client.write(seen.reply + "\r\n");
  {
    const std::lock_guard lock(mutex_);
    sessions_.push_back(seen);
  }
  client.wait_until_closed();
}

}  // namespace skypost::sim
