#pragma once

#include <sys/stat.h>

#include <string_view>

// A FIFO in place of a file would hang the program. In a directory that another user owns, a link could lead it to any
// of root's files.
namespace skypost {

// Opens `path` with open()'s `flags`, without waiting, and sets `found` to what is there. Returns the descriptor, or -1
// with the reason in errno: EISDIR or ENXIO for anything but a regular file, ELOOP for a dangling link. So
// ENOENT means that nothing is there.
int open_regular_file(const char* path, int flags, struct stat& found);

// The same, but also refuses a file that is reached by a link (ELOOP) or has a second name (EMLINK).
int open_sole_file(const char* path, int flags);

// Opens or creates a sole file that other programs read. Its content is kept until replace_content().
int open_shared_file(const char* path);

// Replaces the text of an open file and closes it. Keeps owner and mode. A reader never sees an empty file, but may see
// the tail of a longer old text for a moment. If space cannot be reserved, the old text is kept; a file that would be
// left empty is unlinked. Returns 0, or -1 with the reason in errno if the text was not written whole.
int replace_content(int file, const char* path, std::string_view text);

}  // namespace skypost
