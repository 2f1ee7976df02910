#include "host/broker/chunks.h"

#include <cstdlib>
#include <mutex>
#include <new>
#include <utility>

#include <malloc.h>

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

/// As many of them as may be kept. Gives the others.
Arena::Chunk* keep(Arena::Chunk* first) {
    Pool& kept = pool();
    const std::lock_guard lock(kept.mutex);
    while (first != nullptr && kept.count < Pool::most) {
        Arena::Chunk* chunk = std::exchange(first, first->next);
        chunk->next = std::exchange(kept.first, chunk);
        ++kept.count;
    }
    return first;
}

} // namespace

Arena::Chunk* take_chunk() {
    void* memory = from_pool();
    constexpr auto size = Arena::Chunk::size;
    if (memory == nullptr && posix_memalign(&memory, size, size - Arena::Chunk::heap_overhead) != 0)
        throw std::bad_alloc();
    return new (memory) Arena::Chunk;
}

void give_chunks_back(Arena::Chunk* first) {
    Arena::Chunk* surplus = keep(first);
    if (surplus == nullptr)
        return;
    while (Arena::Chunk* chunk = surplus) {
        surplus = chunk->next;
        std::free(chunk);
    }
    malloc_trim(0); // the chunks lie between others, so that the heap would not become smaller by itself
}

} // namespace cmpihost
