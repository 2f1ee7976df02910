#include "host/broker/chunks.h"

#include <cstdlib>
#include <mutex>
#include <new>

namespace cmpihost {

namespace {

/// What scopes gave back. It is never destroyed: a thread may outlive main().
struct Pool {
    static constexpr std::size_t most = 64; // 4 MiB

    std::mutex mutex;
    Arena::Chunk* first = nullptr;
    std::size_t count = 0;
};

Pool& pool() {
    static auto* the_pool = new Pool;
    return *the_pool;
}

void* from_pool() {
    Pool& kept = pool();
    const std::lock_guard lock(kept.mutex);
    Arena::Chunk* chunk = kept.first;
    if (chunk != nullptr) {
        kept.first = chunk->next;
        --kept.count;
    }
    return chunk;
}

} // namespace

Arena::Chunk* take_chunk() {
    void* memory = from_pool();
    constexpr auto size = Arena::Chunk::size;
    if (memory == nullptr && posix_memalign(&memory, size, size - Arena::Chunk::heap_overhead) != 0)
        throw std::bad_alloc();
    return new (memory) Arena::Chunk;
}

void give_chunk_back(Arena::Chunk* chunk) {
    Pool& kept = pool();
    {
        const std::lock_guard lock(kept.mutex);
        if (kept.count < Pool::most) {
            chunk->next = kept.first;
            kept.first = chunk;
            ++kept.count;
            return;
        }
    }
    std::free(chunk);
}

} // namespace cmpihost
