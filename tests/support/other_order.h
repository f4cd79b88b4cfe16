#pragma once

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <string>

namespace skypost::testing {

// The image as a board of the other byte order writes it. Each line of the table describes a group of integers: offset,
// count and size, then how often the group repeats and at what distance.
inline std::string in_other_order(std::string image) {
  std::ifstream table(TESTS_DIRECTORY "/settings/golden/integers");
  std::size_t first, count, size, entries, distance;
  while (table >> first >> count >> size >> entries >> distance)
    for (std::size_t i = 0; i < entries * count; ++i) {
      const auto integer =
          image.begin() + static_cast<std::ptrdiff_t>(first + i / count * distance + i % count * size);
      std::reverse(integer, integer + static_cast<std::ptrdiff_t>(size));
    }
  return image;
}

}  // namespace skypost::testing
