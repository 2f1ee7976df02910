// Enumerations that are opened, pulled and closed.
#include "tests/host/server/service_test.h"

namespace cmpihost::server {
namespace {

std::string number(const std::string& name, const std::string& value) {
    return text_parameter(name, value);
}

/// The value of an output parameter; "(none)" without it.
std::string output(const Heard& heard, const std::string& name, const std::string& type) {
    const std::string begin = "<PARAMVALUE NAME=\"" + name + "\" PARAMTYPE=\"" + type + "\"><VALUE>";
    const std::size_t at = heard.body.find(begin);
    if (at == std::string::npos)
        return "(none)";
    return heard.body.substr(at + begin.size(), heard.body.find('<', at + begin.size()) - at - begin.size());
}

std::string context_of(const Heard& heard) {
    return output(heard, "EnumerationContext", "string");
}

std::string end_of(const Heard& heard) {
    return output(heard, "EndOfSequence", "boolean");
}

std::string context(const std::string& id) {
    return text_parameter("EnumerationContext", id);
}

class Pulls : public ServiceTest {
  protected:
    Heard open(const std::string& parameters = {}, const std::string& operation = "OpenEnumerateInstances") {
        return ask(operation, of_class("Test_Thing") + parameters);
    }
    Heard pull(const std::string& id, const std::string& most, const std::string& kind = "PullInstancesWithPath") {
        return ask(kind, context(id) + number("MaxObjectCount", most));
    }
};

TEST_F(Pulls, OpeningWithoutACountGivesNoneYet) {
    const Heard heard = open();
    EXPECT_EQ(ending(heard), "ok 0");
    EXPECT_EQ(context_of(heard).size(), 32U);
    EXPECT_EQ(end_of(heard), "FALSE");
    EXPECT_EQ(ending(open(number("MaxObjectCount", "0"))), "ok 0");
}

TEST_F(Pulls, ObjectsComeInPortionsUntilTheEnd) {
    const Heard opened = open(number("MaxObjectCount", "1"));
    EXPECT_EQ(ending(opened), "ok 1");
    EXPECT_EQ(opened.count("<VALUE.INSTANCEWITHPATH><INSTANCEPATH>"), 1U);
    const Heard second = pull(context_of(opened), "1");
    EXPECT_EQ(ending(second), "ok 1");
    EXPECT_EQ(context_of(second), context_of(opened));
    const Heard last = pull(context_of(opened), "100");
    EXPECT_EQ(ending(last), "ok 1");
    EXPECT_EQ(end_of(last), "TRUE");
    EXPECT_EQ(context_of(last), "");
    EXPECT_EQ(ending(pull(context_of(opened), "1")), "21 no such enumeration is open");
}

TEST_F(Pulls, PortionsTogetherAreTheWholeAnswer) {
    const std::string whole = open(number("MaxObjectCount", "100")).within("IRETURNVALUE");
    const Heard opened = open();
    std::string parts;
    for (int i = 0; i < 3; ++i)
        parts += pull(context_of(opened), "1").within("IRETURNVALUE");
    EXPECT_EQ(parts, whole);
}

TEST_F(Pulls, PathsAreOpenedAndPulled) {
    const Heard opened = open(number("MaxObjectCount", "2"), "OpenEnumerateInstancePaths");
    EXPECT_TRUE(opened.within("IRETURNVALUE").starts_with("<INSTANCEPATH><NAMESPACEPATH>")) << opened.body;
    EXPECT_EQ(ending(pull(context_of(opened), "1")), "21 no such enumeration is open");
    EXPECT_EQ(ending(pull(context_of(opened), "1", "PullInstances")), "21 there is no open query");
    EXPECT_EQ(ending(pull(context_of(opened), "1", "PullInstancePaths")), "ok 1");
}

TEST_F(Pulls, AssociationsAreOpened) {
    const std::string source =
        instance_parameter("InstanceName", "Test_Thing", thing_keys()) + number("MaxObjectCount", "10");
    EXPECT_EQ(ending(ask("OpenAssociatorInstancePaths", source)), "ok 3");
    EXPECT_EQ(ending(ask("OpenAssociatorInstances", source)), "ok 1");
    EXPECT_EQ(ending(ask("OpenReferenceInstances", source)), "ok 1");
    const Heard paths = ask("OpenReferenceInstancePaths", source);
    EXPECT_EQ(ending(paths), "ok 1");
    EXPECT_EQ(end_of(paths), "TRUE");
}

TEST_F(Pulls, ClosedEnumerationIsGone) {
    const Heard opened = open();
    const Heard closed = ask("CloseEnumeration", context(context_of(opened)));
    EXPECT_EQ(ending(closed), "ok 0");
    EXPECT_EQ(closed.count("IRETURNVALUE"), 0U);
    EXPECT_EQ(ending(ask("CloseEnumeration", context(context_of(opened)))), "21 no such enumeration is open");
    EXPECT_EQ(ending(pull(context_of(opened), "1")), "21 no such enumeration is open");
}

TEST_F(Pulls, FilterQueriesAreRefused) {
    EXPECT_EQ(ending(open(text_parameter("FilterQuery", "a=1"))), "25 filter queries are not supported");
    EXPECT_EQ(ending(open(text_parameter("FilterQueryLanguage", "DMTF:FQL"))), "25 filter queries are not supported");
}

TEST_F(Pulls, ContinueOnErrorIsRefused) {
    EXPECT_EQ(ending(open(text_parameter("ContinueOnError", "TRUE"))), "26 ContinueOnError is not supported");
    EXPECT_EQ(ending(open(text_parameter("ContinueOnError", "false"))), "ok 0");
}

TEST_F(Pulls, TimeoutThatIsNotGrantedIsInvalid) {
    EXPECT_EQ(ending(open(number("OperationTimeout", "0"))), "22 OperationTimeout 0, expected 1 to 90");
    EXPECT_EQ(ending(open(number("OperationTimeout", "91"))), "22 OperationTimeout 91, expected 1 to 90");
    EXPECT_EQ(ending(open(number("OperationTimeout", "90"))), "ok 0");
}

TEST_F(Pulls, TooManyOpenEnumerationsAreRefused) {
    settings.max_contexts = 1;
    open();
    EXPECT_EQ(ending(open()), "27 too many enumerations are open");
    EXPECT_EQ(ending(open(number("MaxObjectCount", "3"))), "ok 3"); // need not stay open
}

TEST_F(Pulls, FailureOfTheProviderIsThatOfTheOpening) {
    EXPECT_EQ(ending(ask("OpenEnumerateInstances", of_class("Test_Broken"))), "1 broke off");
    EXPECT_EQ(ending(ask("OpenEnumerateInstances", of_class("X"))), "5 there is no class X in namespace root/cimv2");
}

TEST_F(Pulls, TooLargeAnEnumerationIsRefused) {
    settings.max_reply = 2000;
    EXPECT_EQ(ending(open(number("MaxObjectCount", "3"))),
              "1 the answer is larger than this server's limit for a reply");
}

TEST_F(Pulls, QueriesAndCountsAreNotSupported) {
    EXPECT_EQ(ending(ask("OpenQueryInstances",
                         text_parameter("FilterQuery", "q") + text_parameter("FilterQueryLanguage", "WQL"))),
              "7 OpenQueryInstances is not supported");
    EXPECT_EQ(ending(ask("EnumerationCount", context("x"))), "7 EnumerationCount is not supported");
}

} // namespace
} // namespace cmpihost::server
