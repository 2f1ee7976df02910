// Where the program writes.
#pragma once

#include <chrono>
#include <cstdio>
#include <string>

namespace cmpihost {

/// `out` is the program's own output, apart from the provider's.
struct Streams {
    std::FILE* out;
    std::FILE* err;
};

/// Exit codes, told in the help text.
enum : int { exit_ok = 0, exit_cim_error = 1, exit_usage = 2, exit_output = 3, exit_findings = 4, exit_provider = 5 };

bool is_terminal(std::FILE* out);

enum class Colour { automatic, always, never };

/// automatic: on a terminal that knows colours, unless NO_COLOR is set.
bool wants_colour(Colour colour, std::FILE* out);

/// Writes a text to `out`. Returns exit_ok, or exit_output after telling why on `err`.
int print(const Streams& streams, const std::string& text);

/// Writes pieces of an output as they come, so that each is seen soon.
class Printer {
  public:
    explicit Printer(const Streams& streams) : streams_(streams) {}

    void add(const std::string& text);

    /// As print(), for all of it. The first fault counts.
    int end();

  private:
    Streams streams_;
    std::chrono::steady_clock::time_point flushed_{};
    int error_ = 0; ///< errno
};

/// Tells on `err` in one line what cannot be used. Returns exit_usage.
int refuse(const Streams& streams, const std::string& what);

} // namespace cmpihost
