#include "sim/aprs_server.h"

#include <regex>

namespace skypost::sim {
namespace {

constexpr char NO_LOGIN[] = "# Invalid login string, too few arguments";
constexpr char NO_VERSION[] = "# Invalid login: software name and version are not separated by a space";

// True for time stamp, position, wind, temperature, rain, pressure and humidity, known or not. Luminosity is optional.
bool is_weather_report(const std::string& text) {
  static const std::regex FORMAT(
      R"(@\d{6}z\d{4}\.\d\d[NS]/\d{5}\.\d\d[EW]_(\d{3}|\.{3})/(\d{3}|\.{3})g(\d{3}|\.{3}))"
      R"(t(-?\d{2,3}|\.{3})r(\d{3}|\.{3})p(\d{3}|\.{3})P(\d{3}|\.{3})b(\d{5}|\.{5})h(\d\d|\.\.)([Ll]\d{3})?e\w+)");
  return std::regex_match(text, FORMAT);
}

struct login {
  std::string call_sign;
  std::string passcode;
  bool has_version = false;
};

std::optional<login> read_login(const std::string& line) {
  static const std::regex FORMAT(R"(user (\S+) pass (-?\d+)( vers \S+( \S.*)?)?)", std::regex::icase);
  std::smatch part;
  if (!std::regex_match(line, part, FORMAT)) return std::nullopt;
  return login{part[1], part[2], part[4].matched};
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
