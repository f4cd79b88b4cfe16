#include "base/endpoints.h"
#include "settings/defaults.h"
#include "settings_tool/commands.h"

namespace skypost {

int run_new(const words& arguments, std::ostream&) {
  if (arguments.size() != 1) throw usage_error("new takes one FILE");
  load_endpoints();
  settings_record record{};
  set_default_settings(record);
  create_settings_file(as_path(arguments[0]), record);
  return 0;
}

}  // namespace skypost
