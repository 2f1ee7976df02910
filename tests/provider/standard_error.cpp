// The provider prints on standard output only, whatever is asked and whatever fails.
#include "tests/support/corpus.h"

#include "simulator/functions.h"

namespace {

using namespace test;
using switchsim::Fault;

class StandardError : public RequestTest {
  protected:
    /// What goes to standard error while `f` runs.
    template <typename F>
    std::string errors_of(F f) {
        ::testing::internal::CaptureStderr();
        captured(f);
        return ::testing::internal::GetCapturedStderr();
    }
};

TEST_F(StandardError, StaysEmptyWithEveryPlatformFunctionFailing) {
    const auto requests = all_requests();
    const auto ask_all = [&] {
        for (const auto& request : requests)
            cmpihost::run(provider, request);
    };
    EXPECT_EQ(errors_of(ask_all), "");
    EXPECT_FALSE(trace.empty());
    for (const std::string_view function : switchsim::function_names) {
        if (function == "mutex_lock" || function == "mutex_unlock")
            continue;
        SCOPED_TRACE(function);
        for (const Fault fault : read_faults) {
            switchsim::inject(function, fault);
            EXPECT_EQ(errors_of(ask_all), "");
            switchsim::clear_faults();
        }
    }
}

TEST_F(StandardError, StaysEmptyForAQueueThatCannotBeOpened) {
    switchsim::inject("init_mts", Fault::fail);
    EXPECT_EQ(errors_of([&] {
                  FCIPProvider_Create_InstanceMI(cmpihost::broker(), nullptr);
                  FCIPProvider_Create_AssociationMI(cmpihost::broker(), nullptr);
              }),
              "");
    EXPECT_FALSE(trace.empty());
}

TEST_F(StandardError, StaysEmptyForPathsWithoutTheirKeys) {
    EXPECT_EQ(errors_of([&] {
                  cmpihost::Request request;
                  request.path = path_of("ZANTO_FCIPProtocolEndPoint");
                  for (const Operation operation :
                       {Operation::get_instance, Operation::associators, Operation::associator_names,
                        Operation::references, Operation::reference_names}) {
                      request.operation = operation;
                      cmpihost::run(provider, request);
                  }
              }),
              "");
    EXPECT_FALSE(trace.empty());
}

} // namespace
