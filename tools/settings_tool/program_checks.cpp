#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "base/paths.h"
#include "base/shell.h"
#include "common/command_output.h"
#include "common/composing.h"
#include "common/request_parts.h"
#include "networks/networks.h"
#include "settings_tool/checks.h"
#include "settings_tool/enabled_steps.h"
#include "settings_tool/program_fault.h"

namespace skypost {
namespace {

// What a program prints for --version.
std::string version_text(const std::string& program) {
  fixed_text<2 * PATH_CAPACITY + 40> command;
  append_shell_word(command, program);
  command.append_text(" --version 2>/dev/null");
  return output_of(command.c_str());
}

// Other versions of wget, such as busybox's, have no login options and do not encode spaces in URLs.
bool is_only_for_gnu_wget(std::string_view word) {
  return word.starts_with("--http-user=") || ((word.starts_with("http://") || word.starts_with("https://")) &&
                                              word.find(' ') != std::string_view::npos);
}

bool needs_gnu_wget(const run_step& step) {
  if (step.upload->by != carrier::http) return false;
  const std::vector<std::string> command = shell_words(text_of(*step.upload, station_without_values("")));
  return std::any_of(command.begin(), command.end(), is_only_for_gnu_wget);
}

// AnythingWeather's reply is judged by the status line that GNU Wget prints.
bool fails_without_gnu_wget(const run_step& step) {
  return needs_gnu_wget(step) || step.upload == &ANYTHINGWEATHER;
}

// Another wget prints its usage, whose last line does not look like a failure of MeteoNews.
bool fails_silently(const run_step& step) { return step.upload == &METEONEWS && needs_gnu_wget(step); }

// "uploads to MeteoNews, WeatherBug fail, that to MeteoNews without an alarm, and "
std::string failures_without_gnu_wget() {
  const std::string failing = networks_where(fails_without_gnu_wget);
  const std::string silent = networks_where(fails_silently);
  if (failing.empty()) return {};
  return "uploads to " + failing + " fail, " +
         (silent.empty() ? "" : "that to " + silent + " without an alarm, ") + "and ";
}

bool calls_over_tls(const run_step& step) {
  for (const called_server& server : servers_of(step))
    if (server.scheme == "https") return true;
  return false;
}

// Reports a program that cannot be run, with consequence and remedy. Returns true if it can be run.
bool check_program(const std::string& path, const std::string& consequence, findings& found) {
  const std::string fault = program_fault(path);
  if (!fault.empty()) found.push_back(path + ": it cannot be run (" + fault + "), so " + consequence);
  return fault.empty();
}

}  // namespace

void check_wget(const checked_appliance& appliance, findings& found) {
  const std::string all = networks_by(carrier::http);
  if (all.empty()) return;
  if (!check_program(appliance.wget,
                     "nothing is sent to " + all + ". Install GNU Wget there: apt install wget", found))
    return;

  const std::string version = version_text(appliance.wget);
  if (version.find("GNU Wget") == std::string::npos) {
    found.push_back(appliance.wget + ": it is not GNU Wget, so " + failures_without_gnu_wget() +
                    "wgetrc has no effect. Install GNU Wget there: apt install wget");
    return;
  }
  const std::string secured = networks_where(calls_over_tls);
  if (!secured.empty() && version.find("+https") == std::string::npos)
    found.push_back(appliance.wget + ": it does not support https, so nothing is sent to " + secured +
                    ". Install a wget there whose --version names \"+https\".");
}

void check_mail_program(const checked_appliance&, findings& found) {
  const std::string networks = networks_by(carrier::mail);
  if (networks.empty()) return;
  const std::string path = appliance_path(MAIL_PROGRAM_PATH);
  const std::string directory = path.substr(0, path.rfind('/'));
  check_program(path,
                "no mail is sent to " + networks +
                    ". Install a mail program, such as esmtp, and link it there: mkdir -p " + directory +
                    " && ln -s /usr/bin/esmtp " + path,
                found);
}

void check_mail_settings(const checked_appliance&, findings& found) {
  const std::string networks = networks_by(carrier::mail);
  if (networks.empty()) return;
  const std::string configuration = appliance_path(MAIL_CONFIGURATION_PATH);
  if (access(configuration.c_str(), R_OK) != 0)
    found.push_back(configuration + ": it cannot be read (" + std::strerror(errno) +
                    "), so the mail program knows no mail server and no mail is sent to " + networks +
                    ". Name one in it: hostname = mail.example.org:25");
}

}  // namespace skypost
