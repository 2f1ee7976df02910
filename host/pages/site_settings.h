// What pages and metrics are made with.
#pragma once

#include <string>
#include <vector>

namespace cmpihost::pages {

struct SiteSettings {
    std::string views;                ///< file that says how classes are shown and measured; empty: none
    std::vector<std::string> metrics; ///< classes to measure; empty: those that the views name
};

} // namespace cmpihost::pages
