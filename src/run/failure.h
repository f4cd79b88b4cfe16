#pragma once

#include <cstddef>

namespace skypost {

inline constexpr std::size_t FAILURE_NAME_CAPACITY = 199;

// The name under which a failure is reported: a constant of the program that fits the alarm command.
struct failure_name {
  template <std::size_t size>
  consteval failure_name(const char (&name)[size]) : text(name) {
    static_assert(size - 1 <= FAILURE_NAME_CAPACITY);
  }

  const char* text;
};

// Runs the appliance's alarm script with three arguments, "skypost", `name` and `error_text`, and
// waits for it. What becomes of the script changes nothing here.
void report_failure(failure_name name);

}  // namespace skypost
