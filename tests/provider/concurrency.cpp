// Requests from several threads at once are answered as one after the other.
#include "tests/support/corpus.h"

#include <thread>

namespace {

using namespace test;

class Concurrency : public RequestTest {};

TEST_F(Concurrency, SeveralThreadsGetTheAnswersOfOne) {
    const auto requests = all_requests();
    std::vector<cmpihost::Answer> expected;
    expected.reserve(requests.size());
    for (const auto& request : requests)
        expected.push_back(ask(request));

    constexpr std::size_t thread_count = 4;
    std::vector<std::vector<std::string>> differences(thread_count);
    const auto work = [&](std::size_t thread) {
        for (std::size_t step = 0; step < requests.size(); ++step) {
            const std::size_t index = (step + thread * requests.size() / thread_count) % requests.size();
            const auto answer = cmpihost::run(provider, requests[index]);
            if (answer.objects != expected[index].objects || answer.rc != expected[index].rc ||
                answer.null_results != expected[index].null_results)
                differences[thread].push_back(name_of(requests[index]));
        }
    };
    captured([&] {
        std::vector<std::thread> threads;
        for (std::size_t thread = 0; thread < thread_count; ++thread)
            threads.emplace_back(work, thread);
        for (auto& thread : threads)
            thread.join();
    });
    for (const auto& list : differences)
        EXPECT_EQ(list, std::vector<std::string>{});
}

TEST_F(Concurrency, TwoRequestsThatArriveTogetherAreServedOneAfterTheOther) {
    // The simulator complains of a platform call without the lock, and the trace of one request is never cut by
    // another's: each begins only when the lock is free.
    const auto request = [&] { cmpihost::run(provider, all_requests().front()); };
    captured([&] {
        std::thread other([&] {
            for (int i = 0; i < 20; ++i)
                request();
        });
        for (int i = 0; i < 20; ++i)
            request();
        other.join();
    });
    const std::string all = trace;
    captured(request);
    std::string expected;
    for (int i = 0; i < 40; ++i)
        expected += trace;
    EXPECT_EQ(all, expected);
}

} // namespace
