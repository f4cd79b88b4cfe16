#include "sim/aprs_server.h"

#include <cstdio>

namespace skypost::sim {
namespace {

constexpr char NO_LOGIN[] = "# Invalid login string, too few arguments";
constexpr char NO_VERSION[] = "# Invalid login: software name and version are not separated by a space";

// True for time stamp, position, wind, temperature, rain, pressure and humidity, known or not. Luminosity is optional.
bool is_weather_report(const std::string& text) {
  constexpr std::size_t LENGTH = 63;  // if no part is shorter than its format allows
  int length = 0;
  std::sscanf(text.c_str(),
              "@%*6[0-9]z%*4[0-9].%*2[0-9]%*1[NS]/%*5[0-9].%*2[0-9]%*1[EW]_%*3[0-9.]/%*3[0-9.]g%*3[0-9.]"
              "t%*3[-0-9.]r%*3[0-9.]p%*3[0-9.]P%*3[0-9.]b%*5[0-9.]h%*2[0-9.]%n",
              &length);
  if (length != LENGTH) return false;
  const std::size_t rest = text.find_first_of("Ll", LENGTH) == LENGTH ? LENGTH + 4 : LENGTH;
  return text.find('e', LENGTH) == rest;
}

struct login {
  char call_sign[32];
  char passcode[32];
  bool has_version;
};

std::optional<login> read_login(const std::string& line) {
  login by = {};
  char version[2];
  const int read = std::sscanf(line.c_str(), "%*1[Uu]ser %31s pass %31s vers %*s%*1[ ]%1s", by.call_sign,
                               by.passcode, version);
  by.has_version = read == 3;
  return read < 2 ? std::nullopt : std::optional(by);
}

}  // namespace

aprs_server::aprs_server(aprs_network network, std::uint16_t port, std::string call_sign, int passcode)
    : network_(network),
      call_sign_(std::move(call_sign)),
      passcode_(passcode),
      server_(port, "APRS server", [this](connection& client) { talk(client); }) {}

std::vector<aprs_session_seen> aprs_server::sessions() const {
  const std::lock_guard lock(mutex_);
  return sessions_;
}

void aprs_server::talk(connection& client) {
  client.write("# aprs-simulator 1.0\r\n");
  const std::string login = client.read_line().value_or("");
  const std::string reply = reply_to(login);
  std::this_thread::sleep_for(delay_.load());
  client.write(reply + "\r\n");
  const std::string packet = client.read_line().value_or("");
  aprs_session_seen seen{login, packet, reply, fate_of(login, packet)};
  if (reply == NO_VERSION && !packet.empty()) {
    // After such a login, the server takes the packet for another login.
    client.write(std::string(NO_LOGIN) + "\r\n");
    seen.reply += std::string("\r\n") + NO_LOGIN;
  }
  {
    const std::lock_guard lock(mutex_);
    sessions_.push_back(seen);
  }
  client.wait_until_closed();
}

std::string aprs_server::reply_to(const std::string& line) const {
  const std::optional<login> by = read_login(line);
  if (!by || by->call_sign != call_sign_) return NO_LOGIN;
  if (network_ == aprs_network::general && !by->has_version) return NO_VERSION;
  const bool is_verified = by->passcode == std::to_string(passcode_);
  return "# logresp " + call_sign_ + (is_verified ? " verified" : " unverified") + ", server SIMULATED";
}

std::string aprs_server::fate_of(const std::string& line, const std::string& packet) const {
  const std::string reply = reply_to(line);
  if (reply == NO_LOGIN) return "refused: not this station's login";
  if (reply == NO_VERSION) return "refused: login without a version";
  if (packet.empty()) return "no packet";
  const bool is_general = network_ == aprs_network::general;
  const std::size_t header = packet.find(':') + 1;
  const std::string start = call_sign_ + ">APRS,";
  const bool is_from_here = packet == start + "TCPIP*:" + packet.substr(header);
  const bool is_unverified_path = packet == start + "TCPXX*:" + packet.substr(header);
  if (!(is_from_here || is_unverified_path) || !is_weather_report(packet.substr(header)))
    return "discarded: no weather packet";
  if (is_general && reply.find(" unverified") != std::string::npos) return "discarded: station not verified";
  if (is_general && is_unverified_path) return "discarded: path TCPXX*";
  return aprs_session_seen::RELAYED;
}

}  // namespace skypost::sim
