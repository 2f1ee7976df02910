// The command line of cmpihost serve.
#include "host/cli/serve_options.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace cmpihost {
namespace {

class ServeLines : public testing::Test {
  protected:
    void SetUp() override { unsetenv("SWITCHSIM_SCENARIO"); }

    static ServeOptions options_of(const std::vector<std::string>& arguments) {
        const ServeLine line = read_serve_line(arguments);
        EXPECT_TRUE(line.options.has_value()) << line.error;
        return line.options.value_or(ServeOptions());
    }

    /// "ADDRESS:PORT" of each endpoint, with a ? where it is optional.
    static std::string endpoints_of(const std::vector<std::string>& arguments) {
        std::string text;
        for (const auto& endpoint : options_of(arguments).listener.endpoints)
            text += endpoint.address + ":" + std::to_string(endpoint.port) + (endpoint.optional ? "? " : " ");
        return text;
    }
};

TEST_F(ServeLines, AddressesByDefault) {
    EXPECT_EQ(endpoints_of({}), "127.0.0.1:5988 ::1:5988? ");
    EXPECT_EQ(endpoints_of({"--tls", "c", "k"}), "127.0.0.1:5989 ::1:5989? ");
    EXPECT_FALSE(options_of({}).listener.tls.has_value());
    EXPECT_EQ(options_of({}).listener.users, "");
}

TEST_F(ServeLines, AddressesThatAreGiven) {
    EXPECT_EQ(endpoints_of({"--listen", "127.0.0.1", "--listen", "[::1]:80"}), "127.0.0.1:5988 ::1:80 ");
    EXPECT_EQ(endpoints_of({"--listen", "0.0.0.0", "--tls", "c", "k", "--users", "u"}), "0.0.0.0:5989 ");
    EXPECT_EQ(endpoints_of({"--listen", "10.0.0.1:7", "--no-tls", "--no-users"}), "10.0.0.1:7 ");
    EXPECT_EQ(endpoints_of({"--listen", "10.0.0.1", "--tls", "c", "k", "--no-users"}), "10.0.0.1:5989 ");
}

TEST_F(ServeLines, PagesAndMetrics) {
    const ServeOptions plain = options_of({});
    EXPECT_TRUE(plain.site.views.ends_with("/schema/views.toml")) << plain.site.views;
    EXPECT_TRUE(plain.site.metrics.empty());
    EXPECT_TRUE(plain.listener.hosts.empty());
    EXPECT_EQ(plain.listener.metrics_user, "");
    const ServeOptions all = options_of(
        {"--metrics", "A", "B", "--views", "v", "--host", "h", "--host", "i", "--metrics-user", "u", "--users", "f"});
    EXPECT_EQ(all.site.metrics, (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(all.site.views, "v");
    EXPECT_EQ(all.listener.hosts, (std::vector<std::string>{"h", "i"}));
    EXPECT_EQ(all.listener.metrics_user, "u");
    EXPECT_EQ(options_of({"--schema", "/elsewhere/my.mof"}).site.views, "") << "there is none beside it";
}

TEST_F(ServeLines, WrongUsageIsToldInOneLine) {
    const std::vector<std::pair<std::vector<std::string>, const char*>> rows{
        {{"--listen", "0.0.0.0"},
         "--listen 0.0.0.0: other machines can reach it, expected --tls CERT KEY, or --no-tls"},
        {{"--listen", "0.0.0.0", "--no-tls"},
         "--listen 0.0.0.0: other machines can reach it, expected --users FILE, or --no-users"},
        {{"--listen", "[::]:5", "--tls", "c", "k"},
         "--listen [::]:5: other machines can reach it, expected --users FILE, or --no-users"},
        {{"--metrics-user", "u"}, "--metrics-user u: expected --users FILE beside it"},
        {{"--listen", "127.0.0.1", "--listen", "10.0.0.1", "--users", "u"},
         "--listen 10.0.0.1: other machines can reach it, expected --tls CERT KEY, or --no-tls"},
        {{"--listen", "here"},
         "--listen here: expected an IPv4 address, or an IPv6 address in brackets, with or without :PORT"},
        {{"--tls", "c"}, "--tls: At least 2 required but received 1"},
        {{"--tls", "c", "k", "--no-tls"}, "--tls excludes --no-tls"},
        {{"--users", "u", "--no-users"}, "--users excludes --no-users"},
        {{"--name", "A", "--name", "B"}, "--name: there are more names than providers"},
        {{"--timeout", "0"}, "--timeout: 0 is no number that can be used"},
        {{"--connections", "0"}, "--connections: 0 is no number that can be used"},
        {{"--threads", "300"}, "--threads: 300 is no number that can be used"},
        {{"extra"}, "The following argument was not expected: extra"},
    };
    for (const auto& [arguments, error] : rows) {
        SCOPED_TRACE(error);
        const ServeLine line = read_serve_line(arguments);
        EXPECT_FALSE(line.options.has_value());
        EXPECT_EQ(line.exit_code, 2);
        EXPECT_EQ(line.output, "");
        EXPECT_EQ(line.error, "cmpihost serve: " + std::string(error) + "\nTry cmpihost serve --help.\n");
    }
}

TEST_F(ServeLines, ProvidersByDefault) {
    const server::Settings settings = options_of({}).settings;
    EXPECT_TRUE(settings.providers.empty());
    ASSERT_EQ(settings.registrations.size(), 2U);
    EXPECT_TRUE(settings.registrations[0].ends_with("/schema/registration/sfcb.reg")) << settings.registrations[0];
    EXPECT_EQ(settings.registrations[1], settings.provider_folder + "/switchsimProvider.reg");
    ASSERT_EQ(settings.schema.size(), 2U);
    EXPECT_TRUE(settings.schema[1].ends_with("/schema/fcip.mof")) << settings.schema[1];
    EXPECT_TRUE(settings.interop_schema.ends_with("/schema/interop.mof")) << settings.interop_schema;
    EXPECT_EQ(settings.name_space, "root/cimv2");
}

TEST_F(ServeLines, ProvidersThatAreGiven) {
    const auto providers_of = [](const std::vector<std::string>& arguments) {
        std::string text;
        for (const auto& provider : options_of(arguments).settings.providers)
            text += provider.library + "=" + provider.name + " ";
        return text;
    };
    EXPECT_EQ(providers_of({"--provider", "a.so", "--provider", "b.so", "--name", "A"}), "a.so=A b.so=FCIPProvider ");
    EXPECT_EQ(providers_of({"--registration", "r"}), "");
    EXPECT_EQ(options_of({"--registration", "r"}).settings.registrations, std::vector<std::string>{"r"});
    for (const char* option : {"--provider", "--name"})
        EXPECT_TRUE(options_of({option, "A"}).settings.registrations.empty()) << option;
    EXPECT_TRUE(providers_of({"--name", "A"}).ends_with("libFCIPProvider.so=A "));
    const server::Settings settings =
        options_of({"--schema", "x/a.mof", "--schema", "b.mof", "--scenario", "s", "-n", "root/x"}).settings;
    EXPECT_EQ(settings.schema, (std::vector<std::string>{"x/a.mof", "b.mof"}));
    EXPECT_EQ(settings.scenario, "s");
    EXPECT_EQ(settings.name_space, "root/x");
}

TEST_F(ServeLines, LimitsThatAreGiven) {
    const ServeOptions options =
        options_of({"--timeout", "2.5", "--idle-time", "7", "--body-bytes", "2M", "--connections", "9", "--contexts",
                    "3", "--waiting", "5", "--context-time", "6", "--reply-bytes", "1000", "--login-penalty", "0.5"});
    EXPECT_EQ(options.timeout, std::chrono::milliseconds(2'500));
    EXPECT_EQ(options.site.timeout, std::chrono::milliseconds(2'500));
    EXPECT_EQ(options.listener.limits.idle, std::chrono::seconds(7));
    EXPECT_EQ(options.listener.limits.body_bytes, std::size_t{2} << 20);
    EXPECT_EQ(options.listener.limits.connections, 9U);
    EXPECT_EQ(options.settings.max_contexts, 3U);
    EXPECT_EQ(options.waiting, 5U);
    EXPECT_EQ(options.settings.context_timeout, std::chrono::seconds(6));
    EXPECT_EQ(options.settings.max_reply, 1'000U);
    EXPECT_EQ(options.listener.login.penalties.failure, std::chrono::milliseconds(500));
}

TEST_F(ServeLines, HelpTellsEachOptionWithItsDefault) {
    const ServeLine line = read_serve_line({"--help"});
    EXPECT_EQ(line.exit_code, 0);
    EXPECT_EQ(line.error, "");
    for (const char* text : {"--listen ADDRESS[:PORT]", "--tls CERT KEY", "--users FILE", "--no-tls", "--no-users",
                             "--log FILE", "--log-json", "--quiet", "--in-process", "--provider FILE",
                             "--name FACTORY_PREFIX", "--registration FILE", "--schema FILE", "--scenario FILE",
                             "--trace FILE", "-n NAMESPACE", "--timeout SECONDS", "--connections NUMBER"})
        EXPECT_NE(line.output.find("\n  " + std::string(text)), std::string::npos) << text;
    for (const char* text : {"[25]", "[75]", "[1M]", "[16K]", "[512]", "[64]", "[256]", "[512M]", "[256M]", "[65536]"})
        EXPECT_NE(line.output.find(text), std::string::npos) << text;
}

TEST_F(ServeLines, ArgumentsAreKeptForTheWorker) {
    const std::vector<std::string> arguments{"--quiet", "--listen", "127.0.0.1:0"};
    EXPECT_EQ(options_of(arguments).arguments, arguments);
}

} // namespace
} // namespace cmpihost
