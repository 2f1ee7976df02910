// What a process finds at its first platform call. Each check runs in a child process, since a switch is loaded once;
// nothing here touches the switch in the parent.
#include "host/broker/loader.h"
#include "platform/services.h"
#include "simulator/switchsim.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using switchsim::the_switch;

int open_queue() {
    mutex_lock();
    const int result = init_mts(&mts_q);
    mutex_unlock();
    return result;
}

cmpihost::Answer ports_of_the_own_provider() {
    cmpihost::Library library(FCIP_BINARY_DIR "/lib/libswitchsimProvider.so");
    library.create("switchsimProvider");
    cmpihost::Request request;
    request.operation = cmpihost::Request::Operation::enumerate_instance_names;
    request.path = {"ZANTO_FCPort", "root/cimv2", {}, {}, {}};
    return run(library.provider(), request);
}

/// Ends the child: 0 if all is as expected.
[[noreturn]] void finish(bool as_expected) {
    std::exit(as_expected ? 0 : 1);
}

/// How many sockets the process has.
int sockets() {
    int count = 0;
    for (const auto& descriptor : std::filesystem::directory_iterator("/proc/self/fd")) {
        struct stat status {};
        count += stat(descriptor.path().c_str(), &status) == 0 && S_ISSOCK(status.st_mode) ? 1 : 0;
    }
    return count;
}

const auto success = ::testing::ExitedWithCode(0);

} // namespace

TEST(FirstLoad, WithoutAScenarioItIsTheBuiltInSwitch) {
    EXPECT_EXIT(
        {
            unsetenv("SWITCHSIM_SCENARIO");
            finish(open_queue() == 0 && the_switch().name == "dc-east-sw1");
        },
        success, "^$");
}

TEST(FirstLoad, AnEmptyVariableCountsAsNone) {
    EXPECT_EXIT(
        {
            setenv("SWITCHSIM_SCENARIO", "", 1);
            finish(the_switch().name == "dc-east-sw1");
        },
        success, "^$");
}

TEST(FirstLoad, TheVariableNamesTheScenario) {
    EXPECT_EXIT(
        {
            setenv("SWITCHSIM_SCENARIO", FCIP_SOURCE_DIR "/scenarios/single-tunnel.toml", 1);
            mutex_lock();
            const std::string name = getCSName();
            mutex_unlock();
            finish(name == "edge-sw1");
        },
        success, "^$");
}

TEST(FirstLoad, WithoutAControlSocketThereIsNone) {
    for (const char* variable : {"", static_cast<const char*>(nullptr)})
        EXPECT_EXIT(
            {
                unsetenv("SWITCHSIM_CONTROL");
                if (variable)
                    setenv("SWITCHSIM_CONTROL", variable, 1);
                const bool loaded = open_queue() == 0;
                finish(loaded && sockets() == 0);
            },
            success, "^$");
    EXPECT_EXIT(
        {
            const std::string file = testing::TempDir() + "switchsim-first-load-" + std::to_string(getpid());
            setenv("SWITCHSIM_CONTROL", file.c_str(), 1);
            const bool loaded = open_queue() == 0;
            finish(loaded && sockets() == 1);
        },
        success, "^$");
}

TEST(FirstLoad, ABadScenarioIsReportedOnceAndLeavesTheSwitchEmpty) {
    EXPECT_EXIT(
        {
            setenv("SWITCHSIM_SCENARIO", "no-such-file.toml", 1);
            const bool queue_closed = open_queue() == -1 && open_queue() == -1 && mts_q == nullptr;
            finish(queue_closed && the_switch().ports.empty() && the_switch().profiles.empty() &&
                   switchsim::complaints().empty());
        },
        success, "^no-such-file.toml: cannot read: No such file or directory\n$");
}

TEST(FirstLoad, WithoutASwitchItsOwnProviderFails) {
    EXPECT_EXIT(
        {
            setenv("SWITCHSIM_SCENARIO", "no-such-file.toml", 1);
            const cmpihost::Answer answer = ports_of_the_own_provider();
            finish(answer.rc == CMPI_RC_ERR_FAILED && answer.objects.empty() &&
                   answer.message == "the switch's scenario could not be loaded");
        },
        success, "^no-such-file.toml: cannot read: No such file or directory\n$");
}

TEST(FirstLoad, AScenarioThatIsLoadedLaterMendsThat) {
    EXPECT_EXIT(
        {
            setenv("SWITCHSIM_SCENARIO", "no-such-file.toml", 1);
            const bool failed = open_queue() == -1;
            const std::string error = switchsim::load(FCIP_SOURCE_DIR "/scenarios/single-tunnel.toml");
            finish(failed && error.empty() && open_queue() == 0);
        },
        success, "");
}

TEST(FirstLoad, ALoadBeforehandReplacesIt) {
    EXPECT_EXIT(
        {
            setenv("SWITCHSIM_SCENARIO", "no-such-file.toml", 1);
            char message[8] = "before";
            const int result =
                switchsim_load_scenario(FCIP_SOURCE_DIR "/scenarios/single-tunnel.toml", message, sizeof message);
            finish(result == 0 && message[0] == '\0' && the_switch().name == "edge-sw1");
        },
        success, "^$");
}
