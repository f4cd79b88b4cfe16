#pragma once

namespace skypost {

// Makes the process independent of what its parent left behind: standard descriptors that are open,
// an alarm signal that ends the process, children that can be waited for, and no death by SIGPIPE. The
// programs that it starts inherit none of it but the descriptors.
void prepare_process();

}  // namespace skypost
