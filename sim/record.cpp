// Records what programs send, write and say in one run each, all against the same simulated appliance, so that
// the records of two builds of the program can be compared byte for byte.
//
//   record FOLDER TIME NAME COMMAND [NAME COMMAND]...
//
// runs each COMMAND by the shell, with the report of the TIME (seconds since 1970), and leaves the record in
// FOLDER/NAME. Of the networks' servers one in three accepts, one refuses and one answers nothing. Two things are
// masked, neither of them the program's: the speed that wget measured, and the mail program's Message-Id with its
// process number. A run that did not reach every network ends in an error.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <regex>
#include <span>
#include <stdexcept>
#include <string>

#include "base/paths.h"
#include "sim/report.h"
#include "sim/world.h"

namespace skypost::sim {
namespace {

namespace fs = std::filesystem;

// Where a record's texts go.
class record_folder {
 public:
  explicit record_folder(fs::path place) : place_(std::move(place)) { fs::create_directories(place_); }

  void write(const std::string& name, const std::string& text) const {
    std::ofstream(place_ / name, std::ios::binary) << text;
  }

 private:
  fs::path place_;
};

void set_answers(http_peers& peers) {
  constexpr answer ANSWERS[] = {answer::good, answer::bad, answer::empty};
  std::size_t number = 0;
  for (const network_row& network : http_networks())
    peers.set_answer(network.name, ANSWERS[number++ % std::size(ANSWERS)]);
}

// As if no run had been.
void clean(world& all) {
  for (const char* const directory : PULL_DIRECTORIES) {
    fs::remove_all(all.board.path(directory));
    fs::create_directories(all.board.path(directory));
  }
  fs::remove(all.board.path(LAST_RUN_PATH));
  all.board.forget_alarms();
  all.peers.forget_requests();
}

std::string masked(const std::string& text) {
  static const std::regex SPEED("100%[^\n]*");
  static const std::regex MESSAGE_ID("Message-Id: <[^>\n]*>");
  return std::regex_replace(std::regex_replace(text, SPEED, "100%"), MESSAGE_ID, "Message-Id: <>");
}

std::string requests_of(const http_peers& peers) {
  const std::vector<request_seen> requests = peers.requests();
  const auto is_asked = [](const network_row& network) { return network.which != server::second; };
  if (std::ssize(requests) != std::ranges::count_if(http_networks(), is_asked))
    throw std::runtime_error(std::to_string(requests.size()) + " requests came");
  std::string text;
  for (const request_seen& seen : requests) {
    if (!seen.fault.empty()) throw std::runtime_error(std::string(seen.network->name) + ": " + seen.fault);
    text += std::string(seen.network->name) + '\n' + seen.request + "\nanswer: " + seen.reply + "\n\n";
  }
  return text;
}

// What this run added; the servers keep what earlier runs sent.
template <typename seen>
seen the_new_one(const char* what, const std::vector<seen>& all, std::size_t run) {
  if (all.size() != run)
    throw std::runtime_error(std::string(what) + " came " + std::to_string(all.size()) + " times in " +
                             std::to_string(run) + " runs");
  return all.back();
}

std::string session_of(const aprs_server& server, std::size_t run) {
  const aprs_session_seen seen = the_new_one("a packet", server.sessions(), run);
  return seen.login + '\n' + seen.packet + '\n' + seen.answer + '\n';
}

std::string mail_of(const smtp_sink& server, std::size_t run) {
  const mail_seen seen = the_new_one("the mail", server.mails(), run);
  return seen.sender + '\n' + seen.recipient + '\n' + seen.text;
}

std::string alarms_of(const appliance& board) {
  std::string text;
  for (const alarm_call& call : board.alarms()) {
    for (const std::string& argument : call) text += '<' + argument + ">\n";
    text += '\n';
  }
  return text;
}

void record(world& all, std::size_t run, const std::string& command, const record_folder& folder) {
  clean(all);
  const std::string errors = all.board.path("/standard_error");
  const int status = std::system((command + " </dev/null 2>'" + errors + '\'').c_str());
  const std::string said = all.board.read("/standard_error");
  if (status != 0)
    throw std::runtime_error("it ended with status " + std::to_string(WEXITSTATUS(status)) + ": " + said);

  folder.write("standard_error", masked(said));
  folder.write("requests", requests_of(all.peers));
  folder.write("cwop", session_of(*all.cwop, run));
  folder.write("aprs", session_of(*all.aprs, run));
  folder.write("mail", masked(mail_of(all.mail, run)));
  folder.write("alarms", masked(alarms_of(all.board)));
  folder.write("last_run", all.board.read(LAST_RUN_PATH));
  for (const char* const directory : PULL_DIRECTORIES)
    for (const fs::directory_entry& file : fs::directory_iterator(all.board.path(directory))) {
      const std::string name = file.path().filename();
      folder.write(name + (directory == PULL_DIRECTORIES[0] ? ".first" : ".second"),
                   all.board.read(directory + name));
    }
}

void record_all(const fs::path& folder, std::time_t time, std::span<char*> runs) {
  world all;
  all.data->set_report(lifelike_report(time));
  set_answers(all.peers);
  setenv("SKYPOST_ROOT", all.board.root().c_str(), 1);
  setenv("HOME", all.board.root().c_str(), 1);
  for (std::size_t i = 0; i < runs.size(); i += 2) {
    try {
      record(all, i / 2 + 1, runs[i + 1], record_folder(folder / runs[i]));
    } catch (const std::exception& fault) {
      throw std::runtime_error(std::string(runs[i]) + ": " + fault.what());
    }
  }
}

}  // namespace
}  // namespace skypost::sim

int main(int count, char** arguments) {
  if (count < 5 || count % 2 == 0) {
    std::fputs("usage: record FOLDER TIME NAME COMMAND [NAME COMMAND]...\n", stderr);
    return 2;
  }
  try {
    skypost::sim::record_all(arguments[1], std::stoll(arguments[2]), {arguments + 3, arguments + count});
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "record: %s\n", fault.what());
    return 1;
  }
}
