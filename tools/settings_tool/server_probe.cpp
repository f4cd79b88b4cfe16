#include "settings_tool/server_probe.h"

#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>

#include "base/error_text.h"
#include "base/paths.h"
#include "base/shell.h"
#include "common/descriptor.h"
#include "common/secrets.h"
#include "common/wget_status.h"
#include "compose/command.h"
#include "run/process.h"
#include "transport/wget.h"

namespace skypost {
namespace {

constexpr int NOT_REACHED = 4;  // exit statuses of wget
constexpr int NOT_TRUSTED = 5;

// How long an APRS server may take for its greeting, and again for its reply.
constexpr timeval RECEIVE_LIMIT = {.tv_sec = 5, .tv_usec = 0};

using probe_command = fixed_text<2 * PATH_CAPACITY + 500>;

// The options of WGET_COMMAND, without the path of wget.
constexpr const char* options_of_wget() { return WGET_COMMAND + std::string_view(WGET_COMMAND).find(' '); }

// Calls wget with the uploader's tries and settings, but only to reach the server: wget follows no redirect and looks
// up no login.
void append_probe(probe_command& command, const std::string& wget, const called_server& server) {
  command.append_text("exec ");
  append_shell_word(command, wget);
  command.append("%s -t %d -q --spider --max-redirect=0 --no-netrc ", options_of_wget(), WGET_TRIES);
  if (!server.is_certificate_checked) command.append_text("--no-check-certificate ");
  append_shell_word(command, server.address + '/');
  command.append_text(" </dev/null >/dev/null 2>&1");
}

// Appends what arrives until `text` has `end` after `start` or is full, the server closes, or recv() times out.
void receive(int connection, text_buffer& text, std::string_view start, char end) {
  char bytes[200];
  for (ssize_t count = 0; (count = recv(connection, bytes, sizeof bytes, 0)) > 0 && !text.was_cut();) {
    text.append_text({bytes, static_cast<std::size_t>(count)});
    const std::size_t place = text.view().find(start);
    if (place != std::string_view::npos && text.view().find(end, place) != std::string_view::npos) return;
  }
}

// Joins the lines of a reply with "; ".
std::string in_one_line(std::string_view reply) {
  std::string line;
  for (const char character : reply) {
    if (character == '\n' && !line.empty()) line += "; ";
    if (character != '\n' && character != '\r') line += character;
  }
  if (line.ends_with("; ")) line.resize(line.size() - 2);
  return line;
}

}  // namespace

server_probe::server_probe(const online_server& server, const std::string& wget)
    : server_(server), child_([&] { return server.is_aprs() ? log_in() : call_wget(wget); }) {}

// Only IPv4 for APRS, because a run uses nothing else.
int server_probe::resolve(addrinfo*& addresses) const {
  const std::string& address = server_.called.address;
  addrinfo hints{};
  hints.ai_family = server_.is_aprs() ? AF_INET : AF_UNSPEC;
  hints.ai_socktype = SOCK_STREAM;
  const std::string port = server_.is_aprs() ? address.substr(address.rfind(':') + 1) : "";
  seen_->name_fault =
      getaddrinfo(server_.called.host.c_str(), port.empty() ? nullptr : port.c_str(), &hints, &addresses);
  seen_->is_name_resolved = true;
  return seen_->name_fault;
}

// Runs wget even if the name is not found, because wget may use a proxy, which knows other names.
int server_probe::call_wget(const std::string& wget) const {
  prepare_process();
  limit_wget();
  addrinfo* addresses = nullptr;
  if (resolve(addresses) == 0) freeaddrinfo(addresses);
  probe_command command;
  append_probe(command, wget, server_.called);
  execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
  return NO_WGET_STATUS;
}

// Returns 0 or an errno.
int server_probe::connect_to(const addrinfo& address) const {
  const descriptor connection(socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC, 0));
  if (!connection.is_open() || connect(connection.number(), address.ai_addr, address.ai_addrlen) != 0)
    return errno;
  seen_->is_connected = true;
  setsockopt(connection.number(), SOL_SOCKET, SO_RCVTIMEO, &RECEIVE_LIMIT, sizeof RECEIVE_LIMIT);
  receive(connection.number(), seen_->reply, "", '\n');  // the greeting
  seen_->reply.clear();
  if (send(connection.number(), server_.login.data(), server_.login.size(), MSG_NOSIGNAL) > 0)
    receive(connection.number(), seen_->reply, server_.call_sign, '\n');
  return 0;
}

int server_probe::log_in() const {
  addrinfo* addresses = nullptr;
  if (resolve(addresses) != 0) return 0;
  seen_->connect_fault = connect_to(*addresses);
  freeaddrinfo(addresses);
  return 0;
}

contact_result server_probe::result() {
  const bool is_wget_served = !server_.is_aprs() && child_.has_ended() && child_.exit_status() != NOT_REACHED;
  if (!is_wget_served) {
    if (!seen_->is_name_resolved || seen_->name_fault == EAI_AGAIN) return {contact::name_server_silent, {}};
    if (seen_->name_fault != 0) return {contact::name_not_found, gai_strerror(seen_->name_fault)};
  }
  return server_.is_aprs() ? result_of_login() : result_of_wget();
}

contact_result server_probe::result_of_wget() {
  if (!child_.has_ended()) return {contact::silent, {}};
  if (child_.exit_status() == NOT_REACHED) return {contact::not_reached, {}};
  if (child_.exit_status() == NOT_TRUSTED) return {contact::not_trusted, wget_status_meaning(NOT_TRUSTED)};
  return {contact::good, {}};
}

contact_result server_probe::result_of_login() {
  if (!seen_->is_connected) {
    const int fault = seen_->connect_fault == 0 ? ETIMEDOUT : seen_->connect_fault;
    return {contact::not_reached, std::strerror(fault)};
  }
  const bool is_taken = seen_->reply.view().find(server_.call_sign) != std::string_view::npos;
  const bool is_unverified = seen_->reply.view().find(" unverified") != std::string_view::npos;
  if (is_taken) return {server_.is_general_pool && is_unverified ? contact::unverified : contact::good, {}};
  hide_secrets(seen_->reply, station_settings);
  const std::string words = in_one_line(seen_->reply.view());
  return {words.empty() ? contact::silent : contact::refused, words};
}

}  // namespace skypost
