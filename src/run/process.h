#pragma once

namespace skypost {

// Makes the process independent of its parent: the standard descriptors are open, the alarm signal ends the
// process and is not pending, children can be waited for, SIGPIPE does not end it, and the files that it writes
// can be read by the web server. The programs that it starts are ended by SIGPIPE, as they expect.
void prepare_process();

// Has wget read the appliance's time limits for it, when there are any and the environment does not name other
// settings.
void limit_wget();

}  // namespace skypost
