#include "host/cli/serve_limits.h"

#include <CLI/CLI.hpp>

#include <sstream>

namespace cmpihost {

namespace {

using std::chrono::milliseconds;

constexpr double longest_time = 1'000'000; // seconds
constexpr double most_counted = 1e12;
constexpr double most_threads = 256;

struct TimeRow {
    const char* option;
    milliseconds& limit;
    const char* help;
};

struct CountRow {
    const char* option;
    std::size_t& limit;
    const char* help;
};

struct SizeRow {
    const char* option;
    std::size_t& limit;
    const char* help;
};

/// Takes numbers above zero, up to a largest one.
CLI::Validator above_zero(double largest) {
    const auto check = [largest](const std::string& text) {
        double number = 0;
        const bool is_number = CLI::detail::lexical_cast(text, number);
        return is_number && number > 0 && number <= largest ? std::string() : text + " is no number that can be used";
    };
    return CLI::Validator(check, "");
}

std::string with_default(const char* help, const std::string& value) {
    return std::string(help) + " [" + value + "]";
}

std::string seconds_text(milliseconds time) {
    std::ostringstream text;
    text << static_cast<double>(time.count()) / 1000;
    return text.str();
}

std::string size_text(std::size_t size) {
    for (const auto& [unit, name] : {std::pair{30, "G"}, {20, "M"}, {10, "K"}})
        if (size != 0 && size % (std::size_t{1} << unit) == 0)
            return std::to_string(size >> unit) + name;
    return std::to_string(size);
}

void add(CLI::App& app, const TimeRow& row) {
    app.add_option_function<double>(
           row.option, [&limit = row.limit](double seconds) { limit = milliseconds(std::llround(seconds * 1000)); },
           with_default(row.help, seconds_text(row.limit)))
        ->type_name("SECONDS")
        ->check(above_zero(longest_time))
        ->group("Limits of time");
}

void add(CLI::App& app, const CountRow& row) {
    app.add_option(row.option, row.limit, with_default(row.help, std::to_string(row.limit)))
        ->type_name("NUMBER")
        ->check(above_zero(most_counted))
        ->group("Limits of number");
}

void add(CLI::App& app, const SizeRow& row) {
    app.add_option(row.option, row.limit, with_default(row.help, size_text(row.limit)))
        ->type_name("BYTES")
        ->transform(CLI::AsSizeValue(false).description(""))
        ->check(above_zero(most_counted))
        ->group("Limits of size (K, M and G are understood)");
}

void describe_times(CLI::App& app, ServeOptions& options) {
    http::Limits& limits = options.listener.limits;
    http::LoginLimits& login = options.listener.login;
    const TimeRow rows[]{
        {"--timeout", options.timeout, "For a provider to answer"},
        {"--handshake-time", limits.handshake, "For a client to agree on TLS"},
        {"--header-time", limits.header, "For a request's header to arrive"},
        {"--body-time", limits.body, "For its body, and a second more for each --body-rate bytes"},
        {"--body-most", limits.body_most, "For its body in all"},
        {"--send-time", limits.sending, "For a client to take some of the reply"},
        {"--idle-time", limits.idle, "Between requests on a connection"},
        {"--linger-silent", limits.linger_silent, "For a client to close after its last reply, while it sends nothing"},
        {"--linger-time", limits.linger, "The same in all"},
        {"--drain-time", limits.drain, "For running requests when the server ends"},
        {"--login-penalty", login.penalties.failure, "That a failed login costs its address"},
        {"--login-tolerance", login.penalties.tolerated, "Of penalties before logins are refused"},
        {"--login-most", login.penalties.most, "To which penalties add up"},
        {"--login-remembered", login.remembered, "For which a right password is not hashed again"},
    };
    for (const TimeRow& row : rows)
        add(app, row);
}

void describe_context_times(CLI::App& app, server::Settings& settings) {
    for (const auto& [option, limit, help] :
         {std::tuple{"--context-time", &settings.context_timeout, "An open enumeration waits for its client"},
          {"--context-most", &settings.max_context_timeout, "The same, where the client asks for longer"}})
        app.add_option_function<unsigned>(
               option, [limit = limit](unsigned seconds) { *limit = std::chrono::seconds(seconds); },
               with_default(help, std::to_string(limit->count())))
            ->type_name("SECONDS")
            ->check(above_zero(longest_time))
            ->group("Limits of time");
}

void describe_numbers(CLI::App& app, ServeOptions& options) {
    http::Limits& limits = options.listener.limits;
    const CountRow counts[]{
        {"--connections", limits.connections, "Connections at once; idle ones make room"},
        {"--connections-per-address", limits.connections_per_address, "The same from one other machine"},
        {"--waiting", options.waiting, "Requests that wait for the provider"},
        {"--login-waiting", options.listener.login.waiting, "Passwords that wait to be hashed"},
        {"--login-addresses", options.listener.login.penalties.addresses, "Addresses whose failures are remembered"},
        {"--contexts", options.settings.max_contexts, "Open enumerations"},
        {"--pull-objects", options.settings.max_pull, "Objects in the answer to a pull"},
        {"--body-rate", limits.body_rate, "Bytes of a body that earn it a second"},
    };
    for (const CountRow& row : counts)
        add(app, row);
    app.add_option("--threads", options.threads,
                   with_default("Requests that the provider answers at once", std::to_string(options.threads)))
        ->type_name("NUMBER")
        ->check(above_zero(most_threads))
        ->group("Limits of number");
}

void describe_sizes(CLI::App& app, ServeOptions& options) {
    http::Limits& limits = options.listener.limits;
    const SizeRow sizes[]{
        {"--header-bytes", limits.header_bytes, "A request's header"},
        {"--body-bytes", limits.body_bytes, "Its body"},
        {"--reply-bytes", options.settings.max_reply, "A reply"},
        {"--replies-bytes", options.max_replies, "All replies that are under way"},
        {"--context-bytes", options.settings.max_context_bytes, "All open enumerations"},
    };
    for (const SizeRow& row : sizes)
        add(app, row);
}

} // namespace

void describe_limits(CLI::App& app, ServeOptions& options) {
    describe_times(app, options);
    describe_context_times(app, options.settings);
    describe_numbers(app, options);
    describe_sizes(app, options);
}

} // namespace cmpihost
