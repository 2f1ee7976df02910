// One guard object stands at the top of every platform function: it counts the call, checks that the caller holds the
// process-wide lock, and says how the call is to misbehave. Platform functions are C functions, and throw nothing: a
// call that runs out of memory fails.
#pragma once

#pragma GCC visibility push(default) // the platform's functions as this library defines them are exported
#include "platform/services.h"
#pragma GCC visibility pop
#include "simulator/functions.h"
#include "simulator/switchsim.h"

#include <cstdlib>
#include <cstring>
#include <exception>
#include <initializer_list>
#include <optional>
#include <string_view>

namespace switchsim {

/// A fault that hits the call at hand.
struct ActiveFault {
    Fault fault;
    int code;
};

/// The result of a platform call that has no row, or whose arguments are wrong.
inline constexpr int failed = -1;

/// The result of a platform call's `body`, or its failure where the body throws for want of memory.
template <class Body>
int without_throwing(Body body) noexcept {
    try {
        return body();
    } catch (const std::exception&) {
        return failed;
    }
}

class Call {
  public:
    explicit Call(Function function) noexcept;

    /// Complains "NAME: WHAT is VALUE, expected ..." unless the value is one of the allowed ones.
    bool expect(std::string_view what, std::int64_t value, std::initializer_list<std::int64_t> allowed) const {
        for (const std::int64_t one : allowed) {
            if (one == value)
                return true;
        }
        complain_about(what, value, allowed);
        return false;
    }

    /// Complains unless the caller's pointer is set.
    bool expect_pointer(std::string_view what, const void* pointer) const noexcept;

    /// Complains unless the out pointer is there and null, as callers have to set it.
    template <class Record>
    bool expect_out(Record** out) const {
        return expect_pointer("the out pointer", out) && expect("the record pointer set before", *out != nullptr, {0});
    }

    /// Complains unless it is the queue that init_mts() opened. After an init_mts() that failed, a null queue fails
    /// without a complaint.
    bool expect_queue(mts_queue queue) const;

    /// Whether a fault of this kind hits the call.
    bool has(Fault fault) const { return fault_ && fault_->fault == fault; }
    const std::optional<ActiveFault>& fault() const { return fault_; }

    /// The result of a failing call that hands out nothing.
    std::optional<int> fault_on_result() const;

    /// The same for a call that hands out a heap record of `size` bytes.
    std::optional<int> fault_on_record(void** record, std::size_t size) const;
    template <class Record>
    std::optional<int> fault_on_record(Record** record) const {
        void* block = nullptr;
        const auto result = fault_on_record(&block, sizeof(Record));
        *record = static_cast<Record*>(block);
        return result;
    }

    /// The same for a call that fills `size` bytes of the caller's.
    std::optional<int> fault_on_storage(void* storage, std::size_t size) const;

    /// Whether a call that returns a pointer returns null instead.
    bool returns_null() const { return fault_on_result().has_value(); }

  private:
    void complain_about(std::string_view what, std::int64_t value,
                        std::initializer_list<std::int64_t> allowed) const noexcept;

    Function function_;
    std::optional<ActiveFault> fault_;
};

/// The room that callers give for a text whose length they do not state: 255 bytes and the terminator.
inline constexpr std::size_t text_size = longest_text + 1;

/// Gives the caller a heap copy of `size` bytes of exactly that size.
inline int hand_out(void** out, const void* bytes, std::size_t size) {
    *out = std::malloc(size);
    if (!*out)
        return failed;
    if (size > 0)
        std::memcpy(*out, bytes, size);
    return 0;
}

template <class Record>
int hand_out(Record** out, const Record& row) {
    void* block = nullptr;
    const int result = hand_out(&block, &row, sizeof row);
    *out = static_cast<Record*>(block);
    return result;
}

/// Writes text and terminator into a buffer of `size` bytes, cut to fit.
inline void write_text(char* buffer, std::string_view text, std::size_t size = text_size) {
    const std::size_t length = text.size() < size ? text.size() : size - 1;
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

} // namespace switchsim
