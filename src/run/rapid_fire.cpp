#include "run/rapid_fire.h"

#include <unistd.h>

#include <algorithm>
#include <ctime>

#include "base/error_text.h"
#include "live/report_parser.h"
#include "networks/networks.h"
#include "run/last_run.h"
#include "run/status_page.h"
#include "settings/defaults.h"
#include "settings/load.h"

namespace skypost {
namespace {

constexpr std::int32_t LONGEST_PASS = 30;    // seconds
constexpr std::int32_t FIXED_INTERVAL = 10;  // seconds

// The settings before a reload, which are restored if it fails.
settings_record backup_settings;

std::int32_t interval_of(const rapid_fire_network& network, const settings_record& settings) {
  return network.interval == nullptr ? FIXED_INTERVAL : settings.integer(*network.interval);
}

void send_due_uploads(rapid_fire_stamps& stamps, std::int64_t now) {
  open_rapid_fire_page();
  for (std::size_t i = 0; i < stamps.size(); ++i) {
    const rapid_fire_network& network = RAPID_FIRE_NETWORKS[i];
    if (take_turn(network, station_settings, stamps[i], now) && send_in_rapid_fire(i, *network.upload) != 0)
      report_failure(network.name);
  }
  close_page();
}

void reload_settings() {
  backup_settings = station_settings;
  if (load_settings_with_retries(station_settings) != 0) {
    report_failure("Can't read nimbulog settings file (rapid fire)");
    station_settings = backup_settings;
  }
  make_intervals_valid(station_settings);
}

void run_pass(report_buffer& report, rapid_fire_stamps& stamps) {
  error_text.clear();
  // Take the time before the sleep, so that a network whose interval is the pass length is due on every pass.
  const std::int64_t now = std::time(nullptr);
  sleep(static_cast<unsigned>(pass_length(station_settings)));
  if (is_any_rapid_fire_active(station_settings) &&
      fetch_live_data(report, DATA_SERVER_HOST, DATA_SERVER_PORT) == 0) {
    load_live_record(report);
    send_due_uploads(stamps, now);
  }
  reload_settings();
}

}  // namespace

constinit const rapid_fire_network RAPID_FIRE_NETWORKS[std::size(RAPID_FIRE_SWITCHES)] = {
#define RAPID_FIRE(name, enabled, rapid_enabled, interval, upload) \
  {{name, enabled, nullptr, rapid_enabled}, interval, &(upload)},
#include "run/run_list.def"
};

bool is_any_rapid_fire_active(const settings_record& settings) {
  return std::any_of(std::begin(RAPID_FIRE_NETWORKS), std::end(RAPID_FIRE_NETWORKS),
                     [&](const rapid_fire_network& network) { return is_enabled(network, settings); });
}

std::int32_t pass_length(const settings_record& settings) {
  std::int32_t length = LONGEST_PASS;
  for (const rapid_fire_network& network : RAPID_FIRE_NETWORKS)
    if (is_enabled(network, settings)) length = std::min(length, interval_of(network, settings));
  return length;
}

bool take_turn(const rapid_fire_network& network, const settings_record& settings, std::int64_t& last,
               std::int64_t now) {
  const bool is_from_the_future = last > now + TOLERATED_CLOCK_CHANGE;
  const bool is_due = is_from_the_future || last + interval_of(network, settings) <= now;
  if (!is_enabled(network, settings) || !is_due) return false;
  last = now;
  return true;
}

void make_intervals_valid(settings_record& record) {
  for (const rapid_fire_network& network : RAPID_FIRE_NETWORKS)
    if (network.interval != nullptr && record.integer(*network.interval) < 1)
      record.set_integer(*network.interval, DEFAULT_RAPID_INTERVAL);
}

void run_rapid_fire(report_buffer& report, std::int64_t start) {
  rapid_fire_stamps stamps;
  stamps.fill(start);
  for (;;) run_pass(report, stamps);
}

}  // namespace skypost
