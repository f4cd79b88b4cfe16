#pragma once

#include <sys/stat.h>

#include <string_view>

// A FIFO in place of a file would hang the program. In a directory that another user owns, a link could lead it to any
// of root's files.
namespace skypost {

// Opens `path` with open()'s `flags`, without waiting, and fills in `status`. Returns the descriptor, or -1 with the
// reason in errno: EISDIR or ENXIO for anything but a regular file, ELOOP for a link that leads nowhere. So ENOENT
// means that nothing is there.
int open_regular_file(const char* path, int flags, struct stat& status);

// Opens or creates a file that others read, for replace_content; its text stays until then. Returns the descriptor, or
// -1 with the reason in errno: ELOOP for a link, EMLINK for a file with a second name, EISDIR or ENXIO for anything else.
int open_shared_file(const char* path);

// Replaces the text of an open file, and closes it. Owner and mode stay, and a reader never finds the file empty. On a
// full disk the old text stays; a file that would be left empty is removed from `path`.
void replace_content(int file, const char* path, std::string_view text);

}  // namespace skypost
