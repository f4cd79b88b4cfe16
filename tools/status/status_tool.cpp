#include "status/status_tool.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "base/board.h"
#include "base/paths.h"
#include "settings/load.h"
#include "status/history.h"
#include "status/status_text.h"

namespace skypost {
namespace {

constexpr int GOOD = 0;
constexpr int NOT_GOOD = 1;
constexpr int NO_STATUS = 2;

constexpr char HELP[] =
    "skypost-status shows how the last run of skypost went, and how the last upload to each network\n"
    "that is switched on.\n"
    "\n"
    "  skypost-status [--quiet]\n"
    "\n"
    "  --quiet    print nothing: the exit status is the only result\n"
    "\n"
    "  skypost-status --help | --version\n"
    "\n"
    "Exit status: 0 if the last run came to its end and every network is good; 1 if not; 2 for an\n"
    "invalid command line, or if no status is kept.\n";

status_records records;

// Why there is no status, and what to do.
void print_no_status(int reason) {
  const path_text path(STATUS_PATH);
  if (reason == ENOENT)
    std::fprintf(stderr,
                 "No status is kept. To have one kept, do this as root, now and after each boot: "
                 "install -m 600 /dev/null %s\n",
                 path.c_str());
  else if (reason == EACCES)
    std::fprintf(stderr, "Error: only root can read %s\n", path.c_str());
  else if (reason == EMLINK)
    std::fprintf(stderr, "Error: %s has a second name, so no status is kept in it; delete it\n",
                 path.c_str());
  else
    std::fprintf(stderr, "Error: no status is kept in %s: %s\n", path.c_str(), std::strerror(reason));
}

// As the uploader loads them, on the board that the environment names, if it does.
int load_settings_of_this_board() {
  const char* const platform = std::getenv(PLATFORM_VARIABLE);
  if (platform == nullptr || *platform == '\0') detect_platform();
  return load_settings(station_settings, /*keep_backup=*/false);
}

bool is_colourful() {
  const char* const no_color = std::getenv("NO_COLOR");
  return isatty(STDOUT_FILENO) != 0 && (no_color == nullptr || *no_color == '\0');
}

// Returns the exit status; nothing was printed if that fails.
int flushed(int status_so_far) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status_so_far;
  std::fputs("Error: cannot write to standard output\n", stderr);
  return NOT_GOOD;
}

int show(bool is_quiet) {
  status_at_work at_work{};
  if (read_status(records, at_work) != 0) {
    if (!is_quiet) print_no_status(errno);
    return NO_STATUS;
  }
  if (load_settings_of_this_board() != 0) {
    if (!is_quiet) std::fprintf(stderr, "Error: cannot read %s\n", path_text(SETTINGS_PATH).c_str());
    return NOT_GOOD;
  }
  const judged_status judged = judge(records, station_settings, at_work, std::time(nullptr));
  if (!is_quiet) print_status(stdout, judged, station_settings, is_colourful());
  return flushed(judged.is_good ? GOOD : NOT_GOOD);
}

bool has(int argument_count, char** arguments, const char* option) {
  for (int i = 1; i < argument_count; ++i)
    if (std::strcmp(arguments[i], option) == 0) return true;
  return false;
}

}  // namespace

int show_status(int argument_count, char** arguments) {
  if (has(argument_count, arguments, "--help")) {
    std::fputs(HELP, stdout);
    return flushed(GOOD);
  }
  if (has(argument_count, arguments, "--version")) {
    std::puts("skypost-status " SKYPOST_VERSION);
    return flushed(GOOD);
  }
  const bool is_quiet = has(argument_count, arguments, "--quiet");
  if (argument_count > (is_quiet ? 2 : 1)) {
    std::fputs("Error: it takes nothing but --quiet, --help and --version\nTry 'skypost-status --help'.\n",
               stderr);
    return NO_STATUS;
  }
  return show(is_quiet);
}

}  // namespace skypost
