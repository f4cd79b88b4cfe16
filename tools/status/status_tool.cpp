#include "status/status_tool.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "base/board.h"
#include "base/paths.h"
#include "common/network_names.h"
#include "settings/load.h"
#include "status/brief.h"
#include "status/news.h"
#include "status/status_text.h"

namespace skypost {
namespace {

// What a monitoring program expects of a plugin.
enum exit_status { ALL_WELL = 0, NETWORK_FAILS = 1, RUN_FAILS = 2, UNKNOWN = 3 };

constexpr char HELP[] =
    "skypost-status shows how the last run of skypost went, and how the last upload to each network\n"
    "that is switched on.\n"
    "\n"
    "  skypost-status [options]           a line for the run, and one for each network\n"
    "  skypost-status [options] NETWORK   all that is known of one network\n"
    "  skypost-status [options] --brief   one line for a monitoring program: what is wrong\n"
    "  skypost-status [options] --news    a line for each thing that has not been told yet\n"
    "  skypost-status --test-news         has /etc/skypost/tell tell that this is a test\n"
    "  skypost-status --help | --version\n"
    "\n"
    "  --failures N       a network that failed fewer than N times in a row is well; 1 if not given\n"
    "  --max-age MINUTES  a run that began so long ago is well; 60 if not given\n"
    "\n"
    "Exit status: 0 all is well; 1 a network fails; 2 the last run did not come to its end or is too\n"
    "old, or every network fails; 3 no status is kept or can be read, or a wrong command line.\n";

enum class command : std::uint8_t { show, brief, news, test_news, help, version };

struct request {
  command what = command::show;
  tolerance tolerated;
  bool is_about_all = true;
  bool is_about[STATUS_RECORDS] = {};
};

status_records records;
char news_bytes[LONGEST_NEWS];
text_buffer news{news_bytes};

// Why there is no status, and what to do.
void print_no_status(std::FILE* out, int reason) {
  const path_text path(STATUS_PATH);
  if (reason == ENOENT)
    std::fprintf(out,
                 "No status is kept. To have one kept, do this as root, now and after each boot: "
                 "install -m 600 /dev/null %s\n",
                 path.c_str());
  else if (reason == EACCES)
    std::fprintf(out, "Error: only root can read %s\n", path.c_str());
  else if (reason == EMLINK)
    std::fprintf(out, "Error: %s has a second name, so no status is kept in it; delete it\n", path.c_str());
  else
    std::fprintf(out, "Error: no status is kept in %s: %s\n", path.c_str(), std::strerror(reason));
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
  return UNKNOWN;
}

int terminal_columns() {
  winsize size{};
  return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

exit_status status_of(const judged_status& judged, const request& asked) {
  std::size_t listed = 0, failed = 0, wrong = 0;
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i) {
    const bool is_wrong = is_upload_wrong(judged, i, asked.tolerated);
    listed += judged.uploads[i] != upload_state::not_listed ? 1 : 0;
    failed += is_wrong && failures_in_row(judged, i) > 0 ? 1 : 0;
    wrong += is_wrong ? 1 : 0;
  }
  const bool does_every_one_fail = asked.is_about_all && failed > 0 && failed == listed;
  if (does_every_one_fail || is_run_wrong(judged, asked.tolerated)) return RUN_FAILS;
  return wrong > 0 ? NETWORK_FAILS : ALL_WELL;
}

// News that cannot be noted as told would be told after each run.
void print_news(const judged_status& judged, std::int64_t now) {
  append_news(news, records, judged, station_settings, now * 1'000);
  if (keep_status(records) == 0) std::fputs(news.c_str(), stdout);
}

void print(const judged_status& judged, const request& asked) {
  const screen screen{stdout, terminal_columns(), is_colourful()};
  if (asked.what == command::brief) return print_brief(stdout, judged, station_settings, asked.tolerated);
  if (asked.is_about_all) return print_status(screen, judged, station_settings, asked.tolerated);
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i)
    if (asked.is_about[i]) print_upload(screen, judged, i, station_settings);
}

int show(const request& asked) {
  // A monitoring program reads nothing else.
  std::FILE* const errors = asked.what == command::brief ? stdout : stderr;
  status_at_work at_work{};
  if (read_status(records, at_work) != 0) {
    print_no_status(errors, errno);
    return UNKNOWN;
  }
  if (load_settings_of_this_board() != 0) {
    keep_status(records);
    std::fprintf(errors, "Error: cannot read %s\n", path_text(SETTINGS_PATH).c_str());
    return UNKNOWN;
  }
  const std::int64_t now = std::time(nullptr);
  judged_status judged = judge(records, station_settings, at_work, now);
  if (asked.what == command::news) {
    print_news(judged, now);
  } else {
    keep_status(records);
    for (std::size_t i = 0; i < STATUS_RECORDS; ++i)
      if (!asked.is_about_all && !asked.is_about[i]) judged.uploads[i] = upload_state::not_listed;
    print(judged, asked);
  }
  return flushed(status_of(judged, asked));
}

int send_test_news() {
  const path_text tell(TELL_PATH);
  execl(tell.c_str(), "tell", "this is a test: news of skypost arrive here", nullptr);
  std::fprintf(stderr, "Error: cannot run %s: %s\n", tell.c_str(), std::strerror(errno));
  return UNKNOWN;
}

int refuse(const char* what, const char* why) {
  std::fprintf(stderr, "Error: %s %s\nTry 'skypost-status --help'.\n", what, why);
  return UNKNOWN;
}

struct word {
  const char* text;
  command what;
};
constexpr word WORDS[] = {
    // clang-format off
    {"--brief",     command::brief},
    {"--news",      command::news},
    {"--test-news", command::test_news},
    {"--help",      command::help},
    {"--version",   command::version},
    // clang-format on
};

// Returns false if there is no such network. A name of one row is not that of its network, which may have several.
bool read_network(const char* name, request& asked) {
  for (const auto names : {is_row_name, is_network_name}) {
    for (std::size_t i = 0; i < std::size(ROW_NAMES); ++i) {
      if (!names(name, ROW_NAMES[i])) continue;
      asked.is_about[FIRST_STEP_RECORD + i] = true;
      asked.is_about_all = false;
    }
    if (!asked.is_about_all) return true;
  }
  return false;
}

bool read_word(const char* text, request& asked) {
  for (const word& word : WORDS) {
    if (std::strcmp(text, word.text) != 0) continue;
    asked.what = word.what;
    return true;
  }
  return read_network(text, asked);
}

// Reads a whole number from 1 to a million.
bool read_number(const char* text, std::int64_t& number) {
  const char* const end = text == nullptr ? nullptr : text + std::strlen(text);
  return end != nullptr && std::from_chars(text, end, number).ptr == end && number >= 1 &&
         number <= 1'000'000;
}

// Returns 0, or UNKNOWN if it has printed what is wrong with the arguments.
int read_arguments(int count, char** arguments, request& asked) {
  for (int i = 1; i < count; ++i) {
    const char* const argument = arguments[i];
    const bool is_failures = std::strcmp(argument, "--failures") == 0;
    if (!is_failures && std::strcmp(argument, "--max-age") != 0) {
      if (!read_word(argument, asked)) return refuse(argument, "is neither an option nor a network");
      continue;
    }
    std::int64_t number = 0;
    if (!read_number(arguments[++i], number)) return refuse(argument, "takes a number from 1");
    if (is_failures)
      asked.tolerated.failures = static_cast<std::uint32_t>(number);
    else
      asked.tolerated.seconds_since_run = 60 * number;
  }
  return 0;
}

}  // namespace

int show_status(int argument_count, char** arguments) {
  // Where no file may grow, the history is lost, and the status is shown all the same.
  std::signal(SIGXFSZ, SIG_IGN);
  request asked;
  if (read_arguments(argument_count, arguments, asked) != 0) return UNKNOWN;
  switch (asked.what) {
    case command::help:
      std::fputs(HELP, stdout);
      return flushed(ALL_WELL);
    case command::version:
      std::puts("skypost-status " SKYPOST_VERSION);
      return flushed(ALL_WELL);
    case command::test_news:
      return send_test_news();
    default:
      return show(asked);
  }
}

}  // namespace skypost
