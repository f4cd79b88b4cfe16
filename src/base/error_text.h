#pragma once

#include "base/text.h"

namespace skypost {

inline constexpr std::size_t ERROR_TEXT_CAPACITY = 10'000;

// The reason for the latest failure, for report_failure. Cleared at the start of each rapid-fire pass.
extern text_buffer error_text;

// True if `error_text` holds a command that could not be run, and so perhaps a password. Cleared before each upload of
// which a status record is kept.
extern bool error_text_holds_command;

}  // namespace skypost
