#include "base/board.h"

#include <cstdlib>

namespace skypost {
namespace {

char address_bytes[HARDWARE_ADDRESS_CAPACITY + 1];

}  // namespace

constinit text_buffer hardware_address{address_bytes};

board this_board() { return {std::getenv(PLATFORM_VARIABLE), hardware_address.c_str()}; }

}  // namespace skypost
