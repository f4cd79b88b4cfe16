// Runs the simulated appliance and its networks for a script.
//
//   serve [REPLIES [TIME]]
//
// REPLIES is what the networks reply: good (the default), bad, empty, hang (they never reply), or mixed (the first
// three in turn). TIME is the time of the report, in seconds since 1970; by default now. Prints the appliance's folder,
// then one line for each line of input, and exits at end of input:
//
//   dump FILE        writes what the servers have received since the last dump, which must be one full run, to FILE
//                    and prints "dumped"
//   list FILE        writes all requests since the last dump and all APRS sessions and mails to FILE, one per line,
//                    and prints "listed"
//   anything else    prints how many reports the data server has sent and how many requests have arrived

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <exception>
#include <fstream>
#include <initializer_list>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "sim/report.h"
#include "sim/world.h"

namespace skypost::sim {
namespace {

struct mode {
  std::string_view name;
  std::initializer_list<reply_kind> replies;
};
constexpr mode MODES[] = {
    {"good", {reply_kind::good}},
    {"bad", {reply_kind::bad}},
    {"empty", {reply_kind::empty}},
    {"hang", {reply_kind::hang}},
    {"mixed", {reply_kind::good, reply_kind::bad, reply_kind::empty}},
};

void set_up(world& all, const mode& chosen) {
  std::size_t turn = 0;
  for (const network_row& network : http_networks())
    all.peers.set_reply(network.name, chosen.replies.begin()[turn++ % chosen.replies.size()]);
  for (const integer_field* field : {&wunderground_rapid_enabled, &weatherflow_rapid_enabled,
                                     &wunderground_rapid_interval, &weatherflow_rapid_interval})
    all.board.settings.set_integer(*field, 1);
  all.board.save_settings();
}

void require_count(const char* what, std::size_t count, std::size_t expected) {
  if (count != expected)
    throw std::runtime_error(std::to_string(count) + ' ' + what + " instead of " + std::to_string(expected));
}

// Throws for a faulty request, because two runs with the same fault would compare equal.
void require_no_fault(const request_seen& seen) {
  if (!seen.fault.empty()) throw std::runtime_error(std::string(seen.network->name) + ": " + seen.fault);
}

// Throws if an upload did not arrive, too. The APRS and mail servers also keep what earlier runs sent.
void dump(world& all, std::size_t run, const std::string& path) {
  std::ofstream file(path, std::ios::binary);
  std::size_t asked = 0;
  for (const network_row& network : http_networks()) asked += network.which != server::second ? 1 : 0;
  const std::vector<request_seen> requests = all.peers.requests();
  require_count("requests", requests.size(), asked);
  for (const request_seen& seen : requests) {
    require_no_fault(seen);
    file << seen.network->name << '\n' << seen.request << "\nreply: " << seen.reply << "\n\n";
  }
  all.peers.forget_requests();

  for (const aprs_server* const server : {&*all.cwop, &*all.aprs}) {
    const std::vector<aprs_session_seen> sessions = server->sessions();
    require_count("APRS sessions", sessions.size(), run);
    file << sessions.back().login << '\n'
         << sessions.back().packet << '\n'
         << sessions.back().reply << "\n\n";
  }
  const std::vector<mail_seen> mails = all.mail.mails();
  require_count("mails", mails.size(), run);
  file << mails.back().sender << '\n' << mails.back().recipient << '\n' << mails.back().text;
}

std::string in_one_line(std::string text) {
  std::ranges::replace(text, '\n', ' ');
  return text;
}

void list(const world& all, const std::string& path) {
  std::ofstream file(path, std::ios::binary);
  for (const request_seen& seen : all.peers.requests()) {
    require_no_fault(seen);
    file << seen.network->name << ": " << in_one_line(seen.request) << '\n';
  }
  for (const aprs_server* const server : {&*all.cwop, &*all.aprs})
    for (const aprs_session_seen& seen : server->sessions())
      file << "APRS: " << in_one_line(seen.login + ' ' + seen.packet) << '\n';
  for (const mail_seen& seen : all.mail.mails())
    file << "mail: " << in_one_line(seen.sender + ' ' + seen.recipient + ' ' + seen.text) << '\n';
}

void serve(const mode& chosen, std::time_t time) {
  world all;
  all.data->set_report(lifelike_report(time));
  set_up(all, chosen);
  std::cout << all.board.root().string() << std::endl;

  constexpr std::string_view DUMP = "dump ";
  constexpr std::string_view LIST = "list ";
  std::size_t runs = 0;
  for (std::string line; std::getline(std::cin, line);) {
    if (line.starts_with(DUMP)) {
      dump(all, ++runs, line.substr(DUMP.size()));
      std::cout << "dumped" << std::endl;
    } else if (line.starts_with(LIST)) {
      list(all, line.substr(LIST.size()));
      std::cout << "listed" << std::endl;
    } else {
      std::cout << all.data->clients() << ' ' << all.peers.requests().size() << std::endl;
    }
  }
}

}  // namespace
}  // namespace skypost::sim

int main(int count, char** arguments) {
  using namespace skypost::sim;
  const std::string_view wanted = count > 1 ? arguments[1] : "good";
  const mode* const chosen = std::ranges::find(MODES, wanted, &mode::name);
  if (count > 3 || chosen == std::end(MODES)) {
    std::fputs("usage: serve [good|bad|empty|hang|mixed [TIME]]\n", stderr);
    return 2;
  }
  try {
    serve(*chosen, count > 2 ? std::stoll(arguments[2]) : std::time(nullptr));
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "serve: %s\n", fault.what());
    return 1;
  }
}
