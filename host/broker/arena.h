// The memory of one scope: blocks out of chunks, all of which go at the end. It knows by address which of its blocks
// are handles.
#pragma once

#include <array>
#include <cstddef>
#include <mutex>
#include <string_view>
#include <unordered_set>

namespace cmpihost {

/// Belongs to the thread that made it. Another thread may only allocate and release, as it does when it sets a value in
/// an object of the first: its blocks come from the heap one by one, and stay until the end.
class Arena {
  public:
    Arena();
    ~Arena();
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    /// An uninitialised block, aligned for any object and to 16 bytes. @throws std::bad_alloc
    void* allocate(std::size_t size);

    /// Gives a block back for use by later ones. @param size as it was asked for
    void release(void* block, std::size_t size);

    /// A copy of the text, with a terminator behind it.
    std::string_view copy(std::string_view text);

    /// Takes back a text of copy().
    void release(std::string_view text);

    /// Makes a block of this thread's a handle, at the address that is_handle() is to know.
    void mark(const void* handle);
    void unmark(const void* handle);

    /// Whether there is a handle at this address, which is only looked up.
    bool is_handle(const void* address) const;

    /// Whether this is the thread that the arena belongs to.
    bool is_mine() const { return owner_ == &this_thread_; }

    struct Chunk;
    struct Apart;

  private:
    struct Free {
        Free* next;
    };
    static constexpr std::size_t largest_in_chunk = 2048;
    static inline thread_local constinit char this_thread_ = 0; // its address tells threads apart

    void* cut(std::size_t size);
    void* allocate_apart(std::size_t size);
    void release_apart(void* block);
    Chunk* chunk_of(const void* address) const;

    const void* owner_;
    Chunk* chunk_ = nullptr; // the one that blocks are cut from
    std::byte* next_ = nullptr;
    std::byte* end_ = nullptr;
    std::array<Free*, largest_in_chunk / 16> free_{}; // released blocks by size
    std::unordered_set<const void*> chunks_;
    std::mutex apart_lock_;
    Apart* apart_ = nullptr;
};

} // namespace cmpihost
