#include "run/upload_switch.h"

namespace skypost {

bool is_enabled(const upload_switch& row, const settings_record& settings) {
  return settings.is_on(*row.enabled) && (row.user == nullptr || settings.text(*row.user).size() > 1) &&
         (row.rapid_enabled == nullptr || settings.is_on(*row.rapid_enabled));
}

}  // namespace skypost
