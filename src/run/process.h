#pragma once

namespace skypost {

// Undoes what the parent process may have left behind: opens descriptors 0 to 2, resets SIGALRM and SIGCHLD, unblocks
// signals, and sets the umask so the web server can read what is written. SIGPIPE and SIGXFSZ no longer kill this process
// but still kill its children. LC_ALL is set to C.
void prepare_process();

// Points WGETRC at the appliance's wgetrc if that can be read and WGETRC is not set.
void limit_wget();

}  // namespace skypost
