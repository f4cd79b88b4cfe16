#include "settings_tool/enabled.h"

#include "common/settings_file.h"
#include "live/report_parser.h"

namespace skypost {

std::vector<handed_out> enabled_uploads() {
  std::vector<handed_out> all;
  for (const handed_out& one : all_handed_out())
    if (one.is_on(station_settings) && is_enabled(one.step, station_settings)) all.push_back(one);
  return all;
}

std::string networks_by(carrier carried_by) {
  return networks_where([=](const handed_out& one) { return one.upload.by == carried_by; });
}

station station_without_values(const char* address) {
  static const LiveRecord nothing = [] {
    LiveRecord live;
    reset_live_record(live);
    return live;
  }();
  return {station_settings, nothing, moment_at(0), {platform(), address}};
}

}  // namespace skypost
