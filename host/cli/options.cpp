#include "host/cli/options.h"

#include "host/cim/path_text.h"
#include "host/cli/parse_end.h"
#include "host/cli/programs.h"
#include "host/cli/request_words.h"
#include "host/cli/verbs.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace cmpihost {

namespace {

/// The command line as texts, before they are looked at.
struct Arguments {
    std::string provider;
    std::string name = "FCIPProvider";
    std::string scenario;
    std::string trace;
    std::string name_space = "root/cimv2";
    std::optional<std::string> format;
    std::vector<std::string> schema;
    std::string deviations;
    bool check = false;
    bool count = false;
    std::optional<double> repeat;
    std::string colour = "auto";
    bool no_fork = false;
    std::optional<double> timeout;
    std::optional<double> max_objects;
    bool tree = false;
    std::optional<std::string> graph_format;
    std::optional<double> limit;
    std::optional<std::string> ac, arc, ar, arr;
    std::string verb;
    std::string object;
    std::vector<std::string> properties;
};

constexpr std::size_t default_limit = 10000;
constexpr std::size_t default_max_objects = 1'000'000;

std::string help_row(std::string_view verb, std::string_view help) {
    std::string name = "  " + std::string(verb);
    name.resize(11, ' ');
    return name + std::string(help) + "\n";
}

std::string help_footer() {
    std::string text = "Verbs:\n";
    for (const Verb& verb : all_verbs())
        text += help_row(verb.name, verb.help);
    for (const Program& program : all_programs())
        if (!program.help.empty())
            text += help_row(program.name, program.help);
    return text +
           "\nOBJECT is Class, namespace:Class or //host/namespace:Class, each with or without keys:\n"
           "  'Class.Name=\"text\",Number=5,Flag=TRUE,Ref=\"Other.Name=\\\"text\\\"\"'\n"
           "also /namespace:Class and http://host/namespace:Class. A namespace in OBJECT goes before -n. Without a\n"
           "PROPERTY all are asked for; '' asks for none.\n"
           "A VALUE is a number, TRUE, FALSE, a \"text\", a path in quotes, or else a text as it stands.\n"
           "-o paths shows one path a line, in quotes, to paste or for\n"
           "  cmpihost ein Class -o paths | xargs -n 1 cmpihost gi\n"
           "\nThe provider's own standard output (its trace lines) is dropped unless --trace is given. The provider\n"
           "has a process of its own, so that a crash or a call of exit() is told like any other failure.\n"
           "\nclasses lists the classes of the MOF files that are not abstract, without those of a dmtf.mof. On a\n"
           "terminal, and with -o text, it is a table with keys and superclasses; elsewhere one name a line, for\n"
           "  for c in $(cmpihost classes); do cmpihost ein $c; done\n"
           "With -o mof it prints declarations that have the keys alone, with -o json one object.\n"
           "\n--check tells on standard error what is wrong with the answer, each finding once:\n"
           "  check: CLASS.NAME: type uint16, expected string (3 objects)\n"
           "\nExit status: 0 the operation succeeded, 1 it answered with a CIM error, 2 wrong usage, or a\n"
           "provider, scenario or schema that cannot be loaded, 3 the output could not be written, 4 the\n"
           "operation succeeded and --check found something, 5 the provider crashed, ended its process, threw an\n"
           "exception, or went beyond --timeout or --max-objects.\n";
}

void describe_schema_options(CLI::App& app, Arguments& arguments) {
    app.add_option("--schema", arguments.schema,
                   "MOF file of the classes; give several in the order of their declarations [dmtf.mof and fcip.mof of "
                   "the schema that is installed, or in the tree that this program was built in]")
        ->type_name("FILE")
        ->allow_extra_args(false)
        ->take_all();
    app.add_flag("--check", arguments.check, "Hold every object of the answer against the schema, see below");
    app.add_option(
           "--deviations", arguments.deviations,
           "Findings of --check to accept, one a line [deviations.txt beside the last MOF file, if there is one]")
        ->type_name("FILE");
    app.add_flag("--tree", arguments.tree, "List all classes under their superclasses (classes)");
    app.add_option("--limit", arguments.limit, "Most objects in a graph [" + std::to_string(default_limit) + "]")
        ->type_name("NUMBER");
}

void describe_provider_options(CLI::App& app, Arguments& arguments) {
    app.add_option(
           "--provider", arguments.provider,
           "Provider library [libFCIPProvider.so beside this program, in ../lib, where it is installed, or where the "
           "system looks]")
        ->type_name("FILE");
    app.add_option("--name", arguments.name, "What the names of its factories begin with")
        ->type_name("FACTORY_PREFIX")
        ->capture_default_str();
    app.add_option("--scenario", arguments.scenario,
                   "Scenario for the simulated switch under the provider [that of SWITCHSIM_SCENARIO, if the provider "
                   "takes one]")
        ->type_name("FILE");
    app.add_option("--trace", arguments.trace, "Where the provider's standard output goes; - is standard error")
        ->type_name("FILE");
    app.add_option("--timeout", arguments.timeout,
                   "Longest time until the next object or the end of a call, in seconds [none]")
        ->type_name("SECONDS");
    app.add_option("--max-objects", arguments.max_objects,
                   "Most objects that one call may return [" + std::to_string(default_max_objects) + "]")
        ->type_name("NUMBER");
    app.add_flag("--no-fork", arguments.no_fork,
                 "Run the provider in this process, as for a debugger; if it crashes, so does cmpihost");
}

void describe_output_options(CLI::App& app, Arguments& arguments) {
    app.add_option("-o", arguments.format,
                   "Output format: text, mof, json or paths; of a graph text, dot or json "
                   "[text, but see classes below]")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "mof", "json", "paths", "dot"}).description(""));
    app.add_option("--format", arguments.graph_format, "As -o, of a graph: text or dot [text]")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "dot"}).description(""));
    app.add_option("--color", arguments.colour, "Colours: auto (on a terminal), always or never")
        ->type_name("WHEN")
        ->capture_default_str()
        ->check(CLI::IsMember({"auto", "always", "never"}).description(""));
    app.add_flag("--count", arguments.count, "Show how many objects there are, instead of them");
    app.add_option("--repeat", arguments.repeat, "Ask so often, show the first answer and the times of all")
        ->type_name("NUMBER");
}

void describe_request_options(CLI::App& app, Arguments& arguments) {
    app.add_option("-n", arguments.name_space, "Namespace")->type_name("NAMESPACE")->capture_default_str();
    app.add_option("--ac", arguments.ac, "Association class (ai, ain); all asks once for each of the schema")
        ->type_name("CLASS");
    app.add_option("--arc", arguments.arc, "Result class (ai, ain, ri, rin)")->type_name("CLASS");
    app.add_option("--ar", arguments.ar, "Role of OBJECT (ai, ain, ri, rin)")->type_name("ROLE");
    app.add_option("--arr", arguments.arr, "Role of the result (ai, ain)")->type_name("ROLE");
    app.add_option("VERB", arguments.verb, "What to do, see below")->type_name("");
    app.add_option("OBJECT", arguments.object, "The class or instance to do it with; of xq also a whole query")
        ->type_name("");
    app.add_option("PROPERTY", arguments.properties,
                   "Properties to ask for, also as a list with commas, or NAME=VALUE for ci, mi and cm")
        ->type_name("")
        ->take_all();
}

void describe_options(CLI::App& app, Arguments& arguments) {
    app.option_defaults()->take_last();
    app.set_version_flag("--version", "cmpihost " CMPIHOST_VERSION);
    describe_provider_options(app, arguments);
    describe_schema_options(app, arguments);
    describe_output_options(app, arguments);
    describe_request_options(app, arguments);
    app.footer(help_footer());
}

/// The number of an option, or `otherwise` if it was not given.
std::size_t whole_number(const char* option, const char* what, std::optional<double> given, std::size_t otherwise) {
    if (!given)
        return otherwise;
    if (*given < 1 || *given > 1e12 || *given != std::floor(*given)) {
        std::ostringstream text;
        text << option << ": " << *given << " is no number of " << what << ", expected 1 or more";
        throw UsageError(text.str());
    }
    return static_cast<std::size_t>(*given);
}

double seconds(std::optional<double> given) {
    if (given && !(*given > 0 && *given <= 1e6))
        throw UsageError("--timeout: expected a number of seconds above 0, at most a million");
    return given.value_or(0);
}

void check_filters(const Arguments& arguments, Filters filters) {
    const bool references = filters != Filters::none;
    const bool associators = filters == Filters::associators;
    const auto check = [&arguments](const char* option, const std::optional<std::string>& value, bool allowed) {
        if (value && !allowed)
            throw UsageError(std::string(option) + " does not go with " + arguments.verb);
    };
    check("--ac", arguments.ac, associators);
    check("--arc", arguments.arc, references);
    check("--ar", arguments.ar, references);
    check("--arr", arguments.arr, associators);
}

void check_format(const Arguments& arguments, const Verb& verb) {
    const bool graph = verb.shape == Shape::graph;
    if (!graph && arguments.graph_format)
        throw UsageError("--format does not go with " + arguments.verb);
    const std::string format = arguments.format.value_or("text");
    const bool fits = format == "text" || format == "json" || (format == "dot" && graph) ||
                      (format == "mof" && !graph) || (format == "paths" && verb.shape == Shape::request);
    if (!fits)
        throw UsageError("-o " + format + " does not go with " + arguments.verb);
}

/// Refuses arguments that the verb has no use for.
void check_arguments(const Arguments& arguments, const Verb& verb) {
    const auto refuse_if = [&arguments](bool given, const char* what) {
        if (given)
            throw UsageError(std::string(what) + " does not go with " + arguments.verb);
    };
    const bool classes = verb.shape == Shape::classes;
    const bool graph = verb.shape == Shape::graph;
    refuse_if(classes && !arguments.object.empty(), "an OBJECT");
    refuse_if(classes && arguments.check, "--check");
    refuse_if(graph && !arguments.properties.empty(), "a PROPERTY");
    check_format(arguments, verb);
    refuse_if(!graph && arguments.limit, "--limit");
    refuse_if((!classes || arguments.format.value_or("text") != "text") && arguments.tree, "--tree");
    refuse_if(verb.shape != Shape::request && arguments.count, "--count");
    refuse_if(verb.shape != Shape::request && arguments.repeat, "--repeat");
    if (!arguments.check && !arguments.deviations.empty())
        throw UsageError("--deviations goes with --check only");
    if (arguments.format == "json" && (arguments.count || verb.name == "count"))
        throw UsageError("-o json does not go with a count");
    if (arguments.no_fork && (arguments.timeout || arguments.max_objects))
        throw UsageError("--timeout and --max-objects do not go with --no-fork");
    check_filters(arguments, verb.filters);
}

const Verb& verb_of(const Arguments& arguments) {
    if (arguments.verb.empty())
        throw UsageError("a VERB is needed");
    const Verb* verb = find_verb(arguments.verb);
    if (verb == nullptr)
        throw UsageError("unknown verb '" + arguments.verb + "'");
    if (verb->shape == Shape::request && arguments.object.empty() && verb->name != "count")
        throw UsageError(arguments.verb + " needs an OBJECT");
    check_arguments(arguments, *verb);
    return *verb;
}

Format format_of(const std::string& word) {
    return word == "json" ? Format::json : word == "mof" ? Format::mof : word == "paths" ? Format::paths : Format::text;
}

GraphFormat graph_format_of(const std::string& word) {
    return word == "json" ? GraphFormat::json : word == "dot" ? GraphFormat::dot : GraphFormat::text;
}

Colour colour_of(const std::string& word) {
    return word == "always" ? Colour::always : word == "never" ? Colour::never : Colour::automatic;
}

/// The scenario that was named, or else that of the environment, which a provider need not take.
void set_scenario(const Arguments& arguments, Options& options) {
    const char* from_environment = std::getenv("SWITCHSIM_SCENARIO");
    options.scenario_wanted = !arguments.scenario.empty();
    options.scenario = options.scenario_wanted || !from_environment ? arguments.scenario : from_environment;
}

void set_limits(const Arguments& arguments, Options& options) {
    options.limit = whole_number("--limit", "objects", arguments.limit, default_limit);
    options.max_objects = whole_number("--max-objects", "objects", arguments.max_objects, default_max_objects);
    options.repeat = whole_number("--repeat", "times", arguments.repeat, 1);
    options.timeout = seconds(arguments.timeout);
}

/// What to ask, of the verbs that ask.
void set_request(const Arguments& arguments, Options& options) {
    Request& request = options.request;
    request.operation = options.verb->operation;
    const bool associators = options.verb->filters == Filters::associators;
    options.every_association = associators && arguments.ac == "all";
    request.assoc_class = associators ? arguments.ac : arguments.arc;
    if (associators)
        request.result_class = arguments.arc;
    request.role = arguments.ar;
    request.result_role = arguments.arr;
    if (options.verb->shape == Shape::request && !arguments.object.empty())
        read_request(arguments.object, arguments.properties, options, request);
    else if (!arguments.object.empty())
        options.start = read_object(arguments.object, arguments.name_space, options);
}

Options options_for(const Arguments& arguments) {
    Options options;
    options.verb = &verb_of(arguments);
    options.provider = arguments.provider.empty() ? default_provider() : arguments.provider;
    options.name = arguments.name;
    options.trace = arguments.trace;
    options.format = format_of(arguments.format.value_or(""));
    options.format_given = arguments.format.has_value();
    options.schema = arguments.schema;
    options.deviations = arguments.deviations;
    options.check = arguments.check;
    options.count = arguments.count || options.verb->name == "count";
    options.colour = colour_of(arguments.colour);
    options.fork = !arguments.no_fork;
    options.tree = arguments.tree;
    options.graph_format = graph_format_of(arguments.graph_format.value_or(arguments.format.value_or("")));
    options.name_space = arguments.name_space;
    set_scenario(arguments, options);
    set_limits(arguments, options);
    set_request(arguments, options);
    return options;
}

CommandLine ended(ParseEnd end) {
    return {std::nullopt, end.exit_code, std::move(end.output), std::move(end.error)};
}

CommandLine usage_error(const std::string& what) {
    return ended(usage_end("cmpihost", what));
}

} // namespace

std::string default_provider() {
    std::string file = "libFCIPProvider.so";
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const auto& candidate :
         {folder / file, folder / ".." / "lib" / file, folder / CMPIHOST_PROVIDER_FOLDER / file})
        if (std::filesystem::exists(candidate, error))
            return candidate.lexically_normal().string();
    return file;
}

CommandLine read_command_line(const std::vector<std::string>& arguments) {
    CLI::App app("Loads a CMPI provider library as a CIM server does, and shows what it answers to one request.",
                 "cmpihost");
    Arguments texts;
    describe_options(app, texts);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return {options_for(texts), exit_ok, {}, {}};
    } catch (const CLI::ParseError& error) {
        return ended(parse_end(app, error, "cmpihost"));
    } catch (const UsageError& error) {
        return usage_error(error.what());
    } catch (const PathError& error) {
        return usage_error(error.what());
    } catch (const std::runtime_error& error) {
        return {std::nullopt, exit_usage, {}, "cmpihost: " + std::string(error.what()) + "\n"};
    }
}

} // namespace cmpihost
