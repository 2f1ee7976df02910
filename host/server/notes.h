// What the log is to say besides a reply.
#pragma once

#include <mutex>
#include <string>
#include <unordered_set>
#include <vector>

namespace cmpihost::server {

/// Lines that are to be said once in a service's life. Several threads may use it.
class SaidOnce {
  public:
    /// Whether the line was not said yet; it counts as said from now on.
    bool is_new(const std::string& line);

  private:
    std::mutex mutex_;
    std::unordered_set<std::string> said_;
};

/// The notes of one reply.
class Notes {
  public:
    explicit Notes(SaidOnce& said) : said_(said) {}

    void add(std::string line);
    void add_once(const std::string& line);

    std::vector<std::string> take() { return std::move(lines_); }

  private:
    SaidOnce& said_;
    std::vector<std::string> lines_;
};

} // namespace cmpihost::server
