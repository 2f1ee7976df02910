// Requests from several threads at once are answered as one after the other.
#include "tests/support/corpus.h"

#include <algorithm>
#include <thread>

namespace {

using namespace test;

class Concurrency : public RequestTest {
  protected:
    /// Every kind of request, each of these again with a key of another name.
    static std::vector<cmpihost::Request> mixed_requests() {
        auto requests = all_requests();
        const std::size_t well_formed = requests.size();
        for (std::size_t index = 0; index < well_formed; ++index) {
            cmpihost::Request request = requests[index];
            for (auto& key : request.path.keys)
                key.name = "Unknown";
            if (!request.path.keys.empty())
                requests.push_back(std::move(request));
        }
        return requests;
    }
};

bool is_same(const cmpihost::Answer& one, const cmpihost::Answer& other) {
    return one.rc == other.rc && one.message == other.message && one.objects == other.objects &&
           one.null_results == other.null_results && one.invalid_results == other.invalid_results &&
           one.done == other.done;
}

/// What of it is among the answers.
struct Mix {
    std::size_t messages = 0;
    unsigned nulls = 0;
    unsigned invalid = 0;
};

Mix mix_of(const std::vector<cmpihost::Answer>& answers) {
    Mix mix;
    for (const auto& answer : answers) {
        mix.messages += answer.message == "invalid key name" ? 1u : 0u;
        mix.nulls += answer.null_results;
        mix.invalid += answer.invalid_results;
    }
    return mix;
}

TEST_F(Concurrency, SeveralThreadsGetTheAnswersOfOne) {
    switchsim::inject("vsan_cim_get_vsanEntry", switchsim::Fault::fail); // systems that cannot be named are -1
    const auto requests = mixed_requests();
    std::vector<cmpihost::Answer> expected;
    expected.reserve(requests.size());
    for (const auto& request : requests)
        expected.push_back(ask(request));
    const Mix mix = mix_of(expected);
    EXPECT_GT(mix.messages, requests.size() / 3);
    EXPECT_GT(mix.nulls, 0u);
    EXPECT_GT(mix.invalid, 0u);

    constexpr std::size_t thread_count = 4;
    constexpr std::size_t stride = 1009; // a prime that does not divide the number of requests: each is made once
    ASSERT_NE(requests.size() % stride, 0u);
    std::vector<std::vector<std::string>> differences(thread_count);
    const auto work = [&](std::size_t thread) {
        for (std::size_t step = 0; step < requests.size(); ++step) {
            // Neighbours in the list lie far apart in time, so that all kinds of answers meet.
            const std::size_t index = (step * stride + thread * requests.size() / thread_count) % requests.size();
            if (!is_same(cmpihost::run(provider, requests[index]), expected[index]))
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

TEST_F(Concurrency, RequestsThatArriveTogetherAreServedInTurn) {
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
