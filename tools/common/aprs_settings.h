#pragma once

#include <string>

#include "run/run_list.h"

// What CWOP and APRS alone have in their settings.
namespace skypost {

// The setting with the call sign of a step that is spoken to by APRS, when it holds a line break: its session then
// sends nothing. nullptr when it holds none.
const text_field* broken_call_sign(const run_step& step, const settings_record& settings);

// The line on an aprs_port that no server can have; empty when one can, and for CWOP, whose port is fixed.
std::string fault_of_port(const run_step& step, const settings_record& settings);

}  // namespace skypost
