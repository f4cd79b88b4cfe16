#pragma once

#include "common/request_parts.h"
#include "compose/upload.h"

namespace skypost {

// Says where each field of the records in a request comes from: the key in the report, the setting, or the clock.
// `shown` is the request that `upload` composes from `source`, perhaps with its secrets hidden. Derived from the
// composer alone, by composing with two contents of each value in turn.
void name_sources(request_parts& shown, const upload& upload, const station& source);

}  // namespace skypost
