// Loading provider libraries, good ones and others.
#include "host/broker/loader.h"
#include "tests/host/host_test.h"

#include <array>

#include <unistd.h>

namespace cmpihost {
namespace {

const std::string folder = TEST_PROVIDERS;
const std::string good = folder + "/host_good_provider.so";
const std::string odd = folder + "/host_odd_provider.so";
const std::string no_factories = folder + "/host_no_factories.so";
const std::string unresolved = folder + "/host_unresolved.so";

std::string error_of(const std::string& file, const std::string& name) {
    try {
        Library library(file);
        library.create(name);
        return "no error";
    } catch (const LoadError& error) {
        return error.what();
    }
}

TEST(Loader, LoadsAllInterfacesAndCleansUp) {
    testing::internal::CaptureStdout();
    {
        Library library(good);
        EXPECT_EQ(library.provider().instance_mi, nullptr) << "before create()";
        library.create("Good");
        ASSERT_NE(library.provider().instance_mi, nullptr);
        ASSERT_NE(library.provider().association_mi, nullptr);
        EXPECT_STREQ(library.provider().instance_mi->ft->miName, "instanceGood");
        ASSERT_NE(library.provider().method_mi, nullptr);
        EXPECT_STREQ(library.provider().association_mi->ft->miName, "associationGood");
        EXPECT_STREQ(library.provider().method_mi->ft->miName, "methodGood");
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "factory of instances\n"
                                                      "factory of associations\n"
                                                      "factory of methods\n"
                                                      "cleanup of instances, terminating 1\n"
                                                      "cleanup of associations, terminating 1\n"
                                                      "cleanup of methods, terminating 1\n");
}

TEST(Loader, OneInterfaceIsEnough) {
    testing::internal::CaptureStdout();
    {
        Library library(good);
        library.create("Half");
        EXPECT_NE(library.provider().instance_mi, nullptr);
        EXPECT_EQ(library.provider().association_mi, nullptr);
        EXPECT_EQ(library.provider().method_mi, nullptr);
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "factory of instances\ncleanup of instances, terminating 1\n");
}

TEST(Loader, PropertiesAloneAreEnough) {
    testing::internal::CaptureStdout();
    {
        Library library(folder + "/host_property_provider.so");
        library.create("Store");
        EXPECT_EQ(library.provider().instance_mi, nullptr);
        ASSERT_NE(library.provider().property_mi, nullptr);
        EXPECT_STREQ(library.provider().property_mi->ft->miName, "propertyStore");
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "factory of properties\ncleanup of properties, terminating 1\n");
}

TEST(Loader, LoadsAgainAfterUnloading) {
    for (int i = 0; i < 2; ++i) {
        testing::internal::CaptureStdout();
        Library library(good);
        library.create("Good");
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "factory of instances\nfactory of associations\nfactory of methods\n");
        Request request;
        request.path = {"Test_Thing", "root/test", std::nullopt, {}, {}};
        testing::internal::CaptureStdout();
        EXPECT_EQ(run(library.provider(), request).objects.size(), 3u);
        testing::internal::GetCapturedStdout();
    }
}

TEST(Loader, FindsAFileInTheWorkingFolder) {
    std::array<char, 4096> before{};
    ASSERT_NE(getcwd(before.data(), before.size()), nullptr);
    ASSERT_EQ(chdir(folder.c_str()), 0);
    EXPECT_EQ(error_of("host_odd_provider.so", "Empty"), "no error");
    EXPECT_EQ(chdir(before.data()), 0);
}

TEST(Loader, LaterVersionsUpTo200AreServed) {
    EXPECT_EQ(error_of(odd, "Newer"), "no error");
}

TEST(Loader, AMissingFile) {
    EXPECT_EQ(error_of("/no/such/provider.so", "X"), "provider library /no/such/provider.so: no such file");
    const std::string elsewhere = error_of("no_such_provider.so", "X");
    EXPECT_EQ(elsewhere.find("provider library no_such_provider.so: cannot be loaded: no_such_provider.so: "), 0u)
        << elsewhere;
}

TEST(Loader, AFileThatIsNoLibrary) {
    const std::string error = error_of("/dev/null", "X");
    EXPECT_EQ(error.find("provider library /dev/null: cannot be loaded: "), 0u) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos);
}

TEST(Loader, AnUnresolvedSymbolIsNamed) {
    const std::string error = error_of(unresolved, "X");
    EXPECT_EQ(error.find("provider library " + unresolved + ": cannot be loaded: "), 0u) << error;
    EXPECT_NE(error.find("function_that_nobody_has"), std::string::npos) << error;
}

TEST(Loader, MissingFactoriesAreNamed) {
    EXPECT_EQ(error_of(no_factories, "Name"),
              "provider library " + no_factories +
                  ": has none of Name_Create_InstanceMI, _Create_AssociationMI, _Create_MethodMI, _Create_PropertyMI");
}

TEST(Loader, FactoriesOfOtherNamesAreListed) {
    EXPECT_EQ(
        error_of(good, "Name"),
        "provider library " + good +
            ": has none of Name_Create_InstanceMI, _Create_AssociationMI, _Create_MethodMI, _Create_PropertyMI; it has "
            "Good_Create_AssociationMI, Good_Create_InstanceMI, Good_Create_MethodMI, Half_Create_InstanceMI");
}

TEST(Loader, IndicationsAreRefusedByName) {
    EXPECT_EQ(error_of(odd, "Told"), "provider library " + odd +
                                         ": Told_Create_IndicationMI() makes a provider of indications, which are not "
                                         "served");
}

TEST(Loader, AFactoryForAnyNameIsGivenTheName) {
    EXPECT_EQ(error_of(folder + "/host_fault_provider.so", "Any"), "no error");
    EXPECT_EQ(error_of(folder + "/host_fault_provider.so", "None"), "_Generic_Create_InstanceMI() made no MI");
}

struct RefusalRow {
    const char* name;
    const char* error;
};

TEST(Loader, UnusableInterfacesAreRefused) {
    constexpr std::array rows{
        RefusalRow{"OldTable", "ftVersion of the MI of OldTable_Create_InstanceMI() is 86, expected 100 to 200"},
        RefusalRow{"OldMi", "miVersion of the MI of OldMi_Create_InstanceMI() is 99, expected 100 to 200"},
        RefusalRow{"TooNewTable", "ftVersion of the MI of TooNewTable_Create_InstanceMI() is 201, expected 100 to 200"},
        RefusalRow{"TooNewMi", "miVersion of the MI of TooNewMi_Create_InstanceMI() is 210, expected 100 to 200"},
        RefusalRow{"NoMi", "NoMi_Create_InstanceMI() made no MI"},
        RefusalRow{"NoTable", "the MI of NoTable_Create_InstanceMI() has no function table"},
        RefusalRow{"NoAssociations", "NoAssociations_Create_AssociationMI() made no MI"},
    };
    for (const RefusalRow& row : rows)
        EXPECT_EQ(error_of(odd, row.name), row.error);
}

// ------------------------------------------------------------------------------------------------------- scenarios

std::string scenario_error(const std::string& library_file, const std::string& scenario) {
    try {
        Library library(library_file);
        library.load_scenario(scenario);
        library.create("Empty");
        return "no error";
    } catch (const LoadError& error) {
        return error.what();
    }
}

TEST(Scenarios, AreHandedToTheLibrary) {
    EXPECT_EQ(scenario_error(odd, "good.toml"), "no error");
    EXPECT_EQ(scenario_error(odd, "bad.toml"), "bad.toml:3:7: ports: a list of tables is expected");
    EXPECT_EQ(scenario_error(odd, "silent.toml"), "scenario silent.toml: cannot be loaded");
    EXPECT_EQ(scenario_error(no_factories, "good.toml"),
              "provider library " + no_factories +
                  ": takes no scenario (it does not come with switchsim_load_scenario())");
}

} // namespace
} // namespace cmpihost
