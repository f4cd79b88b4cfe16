#pragma once

#include "common/request_parts.h"
#include "compose/upload.h"

namespace skypost {

// Fills in the source of each record field in `shown`: a key in the report, a setting, or the clock. `shown` is the
// request that `upload` composes from `source`, with or without secrets. The sources are found by changing one value at
// a time and composing again.
void name_sources(request_parts& shown, const upload& upload, const station& source);

}  // namespace skypost
