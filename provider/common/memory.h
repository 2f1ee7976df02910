// What the platform hands out, and what it fills.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>

namespace fcip {

/// Releases a block that a platform call allocated.
struct free_deleter {
    void operator()(void* block) const noexcept { std::free(block); }
};

/// A record that the platform handed out; released when it goes out of scope.
template <typename Record>
using platform_ptr = std::unique_ptr<Record, free_deleter>;

/// What a platform query came to. One that failed may have left a record; it is released with this.
template <typename Row>
struct fetched {
    int status = -1; ///< the platform's answer: 0 = success
    platform_ptr<Row> row;

    /// A query that succeeds without a record counts as failed.
    explicit operator bool() const { return status == 0 && row != nullptr; }

    /// The record, or null when the query failed.
    platform_ptr<Row> take() { return status == 0 ? std::move(row) : nullptr; }
};

/// Makes a platform query. @param query takes the address of the record pointer, which is null, and answers the status
template <typename Row, typename Query>
fetched<Row> fetch(Query query) {
    Row* row = nullptr;
    const int status = query(&row);
    return {status, platform_ptr<Row>(row)};
}

/// Zeroed storage that the platform fills, aligned for whatever type the platform takes it for.
template <std::size_t Size>
struct alignas(std::max_align_t) platform_storage {
    std::array<std::uint8_t, Size> bytes{};

    std::uint8_t* data() { return bytes.data(); }
};

} // namespace fcip
