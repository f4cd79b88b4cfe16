#pragma once

#include <cstddef>

namespace skypost {

inline constexpr std::size_t FAILURE_NAME_CAPACITY = 199;

// The name under which a failure is reported: a literal that fits into the alarm script's command.
struct failure_name {
  template <std::size_t size>
  consteval failure_name(const char (&name)[size]) : text(name) {
    static_assert(size - 1 <= FAILURE_NAME_CAPACITY);
  }

  const char* text;
};

// Runs the alarm script with three arguments, "skypost", `name` and `error_text`, and waits for it. Ignores the script's
// exit status.
void report_failure(failure_name name);

}  // namespace skypost
