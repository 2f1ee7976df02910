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

void note(std::string line) {
    if (fatal) {
        std::fprintf(stderr, "switchsim: %s\n", line.c_str());
        std::abort();
    }
    const std::lock_guard guard(complaints_lock);
    if (noted.size() < most_complaints)
        noted.push_back(std::move(line));
}

/// Notes the function's name and what `words` puts together.
template <class Words>
void try_to_note(Function function, Words words) noexcept {
    const std::string_view name = name_of(function);
    try {
        note(std::string(name) + ": " + words());
    } catch (const std::exception&) {
        std::fprintf(stderr, "switchsim: %s: no memory for a complaint\n", name.data());
    }
}

} // namespace

void complain(Function function, std::string_view what) noexcept {
    try_to_note(function, [&] { return std::string(what); });
}

void Call::complain_about(std::string_view what, std::int64_t value,
                          std::initializer_list<std::int64_t> allowed) const noexcept {
    try_to_note(function_,
                [&] { return std::string(what) + " is " + std::to_string(value) + ", expected " + list_of(allowed); });
}

bool Call::expect_pointer(std::string_view what, const void* pointer) const noexcept {
    if (!pointer)
        try_to_note(function_, [&] { return std::string(what) + " is null"; });
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
