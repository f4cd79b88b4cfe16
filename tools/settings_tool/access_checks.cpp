// Checks who can change the files that the uploader, running as root, trusts.

#include <sys/stat.h>
#include <unistd.h>

#include <optional>

#include "base/paths.h"
#include "settings_tool/checks.h"
#include "settings_tool/enabled_steps.h"
#include "status/history.h"

namespace skypost {
namespace {

constexpr mode_t OTHERS = 077;
constexpr char REMEDY[] = "make it root's alone: chown root:root, chmod go-w.";

// Files that only root may change, and what others could do with them, worst first.
constexpr struct {
  const char* path;
  const char* danger;
  std::optional<carrier> needed_by = std::nullopt;  // nothing: by every station
} ROOTS_FILES[] = {
    {ALARM_SCRIPT_PATH, "have commands run as root"},
    {"/home/nimbulog", "put an alarm script there whose commands are run as root"},
    {MAIL_PROGRAM_PATH, "have commands run as root", carrier::mail},
    {"/opt/sbin", "put a mail program there that is run as root", carrier::mail},
    {MAIL_CONFIGURATION_PATH, "have the mail program run a command as root", carrier::mail},
    {WGET_SETTINGS_PATH, "have wget run a command as root"},
    {"/etc/skypost", "put files there that send passwords elsewhere, or have wget run a command as root"},
    {ENDPOINTS_PATH, "have passwords sent elsewhere"},
    {"/var/run/nimbulog", "put links there that have root write into other directories"},
    {"/srv", "put a link there that has root write into another directory", carrier::file},
};

// True if anyone but root and the user of this tool has write access.
bool can_others_write(uid_t owner, gid_t group, mode_t mode) {
  return (owner != 0 && owner != geteuid()) || ((mode & S_IWGRP) != 0 && group != 0 && group != getegid()) ||
         (mode & S_IWOTH) != 0;
}

bool can_others_write(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && can_others_write(status.st_uid, status.st_gid, status.st_mode);
}

}  // namespace

void check_roots_files(const checked_appliance&, findings& found) {
  for (const auto& row : ROOTS_FILES) {
    if (row.needed_by && networks_by(*row.needed_by).empty()) continue;
    const std::string path = appliance_path(row.path);
    if (can_others_write(path))
      found.push_back(path + ": users other than root can change it, and " + row.danger + "; " + REMEDY);
  }
}

void check_settings_access(const checked_appliance& appliance, findings& found) {
  const settings_file& file = appliance.file;
  if (can_others_write(file.owner, file.group, file.mode))
    found.push_back(file.path +
                    ": users other than root can change it, and what is sent, and read the passwords in it. "
                    "Unless the web pages need it, make it root's alone: chown root:root, chmod 600.");
  else if ((file.mode & OTHERS) != 0)
    found.push_back(file.path +
                    ": users other than its owner can access it, and the passwords in it. Set its mode: "
                    "chmod 600.");
}

// The status pages and the history are locked while they are written, and hold what servers reply.
void check_status_access(const checked_appliance&, findings& found) {
  for (const char* const file : {STATUS_PATH, RAPID_FIRE_STATUS_PATH, HISTORY_PATH}) {
    const std::string path = appliance_path(file);
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) continue;
    if (!can_others_write(status.st_uid, status.st_gid, status.st_mode) && (status.st_mode & OTHERS) == 0)
      continue;
    found.push_back(
        path +
        ": users other than root can open it, read what servers reply, which may repeat a password, and"
        " keep runs from recording anything. Make it root's alone: chown root:root, chmod 600.");
  }
}

void check_pull_directory_access(const checked_appliance&, findings& found) {
  const std::string networks = networks_by(carrier::file);
  if (networks.empty()) return;
  const std::string consequence = ": users other than root can change what is fetched there by " + networks +
                                  ". Unless the web pages need it, " + REMEDY;
  for (const char* const directory : PULL_DIRECTORIES) {
    const std::string path = appliance_path(directory);
    if (can_others_write(path)) found.push_back(path + consequence);
  }
}

}  // namespace skypost
