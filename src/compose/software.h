#pragma once

// What the networks know this program and its kind of station by.
namespace skypost {

inline constexpr char SOFTWARE_NAME[] = "nimbulog";
inline constexpr int STATION_TYPE = 49;  // after "NB"

}  // namespace skypost
