#include "live/live_record.h"

namespace skypost {

constinit LiveRecord live_record{};
constinit std::int32_t live_data_stale = 0;

}  // namespace skypost
