#pragma once

#include "common/arguments.h"
#include "common/settings_file.h"

namespace skypost {

// True if the path exists.
bool is_there(const std::string& path);

// Reads the settings file that the first operand names, or the appliance's own. Throws tool_error if it cannot be read,
// and says how to create the appliance's own if that does not exist.
settings_file read_chosen_file(const words& operands);

}  // namespace skypost
