// Scopes: who owns what is made, on which thread, and the n-th object that fails.
#include "host/broker/upcalls.h"
#include "tests/host/host_test.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <future>
#include <thread>

namespace cmpihost {
namespace {

CMPIString* new_string(CMPIStatus* status = nullptr) {
    return CMNewString(broker(), "text", status);
}

TEST(Scopes, NothingIsMadeOutside) {
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(new_string(&status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
    EXPECT_EQ(new_path({}), nullptr);
    EXPECT_FALSE(is_live(&status));
    EXPECT_EQ(describe(wild_pointer<CMPIInstance>()), Object{});
    EXPECT_EQ(describe(wild_pointer<CMPIObjectPath>()), Object{});
}

TEST(Scopes, OwnWhatIsMadeInside) {
    const CMPIString* string = nullptr;
    {
        const CallScope scope;
        string = new_string();
        EXPECT_TRUE(is_live(string));
    }
    const CallScope next;
    EXPECT_FALSE(is_live(string));
}

TEST(Scopes, TheInnermostCounts) {
    const CallScope outer;
    CMPIString* string = new_string();
    {
        const CallScope inner;
        EXPECT_FALSE(is_live(string));
        EXPECT_EQ(string->ft->release(string).rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_TRUE(is_live(new_string()));
    }
    EXPECT_TRUE(is_live(string));
    EXPECT_EQ(text(string), "text");
}

TEST(Scopes, ReleasedObjectsAreGoneAndFreedOnce) {
    const CallScope scope;
    CMPIString* string = new_string();
    EXPECT_EQ(string->ft->release(string).rc, CMPI_RC_OK);
    EXPECT_FALSE(is_live(string));
}

/// The chunk out of which the scope cuts a block of a size that it was not asked for before.
std::uintptr_t chunk_of_new_string(std::size_t size) {
    const CMPIString* string = CMNewString(broker(), std::string(size, 'x').c_str(), nullptr);
    return reinterpret_cast<std::uintptr_t>(CMGetCharsPtr(string, nullptr)) / (64 * 1024);
}

TEST(Scopes, ReleasedObjectsMakeRoomForTheNext) {
    const CallScope scope;
    const std::uintptr_t chunk = chunk_of_new_string(1000);
    CMPIObjectPath* path = CMNewObjectPath(broker(), "root/test", "C", nullptr);
    CMPIValue value{};
    value.ref = new_path({"R", "root/test", "host", {string_property("K", "v")}, {}});
    for (int row = 0; row < 5000; ++row) {
        CMPIInstance* instance = CMNewInstance(broker(), path, nullptr);
        for (const char* name : {"A", "B", "C", "D", "E", "F", "G", "H", "I", "a"})
            CMSetProperty(instance, name, "a text of more than a few bytes", CMPI_chars);
        CMSetProperty(instance, "Reference", &value, CMPI_ref);
        CMPIString* got = CMGetProperty(instance, "B", nullptr).value.string;
        got->ft->release(got);
        instance->ft->release(instance);
    }
    EXPECT_EQ(chunk_of_new_string(1500), chunk);
}

TEST(Scopes, ValuesSetInAnInnerScopeStayInTheOuter) {
    const CallScope outer;
    CMPIInstance* instance = CMNewInstance(broker(), new_path({"C", "root/test", std::nullopt, {}, {}}), nullptr);
    {
        const CallScope inner;
        CMPIValue value{};
        value.ref = new_path({"R", "root/test", "host", {string_property("K", "v")}, {}});
        EXPECT_EQ(CMSetProperty(instance, "Ref", &value, CMPI_ref).rc, CMPI_RC_OK);
        value.string = new_string();
        EXPECT_EQ(CMSetProperty(instance, "Text", &value, CMPI_string).rc, CMPI_RC_OK);
    }
    const CallScope takes_the_inner_ones_memory;
    for (int i = 0; i < 100; ++i)
        CMNewString(broker(), "something else", nullptr);
    const CMPIObjectPath* ref = CMGetProperty(instance, "Ref", nullptr).value.ref;
    EXPECT_EQ(describe(ref), (Object{"R", "root/test", "host", {string_property("K", "v")}, {}}));
    EXPECT_EQ(text(CMGetProperty(instance, "Text", nullptr).value.string), "text");
}

TEST(Scopes, OtherPointersAreNotLive) {
    const CallScope scope;
    const int local = 0;
    EXPECT_FALSE(is_live(nullptr));
    EXPECT_FALSE(is_live(&local));
    EXPECT_FALSE(is_live(wild_pointer<void>()));
    EXPECT_FALSE(is_live(new_string()->hdl)) << "only the handle's own address counts";
}

TEST(Scopes, ThreadsHaveTheirOwn) {
    const CallScope scope;
    const CMPIString* string = new_string();
    bool live_elsewhere = true;
    const CMPIString* made_elsewhere = string;
    std::thread other([&] {
        live_elsewhere = is_live(string);
        made_elsewhere = new_string();
    });
    other.join();
    EXPECT_FALSE(live_elsewhere);
    EXPECT_EQ(made_elsewhere, nullptr) << "no scope there";
    EXPECT_TRUE(is_live(string));
}

TEST(Scopes, ThreadsWorkAtOnce) {
    std::vector<std::thread> threads;
    std::vector<unsigned> counts(4);
    threads.reserve(counts.size());
    for (unsigned& count : counts)
        threads.emplace_back([&count] {
            for (int round = 0; round < 50; ++round) {
                const CallScope scope;
                for (int i = 0; i < 20; ++i)
                    if (is_live(new_string()))
                        ++count;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(counts, std::vector<unsigned>(4, 1000));
}

// ------------------------------------------------------------------------------------------------- attached threads

TEST(AttachedThreads, HaveAScopeAndACopyOfTheContext) {
    const CallScope scope;
    const CMPIBrokerFT& bft = *broker()->bft;
    scope.context()->ft->addEntry(scope.context(), "Mine", reinterpret_cast<const CMPIValue*>("m"), CMPI_chars);
    CMPIContext* prepared = bft.prepareAttachThread(broker(), scope.context());
    ASSERT_NE(prepared, nullptr);
    std::thread worker([&bft, prepared] {
        EXPECT_EQ(bft.attachThread(broker(), nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(bft.attachThread(broker(), prepared).rc, CMPI_RC_OK);
        EXPECT_EQ(bft.attachThread(broker(), prepared).rc, CMPI_RC_ERR_FAILED) << "attached already";
        EXPECT_TRUE(is_live(new_string()));
        EXPECT_EQ(bft.detachThread(broker(), prepared).rc, CMPI_RC_OK);
        EXPECT_EQ(bft.detachThread(broker(), prepared).rc, CMPI_RC_ERR_FAILED);
        EXPECT_EQ(new_string(), nullptr);
    });
    worker.join();
    EXPECT_EQ(bft.attachThread(broker(), prepared).rc, CMPI_RC_ERR_FAILED) << "a thread that is in a call";
}

TEST(AttachedThreads, MayForgetToDetach) {
    const CallScope scope;
    CMPIContext* prepared = broker()->bft->prepareAttachThread(broker(), scope.context());
    std::thread worker([prepared] {
        EXPECT_EQ(broker()->bft->attachThread(broker(), prepared).rc, CMPI_RC_OK);
        EXPECT_TRUE(is_live(new_string()));
    });
    worker.join();
}

TEST(AttachedThreads, MaySetValuesOfTheCallsObjects) {
    const CallScope scope;
    CMPIContext* prepared = broker()->bft->prepareAttachThread(broker(), scope.context());
    CMPIInstance* instance = CMNewInstance(broker(), new_path({"C", "root/test", std::nullopt, {}, {}}), nullptr);
    std::thread worker([prepared, instance] {
        EXPECT_EQ(broker()->bft->attachThread(broker(), prepared).rc, CMPI_RC_OK);
        for (int i = 0; i < 200; ++i)
            CMSetProperty(instance, ("P" + std::to_string(i % 20)).c_str(), "by the worker", CMPI_chars);
    });
    for (int i = 0; i < 200; ++i)
        new_string(); // of the same scope, at the same time
    worker.join();
    CMSetProperty(instance, "P0", "by the call", CMPI_chars);
    EXPECT_EQ(text(CMGetProperty(instance, "P0", nullptr).value.string), "by the call");
    EXPECT_EQ(text(CMGetProperty(instance, "P19", nullptr).value.string), "by the worker");
}

TEST(AttachedThreads, CannotReturnForTheCall) {
    const CallScope scope;
    CMPIContext* prepared = broker()->bft->prepareAttachThread(broker(), scope.context());
    std::thread worker([&scope, prepared] {
        EXPECT_EQ(broker()->bft->attachThread(broker(), prepared).rc, CMPI_RC_OK);
        EXPECT_EQ(CMReturnObjectPath(scope.result(), new_path({})).rc, CMPI_RC_ERR_INVALID_HANDLE);
    });
    worker.join();
}

TEST(AttachedThreads, AreNotDetachedByWhomTheyAsk) {
    const CallScope scope;
    CMPIContext* prepared = broker()->bft->prepareAttachThread(broker(), scope.context());
    unsigned asked = 0;
    const Upcalled detach = [&asked](const Request&) {
        const CallScope of_the_asked;
        EXPECT_EQ(broker()->bft->detachThread(broker(), of_the_asked.context()).rc, CMPI_RC_ERR_FAILED);
        ++asked;
        return Answer{};
    };
    serve_upcalls(&detach);
    std::thread worker([prepared] {
        EXPECT_EQ(broker()->bft->attachThread(broker(), prepared).rc, CMPI_RC_OK);
        EXPECT_EQ(broker()->bft->deleteInstance(broker(), prepared, new_path({})).rc, CMPI_RC_OK);
        EXPECT_TRUE(is_live(new_string()));
        EXPECT_EQ(broker()->bft->detachThread(broker(), prepared).rc, CMPI_RC_OK);
    });
    worker.join();
    end_upcalls(&detach);
    EXPECT_EQ(asked, 1u);
}

TEST(AttachedThreads, WhatTheyAskIsAwaitedAtTheEndOfAnswers) {
    const CallScope scope;
    CMPIContext* prepared = broker()->bft->prepareAttachThread(broker(), scope.context());
    std::promise<void> asking;
    std::promise<void> ended;
    std::atomic<bool> answered = false;
    const Upcalled slow = [&](const Request&) {
        asking.set_value();
        for (int turn = 0; turn < 100; ++turn) // for the other thread to get ahead, if it does not wait
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        answered = true;
        return Answer{};
    };
    serve_upcalls(&slow);
    std::thread worker([prepared, &ended] {
        broker()->bft->attachThread(broker(), prepared);
        EXPECT_EQ(broker()->bft->deleteInstance(broker(), prepared, new_path({})).rc, CMPI_RC_OK);
        ended.get_future().wait();
        EXPECT_EQ(broker()->bft->deleteInstance(broker(), prepared, new_path({})).rc, CMPI_RC_ERR_NOT_SUPPORTED);
        broker()->bft->detachThread(broker(), prepared);
    });
    asking.get_future().wait();
    end_upcalls(&slow);
    EXPECT_TRUE(answered);
    ended.set_value();
    worker.join();
}

// ------------------------------------------------------------------------------------------------- failing objects

TEST(FailingObjects, TheNthFailsAndNoOther) {
    CallScope scope;
    scope.fail_object(2);
    EXPECT_NE(new_string(), nullptr);
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(new_string(&status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
    EXPECT_NE(new_string(&status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_OK);
    scope.fail_object(1);
    EXPECT_EQ(new_string(), nullptr);
    scope.fail_object(1);
    scope.fail_object(0);
    EXPECT_NE(new_string(), nullptr);
}

TEST(FailingObjects, CallsAreCountedAndNewPathIsNone) {
    CallScope scope;
    scope.fail_object(1);
    CMPIObjectPath* path = new_path({"C", "root/test", std::nullopt, {}, {}});
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(scope.objects_made(), 0u);
    EXPECT_EQ(new_string(), nullptr);
    EXPECT_EQ(scope.objects_made(), 1u);
    new_string();
    EXPECT_EQ(scope.objects_made(), 2u);
}

/// Every broker call that makes an object, the getters included.
std::vector<std::pair<const char*, void* (*)(CMPIObjectPath*)>> makers() {
    return {
        {"newInstance", [](CMPIObjectPath* p) -> void* { return CMNewInstance(broker(), p, nullptr); }},
        {"newObjectPath", [](CMPIObjectPath*) -> void* { return CMNewObjectPath(broker(), "n", "C", nullptr); }},
        {"newArgs", [](CMPIObjectPath*) -> void* { return broker()->eft->newArgs(broker(), nullptr); }},
        {"newString", [](CMPIObjectPath*) -> void* { return new_string(); }},
        {"newArray",
         [](CMPIObjectPath*) -> void* { return broker()->eft->newArray(broker(), 1, CMPI_uint8, nullptr); }},
        {"newDateTime", [](CMPIObjectPath*) -> void* { return broker()->eft->newDateTime(broker(), nullptr); }},
        {"getNameSpace", [](CMPIObjectPath* p) -> void* { return CMGetNameSpace(p, nullptr); }},
        {"getClassName", [](CMPIObjectPath* p) -> void* { return CMGetClassName(p, nullptr); }},
        {"getHostname", [](CMPIObjectPath* p) -> void* { return CMGetHostname(p, nullptr); }},
        {"getKey", [](CMPIObjectPath* p) -> void* { return CMGetKey(p, "K", nullptr).value.string; }},
        {"toString", [](CMPIObjectPath* p) -> void* { return p->ft->toString(p, nullptr); }},
        {"clone", [](CMPIObjectPath* p) -> void* { return p->ft->clone(p, nullptr); }},
    };
}

TEST(FailingObjects, EveryCallThatMakesOneCanFail) {
    for (const auto& [name, make] : makers()) {
        SCOPED_TRACE(name);
        CallScope scope;
        CMPIObjectPath* path = new_path({"C", "root/test", std::nullopt, {string_property("K", "v")}, {}});
        EXPECT_NE(make(path), nullptr);
        EXPECT_EQ(scope.objects_made(), 1u);
        scope.fail_object(1);
        EXPECT_EQ(make(path), nullptr);
    }
}

TEST(FailingObjects, AGetterThatCannotMakeItsValueSaysSo) {
    CallScope scope;
    const CMPIObjectPath* path = new_path({"C", "root/test", std::nullopt, {string_property("K", "v")}, {}});
    scope.fail_object(1);
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(CMGetKey(path, "K", &status).state, CMPI_badValue);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
    scope.fail_object(1);
    CMPIString* name = nullptr;
    EXPECT_EQ(CMGetKeyAt(path, 0, &name, &status).state, CMPI_notFound) << "the name cannot be made";
    EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
}

} // namespace
} // namespace cmpihost
