// What the listener counts, for metrics.
#pragma once

#include "host/http/log_line.h"
#include "host/metrics/text.h"

#include <array>
#include <map>

namespace cmpihost::http {

/// What is known at the moment of a scrape.
struct Moment {
    std::uint64_t connections = 0;
    std::uint64_t restarts = 0;
    bool answered = false; ///< by the process that runs the providers
};

/// Requests by operation and status, and how long they took. Memory does not grow with what clients send.
class Figures {
  public:
    Figures() : since_(std::chrono::system_clock::now()) {}

    void count_connection() { ++connections_; }
    void count(const LogRecord& record);

    std::uint64_t since() const; ///< in seconds since 1970
    std::uint64_t requests() const { return requests_; }
    std::uint64_t failures() const { return failures_; } ///< requests that did not end well

    /// As Prometheus reads it.
    std::string text(const Moment& moment) const;

  private:
    static constexpr std::array limits{0.001, 0.005, 0.02, 0.1, 0.5, 1.0, 2.5, 5.0, 10.0, 25.0}; // seconds

    struct Durations {
        std::array<std::uint64_t, limits.size()> within{}; ///< took no longer than the limit, and than no lower one
        std::uint64_t count = 0;
        std::chrono::microseconds sum{0};
    };

    void append_requests(metrics::Text& text) const;
    void append_durations(metrics::Text& text) const;

    std::chrono::system_clock::time_point since_;
    std::uint64_t connections_ = 0;
    std::uint64_t requests_ = 0;
    std::uint64_t failures_ = 0;
    std::map<std::pair<std::string, std::string>, std::uint64_t> statuses_; ///< operation and status
    std::map<std::string, Durations> durations_;                            ///< of each operation
};

} // namespace cmpihost::http
