// Fuzzes load_live_record() and composes everything from the result.

#include <string>

#include "harness.h"
#include "live/data_server.h"
#include "live/live_record.h"
#include "live/report_parser.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace skypost;
  static const bool is_equipped = (fuzz::equip_station(), true);
  fuzz::require(is_equipped, "equipped");

  const std::string report(fuzz::as_text(data, size));
  live_data_stale = 0;
  load_live_record(report.c_str());
  fuzz::compose_everything();
  return 0;
}
