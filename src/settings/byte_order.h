#pragma once

#include <cstdint>

#include "settings/record.h"

namespace skypost {

// Adjacent numbers of `size` bytes each (4: integer, 8: floating point), from offset `first` to offset `last`. In an
// array, each of its `entries` has such numbers; the offsets are those of the first, and the next is `stride` bytes on.
struct converted_range {
  std::uint32_t first;
  std::uint32_t last;
  std::uint32_t size;
  std::uint32_t entries = 1;
  std::uint32_t stride = 0;
};

// The numbers that all programs of the appliance convert in a record of the other byte order.
inline constexpr converted_range CONVERTED_RANGES[] = {
    // clang-format off
    {    0,     0, 4}, {  500,   500, 4}, { 6756,  6756, 4}, { 7016,  7016, 4}, {17136, 17136, 4},
    {17156, 17156, 4}, {17524, 17524, 4}, {18076, 18076, 4}, {18672, 18672, 4}, {21608, 21608, 4},
    {27576, 27576, 4}, {27964, 27964, 4}, {28364, 28364, 4}, {28624, 28624, 4}, {37840, 37840, 4},
    {38008, 38008, 4}, {38200, 38200, 4}, {48236, 48236, 4}, {48304, 48304, 4}, {48372, 48372, 4},
    {  760,   800, 4},
    { 5924,  5940, 4},
    { 6456,  6496, 4},
    { 7388,  7644, 4},
    {12256, 12524, 4},
    {17416, 17424, 4},
    {17576, 17600, 4},
    {17684, 17688, 4},
    {18144, 18148, 4},
    {18932, 18936, 4},
    {19044, 19552, 4},
    {22128, 22388, 4},
    {28096, 28104, 4},
    {29652, 29668, 4},
    {37688, 37692, 4},
    {37860, 37872, 4},
    {37940, 37948, 4},
    {38112, 38116, 4},
    {48572, 48580, 4},
    {48712, 48716, 4},
    {48784, 48788, 4},
    {29928, 29956, 4,  20, 132},
    {32568, 32580, 4, 128,  40},
    {38236, 38248, 4,  20, 500},
    {20584, 21600, 8},
    // clang-format on
};

// Never converted, so a file from a board of the other byte order has them reversed. They are flags: a reversed 1 is
// still on.
inline constexpr integer_field NEVER_CONVERTED[] = {hetweeractueel_enabled, weatherflow_enabled,
                                                    metoffice_enabled};

// Change the byte order of the number at this address: an integer, or a floating-point number.
void swap_u32(unsigned char* number);
void swap_f64(unsigned char* number);

// Converts all CONVERTED_RANGES of `record`.
void convert_byte_order(settings_record& record);

}  // namespace skypost
