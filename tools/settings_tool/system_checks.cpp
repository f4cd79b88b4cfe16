// Checks of what the uploads need: programs, directories and the alarm script.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "base/paths.h"
#include "base/shell.h"
#include "settings_tool/checks.h"
#include "settings_tool/enabled_steps.h"

namespace skypost {
namespace {

std::string networks_by(carrier carried_by) {
  return networks_where([=](const run_step& step) { return step.upload->carried_by == carried_by; });
}

// Why a program cannot be run; empty if it can.
std::string fault_of_program(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return std::strerror(errno);
  if (!S_ISREG(status.st_mode)) return "not a regular file";
  return faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0 ? "" : std::strerror(errno);
}

// Why no file can be created in a directory; empty if one can.
std::string fault_of_directory(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return std::strerror(errno);
  return faccessat(AT_FDCWD, path.c_str(), W_OK | X_OK, AT_EACCESS) == 0 ? "" : std::strerror(errno);
}

// What a program prints for --version.
std::string version_text(const std::string& program) {
  fixed_text<2 * PATH_CAPACITY + 40> command;
  append_shell_word(command, program);
  command.append_text(" --version 2>/dev/null");
  std::FILE* const pipe = popen(command.c_str(), "re");
  if (pipe == nullptr) return {};
  char text[4'000];
  const std::size_t length = std::fread(text, 1, sizeof text, pipe);
  pclose(pipe);
  return {text, length};
}

bool calls_over_tls(const run_step& step) {
  for (const called_server& server : servers_of(step))
    if (server.scheme == "https") return true;
  return false;
}

// Reports a program that cannot be run, with consequence and remedy. Returns true if it can be run.
bool check_program(const std::string& path, const std::string& consequence, findings& found) {
  const std::string fault = fault_of_program(path);
  if (!fault.empty()) found.push_back(path + ": it cannot be run (" + fault + "), so " + consequence);
  return fault.empty();
}

void check_directory(const std::string& path, const std::string& networks, findings& found) {
  const std::string fault = fault_of_directory(path);
  if (!fault.empty())
    found.push_back(path + ": no file can be written there (" + fault + "), so no new files reach " +
                    networks + ". Make it a directory that skypost can write to.");
}

}  // namespace

void check_wget(const checked_appliance& appliance, findings& found) {
  const std::string all = networks_by(carrier::http);
  if (all.empty()) return;
  if (!check_program(appliance.wget, "nothing is sent to " + all + ". Install GNU wget there.", found))
    return;

  const std::string secured = networks_where(calls_over_tls);
  if (!secured.empty() && version_text(appliance.wget).find("+https") == std::string::npos)
    found.push_back(appliance.wget + ": it does not support https, so nothing is sent to " + secured +
                    ". Install a wget there whose --version names \"+https\".");
}

void check_pull_directories(const checked_appliance&, findings& found) {
  const std::string networks = networks_by(carrier::file);
  if (networks.empty()) return;
  for (const char* const directory : PULL_DIRECTORIES)
    check_directory(appliance_path(directory), networks, found);
}

void check_mail_program(const checked_appliance&, findings& found) {
  const std::string networks = networks_by(carrier::mail);
  const std::string path = appliance_path(MAIL_PROGRAM_PATH);
  if (!networks.empty())
    check_program(path,
                  "no mail is sent to " + networks +
                      ". Install a mail program, such as esmtp, and link it there: ln -s /usr/bin/esmtp " +
                      path + '.',
                  found);
}

void check_alarm_script(const checked_appliance&, findings& found) {
  check_program(appliance_path(ALARM_SCRIPT_PATH),
                "nobody is told of a failed upload. Put an executable script there.", found);
}

}  // namespace skypost
