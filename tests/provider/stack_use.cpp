// How much stack a request takes: CIM servers may run it on a thread with little. The figure holds for this build, with
// all that the request calls: provider, simulator, broker and C library. It is not run under sanitizers, which make
// frames larger.
#include "tests/support/corpus.h"

#include <algorithm>
#include <cstring>

#include <pthread.h>
#include <sys/mman.h>

namespace {

using namespace test;

constexpr std::size_t allowed = 64 << 10;    ///< bytes of stack that a request may take
constexpr std::size_t room = 4 * allowed;    ///< what it gets here, so that one that takes more is measured
constexpr std::size_t guard_size = 64 << 10; ///< bytes below that nobody may touch
constexpr int paint = 0xA5;

/// A thread's stack whose bytes tell whether they were ever written.
class PaintedStack {
  public:
    PaintedStack()
        : memory_(static_cast<std::uint8_t*>(
              mmap(nullptr, guard_size + room, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0))) {
        EXPECT_NE(memory_, MAP_FAILED);
        EXPECT_EQ(mprotect(memory_ + guard_size, room, PROT_READ | PROT_WRITE), 0);
    }
    ~PaintedStack() { munmap(memory_, guard_size + room); }
    PaintedStack(const PaintedStack&) = delete;
    PaintedStack& operator=(const PaintedStack&) = delete;

    /// Runs `body` on a thread with this stack. @return the bytes that the thread took, its own needs included
    template <typename Body>
    std::size_t run(Body body) {
        std::uint8_t* const stack = memory_ + guard_size;
        std::memset(stack, paint, room);
        pthread_attr_t attributes;
        pthread_t thread;
        pthread_attr_init(&attributes);
        EXPECT_EQ(pthread_attr_setstack(&attributes, stack, room), 0);
        const auto start = [](void* argument) -> void* {
            (*static_cast<Body*>(argument))();
            return nullptr;
        };
        EXPECT_EQ(pthread_create(&thread, &attributes, start, &body), 0);
        pthread_join(thread, nullptr);
        pthread_attr_destroy(&attributes);
        const auto* const deepest = std::find_if(stack, stack + room, [](std::uint8_t byte) { return byte != paint; });
        return static_cast<std::size_t>(stack + room - deepest);
    }

  private:
    std::uint8_t* memory_;
};

/// Takes so many bytes of stack and a little more.
[[gnu::noinline]] void take_stack(std::size_t bytes) {
    auto* const block = static_cast<volatile std::uint8_t*>(__builtin_alloca(bytes));
    for (std::size_t position = 0; position < bytes; ++position)
        block[position] = 1;
}

class StackUse : public RequestTest {
  protected:
    PaintedStack stack;
    const std::size_t of_the_thread = stack.run([] {}); ///< what a thread takes that does nothing
};

} // namespace

TEST_F(StackUse, IsMeasuredToWithinAKilobyte) {
    for (const std::size_t bytes : {std::size_t{1} << 10, std::size_t{20'000}, allowed, 3 * allowed}) {
        const std::size_t measured = stack.run([&] { take_stack(bytes); }) - of_the_thread;
        EXPECT_GE(measured, bytes);
        EXPECT_LE(measured, bytes + 1024);
    }
}

TEST_F(StackUse, OfARequestIsNoMoreThan64Kilobytes) {
    std::size_t most = 0;
    std::string deepest;
    std::size_t objects = 0;
    for (const auto& request : all_requests()) {
        cmpihost::Answer answer;
        const std::size_t taken =
            captured([&] { return stack.run([&] { answer = cmpihost::run(provider, request); }); });
        hold_against_schema(answer, request);
        objects += answer.objects.size();
        if (taken > most) {
            most = taken;
            deepest = name_of(request);
        }
    }
    EXPECT_GT(objects, 300u);
    EXPECT_LE(most, allowed) << deepest;
    RecordProperty("deepest_request", deepest);
    RecordProperty("bytes_of_the_request", std::to_string(most - of_the_thread));
    RecordProperty("bytes_of_an_idle_thread", std::to_string(of_the_thread));
    std::printf("%s: %zu bytes of stack, beside %zu that any thread takes\n", deepest.c_str(), most - of_the_thread,
                of_the_thread);
}
