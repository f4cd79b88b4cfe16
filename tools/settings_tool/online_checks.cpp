// Connects to all servers at once, each in a process of its own, so that neither a dead server nor a silent name server
// delays the others.

#include <chrono>
#include <cstdio>
#include <deque>
#include <thread>

#include "base/paths.h"
#include "common/printable.h"
#include "settings_tool/checks.h"
#include "settings_tool/server_probe.h"

namespace skypost {
namespace {

using std::chrono::steady_clock;

// With the installed wgetrc, wget gives up on a server that does not accept after four attempts of three seconds.
constexpr std::chrono::seconds LIMIT{13};

// Waits until all probes have ended or LIMIT has passed.
void wait_for(std::deque<server_probe>& probes, bool shows_progress) {
  const steady_clock::time_point end = steady_clock::now() + LIMIT;
  std::size_t ended = 0;
  do {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ended = 0;
    for (server_probe& probe : probes) ended += probe.has_ended() ? 1 : 0;
    if (shows_progress)
      std::fprintf(stderr, "\rConnecting to the networks' servers: %zu of %zu ", ended, probes.size());
  } while (ended < probes.size() && steady_clock::now() < end);
  if (shows_progress) std::fputc('\n', stderr);
}

std::string sentence_for(const online_server& server, const contact_result& result) {
  const std::string address = quoted(server.called.address);
  const std::string start = server.switches + ": " + server.users + ", " + address;
  const std::string login = server.switches + ": the login at " + server.users + ", " + address;
  const std::string another = "or set " + server.named_by + " to another.";
  switch (result.outcome) {
    case contact::name_not_found:
      return start + ", is not found (" + result.words + "). Check the appliance's name server, " + another;
    case contact::not_reached:
      return start + ", was not reached" + (result.words.empty() ? "" : " (" + result.words + ')') +
             ". Check the appliance's network, " + another;
    case contact::silent:
      return start + ", does not reply. Try again later, " + another;
    case contact::not_trusted:
      return start + ": " + result.words + ", " + another;
    case contact::refused:
      return login + ", is refused: " + quoted(result.words) +
             ". Check the call sign, and aprs_software in " + appliance_path(ENDPOINTS_PATH) + ", " + another;
    case contact::unverified:
      return login +
             ", is unverified: packets are dropped by servers of the general pool. Set aprs_passcode to "
             "the passcode of the call sign.";
    default:
      return {};
  }
}

}  // namespace

void check_connections(const checked_appliance& appliance, findings& found) {
  if (!appliance.online) return;
  const std::vector<online_server> servers = online_servers();
  std::deque<server_probe> probes;
  for (const online_server& server : servers) probes.emplace_back(server, appliance.wget);
  wait_for(probes, appliance.shows_progress);

  bool is_name_server_named = false;  // it is reported only once
  for (std::size_t i = 0; i < servers.size(); ++i) {
    const contact_result result = probes[i].result();
    if (result.outcome == contact::good) continue;
    if (result.outcome != contact::name_server_silent) {
      found.push_back(sentence_for(servers[i], result));
    } else if (!is_name_server_named) {
      is_name_server_named = true;
      found.push_back("name server: it does not answer for " + quoted(servers[i].called.host) + ", " +
                      servers[i].users + ". Check it in /etc/resolv.conf.");
    }
  }
}

}  // namespace skypost
