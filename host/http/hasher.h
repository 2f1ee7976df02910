// The thread that hashes passwords.
#pragma once

#include "host/http/secret.h"

#include <boost/asio/io_context.hpp>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace cmpihost::http {

/// Compares passwords with hashes, one after the other, on a thread of its own.
class Hasher {
  public:
    using Done = std::function<void(bool right)>;

    struct Comparison {
        Secret password;
        std::string hash;
    };

    /// @param most comparisons that wait
    Hasher(boost::asio::io_context& context, std::size_t most);

    /// Drops what waits.
    ~Hasher();
    Hasher(const Hasher&) = delete;
    Hasher& operator=(const Hasher&) = delete;

    /// @param done called on the thread of the event loop, unless the hasher is gone by then
    /// @return false: too many wait
    bool submit(Comparison comparison, Done done);

  private:
    struct Job {
        Comparison comparison;
        Done done;
    };

    void run();

    boost::asio::io_context& context_;
    std::size_t most_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Job> jobs_;
    bool ended_ = false;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true); ///< read and dropped on the loop's thread
    std::thread thread_;
};

} // namespace cmpihost::http
