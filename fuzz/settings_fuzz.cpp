// Fuzzes load_settings(), on every platform and in every layout, and composes everything from the result.

#include <cstdlib>

#include "base/paths.h"
#include "common/field_descriptions.h"
#include "harness.h"
#include "live/report_parser.h"
#include "settings/load.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace skypost;
  constexpr const char* PLATFORMS[] = {"X86", "NSLU2", "PLUG", "A10"};
  constexpr std::size_t SIZES[] = {0, CURRENT_LAYOUT_SIZE, OLDER_LAYOUT_SIZE, OLDER_PLUG_LAYOUT_SIZE};

  std::string_view input = fuzz::as_text(data, size);
  const std::uint8_t choice = fuzz::take_byte(input);
  setenv("NIMBULOGHW", PLATFORMS[choice % 4], 1);
  fuzz::write_file(SETTINGS_PATH, input, SIZES[choice / 4 % 4]);
  load_settings(station_settings);

  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.field.is_text())
      fuzz::require(station_settings.text(row.as_text()).size() <= row.field.size, row.name);
  load_live_record("actual_th0_temp_c 21.3 actual_th0_hum_rel 57 actual_th0_dew_c 11.9");
  fuzz::compose_everything();
  return 0;
}
