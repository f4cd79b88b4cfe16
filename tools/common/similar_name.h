#pragma once

#include <string>
#include <vector>

namespace skypost {

// "; did you mean check?" when at least half of the word is like one of the names, of which there is at least one;
// otherwise nothing. Letter case does not matter.
std::string suggestion_for(const std::string& word, const std::vector<std::string>& names);

}  // namespace skypost
