#include "sim/aprs_server.h"

#include <regex>

namespace skypost::sim {
namespace {

// Time stamp, position, wind, temperature, rain, pressure and humidity, known or not; luminosity.
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
  const std::string packet = client.read_line().value_or("");
  const aprs_session_seen seen = judge(login, packet);
  std::this_thread::sleep_for(delay_.load());
  client.write(seen.reply + "\r\n");
  {
    const std::lock_guard lock(mutex_);
    sessions_.push_back(seen);
  }
  client.wait_until_closed();
}

aprs_session_seen aprs_server::judge(const std::string& line, const std::string& packet) const {
  aprs_session_seen seen{line, packet, {}, {}};
  const std::optional<login> by = read_login(line);
  // After a refused login, the packet is taken for another one.
  constexpr char NO_LOGIN[] = "# Invalid login string, too few arguments";
  if (!by || by->call_sign != call_sign_) {
    seen.reply = NO_LOGIN;
    seen.fate = "refused: not this station's login";
    return seen;
  }
  const bool is_general = network_ == aprs_network::general;
  if (is_general && !by->has_version) {
    seen.reply =
        std::string("# Invalid login: software name and version are not separated by a space\r\n") + NO_LOGIN;
    seen.fate = "refused: login without a version";
    return seen;
  }

  const bool is_verified = by->passcode == std::to_string(passcode_);
  seen.reply = "# logresp " + call_sign_ + (is_verified ? " verified" : " unverified") + ", server SIMULATED";
  const std::size_t header = packet.find(':') + 1;
  const std::string start = call_sign_ + ">APRS,";
  const bool is_from_here = packet == start + "TCPIP*:" + packet.substr(header);
  const bool is_unverified_path = packet == start + "TCPXX*:" + packet.substr(header);
  if (!(is_from_here || is_unverified_path) || !is_weather_report(packet.substr(header)))
    seen.fate = "discarded: no weather packet";
  else if (is_general && !is_verified)
    seen.fate = "discarded: station not verified";
  else if (is_general && is_unverified_path)
    seen.fate = "discarded: path TCPXX*";
  else
    seen.fate = aprs_session_seen::RELAYED;
  return seen;
}

}  // namespace skypost::sim
