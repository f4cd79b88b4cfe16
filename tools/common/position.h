#pragma once

#include <string>
#include <vector>

#include "settings/record.h"

namespace skypost {

// Why the position in the settings arrives wrong, or not at all, at the networks that are named ("CWOP, APRS").
// Each is a line: the setting, what is wrong with it, and what to do.
std::vector<std::string> faults_of_position(const settings_record& settings, const std::string& networks);

}  // namespace skypost
