#pragma once

#include <string>
#include <vector>

namespace skypost {

// "; did you mean check?" if at least half of the word matches one of `names`, which is not empty; otherwise
// nothing. Case does not matter.
std::string suggestion_for(const std::string& word, const std::vector<std::string>& names);

}  // namespace skypost
