// The memory of a scope: blocks that are used again, blocks from the heap, and handles known by their address.
#include "host/broker/store.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <thread>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#endif

namespace cmpihost {
namespace {

std::uintptr_t number(const void* address) {
    return reinterpret_cast<std::uintptr_t>(address);
}

constexpr std::uintptr_t chunk_size = 64 * 1024;

TEST(Arena, BlocksAreAlignedAndApartFromEachOther) {
    Arena arena;
    std::vector<std::pair<unsigned char*, std::size_t>> blocks;
    for (const std::size_t size : {0u, 1u, 15u, 16u, 17u, 2048u, 2049u, 100'000u})
        for (int i = 0; i < 50; ++i) {
            blocks.emplace_back(static_cast<unsigned char*>(arena.allocate(size)), size);
            EXPECT_EQ(number(blocks.back().first) % 16, 0u) << size;
            std::memset(blocks.back().first, static_cast<int>(blocks.size() % 251), size);
        }
    for (std::size_t i = 0; i < blocks.size(); ++i)
        for (std::size_t at = 0; at < blocks[i].second; ++at)
            ASSERT_EQ(blocks[i].first[at], (i + 1) % 251) << i;
}

TEST(Arena, AReleasedBlockServesTheNextOfItsSize) {
    Arena arena;
    void* first = arena.allocate(40);
    void* second = arena.allocate(40);
    arena.release(first, 40);
    arena.release(second, 40);
    EXPECT_NE(arena.allocate(64), second) << "another size";
    EXPECT_EQ(arena.allocate(33), second) << "rounded up to the same size";
    EXPECT_EQ(arena.allocate(48), first);
    arena.release(nullptr, 40);
    EXPECT_NE(arena.allocate(40), nullptr);
}

TEST(Arena, ReleasingKeepsMemoryFromGrowing) {
    Arena arena;
    std::set<std::uintptr_t> chunks;
    for (int i = 0; i < 100'000; ++i) {
        void* block = arena.allocate(1000);
        chunks.insert(number(block) / chunk_size);
        arena.release(block, 1000);
    }
    EXPECT_EQ(chunks.size(), 1u);
}

TEST(Arena, ChunksGoFromOneArenaToTheNext) {
    std::uintptr_t chunk = 0;
    {
        Arena arena;
        chunk = number(arena.allocate(16)) / chunk_size;
    }
    Arena next;
    EXPECT_EQ(number(next.allocate(16)) / chunk_size, chunk);
}

TEST(Arena, LargeBlocksAreGivenBackInAnyOrder) {
    Arena arena;
    std::vector<void*> blocks;
    for (int i = 0; i < 4; ++i)
        blocks.push_back(arena.allocate(1'000'000));
    for (const std::size_t index : {1u, 3u, 0u}) { // a middle one, the newest, the oldest
        std::memset(blocks[index], 1, 1'000'000);
        arena.release(blocks[index], 1'000'000);
    }
    std::memset(blocks[2], 2, 1'000'000);
}

TEST(Arena, TextsEndWithATerminator) {
    Arena arena;
    const std::string_view text = arena.copy(std::string_view("text and more", 4));
    EXPECT_EQ(text, "text");
    EXPECT_EQ(text.data()[4], '\0');
    EXPECT_STREQ(arena.copy("").data(), "");
    arena.release(text);
    EXPECT_EQ(arena.copy("next").data(), text.data());
}

TEST(Arena, HandlesAreKnownByTheirAddressAlone) {
    Arena arena;
    std::vector<char*> blocks;
    for (int i = 0; i < 3000; ++i) // in several chunks
        blocks.push_back(static_cast<char*>(arena.allocate(64)));
    for (const std::size_t index : {0u, 1u, 2999u}) {
        arena.mark(blocks[index]);
        EXPECT_TRUE(arena.is_handle(blocks[index])) << index;
        EXPECT_FALSE(arena.is_handle(blocks[index] + 16)) << index;
        EXPECT_FALSE(arena.is_handle(blocks[index] + 1)) << index;
    }
    EXPECT_FALSE(arena.is_handle(blocks[2]));
    arena.unmark(blocks[0]);
    EXPECT_FALSE(arena.is_handle(blocks[0]));
    EXPECT_TRUE(arena.is_handle(blocks[1]));
    const Arena other;
    EXPECT_FALSE(other.is_handle(blocks[1]));
    EXPECT_FALSE(other.is_handle(nullptr));
}

TEST(Arena, NoHandleIsLeftInAChunkUsedAgain) {
    const void* handle = nullptr;
    {
        Arena arena;
        handle = arena.allocate(16);
        arena.mark(handle);
    }
    Arena next;
    ASSERT_EQ(next.allocate(16), handle);
    EXPECT_FALSE(next.is_handle(handle));
}

/// Blocks of an arena from several threads at once, each block written to its end.
void allocate_from_threads(Arena& arena, std::size_t size) {
    const auto work = [&arena, size] {
        for (int i = 0; i < 2000; ++i) {
            void* block = arena.allocate(size);
            std::memset(block, i, size);
            if (i % 2 == 0)
                arena.release(block, size);
        }
    };
    std::thread one(work);
    std::thread other(work);
    work();
    one.join();
    other.join();
}

TEST(Arena, OtherThreadsMayAllocateAndRelease) {
    Arena arena;
    allocate_from_threads(arena, 24);
    allocate_from_threads(arena, 5000);
    void* foreign = nullptr;
    std::thread([&] { foreign = arena.allocate(24); }).join();
    arena.release(foreign, 24);
    void* own = arena.allocate(24);
    EXPECT_NE(own, foreign) << "from the heap, and back there";
    arena.mark(own);
    EXPECT_TRUE(arena.is_handle(own));
}

#if defined(__SANITIZE_ADDRESS__)
TEST(Arena, TheAddressSanitizerSeesWhatIsReleased) {
    Arena arena;
    char* block = static_cast<char*>(arena.allocate(20));
    EXPECT_EQ(__asan_address_is_poisoned(block + 19), 0);
    EXPECT_EQ(__asan_address_is_poisoned(block + 20), 1) << "behind its end";
    arena.release(block, 20);
    EXPECT_EQ(__asan_address_is_poisoned(block), 1);
    EXPECT_EQ(__asan_address_is_poisoned(block + 19), 1);
    EXPECT_EQ(arena.allocate(32), block);
    EXPECT_EQ(__asan_address_is_poisoned(block + 31), 0);
}
#endif

// ------------------------------------------------------------------------------------------------------ names

TEST(Names, AreHeldOnceAsTheyAreWritten) {
    Store store;
    const Name* name = store.name("Name");
    EXPECT_EQ(name->text, "Name");
    EXPECT_STREQ(name->text.data(), "Name");
    EXPECT_EQ(store.name(std::string("Name")), name);
    EXPECT_NE(store.name("name"), name);
    EXPECT_EQ(store.name("name")->hash, name->hash);
    EXPECT_TRUE(same_name(*store.name("NAME"), *name));
    EXPECT_FALSE(same_name(*store.name("Names"), *name));
}

TEST(Names, OfOneBufferAreToldApart) {
    Store store;
    char buffer[] = "one";
    const Name* one = store.name(buffer);
    std::strcpy(buffer, "two");
    EXPECT_EQ(store.name(buffer)->text, "two");
    EXPECT_EQ(store.name(std::string_view(buffer, 2))->text, "tw");
    EXPECT_EQ(one->text, "one");
    std::strcpy(buffer, "one");
    EXPECT_EQ(store.name(buffer), one);
}

TEST(Names, ThousandsOfThemStayWhatTheyAre) {
    Store store;
    std::vector<const Name*> names;
    for (int i = 0; i < 5000; ++i)
        names.push_back(store.name("Name" + std::to_string(i)));
    for (int i = 0; i < 5000; ++i) {
        const std::string text = "Name" + std::to_string(i);
        EXPECT_EQ(names[static_cast<std::size_t>(i)]->text, text);
        EXPECT_EQ(store.name(text), names[static_cast<std::size_t>(i)]);
    }
}

TEST(Names, OtherThreadsGetTheirOwn) {
    Store store;
    const Name* own = store.name("Name");
    const Name* foreign = nullptr;
    std::thread([&] { foreign = store.name("Name"); }).join();
    EXPECT_NE(foreign, own);
    EXPECT_TRUE(same_name(*foreign, *own));
    EXPECT_EQ(store.name("Name"), own);
}

} // namespace
} // namespace cmpihost
