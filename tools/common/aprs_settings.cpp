#include "common/aprs_settings.h"

#include "channels/channels.h"
#include "common/meaning.h"

namespace skypost {

const text_field* broken_call_sign(const run_step& step, const settings_record& settings) {
  const text_field& call_sign = step.upload == &CWOP ? cwop_id : aprs_call_sign;
  return settings.text(call_sign).find_first_of("\r\n") == std::string_view::npos ? nullptr : &call_sign;
}

std::string fault_of_port(const run_step& step, const settings_record& settings) {
  if (step.upload != &APRS) return {};
  return finding_of_number(aprs_port, settings, ", so the server of APRS is not reached. ");
}

}  // namespace skypost
