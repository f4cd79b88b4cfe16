#include "common/errors.h"
#include "common/networks.h"
#include "common/settings_file.h"
#include "endpoints/endpoint_file.h"
#include "endpoints/endpoints.h"
#include "settings/defaults.h"
#include "settings_tool/commands.h"

namespace skypost {

int run_new(const words& arguments, std::ostream&) {
  const words files = operands(arguments);
  if (files.size() != 1) throw usage_error("new takes one FILE");
  load_endpoints();
  if (is_refused(endpoint::mail_sender))
    throw tool_error("no valid value for " + in_endpoint_file(endpoint::mail_sender));
  settings_record record{};
  set_default_settings(record);
  create_settings_file(files[0], record);
  return 0;
}

}  // namespace skypost
