#include "run/start_up.h"

#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <ctime>

#include "base/board.h"
#include "base/debug.h"
#include "endpoints/endpoint_file.h"
#include "live/data_server.h"
#include "live/live_record.h"
#include "live/report_parser.h"
#include "networks/networks.h"
#include "run/failure.h"
#include "run/last_run.h"
#include "run/process.h"
#include "run/rapid_fire.h"
#include "run/run_list.h"
#include "run/status_page.h"
#include "settings/load.h"

namespace skypost {
namespace {

constexpr char STALE_DATA_NAME[] =
    "No data upload to weather networks as sensor selected on weather network page for outdoor temp, "
    "outdoor humidity or outdoor dewpoint is not providing recent data.";

// The data server's report. Each fetch fills it.
report_buffer report;

// Sets the flag for the argument. Returns false if it is unknown.
bool read_argument(const char* argument) {
  if (std::strcmp(argument, "-r") == 0)
    rapid_fire_flag = 1;
  else if (std::strcmp(argument, "-d") == 0)
    debug_flag = 1;
  else
    return false;
  return true;
}

// Returns the outcome for the status page.
status_outcome serve_networks(long long now) {
  const long long age = last_run_age(now);
  if (fetch_live_data(report, DATA_SERVER_HOST, DATA_SERVER_PORT) != 0) return status_outcome::no_report;
  load_live_record(report);
  if (live_data_stale != 0 && is_any_network_enabled(station_settings)) report_failure(STALE_DATA_NAME);
  walk_run_list(station_settings, age, now);
  return live_data_stale != 0 ? status_outcome::stale : status_outcome::good;
}

void run_once(long long now) {
  begin_run_page();
  end_run_page(serve_networks(now));
}

}  // namespace

int run_skypost(int argument_count, char** arguments) {
  if (argument_count > 2) {
    std::fputs("Error: Bad number of arguments\n", stderr);
    return 1;
  }
  prepare_process();
  limit_wget();
  detect_platform();
  if (argument_count == 2 && !read_argument(arguments[1])) {
    std::fprintf(stderr, "Error: Bad argument (%s). Use \"-r\" for rapid fire mode, \"-d\" for debug\n",
                 arguments[1]);
    return 1;
  }
  read_hardware_address(hardware_address);
  load_endpoints();
  if (load_settings_with_retries(station_settings) != 0) {
    report_failure("Can't read nimbulog settings file");
    return 1;
  }
  make_intervals_valid(station_settings);
  const std::time_t now = std::time(nullptr);
  if (rapid_fire_flag != 0) run_rapid_fire(report, now);
  run_once(now);
  return 0;
}

}  // namespace skypost
