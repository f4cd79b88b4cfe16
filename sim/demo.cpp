// The demonstration: runs the real program against the simulated appliance and its peers, once over every network, or
// in rapid fire for a quarter of a minute.

#include <httplib.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <thread>

#include "base/paths.h"
#include "channels/channels.h"
#include "pullfiles/pullfiles.h"
#include "run/run_list.h"
#include "sim/report.h"
#include "sim/world.h"

namespace skypost::sim {
namespace {

// The network that is made to refuse: its reply is full of shell metacharacters.
constexpr char REFUSING[] = "wedaal-push";

// Whether the network's own server is known to reply like this.
constexpr char KNOWN[] = "known";
constexpr char MADE_UP[] = "made up";

struct outcome {
  std::string how = {};
  std::string sent = {};
  std::string reply = {};
  std::string verdict = "NOT SENT";
  std::string origin = {};  // of the reply, if a network's server sent one
};

// The file that the network fetches from the web server must be in both directories.
outcome file_outcome(const run_step& step, const world& all, int web_port) {
  outcome result{.how = "file"};
  const std::string name = static_cast<const pull_file&>(*step.upload).name;
  httplib::Client network("127.0.0.1", web_port);
  const auto response = network.Get("/" + name);
  if (!response || response->status != 200) return result;
  result.sent = response->body;
  result.reply = "fetched, " + std::to_string(result.sent.size()) + " bytes";
  const bool same = result.sent == all.board.read(PULL_DIRECTORIES[1] + name);
  result.verdict = same ? "written" : "COPIES DIFFER";
  return result;
}

outcome http_outcome(const run_step& step, const std::vector<request_seen>& requests) {
  outcome result{.how = "HTTP"};
  for (const request_seen& seen : requests) {
    if (std::strcmp(seen.network->name, step.name.text) != 0) continue;
    const bool is_secured = seen.network->which == server::secured;
    result.how = is_secured ? "HTTPS" : seen.network->method;
    // Show the interesting part first: the query or the body.
    const std::size_t values = seen.request.find_first_of("?\n");
    result.sent = seen.request.substr(values == std::string::npos ? 0 : values + 1) + "\n\n" + seen.request;
    result.reply = seen.reply;
    result.verdict = seen.reply == seen.network->good ? "accepted" : "refused";
    result.origin = seen.network->origin == replies::known ? KNOWN : MADE_UP;
    if (!seen.fault.empty()) result.verdict = "FAULTY: " + seen.fault;
  }
  return result;
}

outcome aprs_outcome(const aprs_server& server, const char* origin) {
  outcome result{.how = "TCP"};
  for (const aprs_session_seen& seen : server.sessions())
    result = {"TCP", seen.packet + "\n\n" + seen.login, seen.reply, seen.fate, origin};
  return result;
}

outcome mail_outcome(const smtp_sink& server) {
  outcome result{.how = "mail"};
  for (const mail_seen& seen : server.mails())
    result = {"mail", seen.text.substr(seen.text.find("\n\n") + 2) + "\n\n" + seen.text,
              "accepted for " + seen.recipient, "delivered"};
  return result;
}

outcome outcome_of(const run_step& step, const world& all, int web_port) {
  switch (step.upload->by) {
    case carrier::file:
      return file_outcome(step, all, web_port);
    case carrier::http:
      return http_outcome(step, all.peers.requests());
    case carrier::aprs:
      // It is not known which software CWOP's servers run.
      return step.upload == &CWOP ? aprs_outcome(*all.cwop, MADE_UP) : aprs_outcome(*all.aprs, KNOWN);
    case carrier::mail:
      return mail_outcome(all.mail);
  }
  return {};
}

// One line of at most `width` characters; anything but printable ASCII becomes a blank or a "?".
std::string in_one_line(std::string text, std::size_t width) {
  for (char& character : text) {
    if (character >= 0 && character < ' ') character = ' ';
    if (character < 0) character = '?';
  }
  text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
  if (text.size() > width) text = text.substr(0, width - 3) + "...";
  return text;
}

void print_row(const std::string& step, const std::string& name, const outcome& result) {
  std::printf("%-4s %-20s %-5s  %-52s  %-28s  %-7s  %s\n", step.c_str(), name.c_str(), result.how.c_str(),
              in_one_line(result.sent, 52).c_str(), in_one_line(result.reply, 28).c_str(),
              result.origin.c_str(), result.verdict.c_str());
}

bool is_as_expected(const run_step& step, const outcome& result) {
  if (std::strcmp(step.name.text, REFUSING) == 0) return result.verdict == "refused";
  return result.verdict == "written" || result.verdict == "delivered" || result.verdict == "accepted" ||
         result.verdict == aprs_session_seen::RELAYED;
}

// A step that shares the time limit of the step before it also shares its number: 1, 1a, 2, 2a, 3, ...
bool print_steps(const world& all, int web_port) {
  bool is_good = true;
  int count = 0;
  print_row("step", "network", {"how", "sent (the beginning)", "reply", "verdict", "origin"});
  for (const run_step& step : run_list()) {
    const bool is_second = step.limit == step_limit::shared;
    const std::string number = is_second ? std::to_string(count) + 'a' : std::to_string(++count);
    const outcome result = outcome_of(step, all, web_port);
    print_row(number, step.name.text, result);
    all.board.write("/texts/" + number + ".txt", "Sent\n\n" + result.sent + "\n\nReply\n\n" + result.reply +
                                                     "\n\nVerdict: " + result.verdict + '\n');
    is_good = is_good && is_as_expected(step, result);
  }
  return is_good;
}

bool print_alarms(const std::vector<alarm_call>& alarms) {
  std::puts("\nCalls of the alarm script, with their arguments:");
  for (const alarm_call& call : alarms) {
    for (const std::string& argument : call) std::printf("  <%s>", argument.c_str());
    std::putchar('\n');
  }
  return alarms.size() == 1 && alarms[0].size() == 3;
}

// Prints what one of the owner's tools prints, under its command; returns its exit status.
int print_tool(const appliance& board, const char* program, const std::vector<std::string>& arguments,
               const char* command) {
  const run_result tool = board.run_tool(program, arguments);
  std::printf("\n`%s` on this appliance:\n\n%s%s", command, tool.output.c_str(), tool.errors.c_str());
  return tool.status;
}

// Returns the exit status.
int conclude(bool is_good) {
  std::puts(is_good ? "\nEverything went as expected." : "\nNOT everything went as expected.");
  return is_good ? 0 : 1;
}

int show_one_run() {
  world all;
  all.board.keep_files();
  all.board.write(STATUS_PATH, "");
  all.peers.set_reply(REFUSING, reply_kind::bad);
  httplib::Server web;
  web.set_mount_point("/", all.board.path(PULL_DIRECTORIES[0]).string());
  const int web_port = web.bind_to_any_port("127.0.0.1");
  std::thread serving([&web] { web.listen_after_bind(); });

  std::puts(R"(The real program once over every network, each with a simulated server: a quarter of a minute,
nearly all of it for CWOP and APRS. The accounts are full of quotes and dollar signs on purpose.
Wedaal is made to refuse, so that a failure reaches the alarm script. To APRS it sends as the installed
endpoint file says. A "known" reply is that of the network's own server in late 2026; the others are made
up to be what the program expects.
)");
  std::fflush(stdout);
  const run_result run = all.board.run();
  const bool steps_are_good = print_steps(all, web_port);
  const bool alarms_are_good = print_alarms(all.board.alarms());
  web.stop();
  serving.join();

  std::printf("\nThe program ended with status %d after %.1f seconds.\n", run.status, run.seconds);
  if (!run.errors.empty()) std::printf("On standard error: %s\n", run.errors.c_str());
  std::printf("The appliance's files are in %s, everything sent in texts/STEP.txt there.\n",
              all.board.root().c_str());
  const int preview = print_tool(all.board, PREVIEW_PROGRAM, {"windfinder"}, "skypost-preview windfinder");
  const int status =
      print_tool(all.board, STATUS_PROGRAM, {}, "skypost-status");  // 1: one network has refused
  return conclude(steps_are_good && alarms_are_good && preview == 0 && status == 1 && run.status == 0 &&
                  run.signal == 0);
}

int show_rapid_fire() {
  using namespace std::chrono;
  constexpr auto LENGTH = seconds(16);  // WindIt is due after 15
  constexpr int INTERVAL = 3;
  world all;
  for (const integer_field* enabled : {&wunderground_rapid_enabled, &weatherflow_rapid_enabled})
    all.board.settings.set_integer(*enabled, 1);
  for (const integer_field* interval : {&wunderground_rapid_interval, &weatherflow_rapid_interval})
    all.board.settings.set_integer(*interval, INTERVAL);
  all.board.save_settings();

  std::printf(
      "Fifteen seconds of rapid fire: Weather Underground and WeatherFlow every %d seconds, first after two\n"
      "intervals, and WindIt every 10.\n\n%-9s %-20s %-52s  %s\n",
      INTERVAL, "seconds", "network", "request", "reply");
  running_program program(all.board.root(), {"-r"});
  const auto start = steady_clock::now();
  std::size_t shown = 0;
  while (steady_clock::now() - start < LENGTH && !program.has_ended()) {
    std::this_thread::sleep_for(milliseconds(50));
    const auto requests = all.peers.requests();
    for (; shown < requests.size(); ++shown)
      std::printf("%7.1f   %-20s %-52s  %s\n", duration<double>(steady_clock::now() - start).count(),
                  requests[shown].network->name, in_one_line(requests[shown].request, 52).c_str(),
                  in_one_line(requests[shown].reply, 20).c_str());
    std::fflush(stdout);
  }
  const bool lasted = !program.has_ended();
  program.send_signal(SIGTERM);
  const run_result run = program.wait();
  std::printf("\n%zu uploads from %d reports; ended by signal %d (SIGTERM). Calls of the alarm script: %zu\n",
              shown, all.data->clients(), run.signal, all.board.alarms().size());
  return conclude(lasted && shown > 0 && all.board.alarms().empty());
}

}  // namespace
}  // namespace skypost::sim

int main(int count, char** arguments) {
  try {
    if (count == 1) return skypost::sim::show_one_run();
    if (count == 2 && std::strcmp(arguments[1], "--rapid") == 0) return skypost::sim::show_rapid_fire();
    std::fputs("usage: demo [--rapid]\n", stderr);
    return 2;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "demo: %s\n", fault.what());
    return 1;
  }
}
