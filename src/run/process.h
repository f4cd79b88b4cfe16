#pragma once

namespace skypost {

// Makes the process independent of what its parent left behind: standard descriptors that are open,
// an alarm signal that ends the process and is not on its way, children that can be waited for, and no
// death by SIGPIPE. The programs that it starts do die by SIGPIPE, as they expect to.
void prepare_process();

}  // namespace skypost
