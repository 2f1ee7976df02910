// What a person at a terminal sees while something takes its time.
#pragma once

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

namespace cmpihost {

/// A line on a terminal that is written again and again, from a second after the beginning on; nothing elsewhere.
class Progress {
  public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// @param err null: nobody wants to know
    explicit Progress(std::FILE* err, Clock clock = std::chrono::steady_clock::now);
    ~Progress() { end(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void tell(const std::string& text);

    /// Takes the line away.
    void end();

  private:
    std::FILE* err_; ///< null: no terminal
    Clock clock_;
    std::chrono::steady_clock::time_point next_;
    bool shown_ = false;
};

} // namespace cmpihost
