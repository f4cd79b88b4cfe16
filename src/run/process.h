#pragma once

namespace skypost {

// Makes the process independent of its parent: the standard descriptors are open, the alarm signal ends the
// process and is not pending, children can be waited for, and SIGPIPE does not end it. The programs that it
// starts are ended by SIGPIPE, as they expect.
void prepare_process();

}  // namespace skypost
