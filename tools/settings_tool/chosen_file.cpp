#include "settings_tool/chosen_file.h"

#include <unistd.h>

#include <cerrno>

#include "common/errors.h"

namespace skypost {

bool is_there(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

settings_file read_chosen_file(const words& operands) {
  if (!operands.empty()) return read_settings_file(operands[0]);
  const std::string path = appliance_settings_path();
  try {
    return read_settings_file(path);
  } catch (const tool_error& fault) {
    if (is_there(path) || errno != ENOENT) throw;
    throw tool_error(std::string(fault.what()) + "; make one with: skypost-settings new " + path);
  }
}

}  // namespace skypost
