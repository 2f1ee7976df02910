// Builders that answer -1: the operations hand it on, and it reaches the broker as an invalid result.
#include "tests/support/request_test.h"

using namespace test;
using switchsim::Fault;

namespace {

class MinusOne : public RequestTest {
  protected:
    void SetUp() override {
        RequestTest::SetUp();
        complaints_expected = true;
    }

    /// What comes of an enumeration whose second read of the link table fails: the one in which the first link's
    /// builder looks for the link anew.
    cmpihost::Answer enumerated_without_the_first_link(const std::string& class_name) {
        switchsim::inject("fcip_get_link_entry", Fault::fail, 2);
        cmpihost::Answer answer = enumerate_instances(class_name);
        switchsim::clear_faults();
        return answer;
    }
};

} // namespace

TEST_F(MinusOne, OfTcpStatisticalDataIsHandedOnByItsEnumeration) {
    const cmpihost::Answer answer = enumerated_without_the_first_link("ZANTO_TCPStatisticalData");
    EXPECT_EQ(answer.invalid_results, 1u);
    EXPECT_EQ(answer.null_results, 0u);
    EXPECT_EQ(values(answer, "InstanceID"), (std::vector<std::string>{"3", "7"}));
}

TEST_F(MinusOne, OfTcpSettingsIsHandedOnByTheirEnumeration) {
    const cmpihost::Answer answer = enumerated_without_the_first_link("ZANTO_TCPSettings");
    EXPECT_EQ(answer.invalid_results, 1u);
    EXPECT_EQ(answer.null_results, 0u);
    EXPECT_EQ(values(answer, "InstanceID"), (std::vector<std::string>{"16777218", "16777222"}));
}

TEST_F(MinusOne, OfTcpSettingsIsHandedOnByGet) {
    the_switch().links.erase(tunnel_1); // no link of index 0, which a key of no link leads to
    const cmpihost::Answer answer = get(path_of("ZANTO_TCPSettings", {{"InstanceID", "99"}}));
    EXPECT_EQ(answer.invalid_results, 1u);
    EXPECT_EQ(answer.null_results, 0u);
    EXPECT_TRUE(answer.objects.empty());
}
