#include "host/broker/arena.h"

#include "host/broker/chunks.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#if __has_include(<sanitizer/asan_interface.h>)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) (static_cast<void>(address), static_cast<void>(size))
#define ASAN_UNPOISON_MEMORY_REGION(address, size) (static_cast<void>(address), static_cast<void>(size))
#endif

namespace cmpihost {

/// A block from the heap. What is asked for lies behind this header.
struct alignas(16) Arena::Apart {
    Apart* previous;
    Apart* next;
};

namespace {

std::uintptr_t number_of(const void* address) {
    return reinterpret_cast<std::uintptr_t>(address);
}

/// The size of the block that serves `size` bytes.
std::size_t rounded(std::size_t size) {
    return size == 0 ? Arena::Chunk::grain : (size + Arena::Chunk::grain - 1) & ~(Arena::Chunk::grain - 1);
}

/// Where the bit of a handle stands: word and bit.
std::pair<std::size_t, std::uint64_t> place_of(const void* handle) {
    const std::uintptr_t grain = number_of(handle) % Arena::Chunk::size / Arena::Chunk::grain;
    return {grain / 64, std::uint64_t{1} << (grain % 64)};
}

} // namespace

Arena::Arena() : owner_(&this_thread_) {}

Arena::~Arena() {
    for (Chunk* chunk = chunk_; chunk != nullptr; chunk = chunk->next)
        ASAN_UNPOISON_MEMORY_REGION(chunk->begin(), static_cast<std::size_t>(chunk->end() - chunk->begin()));
    give_chunks_back(chunk_);
    while (Apart* block = apart_) {
        apart_ = block->next;
        std::free(block);
    }
}

void* Arena::allocate(std::size_t size) {
    const std::size_t room = rounded(size);
    if (room > largest_in_chunk || !is_mine())
        return allocate_apart(size);
    Free*& released = free_[room / Chunk::grain - 1];
    void* block = released;
    if (block == nullptr) {
        block = cut(room);
    } else {
        ASAN_UNPOISON_MEMORY_REGION(block, sizeof(Free));
        released = released->next;
        ASAN_POISON_MEMORY_REGION(block, sizeof(Free));
    }
    ASAN_UNPOISON_MEMORY_REGION(block, size);
    return block;
}

/// The next bytes of the chunk, or of a new one.
void* Arena::cut(std::size_t size) {
    if (static_cast<std::size_t>(end_ - next_) < size) {
        Chunk* chunk = take_chunk();
        chunk->next = chunk_;
        chunk_ = chunk;
        next_ = chunk->begin();
        end_ = chunk->end();
        ASAN_POISON_MEMORY_REGION(next_, static_cast<std::size_t>(end_ - next_));
        chunks_.insert(chunk);
    }
    void* block = next_;
    next_ += size;
    return block;
}

void Arena::release(void* block, std::size_t size) {
    if (block == nullptr || !is_mine())
        return;
    if (chunk_of(block) == nullptr)
        return release_apart(block);
    Free*& released = free_[rounded(size) / Chunk::grain - 1];
    ASAN_UNPOISON_MEMORY_REGION(block, sizeof(Free));
    released = new (block) Free{released};
    ASAN_POISON_MEMORY_REGION(block, rounded(size));
}

std::string_view Arena::copy(std::string_view text) {
    auto* copied = static_cast<char*>(allocate(text.size() + 1));
    if (!text.empty())
        std::memcpy(copied, text.data(), text.size());
    copied[text.size()] = '\0';
    return {copied, text.size()};
}

void Arena::release(std::string_view text) {
    release(const_cast<char*>(text.data()), text.size() + 1);
}

void* Arena::allocate_apart(std::size_t size) {
    void* memory = std::malloc(sizeof(Apart) + size);
    if (memory == nullptr)
        throw std::bad_alloc();
    const std::lock_guard lock(apart_lock_);
    auto* block = new (memory) Apart{nullptr, apart_};
    if (apart_ != nullptr)
        apart_->previous = block;
    apart_ = block;
    return block + 1;
}

void Arena::release_apart(void* memory) {
    Apart* block = static_cast<Apart*>(memory) - 1;
    const std::lock_guard lock(apart_lock_);
    (block->previous == nullptr ? apart_ : block->previous->next) = block->next;
    if (block->next != nullptr)
        block->next->previous = block->previous;
    std::free(block);
}

Arena::Chunk* Arena::chunk_of(const void* address) const {
    const std::uintptr_t base = number_of(address) & ~(Chunk::size - 1);
    if (base == number_of(chunk_))
        return chunk_;
    const auto found = chunks_.find(reinterpret_cast<const void*>(base));
    return found == chunks_.end() ? nullptr : static_cast<Chunk*>(const_cast<void*>(*found));
}

void Arena::mark(const void* handle) {
    const auto [word, bit] = place_of(handle);
    chunk_of(handle)->handles[word] |= bit;
}

void Arena::unmark(const void* handle) {
    const auto [word, bit] = place_of(handle);
    chunk_of(handle)->handles[word] &= ~bit;
}

bool Arena::is_handle(const void* address) const {
    const Chunk* chunk = number_of(address) % Chunk::grain == 0 ? chunk_of(address) : nullptr;
    if (chunk == nullptr)
        return false;
    const auto [word, bit] = place_of(address);
    return (chunk->handles[word] & bit) != 0;
}

} // namespace cmpihost
