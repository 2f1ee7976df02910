#include "simulator/call.h"
#include "simulator/state.h"

#include <atomic>
#include <cstdio>
#include <mutex>

namespace switchsim {
namespace {

// A caller without the process-wide lock is among those complained about, so the list has a lock of its own.
// The list ends somewhere, since nobody may ever look at it.
constexpr std::size_t most_complaints = 1000;
std::mutex complaints_lock;
std::vector<std::string> noted;
std::atomic<bool> fatal = false;

std::string list_of(std::initializer_list<std::int64_t> values) {
    std::string list;
    for (const std::int64_t value : values)
        list += (list.empty() ? "" : " or ") + std::to_string(value);
    return list;
}

} // namespace

void complain(Function function, std::string_view what) {
    std::string line = std::string(name_of(function)) + ": " + std::string(what);
    if (fatal) {
        std::fprintf(stderr, "switchsim: %s\n", line.c_str());
        std::abort();
    }
    const std::lock_guard guard(complaints_lock);
    if (noted.size() < most_complaints)
        noted.push_back(std::move(line));
}

void Call::complain_about(std::string_view what, std::int64_t value,
                          std::initializer_list<std::int64_t> allowed) const {
    complain(function_, std::string(what) + " is " + std::to_string(value) + ", expected " + list_of(allowed));
}

bool Call::expect_pointer(std::string_view what, const void* pointer) const {
    if (!pointer)
        complain(function_, std::string(what) + " is null");
    return pointer != nullptr;
}

const std::vector<std::string>& complaints() {
    return noted;
}

void clear_complaints() {
    const std::lock_guard guard(complaints_lock);
    noted.clear();
}

void complaints_are_fatal(bool on) {
    fatal = on;
}

} // namespace switchsim
