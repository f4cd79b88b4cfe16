// Connects to all servers at once, as a run would, but sends no values: wget requests only the front page, and an APRS
// server gets only the login line.

#include <netdb.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <deque>
#include <optional>
#include <sstream>

#include "base/error_text.h"
#include "base/paths.h"
#include "base/shell.h"
#include "channels/channels.h"
#include "common/child_process.h"
#include "common/composing.h"
#include "common/descriptor.h"
#include "common/network_faults.h"
#include "common/plausibility.h"
#include "common/printable.h"
#include "common/secrets.h"
#include "common/shared_value.h"
#include "compose/command.h"
#include "run/process.h"
#include "settings_tool/checks.h"
#include "settings_tool/enabled.h"
#include "settings_tool/wget_settings.h"

namespace skypost {
namespace {

// With the installed wgetrc, wget gives up on a server that does not accept after four attempts of three seconds.
constexpr unsigned LIMIT = 13;

// How long an APRS server may take to accept the connection, for its greeting, and for its reply.
constexpr timeval APRS_LIMIT = {.tv_sec = 4, .tv_usec = 0};

constexpr char CHECK_NETWORK[] = "Check the network and the name server here";

struct online_server {
  called_server called;
  std::string networks;  // that use it: "WindIt, SH-Netz"
  std::string named_by;
  const struct upload* upload;  // of the first of them
  std::string login;            // of an APRS server
};

bool is_login_possible(const handed_out& one) {
  const std::string_view call_sign = station_settings.text(call_sign_of(one.upload));
  return !call_sign.empty() && call_sign.find_first_of(" \r\n") == std::string_view::npos &&
         (&one.upload != &APRS || fault_of_port(station_settings).empty());
}

void add_to(std::vector<online_server>& servers, const handed_out& one, const called_server& called) {
  const std::string text =
      one.upload.by == carrier::aprs ? text_of(one.upload, station_without_values()) : "";
  const online_server wanted{.called = called,
                             .networks = network_of(one.step),
                             .named_by = called.named_by,
                             .upload = &one.upload,
                             .login = text.substr(0, text.find('\n') + 1)};
  for (online_server& same : servers) {
    if (same.called.address != called.address || same.login != wanted.login ||
        same.called.is_certificate_checked != called.is_certificate_checked)
      continue;
    if (!same.networks.ends_with(wanted.networks)) same.networks += ", " + wanted.networks;
    if (!same.named_by.ends_with(wanted.named_by)) same.named_by += ", " + wanted.named_by;
    return;
  }
  servers.push_back(wanted);
}

// Each server once, in the order of a run. Leaves out unknown servers and logins that no run would make, because other
// checks report them.
std::vector<online_server> online_servers() {
  std::vector<online_server> servers;
  for (const handed_out& one : enabled_uploads())
    for (const called_server& called : servers_of(one, station_without_values()))
      if (called.is_known() && (one.upload.by != carrier::aprs || is_login_possible(one)))
        add_to(servers, one, called);
  return servers;
}

// Starts wget with the uploader's tries and settings. It follows no redirect and looks up no login.
std::FILE* start_wget(const std::string& wget, const called_server& server) {
  fixed_text<2 * PATH_CAPACITY + 500> command;
  command.append("LC_ALL=C exec timeout --foreground -s KILL %u ", LIMIT);
  append_shell_word(command, wget);
  command.append("%s -t %d --spider --max-redirect=0 --no-netrc ", std::strchr(WGET_COMMAND, ' '),
                 WGET_TRIES);
  if (!server.is_certificate_checked) command.append_text("--no-check-certificate ");
  append_shell_word(command, server.address + '/');
  command.append_text(" </dev/null 2>&1");
  return popen(command.c_str(), "re");
}

// The line in which wget names the fault; otherwise its last one, which says what it was waiting for.
std::string sentence_of_wget(std::FILE* output) {
  std::string text;
  char bytes[500];
  while (std::fgets(bytes, sizeof bytes, output) != nullptr) text += bytes;
  std::istringstream lines(text);
  std::string last;
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty()) last = line;
    if (line.find("failed: ") != std::string::npos || line.find("rror") != std::string::npos ||
        line.find("ERROR") != std::string::npos)
      break;
  }
  return last;
}

// What is wrong with an HTTP server, and what to do first; empty if it replies, whatever it replies to this.
std::string fault_of_http(std::FILE* output, const called_server& server) {
  constexpr int LOGIN_REFUSED = 6, ERROR_REPLY = 8, NOT_TRUSTED = 5;
  const std::string sentence = sentence_of_wget(output);
  const int status = pclose(output);
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  if (code == 0 || code == LOGIN_REFUSED || code == ERROR_REPLY) return {};
  const std::string proxy = proxy_for(server.scheme).address;
  return (proxy.empty() ? "" : "through the proxy " + quoted(proxy) + ", ") + "wget says " +
         quoted(sentence) + (code == 128 + SIGKILL ? " and nothing more" : "") + ". " +
         (code == NOT_TRUSTED ? "Check the clock and ca-certificates"
          : proxy.empty()     ? CHECK_NETWORK
                              : "Check the proxy");
}

using said_text = fixed_text<1'000>;

// Appends what arrives until `text` has a line feed after `start` or is full, the server closes, or recv() times out.
void receive(int connection, text_buffer& text, std::string_view start) {
  char bytes[200];
  for (ssize_t count = 0; (count = recv(connection, bytes, sizeof bytes, 0)) > 0 && !text.was_cut();) {
    text.append_text({bytes, static_cast<std::size_t>(count)});
    const std::size_t place = text.view().find(start);
    if (place != std::string_view::npos && text.view().find('\n', place) != std::string_view::npos) return;
  }
}

// Logs in. At each step, `said` is what is wrong if this process gets no further; in the end, empty if nothing is.
int log_in(const online_server& server, text_buffer& said) {
  const auto say = [&](const std::string& what, const char* remedy = CHECK_NETWORK) {
    said.clear();
    said.append_text(what + ". " + remedy);
    return 0;
  };
  alarm(LIMIT);
  say("no name server answers");
  addrinfo hints{};
  hints.ai_family = AF_INET;  // a run uses nothing else
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* address = nullptr;
  const std::string& place = server.called.address;
  const int fault =
      getaddrinfo(server.called.host.c_str(), place.substr(place.rfind(':') + 1).c_str(), &hints, &address);
  if (fault != 0) return say(gai_strerror(fault));
  const descriptor connection(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  for (const int limit : {SO_SNDTIMEO, SO_RCVTIMEO})
    setsockopt(connection.number(), SOL_SOCKET, limit, &APRS_LIMIT, sizeof APRS_LIMIT);
  if (connect(connection.number(), address->ai_addr, address->ai_addrlen) != 0)
    return say(std::strerror(errno == EINPROGRESS ? ETIMEDOUT : errno));
  said_text reply;
  receive(connection.number(), reply, "");  // the greeting
  reply.clear();
  const std::string_view call_sign = station_settings.text(call_sign_of(*server.upload));
  if (send(connection.number(), server.login.data(), server.login.size(), MSG_NOSIGNAL) > 0)
    receive(connection.number(), reply, call_sign);
  if (reply.empty()) return say("it does not reply to the login", "Try again later");
  const bool is_taken = reply.view().find(call_sign) != std::string_view::npos;
  if (!is_taken) {
    hide_secrets(reply, station_settings);
    reply.cut_at('\r');
    return say("it refuses the login: " + quoted(reply.view()),
               "Check the call sign, and aprs_software in the endpoint file");
  }
  said.clear();
  if (server.upload == &APRS && reply.view().find(" unverified") != std::string_view::npos)
    say("it takes the login as unverified, and servers of the general pool drop such packets",
        "Set aprs_passcode to the passcode of the call sign");
  return 0;
}

// A connection under way.
class probe {
 public:
  probe(const online_server& server, const std::string& wget) : server_(server) {
    if (!server.called.scheme.empty())
      output_ = start_wget(wget, server.called);
    else
      child_.emplace([&] { return log_in(server_, *said_); });
  }

  // Waits for its end, and returns what is wrong, and what to do first.
  std::string fault() {
    if (output_ != nullptr) return fault_of_http(output_, server_.called);
    if (child_) child_->wait();
    return std::string(said_->view());
  }

 private:
  const online_server& server_;
  std::FILE* output_ = nullptr;  // of wget
  shared_value<said_text> said_;
  std::optional<child_process> child_;
};

}  // namespace

void check_connections(const checked_appliance& appliance, findings& found) {
  if (!appliance.online) return;
  limit_wget();
  const std::vector<online_server> servers = online_servers();
  std::deque<probe> probes;
  for (const online_server& server : servers) probes.emplace_back(server, appliance.wget);
  for (std::size_t i = 0; i < servers.size(); ++i)
    if (const std::string fault = probes[i].fault(); !fault.empty())
      found.push_back(servers[i].networks + ": the " + servers[i].called.title + ' ' +
                      quoted(servers[i].called.address) + ": " + fault + ", or set " + servers[i].named_by +
                      " to another.");
}

}  // namespace skypost
