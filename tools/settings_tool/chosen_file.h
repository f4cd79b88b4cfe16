#pragma once

#include "common/arguments.h"
#include "common/settings_file.h"

namespace skypost {

// True when there is something under that name.
bool is_there(const std::string& path);

// Reads the settings file that the arguments begin with, or else the appliance's own. Throws usage_error
// for an option, and tool_error when the file cannot be read; it says how to make the appliance's own when that is
// missing.
settings_file read_chosen_file(const words& arguments);

}  // namespace skypost
