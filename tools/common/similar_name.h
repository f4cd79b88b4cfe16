#pragma once

#include <string>
#include <vector>

namespace skypost {

// Returns "; did you mean check?" if at least half of `word` matches one of `names`, ignoring case; otherwise an empty
// text. `names` must not be empty.
std::string suggestion_for(const std::string& word, const std::vector<std::string>& names);

}  // namespace skypost
