// Providers that misbehave: what a client sees, and that the next request is served.
#include "tests/host/end_to_end/raw_client.h"
#include "tests/host/end_to_end/server_process.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <memory>
#include <utility>

#include <unistd.h>

namespace cmpihost {
namespace {

/// The classes of the test provider that misbehaves.
constexpr const char* bad_classes[] = {"Bad_Segv",     "Bad_Abort",   "Bad_Exit", "Bad_Stack",
                                       "Bad_Loop",     "Bad_Endless", "Bad_Null", "Bad_Garbage",
                                       "Bad_Sleep500", "Bad_Prints",  "Bad_Good"};

RawRequest request_for(const std::string& class_name) {
    RequestBody body;
    body.operation = "EnumerateInstances";
    body.parameters =
        "<IPARAMVALUE NAME=\"ClassName\"><CLASSNAME NAME=\"" + class_name + "\"></CLASSNAME></IPARAMVALUE>";
    body.name_space = "bad";
    RawRequest request;
    request.cim = "CIMOperation: MethodCall\r\nCIMMethod: EnumerateInstances\r\nCIMObject: root/bad\r\n";
    request.body = body.text();
    return request;
}

class BadProviders : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        std::ofstream mof(schema_file);
        for (const char* name : bad_classes)
            mof << "class " << name << " { [Key] string Name; };\n";
        mof.close();
        server = start({});
    }
    static void TearDownTestSuite() {
        delete server;
        std::remove(schema_file.c_str());
    }
    void SetUp() override { ASSERT_TRUE(server->is_up()) << server->errors(); }

    static ServerProcess* start(std::vector<std::string> options) {
        options.insert(options.end(), {"--provider", TEST_PROVIDERS "/host_bad_provider.so", "--name", "Bad",
                                       "--schema", schema_file, "-n", "root/bad", "--reply-bytes", "1M"});
        return new ServerProcess(options);
    }

    static RawReply ask(const std::string& class_name) {
        return exchange(server->port(), request_for(class_name).text());
    }

    static void expect_error(const RawReply& reply, const std::string& description) {
        EXPECT_EQ(reply.status, 200);
        EXPECT_NE(reply.body.find("<ERROR CODE=\"1\" DESCRIPTION=\"" + description + "\""), std::string::npos)
            << reply.body;
    }

    /// `<ERROR CODE="1" DESCRIPTION="...">` with the texts' own escapes.
    static void expect_failure(const std::string& class_name, const std::string& description) {
        SCOPED_TRACE(class_name);
        expect_error(ask(class_name), description);
        expect_good("Bad_Good");
    }

    static void expect_good(const RawReply& reply) {
        EXPECT_EQ(reply.status, 200);
        EXPECT_NE(reply.body.find("<VALUE>good</VALUE>"), std::string::npos) << reply.body;
        EXPECT_EQ(reply.body.find("<VALUE>good</VALUE>"), reply.body.rfind("<VALUE>good</VALUE>"));
    }

    static void expect_good(const std::string& class_name) {
        SCOPED_TRACE(class_name);
        expect_good(ask(class_name));
    }

    static RawReply get(const std::string& path) {
        return exchange(server->port(), "GET " + path + " HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n");
    }

    /// The value of a metric of the server's own.
    static int figure(const std::string& name) {
        const std::string text = get("/metrics").body;
        const std::size_t at = text.find("\n" + name + " ");
        return at == std::string::npos ? -1 : std::stoi(text.substr(at + name.size() + 2));
    }

    static inline const std::string schema_file = FCIP_BINARY_DIR "/tests/bad_classes.mof";
    static inline ServerProcess* server = nullptr;
};

TEST_F(BadProviders, ThatEndInACallFailItAlone) {
    expect_failure("Bad_Segv", "the provider ended with SIGSEGV while answering EnumerateInstances of Bad_Segv");
    expect_failure("Bad_Abort", "the provider ended with SIGABRT while answering EnumerateInstances of Bad_Abort");
    expect_failure("Bad_Exit", "the provider ended with exit status 3 while answering EnumerateInstances of Bad_Exit");
    expect_failure("Bad_Stack", "the provider ended with SIGSEGV while answering EnumerateInstances of Bad_Stack");
}

TEST_F(BadProviders, ThatHangFailTheCallInTime) {
    const std::unique_ptr<ServerProcess> hasty(start({"--timeout", "1"}));
    ASSERT_TRUE(hasty->is_up()) << hasty->errors();
    // The time is over before the provider has the request where no worker is ready, or the machine is busy: once more.
    const auto ask_until_answered = [&hasty](const std::string& class_name) {
        RawReply reply;
        for (int tries = 0; tries < 100 && reply.status != 200; ++tries) {
            reply = exchange(hasty->port(), request_for(class_name).text());
            EXPECT_TRUE(reply.status == 200 || reply.status == 500 || reply.status == 503) << reply.status;
        }
        return reply;
    };
    for (const std::string class_name : {"Bad_Loop", "Bad_Endless"}) {
        SCOPED_TRACE(class_name);
        expect_error(ask_until_answered(class_name),
                     "the provider did not answer EnumerateInstances of " + class_name + " within 1 s");
        expect_good(ask_until_answered("Bad_Good"));
    }
}

TEST_F(BadProviders, EndsAreCountedInTheMetrics) {
    const int before = figure("cmpihost_provider_restarts_total");
    ask("Bad_Segv");
    EXPECT_EQ(figure("cmpihost_provider_restarts_total"), before + 1);
    expect_good("Bad_Good");
    EXPECT_EQ(figure("cmpihost_provider_up"), 1);
}

TEST_F(BadProviders, ThatEndFailTheirPageAlone) {
    EXPECT_EQ(get("/class/Bad_Segv").status, 500);
    const RawReply page = get("/class/Bad_Good");
    EXPECT_EQ(page.status, 200);
    EXPECT_NE(page.body.find(">good</"), std::string::npos) << page.body;
}

TEST_F(BadProviders, OthersAreServedWhileOneHangs) {
    const std::unique_ptr<ServerProcess> hung(start({"--drain-time", "0.1"}));
    ASSERT_TRUE(hung->is_up()) << hung->errors();
    const int hanging = send_to(hung->port(), request_for("Bad_Loop").text());
    for (int i = 0; i < 20; ++i)
        expect_good(exchange(hung->port(), request_for("Bad_Good").text()));
    EXPECT_EQ(hung->stop(), 0);
    close(hanging);
}

TEST_F(BadProviders, ResultsThatAreNoneAreLeftOut) {
    expect_good("Bad_Null");
    expect_good("Bad_Garbage");
}

TEST_F(BadProviders, WhatTheyPrintDoesNotReachTheClient) {
    expect_good("Bad_Prints");
}

TEST_F(BadProviders, SlowAnswersAreWaitedFor) {
    expect_good("Bad_Sleep500");
}

TEST_F(BadProviders, ServerEndsWellAfterThemAll) {
    EXPECT_EQ(server->stop(), 0);
    delete std::exchange(server, start({}));
    expect_failure("Bad_Segv", "the provider ended with SIGSEGV while answering EnumerateInstances of Bad_Segv");
    EXPECT_TRUE(server->comes_to_tell("SIGSEGV")) << "the log tells: " << server->errors();
}

} // namespace
} // namespace cmpihost
