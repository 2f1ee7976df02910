// What pages and metrics are made with.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace cmpihost::pages {

/// What the command line has to be told to ask what the server asks.
struct CommandWords {
    bool default_provider = false;   ///< the server has that of the command line, and what is loaded with it
    std::string default_name;        ///< prefix of factories that it takes for itself
    std::vector<std::string> schema; ///< files; empty: those that it takes for itself
    std::string scenario;            ///< file; empty: none
};

struct SiteSettings {
    std::string views;                ///< file that says how classes are shown and measured; empty: none
    std::vector<std::string> metrics; ///< classes to measure; empty: those that the views name
    CommandWords command{};
    std::chrono::milliseconds counting{500}; ///< for the first page to count objects; the next visit counts the rest
    std::chrono::milliseconds walking{5000}; ///< for what takes many requests; then what is found is shown
    std::chrono::milliseconds enumerating{1000}; ///< a class that took longer is sorted by keys alone the next time
    std::chrono::milliseconds timeout{25'000}; ///< for a request; what takes many others stops when half of it is over
};

} // namespace cmpihost::pages
