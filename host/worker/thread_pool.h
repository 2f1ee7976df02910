// Threads that do jobs in the order in which they were given.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace cmpihost::worker {

class ThreadPool {
  public:
    using Job = std::function<void()>;

    explicit ThreadPool(unsigned threads);

    /// Drops the jobs that wait, and waits for those that run.
    ~ThreadPool();
    ThreadPool(const ThreadPool&) = delete;
    ThreadPool& operator=(const ThreadPool&) = delete;

    void add(Job job);

    /// Drops the jobs that wait.
    void drop();

    /// Waits until no job runs or waits.
    /// @return false: some still do after that time
    bool wait(std::chrono::milliseconds most);

  private:
    void work();

    std::mutex mutex_;
    std::condition_variable job_added_;
    std::condition_variable idle_;
    std::deque<Job> jobs_;
    unsigned running_ = 0;
    bool ending_ = false;
    std::vector<std::thread> threads_;
};

} // namespace cmpihost::worker
