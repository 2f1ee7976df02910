// Open enumerations: what is answered, what is kept, when it ends.
#include "host/server/contexts.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <thread>

namespace cmpihost::server {
namespace {

using namespace std::chrono_literals;

EncodedObjects letters(std::size_t count) {
    EncodedObjects objects;
    for (std::size_t i = 0; i < count; ++i) {
        objects.bytes += std::string(2, static_cast<char>('a' + i));
        objects.ends.push_back(objects.bytes.size());
    }
    return objects;
}

class OpenEnumerations : public testing::Test {
  protected:
    Contexts::Pulled open(std::size_t count, std::size_t most, std::chrono::seconds timeout = 40s) {
        return contexts.open(PullKind::instance_paths, "root/a", letters(count), most, timeout);
    }
    Contexts::Pulled pull(const std::string& context, std::size_t most) {
        return contexts.pull(context, PullKind::instance_paths, "root/a", most);
    }
    bool is_open(const std::string& context) { return contexts.close(context, "root/a").code == CimCode::ok; }

    Settings settings;
    std::chrono::steady_clock::time_point now{};
    Contexts contexts{settings, [this] { return now; }};
};

TEST_F(OpenEnumerations, SequenceThatFitsEndsAtOnce) {
    const auto opened = open(3, 3);
    EXPECT_EQ(opened.bytes, "aabbcc");
    EXPECT_EQ(opened.objects, 3u);
    EXPECT_EQ(opened.context, "");
}

TEST_F(OpenEnumerations, EmptySequenceEndsAtOnce) {
    const auto opened = open(0, 0);
    EXPECT_EQ(opened.status.code, CimCode::ok);
    EXPECT_EQ(opened.bytes, "");
    EXPECT_EQ(opened.context, "");
}

TEST_F(OpenEnumerations, PullsGoOnWhereTheLastEnded) {
    const auto opened = open(5, 2);
    EXPECT_EQ(opened.bytes, "aabb");
    const auto second = pull(opened.context, 2);
    EXPECT_EQ(second.bytes, "ccdd");
    EXPECT_EQ(second.context, opened.context);
    const auto last = pull(opened.context, 2);
    EXPECT_EQ(last.bytes, "ee");
    EXPECT_EQ(last.objects, 1u);
    EXPECT_EQ(last.context, "") << "the end";
    EXPECT_EQ(pull(opened.context, 2).status.code, CimCode::invalid_enumeration_context);
}

TEST_F(OpenEnumerations, NoObjectsAskedForGivesNoneAndKeepsAll) {
    const auto opened = open(1, 0);
    EXPECT_EQ(opened.bytes, "");
    EXPECT_NE(opened.context, "");
    EXPECT_EQ(pull(opened.context, 0).context, opened.context);
    EXPECT_EQ(pull(opened.context, 1).bytes, "aa");
}

TEST_F(OpenEnumerations, PullAnswersNoMoreThanTheLimit) {
    settings.max_pull = 2;
    const auto opened = open(5, 100);
    EXPECT_EQ(opened.objects, 2u);
    EXPECT_EQ(pull(opened.context, 100).objects, 2u);
}

TEST_F(OpenEnumerations, IdsAreLongAndDiffer) {
    std::set<std::string> ids;
    for (int i = 0; i < 50; ++i) {
        ids.insert(open(1, 0).context);
        EXPECT_TRUE(std::regex_match(*ids.begin(), std::regex("[0-9a-f]{32}"))) << *ids.begin();
    }
    EXPECT_EQ(ids.size(), 50u);
}

TEST_F(OpenEnumerations, OtherKindIsRefusedAndTheContextStays) {
    const auto opened = open(2, 0);
    EXPECT_EQ(contexts.pull(opened.context, PullKind::instances_with_path, "root/a", 1).status.code,
              CimCode::invalid_enumeration_context);
    EXPECT_EQ(pull(opened.context, 1).bytes, "aa");
}

TEST_F(OpenEnumerations, OtherNamespaceIsRefusedAndTheContextStays) {
    const auto opened = open(2, 0);
    EXPECT_EQ(contexts.pull(opened.context, PullKind::instance_paths, "root/b", 1).status.code,
              CimCode::invalid_enumeration_context);
    EXPECT_EQ(contexts.close(opened.context, "root/b").code, CimCode::invalid_enumeration_context);
    EXPECT_EQ(contexts.pull(opened.context, PullKind::instance_paths, "ROOT/A", 1).bytes, "aa");
}

TEST_F(OpenEnumerations, UnknownContextIsRefused) {
    EXPECT_EQ(pull("", 1).status.code, CimCode::invalid_enumeration_context);
    EXPECT_EQ(pull("no such", 1).status.code, CimCode::invalid_enumeration_context);
    EXPECT_FALSE(is_open("no such"));
}

TEST_F(OpenEnumerations, ClosedContextIsGone) {
    const auto opened = open(2, 1);
    EXPECT_TRUE(is_open(opened.context));
    EXPECT_EQ(pull(opened.context, 1).status.code, CimCode::invalid_enumeration_context);
    EXPECT_FALSE(is_open(opened.context));
}

TEST_F(OpenEnumerations, ExpireWhenNotPulledInTime) {
    const auto opened = open(3, 1, 10s);
    now += 9s;
    EXPECT_EQ(pull(opened.context, 1).bytes, "bb");
    now += 9s; // a pull begins the time anew
    EXPECT_EQ(pull(opened.context, 0).status.code, CimCode::ok);
    now += 10s;
    EXPECT_EQ(pull(opened.context, 1).status.code, CimCode::invalid_enumeration_context);
}

TEST_F(OpenEnumerations, AreLimitedInNumber) {
    settings.max_contexts = 2;
    const auto first = open(2, 1);
    open(2, 1);
    EXPECT_EQ(open(2, 1).status.code, CimCode::server_limits_exceeded);
    EXPECT_EQ(open(2, 2).status.code, CimCode::ok) << "needs no context";
    EXPECT_TRUE(is_open(first.context));
    EXPECT_EQ(open(2, 1).status.code, CimCode::ok);
}

TEST_F(OpenEnumerations, ExpiredOnesMakeRoom) {
    settings.max_contexts = 1;
    open(2, 1, 5s);
    EXPECT_EQ(open(2, 1).status.code, CimCode::server_limits_exceeded);
    now += 5s;
    EXPECT_EQ(open(2, 1).status.code, CimCode::ok);
}

TEST_F(OpenEnumerations, AreLimitedInBytes) {
    settings.max_context_bytes = 1000;
    EncodedObjects large{std::string(600, 'x'), {300, 600}};
    const auto first = contexts.open(PullKind::instance_paths, "root/a", large, 1, 40s);
    EXPECT_EQ(first.status.code, CimCode::ok);
    EXPECT_EQ(contexts.open(PullKind::instance_paths, "root/a", large, 1, 40s).status.code,
              CimCode::server_limits_exceeded);
    EXPECT_TRUE(is_open(first.context));
    EXPECT_EQ(contexts.open(PullKind::instance_paths, "root/a", large, 1, 40s).status.code, CimCode::ok);
}

TEST_F(OpenEnumerations, TimeoutGrantedIsWhatWasAskedForWithinLimits) {
    const auto granted = [this](std::uint32_t seconds) { return contexts.granted(&seconds); };
    EXPECT_EQ(contexts.granted(nullptr), 40s) << "the default";
    EXPECT_EQ(granted(1), 1s);
    EXPECT_EQ(granted(90), 90s);
    EXPECT_EQ(granted(91), std::nullopt);
    EXPECT_EQ(granted(0), std::nullopt) << "would never expire";
}

TEST_F(OpenEnumerations, TwoClientsPullOneContextOneAfterTheOther) {
    constexpr std::size_t objects = 20;
    const auto opened = open(objects, 0);
    std::atomic<std::size_t> pulled = 0;
    const auto client = [&] {
        for (auto each = pull(opened.context, 1); each.status.code == CimCode::ok; each = pull(opened.context, 1))
            pulled += each.objects;
    };
    std::thread other(client);
    client();
    other.join();
    EXPECT_EQ(pulled, objects);
}

} // namespace
} // namespace cmpihost::server
