#include "simulator/call.h"
#include "simulator/live.h"
#include "simulator/lock.h"
#include "simulator/state.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace switchsim {
namespace {

/// A fault that waits for its call. `nth` counts down to 1; every_call stays.
struct PlannedFault {
    Fault fault;
    unsigned nth;
    int code;
};

// Counters are atomic, but need no atomic increment: callers hold the process-wide lock. One who does not may lose a
// count and gets a complaint.
using Counter = std::atomic<unsigned>;

std::array<Counter, function_count> counts;
Counter total;
bool recording = false;
std::vector<std::string> record;
bool any_fault = false;
std::array<std::vector<PlannedFault>, function_count> faults_by_function;
std::vector<PlannedFault> faults_by_number;
std::array<std::atomic<unsigned>, function_count> delays; ///< milliseconds

void increment(Counter& counter) {
    counter.store(counter.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

Function function_by_name(std::string_view name) {
    const auto found = std::find(function_names.begin(), function_names.end(), name);
    if (found == function_names.end())
        throw std::invalid_argument("no platform function is called \"" + std::string(name) + "\"");
    return static_cast<Function>(found - function_names.begin());
}

/// Counts all planned faults down; the first that is due hits.
std::optional<ActiveFault> take_due(std::vector<PlannedFault>& planned) {
    std::optional<ActiveFault> due;
    for (auto fault = planned.begin(); fault != planned.end();) {
        const bool hits = fault->nth == every_call || fault->nth == 1;
        if (hits && !due)
            due = ActiveFault{fault->fault, fault->code};
        if (hits && fault->nth != every_call) {
            fault = planned.erase(fault);
            continue;
        }
        if (!hits)
            --fault->nth;
        ++fault;
    }
    return due;
}

std::optional<ActiveFault> take_fault(Function function) {
    auto by_function = take_due(faults_by_function[index_of(function)]);
    auto by_number = take_due(faults_by_number);
    return by_function ? by_function : by_number;
}

void wait_for(Function function) {
    if (const unsigned milliseconds = delays[index_of(function)].load(std::memory_order_relaxed))
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace

Call::Call(Function function) noexcept : function_(function) {
    increment(counts[index_of(function)]);
    increment(total);
    if (!lock_held_here())
        complain(function, "called without the process-wide lock");
    try {
        ensure_loaded();
        if (lock_held_here())
            advance_within_request();
        else
            advance();
        wait_for(function);
        if (recording)
            record.emplace_back(name_of(function));
        if (any_fault)
            fault_ = take_fault(function);
    } catch (const std::exception&) {
        fault_ = ActiveFault{Fault::fail, failed};
    }
}

std::optional<int> Call::fault_on_result() const {
    if (has(Fault::fail) || has(Fault::fail_leaving_record))
        return fault_->code;
    return has(Fault::succeed_without_record) ? std::optional(0) : std::nullopt;
}

std::optional<int> Call::fault_on_record(void** block, std::size_t size) const {
    if (has(Fault::fail_leaving_record))
        *block = std::calloc(1, size);
    return fault_on_result();
}

std::optional<int> Call::fault_on_storage(void* storage, std::size_t size) const {
    if (has(Fault::fail_leaving_record))
        std::memset(storage, 0, size);
    return fault_on_result();
}

void count_lock_call(Function function) {
    increment(counts[index_of(function)]);
}

void inject(std::string_view function, Fault fault, unsigned nth, int code) {
    faults_by_function[index_of(function_by_name(function))].push_back({fault, nth, code});
    any_fault = true;
}

void inject_at(unsigned nth, Fault fault, int code) {
    faults_by_number.push_back({fault, nth, code});
    any_fault = true;
}

void delay(std::string_view function, unsigned milliseconds) {
    delays[index_of(function_by_name(function))].store(milliseconds, std::memory_order_relaxed);
}

std::vector<std::string> planned_faults() {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < function_count; ++i) {
        const std::string name(function_names[i]);
        for (const PlannedFault& fault : faults_by_function[i])
            lines.push_back("fault " + name + " " + (fault.nth == every_call ? "every" : std::to_string(fault.nth)));
        if (const unsigned milliseconds = delays[i].load(std::memory_order_relaxed))
            lines.push_back("delay " + name + " " + std::to_string(milliseconds));
    }
    return lines;
}

void clear_faults() {
    for (auto& planned : faults_by_function)
        planned.clear();
    faults_by_number.clear();
    any_fault = false;
    for (auto& one : delays)
        one.store(0, std::memory_order_relaxed);
}

unsigned calls(std::string_view function) {
    return counts[index_of(function_by_name(function))].load(std::memory_order_relaxed);
}

unsigned total_calls() {
    return total.load(std::memory_order_relaxed);
}

void record_calls(bool on) {
    recording = on;
}

const std::vector<std::string>& recorded_calls() {
    return record;
}

void clear_counts() {
    for (Counter& count : counts)
        count.store(0, std::memory_order_relaxed);
    total.store(0, std::memory_order_relaxed);
    record.clear();
}

} // namespace switchsim
