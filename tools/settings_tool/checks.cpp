#include "settings_tool/checks.h"

namespace skypost {

findings findings_of(const checked_appliance& appliance) {
  findings found;
#define CHECK(name, needed) \
  if (extent::needed <= appliance.at_hand) check_##name(appliance, found);
#include "settings_tool/checks.def"
  return found;
}

}  // namespace skypost
