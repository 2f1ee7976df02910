#include "host/http/hasher.h"

#include "host/http/password_hash.h"

#include <boost/asio/post.hpp>

namespace cmpihost::http {

Hasher::Hasher(boost::asio::io_context& context, std::size_t most)
    : context_(context), most_(most), thread_([this] { run(); }) {}

Hasher::~Hasher() {
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

bool Hasher::submit(Comparison comparison, Done done) {
    {
        const std::lock_guard lock(mutex_);
        if (jobs_.size() >= most_)
            return false;
        jobs_.push_back({std::move(comparison), std::move(done)});
    }
    changed_.notify_one();
    return true;
}

void Hasher::run() {
    const std::weak_ptr<bool> alive = alive_;
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return ended_ || !jobs_.empty(); });
        if (ended_)
            return;
        const Job job = std::move(jobs_.front());
        jobs_.pop_front();
        lock.unlock();
        const bool right = matches(job.comparison.password, job.comparison.hash);
        boost::asio::post(context_, [alive, done = job.done, right] {
            if (!alive.expired())
                done(right);
        });
        lock.lock();
    }
}

} // namespace cmpihost::http
