#include "host/worker/thread_pool.h"

#include <utility>

namespace cmpihost::worker {

ThreadPool::ThreadPool(unsigned threads) {
    while (threads_.size() < threads)
        threads_.emplace_back([this] { work(); });
}

ThreadPool::~ThreadPool() {
    {
        const std::lock_guard lock(mutex_);
        jobs_.clear();
        ending_ = true;
    }
    job_added_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
}

void ThreadPool::add(Job job) {
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
    }
    job_added_.notify_one();
}

void ThreadPool::drop() {
    const std::lock_guard lock(mutex_);
    jobs_.clear();
}

bool ThreadPool::wait(std::chrono::milliseconds most) {
    std::unique_lock lock(mutex_);
    return idle_.wait_for(lock, most, [this] { return running_ == 0 && jobs_.empty(); });
}

void ThreadPool::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        job_added_.wait(lock, [this] { return ending_ || !jobs_.empty(); });
        if (ending_)
            return;
        {
            const Job job = std::move(jobs_.front());
            jobs_.pop_front();
            ++running_;
            lock.unlock();
            job();
        }
        lock.lock();
        if (--running_ == 0)
            idle_.notify_all();
    }
}

} // namespace cmpihost::worker
