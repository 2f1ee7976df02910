// The time that workers and requests are given.
#pragma once

#include <boost/asio/basic_waitable_timer.hpp>

#include <chrono>

namespace cmpihost::worker {

/// The steady clock, and what a test lets pass besides: it need not wait for a limit, nor fear one that is short.
struct Clock {
    using duration = std::chrono::steady_clock::duration;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<Clock>;
    static constexpr bool is_steady = true;

    static time_point now() { return time_point(std::chrono::steady_clock::now().time_since_epoch() + skipped); }

    static inline duration skipped{0}; ///< used on the event loop's thread, as all timers are
};

using Timer = boost::asio::basic_waitable_timer<Clock>;

} // namespace cmpihost::worker
