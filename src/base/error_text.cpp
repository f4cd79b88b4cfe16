#include "base/error_text.h"

namespace skypost {
namespace {

// Separate from the text_buffer, so that the zeros take no room in the file.
char bytes[ERROR_TEXT_CAPACITY + 1];

}  // namespace

constinit text_buffer error_text{bytes};
constinit exchange latest_exchange;

}  // namespace skypost
