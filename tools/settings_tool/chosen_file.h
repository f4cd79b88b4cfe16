#pragma once

#include "common/arguments.h"
#include "common/settings_file.h"

namespace skypost {

// True if the path exists.
bool is_there(const std::string& path);

// Reads the settings file that is the first operand, or else the appliance's own. Throws tool_error if it cannot be
// read, and says how to create the appliance's own if that is missing.
settings_file read_chosen_file(const words& operands);

}  // namespace skypost
