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

constexpr std::pair<const char*, Fault> shapes[] = {
    {"fail", Fault::fail},
    {"fail_leaving_record", Fault::fail_leaving_record},
    {"succeed_without_record", Fault::succeed_without_record},
    {"short_reply", Fault::short_reply},
    {"wrong_status", Fault::wrong_status},
    {"no_reply", Fault::no_reply},
};

std::string name_of(Fault fault) {
    return std::ranges::find(shapes, fault, &std::pair<const char*, Fault>::second)->first;
}

constexpr Function without_faults[] = {
    Function::fcip_if_str,      Function::hton_if_index,   Function::ip_addr_to_str,   Function::ip_addr_compare,
    Function::mts_rr_token_get, Function::mts_payload_get, Function::mts_payload_size, Function::mts_sap_get,
    Function::mts_drop,         Function::mutex_lock,      Function::mutex_unlock,
};

bool is_reply_fault(Fault fault) {
    return fault == Fault::short_reply || fault == Fault::wrong_status || fault == Fault::no_reply;
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

std::optional<Fault> fault_by_name(std::string_view name) {
    const auto* found = std::ranges::find(shapes, name, &std::pair<const char*, Fault>::first);
    return found == std::end(shapes) ? std::nullopt : std::optional(found->second);
}

bool can_happen(std::string_view function, Fault fault) {
    const Function number = function_by_name(function);
    if (!is_reply_fault(fault))
        return std::ranges::count(without_faults, number) == 0;
    const bool by_line_cards = number == Function::mts_send || number == Function::mts_recv;
    const bool by_services = number == Function::fcip_send_recv_with_mts_q || number == Function::cmi_req_resp;
    return by_line_cards || (by_services && fault != Fault::wrong_status);
}

bool can_be_delayed(std::string_view function) {
    const Function number = function_by_name(function);
    return number != Function::mutex_lock && number != Function::mutex_unlock;
}

std::vector<std::string> planned_faults() {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < function_count; ++i) {
        const std::string name(function_names[i]);
        for (const PlannedFault& fault : faults_by_function[i])
            lines.push_back("fault " + name + " " + (fault.nth == every_call ? "every" : std::to_string(fault.nth)) +
                            " " + name_of(fault.fault));
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
