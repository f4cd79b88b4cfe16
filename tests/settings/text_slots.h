#pragma once

#include <cstdint>

namespace skypost::testing {

struct text_slot {
  std::uint32_t offset;
  std::uint32_t size;  // bytes, the NUL included
};

// Where the appliance's configuration pages put the texts, worked out apart from the program's own
// table. The host name and the sender address, which have defaults, come first.
inline constexpr text_slot TEXT_SLOTS[] = {
    // clang-format off
    {   52,  64}, {  244, 128},
    { 6500, 128}, { 6628, 128}, { 6760, 128}, { 6888, 128}, { 7020, 128},
    { 7148,   8}, { 7156,   8}, { 7164,   8}, { 7172,   8}, { 7180,   8}, { 7188,   8},
    { 7260, 128}, {17620,  64}, {17692, 128}, {17820, 128}, {17948, 128},
    {18080,   8}, {18088,   8}, {18096,   8}, {18104,   8}, {18112,   8}, {18120,   8}, {18128,   8}, {18136,   8},
    {18152, 128}, {18280, 128}, {18408, 128}, {18536, 128}, {18664,   8},
    {27580, 128}, {27708, 128}, {27968, 128}, {28108, 128}, {28236, 128}, {28368, 128}, {28496, 128},
    {29672, 128}, {29800, 128},
    {37876,  32}, {37908,  32}, {38012,  32}, {38044,  32}, {38076,  32}, {38152,  24}, {38176,  24},
    {48240,  64}, {48308,  64}, {48376,  64}, {48440,  64}, {48504,  32}, {48536,  32}, {48584,  64}, {48648,  64},
    {48720,  64},
    // clang-format on
};

}  // namespace skypost::testing
