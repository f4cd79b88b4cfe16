#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "base/board.h"
#include "base/error_text.h"
#include "channels/channels.h"
#include "common/errors.h"
#include "common/kept_text.h"
#include "common/networks.h"
#include "common/printable.h"
#include "common/report_source.h"
#include "common/wget_status.h"
#include "endpoints/endpoint_file.h"
#include "endpoints/endpoints.h"
#include "live/report_parser.h"
#include "preview/preview.h"
#include "settings_tool/chosen_file.h"
#include "settings_tool/commands.h"
#include "settings_tool/trial.h"

namespace skypost {
namespace {

constexpr char WARNING[] =
    "This sends the current values for real, which counts towards the network's limits.\n";

struct candidate {
  const run_step* step;
  step_preview preview;
};

std::vector<const run_step*> steps_named(const std::string& name) {
  std::vector<const run_step*> steps;
  for (const handed_out& one : all_handed_out()) {
    const bool is_own = is_own_name(name, one);
    if (is_own && one.rapid != nullptr)
      throw usage_error(quoted(name) + " is sent in rapid fire only, and cannot be tried; try " +
                        one.step.upload->id);
    if (one.rapid == nullptr && (is_own || is_network_name(name, one.names))) steps.push_back(&one.step);
  }
  if (steps.empty()) throw usage_error("no network " + quoted(name) + suggested_network(name));
  return steps;
}

// Loads what the uploader loads before it sends. Returns the report.
std::string load_station() {
  detect_platform();
  kept_text ignored;  // a network that lacks the address or an endpoint is not tried
  read_hardware_address(hardware_address, ignored.stream());
  load_endpoints(ignored.stream());
  station_settings = as_loaded(read_chosen_file({}));
  return fetch_report();
}

// Switches the network on in this process, so that it can be tried; returns true if it was off.
bool switch_on(const integer_field& enabled) {
  if (station_settings.is_on(enabled)) return false;
  station_settings.set_integer(enabled, 1);
  return true;
}

std::vector<candidate> candidates_for(const std::vector<const run_step*>& steps, const std::string& report) {
  constexpr long long LONG_AGO = GATE_INTERVAL + 1;
  reset_live_record(live_record);
  parse_live_reply(report.c_str(), station_settings, live_record);
  const station source{station_settings, live_record, current_moment(), this_board()};
  std::vector<candidate> all;
  all.reserve(steps.size());
  for (const run_step* const step : steps)
    all.push_back(
        {step, make_previews({source, report.c_str(), LONG_AGO, false}, {step->upload->id}).front()});
  return all;
}

void print_before(std::ostream& out, const candidate& one, bool was_off) {
  out << one.preview.network << " (" << one.preview.name << ")\n";
  for (const std::string& place : one.preview.where)
    out << "  " << one.preview.how << ' ' << printable(place) << '\n';
  if (was_off) out << "  Switched off: " << switch_of(*one.step) << " is 0, so a run does not send it.\n";
  if (!one.preview.position.empty()) out << "  Position " << one.preview.position << '\n';
  for (const network_fault& fault : one.preview.faults)
    out << (fault.weight == network_fault::doubtful ? "  WARNING: " : "  NOT SENT: ") << printable(fault.text)
        << '\n';
}

// Keeps only the candidates that a run would send. Returns false if none is left, or if one has a fault.
bool keep_sendable(std::vector<candidate>& all) {
  std::erase_if(all, [](const candidate& one) { return !is_enabled(*one.step, station_settings); });
  return !all.empty() && std::all_of(all.begin(), all.end(),
                                     [](const candidate& one) { return one.preview.would_be_sent(); });
}

bool is_wanted(std::ostream& out) {
  out << "Send it? [y/N] " << std::flush;
  std::string line;
  std::getline(std::cin, line);
  if (line == "y" || line == "Y") return true;
  out << "Nothing was sent.\n";
  return false;
}

bool is_empty(std::string_view text) { return text.find_first_not_of("\r\n") == std::string_view::npos; }

// For HTTP, in the words for wget's exit status.
std::string unclear_sentence(const trial_result& result) {
  const char* const meaning = wget_status_meaning(result.wget_status);
  return "UNCLEAR: " + (meaning == nullptr ? "" : std::string(meaning) + "; ") + printable(result.reason);
}

// Claims no more than can be known from here.
std::string sentence_for(const run_step& step, const trial_result& result) {
  if (result.outcome == verdict::ended_by_alarm)
    return "TIMED OUT after " + std::to_string(STEP_SECONDS) + " seconds";
  if (result.outcome == verdict::failed) return "FAILED: " + printable(result.reason);
  if (result.outcome == verdict::unclear) return unclear_sentence(result);
  switch (step.upload->by) {
    case carrier::file:
      return "WRITTEN. Whether the network fetches the file cannot be checked from here.";
    case carrier::mail:
      return "HANDED to the mail program, which reported no error.";
    case carrier::aprs:
      return "LOGIN ACCEPTED. The server does not report what happens to the packet.";
    case carrier::http:
      break;
  }
  if (is_empty(result.reply) && result.wget_status == NO_WGET_STATUS)
    return "NO REPLY, counted as accepted; this network also sends no reply after some errors.";
  return "ACCEPTED";
}

// Prints `text` without empty lines at the end.
void print_lines(std::ostream& out, const char* title, std::string_view text) {
  if (is_empty(text)) return;
  out << "  " << title << ":\n";
  for (const std::string& line : printable_lines(text.substr(0, text.find_last_not_of("\r\n") + 1)))
    out << (line.empty() ? "" : "    ") << line << '\n';
}

void print_wget_status(std::ostream& out, int status) {
  if (status == NO_WGET_STATUS) return;
  const char* const meaning = wget_status_meaning(status);
  out << "  Exit status of wget: " << status << (meaning == nullptr ? "" : ", ")
      << (meaning == nullptr ? "" : meaning) << '\n';
}

// Sends the upload; returns true if it was accepted.
bool try_step(std::ostream& out, const candidate& one) {
  const run_step& step = *one.step;
  const trial_result result = try_upload(*step.upload);
  out << one.preview.name << ": " << sentence_for(step, result) << '\n';
  print_lines(out, step.upload->by == carrier::mail ? "The mail program's words" : "Reply", result.reply);
  print_wget_status(out, result.wget_status);
  const bool is_http = step.upload->by == carrier::http;
  if (is_http && result.outcome == verdict::failed && is_empty(result.reply))
    print_lines(out, "The same request once more, in wget's words", messages_of_wget(*step.upload));
  return result.outcome == verdict::accepted;
}

}  // namespace

int run_try(const words& all_arguments, std::ostream& out) {
  words arguments = all_arguments;
  const bool is_agreed = take_option(arguments, "--yes");
  arguments = operands(arguments);
  if (arguments.size() != 1) throw usage_error("try takes one NETWORK");
  const std::vector<const run_step*> steps = steps_named(arguments[0]);
  if (!is_agreed && isatty(STDIN_FILENO) == 0)
    throw usage_error("standard input is not a terminal; use --yes to send without confirmation");

  const std::string report = load_station();
  const bool was_off = switch_on(*steps.front()->enabled);
  std::vector<candidate> all = candidates_for(steps, report);
  for (const candidate& one : all) print_before(out, one, was_off);
  if (!keep_sendable(all)) return 1;
  out << WARNING;
  if (!is_agreed && !is_wanted(out)) return 1;

  load_live_record(report.c_str());
  bool is_good = true;
  for (const candidate& one : all) is_good = try_step(out << std::flush, one) && is_good;
  return is_good ? 0 : 1;
}

}  // namespace skypost
