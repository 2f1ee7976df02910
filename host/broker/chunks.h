// Chunks of memory, handed from one scope to the next.
#pragma once

#include "host/broker/arena.h"

#include <cstdint>

namespace cmpihost {

/// A chunk begins at a multiple of its size, so that the address of a block leads to it. Blocks lie behind this header.
struct alignas(16) Arena::Chunk {
    static constexpr std::uintptr_t size = 64 * std::uintptr_t{1024};
    static constexpr std::uintptr_t grain = 16;         // every block begins at a multiple of it
    static constexpr std::uintptr_t heap_overhead = 16; // left to malloc, so that chunks stand side by side

    Chunk* next = nullptr;
    std::array<std::uint64_t, size / grain / 64> handles{}; // a bit per grain

    std::byte* begin() { return reinterpret_cast<std::byte*>(this + 1); }
    std::byte* end() { return reinterpret_cast<std::byte*>(this) + size - heap_overhead; }
};

/// An empty chunk, one that a scope gave back if there is any. @throws std::bad_alloc
Arena::Chunk* take_chunk();

/// Takes a scope's chunks back, linked by `next`: some are kept for the next scope. Where that was a large one, what
/// the process does not need goes back to the system.
void give_chunks_back(Arena::Chunk* first);

} // namespace cmpihost
