// The provider built with FCIP_GUARD_RESULTS: null and -1 results are dropped, and a role key must be a reference. This
// program is linked with its own, guarded copies of the two sources that the option changes.
#include "provider/common/results.h"

#include "tests/support/request_test.h"

namespace {

using namespace test;

class GuardedResults : public RequestTest {};

TEST_F(GuardedResults, NullAndMinusOneAreDropped) {
    fcip::return_instance(scope.result(), nullptr);
    fcip::return_instance(scope.result(), fcip::minus_one<CMPIInstance>());
    fcip::return_path(scope.result(), nullptr);
    fcip::return_path(scope.result(), fcip::minus_one<CMPIObjectPath>());
    EXPECT_EQ(scope.answer().null_results, 0u);
    EXPECT_EQ(scope.answer().invalid_results, 0u);
}

TEST_F(GuardedResults, ObjectsAreReturned) {
    fcip::return_path(scope.result(), cmpihost::new_path(path_of("ZANTO_FCIPProfile", {{"InstanceID", "3"}})));
    EXPECT_EQ(scope.answer().objects.size(), 1u);
    EXPECT_EQ(enumerate_instances("ZANTO_FCIPProtocolEndPoint").objects.size(), 3u);
}

TEST_F(GuardedResults, EnumerationsThatHandOutNullsAnswerWithoutThem) {
    const auto answer = enumerate_instances("ZANTO_RemoteIPPort");
    EXPECT_TRUE(answer.objects.empty());
    EXPECT_EQ(answer.null_results, 0u);
}

TEST_F(GuardedResults, RoleKeyThatIsNoReferenceCountsAsMissing) {
    const auto answer = get(path_of("ZANTO_TCPIPEndpoint", {{"Antecedent", "text"}, {"Dependent", "text"}}));
    EXPECT_TRUE(answer.objects.empty());
    EXPECT_EQ(switchsim::calls("association_class_build_instance_path"), 0u);
}

} // namespace
