#pragma once

namespace skypost {

// Clears what the parent left: opens descriptors 0 to 2, resets SIGALRM and SIGCHLD, unblocks signals, sets
// the umask so that the web server can read what is written. SIGPIPE does not end this process but still ends
// its children, whose language is English.
void prepare_process();

// Points WGETRC at the appliance's wgetrc, if that exists and WGETRC is not set.
void limit_wget();

}  // namespace skypost
