#pragma once

#include "base/text.h"

namespace skypost {

inline constexpr std::size_t ERROR_TEXT_CAPACITY = 10'000;

// The reason for the latest failure, for report_failure. Cleared at the start of each rapid-fire pass.
extern text_buffer error_text;

inline constexpr int NO_WGET_STATUS = -1;

// What else is known about the latest upload. The run resets it before each one.
struct exchange {
  // Exit status of wget, or of the shell if it could not start wget. NO_WGET_STATUS if there is none: nothing was run,
  // a signal ended it, another command followed it in a pipeline, or its output filled the reply, so it may have failed
  // to write the rest.
  int wget_status = NO_WGET_STATUS;

  // error_text quotes a command that could not be run, which may contain a password.
  bool is_command_quoted = false;

  // Why an upload that counts as good may not have arrived, in the owner's words; empty if there is no doubt.
  char doubt[100] = "";
};
extern exchange latest_exchange;

// Sets the latest upload's `doubt`, truncated to fit.
[[gnu::format(printf, 1, 2)]] void doubt_upload(const char* format, ...);

}  // namespace skypost
