#include "simulator/lock.h"

#include "simulator/call.h"
#include "simulator/live.h"
#include "simulator/state.h"

#include <atomic>
#include <mutex>
#include <thread>

namespace {

using namespace switchsim;

// An ordinary mutex does the locking, so that the thread sanitizer sees it; the owner beside it is for the checks.
std::mutex process_lock;
std::atomic<std::thread::id> owner{};

/// Lets happen what happened on the switch since the last request.
void begin_request() noexcept {
    try {
        if (is_loaded())
            advance();
    } catch (const std::exception&) { // no memory: it happens at the next request
    }
}

} // namespace

namespace switchsim {

bool lock_held_here() {
    return owner.load(std::memory_order_relaxed) == std::this_thread::get_id();
}

bool lock_held() {
    return owner.load(std::memory_order_relaxed) != std::thread::id{};
}

bool try_lock_switch() {
    if (!process_lock.try_lock())
        return false;
    owner.store(std::this_thread::get_id(), std::memory_order_relaxed);
    return true;
}

void unlock_switch() {
    owner.store(std::thread::id{}, std::memory_order_relaxed);
    process_lock.unlock();
}

} // namespace switchsim

void mutex_lock(void) {
    count_lock_call(Function::mutex_lock);
    if (lock_held_here()) {
        complain(Function::mutex_lock, "the calling thread holds the lock already");
        return;
    }
    process_lock.lock();
    owner.store(std::this_thread::get_id(), std::memory_order_relaxed);
    begin_request();
}

void mutex_unlock(void) {
    count_lock_call(Function::mutex_unlock);
    if (!lock_held_here()) {
        complain(Function::mutex_unlock, "the calling thread does not hold the lock");
        return;
    }
    owner.store(std::thread::id{}, std::memory_order_relaxed);
    process_lock.unlock();
}
