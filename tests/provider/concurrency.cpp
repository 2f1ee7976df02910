// Requests from several threads at once are answered as one after the other.
#include "tests/support/corpus.h"

#include <algorithm>
#include <thread>

namespace {

using namespace test;

class Concurrency : public RequestTest {
  protected:
    /// Every kind of request, and two that are answered with a message and with -1.
    static std::vector<cmpihost::Request> requests_with_oddities() {
        auto requests = all_requests();
        cmpihost::Request odd;
        odd.operation = Operation::get_instance;
        odd.path = path_of("ZANTO_FCIPProtocolEndPoint"); // without its key
        requests.push_back(odd);
        odd.operation = Operation::associators;
        odd.path = path_of("ZANTO_FCIPProtocolEndPoint", {{"Name", "7_2001:db8::1_2001:db8::2"}});
        odd.assoc_class = "ZANTO_SwitchHostedFCIPAccessPoint"; // in a VSAN that cannot be named
        requests.push_back(odd);
        the_switch().vsans.at(20).domain.reset();
        return requests;
    }
};

bool same(const cmpihost::Answer& one, const cmpihost::Answer& other) {
    return one.objects == other.objects && one.rc == other.rc && one.message == other.message &&
           one.null_results == other.null_results && one.invalid_results == other.invalid_results;
}

TEST_F(Concurrency, SeveralThreadsGetTheAnswersOfOne) {
    const auto requests = requests_with_oddities();
    std::vector<cmpihost::Answer> expected;
    expected.reserve(requests.size());
    for (const auto& request : requests)
        expected.push_back(ask(request));
    const auto has = [&](auto oddity) { return std::any_of(expected.begin(), expected.end(), oddity); };
    EXPECT_TRUE(has([](const auto& answer) { return answer.message.has_value(); }));
    EXPECT_TRUE(has([](const auto& answer) { return answer.null_results > 0; }));
    EXPECT_TRUE(has([](const auto& answer) { return answer.invalid_results > 0; }));

    constexpr std::size_t thread_count = 4;
    std::vector<std::vector<std::string>> differences(thread_count);
    const auto work = [&](std::size_t thread) {
        for (std::size_t step = 0; step < requests.size(); ++step) {
            const std::size_t index = (step + thread * requests.size() / thread_count) % requests.size();
            if (!same(cmpihost::run(provider, requests[index]), expected[index]))
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
