#pragma once

namespace skypost {

// Runs the appliance's alarm script with three arguments, "skypost", `name` and `error_text`, and
// waits for it. What becomes of the script changes nothing here.
void report_failure(const char* name);

}  // namespace skypost
