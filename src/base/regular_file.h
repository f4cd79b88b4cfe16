#pragma once

#include <sys/stat.h>

#include <string_view>

// A FIFO in place of a file would hang the program, and a link in a directory that belongs to somebody else would
// lead it to a file of root's.
namespace skypost {

// Opens the file at `path`, with open's own `flags`, never waits for it, and fills in its `status`. Returns the
// descriptor, or -1 with the reason in errno: ENXIO for anything but a regular file.
int open_regular_file(const char* path, int flags, struct stat& status);

// Opens a file that others read, or creates it, for replace_content. Nothing in it is changed yet. Returns the
// descriptor, or -1 with the reason in errno: ELOOP for a link, EMLINK for a file with a second name, ENXIO or EISDIR
// for what is no file.
int open_shared_file(const char* path);

// Replaces what the file holds by `text`, and closes it. Owner and mode stay, and a reader never finds it empty. On a
// full disk the old text stays, and a new file is removed from `path`.
void replace_content(int file, const char* path, std::string_view text);

}  // namespace skypost
