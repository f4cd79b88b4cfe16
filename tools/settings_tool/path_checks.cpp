// Checks files and directories: who may change them, and whether they are there.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>

#include "base/paths.h"
#include "settings_tool/checks.h"
#include "settings_tool/enabled.h"
#include "settings_tool/program_fault.h"
#include "status/history.h"
#include "status/news.h"

namespace skypost {
namespace {

using enum carrier;
using enum extent;

// What must hold for a path. Of the last two, nothing follows for the uploads.
enum class must { be_roots, be_a_program, be_readable, be_writable, be_closed, be_roots_to_write };

constexpr char ROOTS[] = "make it root's alone: chown root:root, chmod go-w.";
constexpr char CLOSED[] = "Make it root's alone: chown root:root, chmod 600.";
constexpr char WEB_PAGES[] =
    "Unless the web pages need it, make it root's alone: chown root:root, chmod go-w.";

// Worst first within each kind. "%s" are the networks with that carrier; an empty path is the settings file.
constexpr struct {
  const char* path;
  must hold;
  extent at_hand;
  std::optional<carrier> needed_by;  // nothing: by every station
  const char* consequence;
  const char* remedy;
} PATHS[] = {
    // clang-format off
    {ALARM_SCRIPT_PATH, must::be_roots, files, {}, "have commands run as root", ROOTS},
    {"/home/nimbulog", must::be_roots, files, {}, "put an alarm script there whose commands are run as root", ROOTS},
    {MAIL_PROGRAM_PATH, must::be_roots, files, mail, "have commands run as root", ROOTS},
    {"/opt/sbin", must::be_roots, files, mail, "put a mail program there that is run as root", ROOTS},
    {MAIL_CONFIGURATION_PATH, must::be_roots, files, mail, "have the mail program run a command as root", ROOTS},
    {WGET_SETTINGS_PATH, must::be_roots, files, {}, "have wget run a command as root", ROOTS},
    {"/etc/skypost", must::be_roots, files, {}, "put files there that send passwords elsewhere, or have wget run a command as root", ROOTS},
    {TELL_PATH, must::be_roots, files, {}, "have commands run as root", ROOTS},
    {ENDPOINTS_PATH, must::be_roots, files, {}, "have passwords sent elsewhere", ROOTS},
    {"/var/run/nimbulog", must::be_roots, files, {}, "put links there that have root write into other directories", ROOTS},
    {"/srv", must::be_roots, files, file, "put a link there that has root write into another directory", ROOTS},

    {PULL_DIRECTORIES[0], must::be_writable, machine, file, "new values do not reach %s", "Make it a directory that skypost can write to, with room on its disk."},
    {PULL_DIRECTORIES[1], must::be_writable, machine, file, "new values do not reach %s", "Make it a directory that skypost can write to, with room on its disk."},
    {MAIL_PROGRAM_PATH, must::be_a_program, machine, mail, "no mail is sent to %s", "Install a mail program, such as esmtp, and link it there: mkdir -p /opt/sbin && ln -s /usr/bin/esmtp /opt/sbin/sendmail"},
    {MAIL_CONFIGURATION_PATH, must::be_readable, files, mail, "the mail program knows no mail server and no mail is sent to %s", "Name one in it: hostname = mail.example.org:25"},

    {"", must::be_closed, files, {}, "read the passwords in it", "Unless the web pages need it, make it root's alone: chown root:root, chmod 600."},
    {STATUS_PATH, must::be_closed, machine, {}, "read what servers reply, which may repeat a password, and keep runs from recording anything", CLOSED},
    {RAPID_FIRE_STATUS_PATH, must::be_closed, machine, {}, "read what servers reply, which may repeat a password, and keep rapid fire from recording anything", CLOSED},
    {HISTORY_PATH, must::be_closed, machine, {}, "read what servers reply, which may repeat a password", CLOSED},
    {PULL_DIRECTORIES[0], must::be_roots_to_write, machine, file, "what is fetched there by %s", WEB_PAGES},
    {PULL_DIRECTORIES[1], must::be_roots_to_write, machine, file, "what is fetched there by %s", WEB_PAGES},
    // clang-format on
};

// True if anyone but root and the user of this tool has write access, or, if `closed`, any access.
bool can_others_open(const std::string& path, bool closed) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return false;
  return (status.st_uid != 0 && status.st_uid != geteuid()) || (closed && (status.st_mode & 077) != 0) ||
         ((status.st_mode & S_IWGRP) != 0 && status.st_gid != 0 && status.st_gid != getegid()) ||
         (status.st_mode & S_IWOTH) != 0;
}

// Writes as much as a pull file may hold to a new file in `directory`, since one can still be created on a full disk.
// Returns 0 or an errno. The file is unlinked before, so a check that is killed leaves an empty file at most.
int try_to_write(const std::string& directory) {
  std::string name = directory + ".skypost-check.XXXXXX";
  const descriptor file(mkostemp(name.data(), O_CLOEXEC));
  if (!file.is_open()) return errno;
  unlink(name.c_str());
  const std::string block(4'096, 'x');
  errno = ENOSPC;  // a short write sets no errno
  const bool is_whole =
      write(file.number(), block.data(), block.size()) == static_cast<ssize_t>(block.size());
  return is_whole && fsync(file.number()) == 0 ? 0 : errno;
}

// What is wrong with the path, up to its consequence; empty if nothing is.
std::string fault_of(const std::string& path, must hold) {
  const auto because = [](const char* what, const std::string& why) {
    return why.empty() ? "" : std::string(what) + " (" + why + "), so ";
  };
  const auto error = [](int number) { return number == 0 ? "" : std::string(std::strerror(number)); };
  switch (hold) {
    case must::be_roots:
      return can_others_open(path, false) ? "users other than root can change it, and " : "";
    case must::be_a_program:
      return because("it cannot be run", program_fault(path));
    case must::be_readable:
      return because("it cannot be read", error(access(path.c_str(), R_OK) == 0 ? 0 : errno));
    case must::be_writable:
      return because("no file can be written there", error(try_to_write(path)));
    case must::be_closed:
      return can_others_open(path, true) ? "users other than root can open it, and " : "";
    case must::be_roots_to_write:
      return can_others_open(path, false) ? "users other than root can change " : "";
  }
  return {};
}

void check_paths(must first, must last, const checked_appliance& appliance, findings& found) {
  for (const auto& row : PATHS) {
    if (row.hold < first || row.hold > last || row.at_hand > appliance.at_hand) continue;
    const std::string networks = row.needed_by ? networks_by(*row.needed_by) : "";
    if (row.needed_by && networks.empty()) continue;
    const std::string path = *row.path == '\0' ? appliance.file.path : appliance_path(row.path);
    const std::string fault = fault_of(path, row.hold);
    if (fault.empty()) continue;
    std::string consequence = row.consequence;
    if (const std::size_t place = consequence.find("%s"); place != std::string::npos)
      consequence.replace(place, 2, networks);
    found.push_back(path + ": " + fault + consequence + (row.hold == must::be_roots ? "; " : ". ") +
                    row.remedy);
  }
}

}  // namespace

void check_roots_paths(const checked_appliance& appliance, findings& found) {
  check_paths(must::be_roots, must::be_roots, appliance, found);
}

void check_needed_paths(const checked_appliance& appliance, findings& found) {
  check_paths(must::be_a_program, must::be_writable, appliance, found);
}

void check_closed_paths(const checked_appliance& appliance, findings& found) {
  check_paths(must::be_closed, must::be_roots_to_write, appliance, found);
}

}  // namespace skypost
