#pragma once

#include <string>
#include <vector>

namespace skypost {

// The most similar of some names, of which there is at least one, and the first of several. Letter case does not
// matter.
std::string nearest_name(const std::string& name, const std::vector<std::string>& names);

// "; did you mean check?" when at least half of the word is like one of the names, and nothing otherwise.
std::string suggestion_for(const std::string& word, const std::vector<std::string>& names);

}  // namespace skypost
