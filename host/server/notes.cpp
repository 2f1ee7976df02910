#include "host/server/notes.h"

namespace cmpihost::server {

namespace {

// Providers may make up names without end.
constexpr std::size_t most_said = 10'000;
constexpr std::size_t most_lines = 100;

} // namespace

bool SaidOnce::is_new(const std::string& line) {
    const std::lock_guard lock(mutex_);
    return said_.size() < most_said && said_.insert(line).second;
}

void Notes::add(std::string line) {
    for (char& c : line) // providers' texts
        if (static_cast<unsigned char>(c) < ' ')
            c = ' ';
    if (lines_.size() < most_lines)
        lines_.push_back(std::move(line));
}

void Notes::add_once(const std::string& line) {
    if (said_.is_new(line))
        add(line);
}

} // namespace cmpihost::server
