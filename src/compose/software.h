#pragma once

// How the program and its station type identify themselves to networks.
namespace skypost {

inline constexpr char SOFTWARE_NAME[] = "nimbulog";
inline constexpr int STATION_TYPE = 49;  // after "NB"

}  // namespace skypost
