#include "host/cli/serve_options.h"

#include "host/cli/options.h"
#include "host/cli/parse_end.h"
#include "host/cli/schema_files.h"
#include "host/cli/serve_limits.h"
#include "host/cli/streams.h"
#include "host/http/address.h"

#include <CLI/CLI.hpp>

#include <filesystem>

namespace cmpihost {

namespace {

constexpr std::uint16_t http_port = 5988;
constexpr std::uint16_t https_port = 5989;

/// What needs a look before it is an option.
struct Texts {
    std::vector<std::string> listen;
    std::vector<std::string> tls;
    bool no_tls = false;
    bool no_users = false;
    std::vector<std::string> providers;
    std::vector<std::string> names;
};

std::string footer() {
    return "Listens on 127.0.0.1 and [::1] if no --listen is given. An address that other machines reach needs --tls "
           "and\n"
           "--users, or --no-tls and --no-users, which say that it is meant to be open.\n"
           "\nSIGHUP reads certificate, key and users anew and opens the log again. SIGTERM and SIGINT end the server\n"
           "after the requests that are under way. Exit status: 0 it was ended, 2 wrong usage, or something that\n"
           "cannot be used.\n";
}

void describe_listener(CLI::App& app, Texts& texts, ServeOptions& options) {
    app.add_option("--listen", texts.listen,
                   "Address, and port [5988, with --tls 5989]; may be repeated; port 0 takes any")
        ->type_name("ADDRESS[:PORT]")
        ->allow_extra_args(false);
    auto* tls = app.add_option("--tls", texts.tls, "Serve HTTPS with this certificate and key, PEM files")
                    ->type_name("CERT KEY")
                    ->expected(2);
    app.add_flag("--no-tls", texts.no_tls, "Serve HTTP on any address")->excludes(tls);
    auto* users = app.add_option("--users", options.listener.users, "Users who may ask, as cmpihost passwd writes them")
                      ->type_name("FILE");
    app.add_flag("--no-users", texts.no_users, "Serve anybody on any address")->excludes(users);
    app.add_option("--log", options.log.file, "Where the log is appended [standard error]")->type_name("FILE");
    app.add_flag("--log-json", options.log.json, "Each line of the log is a JSON object");
    app.add_flag("--quiet", options.log.quiet, "No line per request in the log");
}

void describe_providers(CLI::App& app, Texts& texts, ServeOptions& options) {
    server::Settings& settings = options.settings;
    app.add_option(
           "--provider", texts.providers,
           "Provider library; may be repeated [libFCIPProvider.so and its registration, as they are installed, with "
           "the simulated switch's own provider, if that is in the same folder]")
        ->type_name("FILE")
        ->allow_extra_args(false);
    app.add_option("--name", texts.names,
                   "What the names of its factories begin with, one for each --provider in order")
        ->type_name("FACTORY_PREFIX")
        ->allow_extra_args(false)
        ->default_str(default_name);
    app.add_option("--registration", settings.registrations,
                   "Which provider serves which class, in the form of sfcb; may be repeated")
        ->type_name("FILE")
        ->allow_extra_args(false);
    app.add_option("--schema", settings.schema,
                   "MOF file of the classes; give several in the order of their declarations [dmtf.mof and fcip.mof]")
        ->type_name("FILE")
        ->allow_extra_args(false);
    app.add_option("--scenario", settings.scenario, "Scenario for the simulated switch under the provider")
        ->type_name("FILE")
        ->envname("SWITCHSIM_SCENARIO");
    app.add_option("-n", settings.name_space, "Namespace of providers without registration")
        ->type_name("NAMESPACE")
        ->capture_default_str();
    app.add_option("--trace", options.trace, "Where the providers' standard output goes; - is standard error")
        ->type_name("FILE");
    app.add_flag("--in-process", options.in_process, "Run the providers in this process, for debuggers");
}

void describe_pages(CLI::App& app, ServeOptions& options) {
    app.add_option("--metrics", options.site.metrics,
                   "Classes whose counters and gauges /metrics has [those that the views name]")
        ->type_name("CLASS...")
        ->group("Pages and metrics");
    app.add_option("--views", options.site.views,
                   "How classes are shown and measured [views.toml beside the last schema file]")
        ->type_name("FILE")
        ->group("Pages and metrics");
    app.add_option("--host", options.listener.hosts,
                   "Another name that browsers may know this server by; may be repeated [localhost and its addresses]")
        ->type_name("NAME")
        ->allow_extra_args(false)
        ->group("Pages and metrics");
    app.add_option("--metrics-user", options.listener.metrics_user, "A user who gets /metrics and nothing else")
        ->type_name("NAME")
        ->group("Pages and metrics");
}

void set_endpoints(const Texts& texts, ServeOptions& options) {
    http::ListenerOptions& listener = options.listener;
    if (!texts.tls.empty())
        listener.tls = http::TlsFiles{texts.tls[0], texts.tls[1]};
    const std::uint16_t port = listener.tls ? https_port : http_port;
    for (const std::string& text : texts.listen)
        listener.endpoints.push_back(http::read_endpoint(text, port));
    if (texts.listen.empty())
        listener.endpoints = {{"127.0.0.1", port, false}, {"::1", port, true}};
    for (std::size_t index = 0; index < texts.listen.size(); ++index) {
        if (http::is_loopback(listener.endpoints[index]))
            continue;
        const std::string what = "--listen " + texts.listen[index] + ": other machines can reach it, expected ";
        if (!listener.tls && !texts.no_tls)
            throw std::runtime_error(what + "--tls CERT KEY, or --no-tls");
        if (listener.users.empty() && !texts.no_users)
            throw std::runtime_error(what + "--users FILE, or --no-users");
    }
    if (!listener.metrics_user.empty() && listener.users.empty()) // else everybody would get everything
        throw std::runtime_error("--metrics-user " + listener.metrics_user + ": expected --users FILE beside it");
}

void set_schema(server::Settings& settings) {
    if (settings.schema.empty())
        settings.schema = default_schema_files();
    std::filesystem::path folder = default_schema_folder();
    if (folder.empty())
        folder = std::filesystem::path(settings.schema.back()).parent_path();
    settings.interop_schema = (folder / "interop.mof").string();
}

void set_views(ServeOptions& options) {
    if (!options.site.views.empty())
        return;
    const auto beside = std::filesystem::path(options.settings.schema.back()).parent_path() / "views.toml";
    std::error_code error;
    if (std::filesystem::exists(beside, error))
        options.site.views = beside.string();
}

/// The provider beside the program, with the registration beside its schema, and what is loaded with it.
void set_default_provider(server::Settings& settings, pages::CommandWords& command) {
    const std::filesystem::path library = default_provider();
    const std::filesystem::path registration =
        std::filesystem::path(default_schema_folder()) / "registration" / "sfcb.reg";
    std::error_code error;
    if (!std::filesystem::exists(registration, error)) {
        settings.providers = {{library.string(), default_name}};
        return;
    }
    settings.registrations = {registration.string()};
    if (const std::string beside = registration_beside(library.string()); !beside.empty())
        settings.registrations.push_back(beside);
    settings.provider_folder = library.parent_path().string();
    command.default_provider = true;
}

void set_providers(const Texts& texts, ServeOptions& options) {
    server::Settings& settings = options.settings;
    std::vector<std::string> providers = texts.providers;
    if (providers.empty() && !texts.names.empty())
        providers = {default_provider()};
    if (texts.names.size() > providers.size())
        throw std::runtime_error("--name: there are more names than providers");
    for (std::size_t index = 0; index < providers.size(); ++index)
        settings.providers.push_back(
            {providers[index], index < texts.names.size() ? texts.names[index] : default_name});
    if (settings.providers.empty() && settings.registrations.empty())
        set_default_provider(settings, options.site.command);
}

constexpr const char* program = "cmpihost serve";

ServeLine ended(ParseEnd end) {
    return {std::nullopt, end.exit_code, std::move(end.output), std::move(end.error)};
}

} // namespace

ServeLine read_serve_line(const std::vector<std::string>& arguments) {
    CLI::App app("Serves the instances of CMPI providers to WBEM clients.", program);
    Texts texts;
    ServeOptions options;
    describe_listener(app, texts, options);
    describe_providers(app, texts, options);
    describe_pages(app, options);
    describe_limits(app, options);
    app.footer(footer());
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        set_endpoints(texts, options);
        options.site.command = {false, default_name, options.settings.schema, options.settings.scenario};
        set_schema(options.settings);
        set_views(options);
        set_providers(texts, options);
    } catch (const CLI::ParseError& error) {
        return ended(parse_end(app, error, program));
    } catch (const std::runtime_error& error) {
        return ended(usage_end(program, error.what()));
    }
    options.arguments = arguments;
    options.site.timeout = options.timeout;
    return {std::move(options), exit_ok, {}, {}};
}

} // namespace cmpihost
