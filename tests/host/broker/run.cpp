// Running operations: what reaches the provider, and what comes back.
#include "host/broker/held.h"
#include "host/broker/upcalls.h"
#include "tests/host/host_test.h"

#include <functional>
#include <thread>

namespace cmpihost {
namespace {

/// What the slots of the test's MI do; one per thread, as there is one request per thread.
thread_local std::function<CMPIStatus(const CMPIContext*, const CMPIResult*, const CMPIObjectPath*)> behaviour;

CMPIStatus status_of(CMPIrc rc) {
    return CMPIStatus{rc, nullptr};
}

CMPIStatus enumerate(CMPIInstanceMI*, const CMPIContext* context, const CMPIResult* result, const CMPIObjectPath* path,
                     const char**) {
    return behaviour(context, result, path);
}

CMPIStatus enumerate_names(CMPIInstanceMI*, const CMPIContext* context, const CMPIResult* result,
                           const CMPIObjectPath* path) {
    return behaviour(context, result, path);
}

const CMPIInstanceMIFT table{
    .ftVersion = 100,
    .miVersion = 100,
    .miName = "test",
    .cleanup = nullptr,
    .enumerateInstanceNames = enumerate_names,
    .enumerateInstances = enumerate,
    .getInstance = nullptr,
    .createInstance = nullptr,
    .modifyInstance = nullptr,
    .deleteInstance = nullptr,
    .execQuery = nullptr,
};

Request request_for(const char* class_name) {
    Request request;
    request.path.class_name = class_name;
    request.path.name_space = "root/test";
    return request;
}

class Runs : public testing::Test {
  protected:
    Answer run_it(const Request& request = request_for("C"), unsigned fail_object = 0) {
        return run(Provider{&mi, nullptr, nullptr}, request, fail_object);
    }

    CMPIInstanceMI mi{nullptr, &table};
};

CMPIInstance* instance_of(const CMPIObjectPath* path) {
    return CMNewInstance(broker(), path, nullptr);
}

TEST_F(Runs, ReturnedObjectsComeInOrder) {
    behaviour = [](auto*, auto* result, auto* path) {
        for (const char* name : {"b", "a"}) {
            CMPIInstance* instance = instance_of(path);
            CMSetProperty(instance, "Name", name, CMPI_chars);
            EXPECT_EQ(CMReturnInstance(result, instance).rc, CMPI_RC_OK);
            CMSetProperty(instance, "Name", "changed after it was returned", CMPI_chars);
        }
        EXPECT_EQ(CMReturnDone(result).rc, CMPI_RC_OK);
        return status_of(CMPI_RC_OK);
    };
    const Answer answer = run_it();
    EXPECT_EQ(answer.rc, 0);
    EXPECT_FALSE(answer.message.has_value());
    EXPECT_TRUE(answer.done);
    ASSERT_EQ(answer.objects.size(), 2u);
    EXPECT_EQ(answer.objects[0].property("Name")->value, Value{std::string("b")});
    EXPECT_EQ(answer.objects[1].property("Name")->value, Value{std::string("a")});
}

TEST_F(Runs, NullResultsAreRefusedAndCounted) {
    behaviour = [](auto*, auto* result, auto*) {
        EXPECT_EQ(CMReturnInstance(result, nullptr).rc, CMPI_RC_ERR_INVALID_PARAMETER);
        EXPECT_EQ(CMReturnObjectPath(result, nullptr).rc, CMPI_RC_ERR_INVALID_PARAMETER);
        return status_of(CMPI_RC_OK);
    };
    const Answer answer = run_it();
    EXPECT_EQ(answer.null_results, 2u);
    EXPECT_EQ(answer.invalid_results, 0u);
    EXPECT_TRUE(answer.objects.empty());
    EXPECT_FALSE(answer.done);
}

TEST_F(Runs, ResultsThatAreNoObjectAreRefusedAndCounted) {
    behaviour = [](auto*, auto* result, auto* path) {
        EXPECT_EQ(CMReturnInstance(result, wild_pointer<CMPIInstance>()).rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(CMReturnObjectPath(result, wild_pointer<CMPIObjectPath>()).rc, CMPI_RC_ERR_INVALID_HANDLE);
        CMPIInstance* released = instance_of(path);
        released->ft->release(released);
        EXPECT_EQ(CMReturnInstance(result, released).rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(CMReturnInstance(result, reinterpret_cast<const CMPIInstance*>(path)).rc, CMPI_RC_ERR_INVALID_HANDLE)
            << "a path returned as an instance";
        return status_of(CMPI_RC_OK);
    };
    const Answer answer = run_it();
    EXPECT_EQ(answer.invalid_results, 4u);
    EXPECT_EQ(answer.null_results, 0u);
    EXPECT_TRUE(answer.objects.empty());
}

TEST_F(Runs, ObjectsOfAnEarlierCallAreNotReturned) {
    static const CMPIInstance* kept = nullptr;
    behaviour = [](auto*, auto*, auto* path) {
        kept = instance_of(path);
        return status_of(CMPI_RC_OK);
    };
    run_it();
    behaviour = [](auto*, auto* result, auto*) {
        EXPECT_EQ(CMReturnInstance(result, kept).rc, CMPI_RC_ERR_INVALID_HANDLE);
        return status_of(CMPI_RC_OK);
    };
    EXPECT_EQ(run_it().invalid_results, 1u);
}

TEST_F(Runs, StatusAndMessageAreHandedBack) {
    behaviour = [](auto*, auto*, auto*) {
        return CMPIStatus{CMPI_RC_ERR_NOT_FOUND, CMNewString(broker(), "no such thing", nullptr)};
    };
    const Answer answer = run_it();
    EXPECT_EQ(answer.rc, 6);
    EXPECT_EQ(answer.message, "no such thing");
    behaviour = [](auto*, auto*, auto*) { return CMPIStatus{CMPI_RC_OK, wild_pointer<CMPIString>()}; };
    EXPECT_FALSE(run_it().message.has_value()) << "a message that is no string of the call";
}

TEST_F(Runs, ThePathArrivesWithItsKeys) {
    Request request = request_for("Class");
    request.path.host = "host";
    Object other{"Other", "root/test", std::nullopt, {string_property("Name", "n")}, {}};
    request.path.keys = {string_property("Text", "t"),
                         uint_property("Number", 5, "uint16"),
                         {"Flag", "boolean", {true}},
                         {"Real", "real64", {0.5}},
                         {"Ref", "reference", {std::make_shared<const Object>(other)}}};
    behaviour = [&request, &other](auto* context, auto*, auto* path) {
        EXPECT_EQ(describe(path), request.path);
        EXPECT_EQ(CMGetKey(path, "Number", nullptr).value.uint16, 5);
        EXPECT_EQ(CMGetKey(path, "Flag", nullptr).value.boolean, 1);
        EXPECT_EQ(CMGetKey(path, "Real", nullptr).value.real64, 0.5);
        EXPECT_EQ(describe(CMGetKey(path, "Ref", nullptr).value.ref), other);
        EXPECT_EQ(text(context->ft->getEntry(context, "CMPIInitNameSpace", nullptr).value.string), "root/test");
        return status_of(CMPI_RC_OK);
    };
    EXPECT_EQ(run_it(request).rc, 0);
}

TEST_F(Runs, AKeyWhoseValueIsNotOfItsTypeIsBad) {
    Request request = request_for("Class");
    request.path.keys = {{"K", "uint16", {std::string("five")}}, {"D", "datetime", {std::uint64_t{5}}}};
    behaviour = [](auto*, auto*, auto* path) {
        EXPECT_EQ(CMGetKey(path, "K", nullptr).state, CMPI_badValue);
        EXPECT_EQ(CMGetKey(path, "D", nullptr).state, CMPI_badValue);
        return status_of(CMPI_RC_OK);
    };
    EXPECT_EQ(run_it(request).rc, 0);
}

TEST_F(Runs, MissingInterfacesAndSlotsAreNotSupported) {
    Request request = request_for("C");
    for (int i = 0; i <= static_cast<int>(Request::Operation::exec_query); ++i) {
        request.operation = static_cast<Request::Operation>(i);
        SCOPED_TRACE(i);
        EXPECT_EQ(run(Provider{}, request).rc, 7);
    }
    request.operation = Request::Operation::get_instance;
    EXPECT_EQ(run_it(request).rc, 7) << "a slot that is null";
}

TEST_F(Runs, MethodOfAProviderWithoutMethodsIsNotAvailable) {
    Request request = request_for("C");
    request.operation = Request::Operation::invoke_method;
    EXPECT_EQ(run(Provider{}, request).rc, 16);
}

/// What the method of the test's MI does.
thread_local std::function<CMPIStatus(const CMPIResult*, const char*, const CMPIArgs*, CMPIArgs*)> method_behaviour;

CMPIStatus invoke(CMPIMethodMI*, const CMPIContext*, const CMPIResult* result, const CMPIObjectPath*, const char* name,
                  const CMPIArgs* in, CMPIArgs* out) {
    return method_behaviour(result, name, in, out);
}

const CMPIMethodMIFT method_table{
    .ftVersion = 100, .miVersion = 100, .miName = "test", .cleanup = nullptr, .invokeMethod = invoke};

Answer run_method(const Request& request) {
    CMPIMethodMI mi{nullptr, &method_table};
    return run(Provider{nullptr, nullptr, &mi}, request);
}

Request method_request(std::vector<Property> arguments = {}) {
    Request request = request_for("C");
    request.operation = Request::Operation::invoke_method;
    request.method = "Start";
    request.arguments = std::move(arguments);
    return request;
}

TEST_F(Runs, MethodGetsItsNameAndArguments) {
    method_behaviour = [](auto*, const char* name, auto* in, auto*) {
        EXPECT_STREQ(name, "Start");
        EXPECT_EQ(in->ft->getArgCount(in, nullptr), 1u);
        EXPECT_EQ(in->ft->getArg(in, "count", nullptr).value.uint16, 7);
        return status_of(CMPI_RC_OK);
    };
    EXPECT_EQ(run_method(method_request({uint_property("Count", 7, "uint16")})).rc, 0);
}

TEST_F(Runs, MethodReturnsAValueAndOutputParameters) {
    method_behaviour = [](const CMPIResult* result, auto*, auto*, CMPIArgs* out) {
        CMPIValue value;
        value.uint32 = 5;
        out->ft->addArg(out, "Left", &value, CMPI_uint32);
        EXPECT_EQ(result->ft->returnData(result, &value, CMPI_uint32).rc, CMPI_RC_OK);
        return status_of(CMPI_RC_OK);
    };
    const Answer answer = run_method(method_request());
    EXPECT_EQ(answer.returned, uint_property("", 5, "uint32"));
    EXPECT_EQ(answer.arguments, (std::vector<Property>{uint_property("Left", 5, "uint32")}));
}

TEST_F(Runs, MethodMayLetGoOfItsOutputParameters) {
    method_behaviour = [](auto*, auto*, auto*, CMPIArgs* out) { return out->ft->release(out); };
    const Answer answer = run_method(method_request());
    EXPECT_EQ(answer.rc, 0);
    EXPECT_TRUE(answer.arguments.empty());
    EXPECT_FALSE(answer.returned.has_value());
}

TEST_F(Runs, ReturnedDataOfAnInvalidHandleIsRefused) {
    method_behaviour = [](const CMPIResult* result, auto*, auto*, auto*) {
        CMPIValue value;
        value.string = wild_pointer<CMPIString>();
        EXPECT_EQ(result->ft->returnData(result, &value, CMPI_string).rc, CMPI_RC_ERR_INVALID_HANDLE);
        return status_of(CMPI_RC_OK);
    };
    EXPECT_FALSE(run_method(method_request()).returned.has_value());
}

TEST_F(Runs, TheNthObjectFails) {
    behaviour = [](auto*, auto* result, auto* path) {
        CMReturnInstance(result, instance_of(path));
        CMReturnInstance(result, instance_of(path));
        return status_of(CMPI_RC_OK);
    };
    EXPECT_EQ(run_it(request_for("C"), 1).null_results, 1u);
    EXPECT_EQ(run_it(request_for("C"), 2).objects.size(), 1u);
    EXPECT_EQ(run_it(request_for("C"), 3).objects.size(), 2u);
}

TEST_F(Runs, AResultBelongsToItsCall) {
    const CallScope outer;
    behaviour = [&outer](auto*, auto* result, auto* path) {
        EXPECT_EQ(CMReturnInstance(outer.result(), instance_of(path)).rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(CMReturnDone(outer.result()).rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(result->ft->returnDone(nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(result->ft->release(const_cast<CMPIResult*>(result)).rc, CMPI_RC_OK);
        EXPECT_EQ(CMReturnInstance(result, instance_of(path)).rc, CMPI_RC_OK) << "still there after its release";
        return status_of(CMPI_RC_OK);
    };
    EXPECT_EQ(run_it().objects.size(), 1u);
}

TEST_F(Runs, AScopeCollectsWithoutAProvider) {
    CallScope scope;
    EXPECT_EQ(CMReturnObjectPath(scope.result(), new_path(request_for("C").path)).rc, CMPI_RC_OK);
    ASSERT_EQ(scope.answer().objects.size(), 1u);
    EXPECT_EQ(scope.answer().objects[0].class_name, "C");
}

// ------------------------------------------------------------------------------------------------------ sinks

struct Taken {
    std::vector<Object> instances;
    std::vector<Object> paths;
};

/// Runs the behaviour with a sink that keeps copies.
Answer run_into(Taken& taken, const Provider& provider) {
    return run(provider, request_for("C"), [&taken](const HeldObject& object, bool is_instance) {
        (is_instance ? taken.instances : taken.paths).push_back(plain(object));
    });
}

TEST_F(Runs, ASinkTakesEachObjectWhenItIsReturned) {
    Taken taken;
    behaviour = [&taken](auto*, auto* result, auto* path) {
        CMPIInstance* instance = instance_of(path);
        CMSetProperty(instance, "Name", "a", CMPI_chars);
        EXPECT_EQ(CMReturnInstance(result, instance).rc, CMPI_RC_OK);
        EXPECT_EQ(taken.instances.size(), 1u) << "before the provider goes on";
        CMSetProperty(instance, "Name", "changed after it was returned", CMPI_chars);
        EXPECT_EQ(CMReturnObjectPath(result, path).rc, CMPI_RC_OK);
        EXPECT_EQ(CMReturnObjectPath(result, nullptr).rc, CMPI_RC_ERR_INVALID_PARAMETER);
        return CMPIStatus{CMPI_RC_ERR_FAILED, CMNewString(broker(), "half of it", nullptr)};
    };
    const Answer answer = run_into(taken, {&mi, nullptr});
    EXPECT_TRUE(answer.objects.empty());
    EXPECT_EQ(answer.null_results, 1u);
    EXPECT_EQ(answer.rc, 1);
    EXPECT_EQ(answer.message, "half of it");
    ASSERT_EQ(taken.instances.size(), 1u);
    EXPECT_EQ(taken.instances[0].properties, std::vector{string_property("Name", "a")});
    EXPECT_EQ(taken.paths, std::vector{request_for("C").path});
}

TEST_F(Runs, ASinkAndAnObserverSeeTheSame) {
    std::vector<Object> observed;
    observe([](const Object& object, bool, void* to) { static_cast<std::vector<Object>*>(to)->push_back(object); },
            &observed);
    behaviour = [](auto*, auto* result, auto* path) {
        CMReturnInstance(result, instance_of(path));
        return status_of(CMPI_RC_OK);
    };
    Taken taken;
    run_into(taken, {&mi, nullptr});
    observe(nullptr, nullptr);
    EXPECT_EQ(observed.size(), 1u);
    EXPECT_EQ(observed, taken.instances);
}

// ------------------------------------------------------------------------------------------------------ observers

struct Seen {
    std::vector<std::string> instances;
    std::vector<std::string> paths;
};

TEST_F(Runs, AnObserverSeesEveryReturnedObject) {
    Seen seen;
    observe(
        [](const Object& object, bool is_instance, void* closure) {
            auto* list = static_cast<Seen*>(closure);
            (is_instance ? list->instances : list->paths).push_back(object.class_name);
        },
        &seen);
    behaviour = [](auto*, auto* result, auto* path) {
        CMReturnInstance(result, instance_of(path));
        CMReturnInstance(result, nullptr);
        CMReturnObjectPath(result, path);
        return status_of(CMPI_RC_OK);
    };
    run_it(request_for("A"));
    observe(nullptr, nullptr);
    run_it(request_for("B"));
    EXPECT_EQ(seen.instances, std::vector<std::string>{"A"});
    EXPECT_EQ(seen.paths, std::vector<std::string>{"A"});
}

TEST_F(Runs, RequestsOfSeveralThreadsDoNotMeet) {
    std::vector<std::thread> threads;
    std::vector<std::size_t> counts(4);
    unsigned observed = 0;
    threads.reserve(counts.size());
    observe([](const Object&, bool, void* closure) { ++*static_cast<unsigned*>(closure); }, &observed);
    for (std::size_t& count : counts)
        threads.emplace_back([this, &count] {
            behaviour = [](auto*, auto* result, auto* path) {
                for (int i = 0; i < 100; ++i)
                    CMReturnInstance(result, instance_of(path));
                return status_of(CMPI_RC_OK);
            };
            for (int round = 0; round < 10; ++round)
                count += run_it().objects.size();
        });
    for (std::thread& thread : threads)
        thread.join();
    observe(nullptr, nullptr);
    EXPECT_EQ(counts, std::vector<std::size_t>(4, 1000));
    EXPECT_EQ(observed, 4000u) << "observers are called one at a time";
}

TEST_F(Runs, AskForThemselvesOnlySoDeep) {
    unsigned runs = 0;
    behaviour = [&runs](const CMPIContext* context, const CMPIResult*, const CMPIObjectPath* path) {
        CMPIStatus status{CMPI_RC_OK, nullptr};
        if (++runs % 100 != 0) // so that it ends in any case
            broker()->bft->enumerateInstances(broker(), context, path, nullptr, &status);
        return status;
    };
    const Upcalled again = [this](const Request& request) { return run_it(request); };
    serve_upcalls(&again);
    for (const unsigned total : {33u, 66u}) {
        const Answer answer = run_it();
        EXPECT_EQ(answer.rc, CMPI_RC_ERR_FAILED);
        EXPECT_EQ(answer.message, "requests to the broker are nested too deep");
        EXPECT_EQ(runs, total);
    }
    end_upcalls(&again);
}

} // namespace
} // namespace cmpihost
