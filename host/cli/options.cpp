#include "host/cli/options.h"

#include "host/cim/path_text.h"
#include "host/cli/programs.h"
#include "host/cli/verbs.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <sstream>
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
    std::optional<std::string> graph_format;
    std::optional<std::size_t> limit;
    std::optional<std::string> ac, arc, ar, arr;
    std::string verb;
    std::string object;
    std::vector<std::string> properties;
};

constexpr std::size_t default_limit = 10000;

class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

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
           "A namespace in OBJECT goes before -n. Without a PROPERTY all are asked for; '' asks for none.\n"
           "A VALUE is a number, TRUE, FALSE, a \"text\", a path in quotes, or else a text as it stands.\n"
           "\nThe provider's own standard output (its trace lines) is dropped unless --trace is given.\n"
           "\nclasses lists the classes of the MOF files that are not abstract, without those of a dmtf.mof. On a\n"
           "terminal, and with -o text, it is a table with keys and superclasses; elsewhere one name a line, for\n"
           "  for c in $(cmpihost classes); do cmpihost ein $c; done\n"
           "With -o mof it prints declarations that have the keys alone, with -o json one object.\n"
           "\n--check tells on standard error what is wrong with the answer, each finding once:\n"
           "  check: CLASS.NAME: type uint16, expected string (3 objects)\n"
           "\nExit status: 0 the operation succeeded, 1 it answered with a CIM error, 2 wrong usage, or a\n"
           "provider, scenario or schema that cannot be loaded, 3 the output could not be written, 4 the\n"
           "operation succeeded and --check found something.\n";
}

void describe_schema_options(CLI::App& app, Arguments& arguments) {
    app.add_option("--schema", arguments.schema,
                   "MOF file of the classes; give several in the order of their declarations [dmtf.mof and fcip.mof of "
                   "the schema that is installed, or in the tree that this program was built in]")
        ->type_name("FILE")
        ->allow_extra_args(false);
    app.add_flag("--check", arguments.check, "Hold every object of the answer against the schema, see below");
    app.add_option(
           "--deviations", arguments.deviations,
           "Findings of --check to accept, one a line [deviations.txt beside the last MOF file, if there is one]")
        ->type_name("FILE");
    app.add_option("--format", arguments.graph_format, "Form of the graph: text or dot [text]")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "dot"}).description(""));
    app.add_option("--limit", arguments.limit, "Most objects in a graph [" + std::to_string(default_limit) + "]")
        ->type_name("NUMBER");
}

void describe_options(CLI::App& app, Arguments& arguments) {
    app.set_version_flag("--version", "cmpihost " CMPIHOST_VERSION);
    app.add_option(
           "--provider", arguments.provider,
           "Provider library [libFCIPProvider.so beside this program, in ../lib, where it is installed, or where the "
           "system looks]")
        ->type_name("FILE");
    app.add_option("--name", arguments.name, "What the names of its factories begin with")
        ->type_name("FACTORY_PREFIX")
        ->capture_default_str();
    app.add_option("--scenario", arguments.scenario, "Scenario for the simulated switch under the provider")
        ->type_name("FILE")
        ->envname("SWITCHSIM_SCENARIO");
    app.add_option("-n", arguments.name_space, "Namespace")->type_name("NAMESPACE")->capture_default_str();
    app.add_option("-o", arguments.format, "Output format: text, mof or json [text, but see classes below]")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "mof", "json"}).description(""));
    app.add_option("--trace", arguments.trace, "Where the provider's standard output goes; - is standard error")
        ->type_name("FILE");
    app.add_option("--ac", arguments.ac, "Association class (ai, ain)")->type_name("CLASS");
    app.add_option("--arc", arguments.arc, "Result class (ai, ain, ri, rin)")->type_name("CLASS");
    app.add_option("--ar", arguments.ar, "Role of OBJECT (ai, ain, ri, rin)")->type_name("ROLE");
    app.add_option("--arr", arguments.arr, "Role of the result (ai, ain)")->type_name("ROLE");
    describe_schema_options(app, arguments);
    app.add_option("VERB", arguments.verb, "What to do, see below")->type_name("");
    app.add_option("OBJECT", arguments.object, "The class or instance to do it with")->type_name("");
    app.add_option("PROPERTY", arguments.properties, "Properties to ask for, or NAME=VALUE for ci, mi and cm")
        ->type_name("");
    app.footer(help_footer());
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
    refuse_if(graph && arguments.format, "-o");
    refuse_if(!graph && arguments.graph_format, "--format");
    refuse_if(!graph && arguments.limit, "--limit");
    if (verb.shape == Shape::request && !arguments.check && !arguments.schema.empty())
        throw UsageError("--schema goes with classes, graph or --check only");
    if (!arguments.check && !arguments.deviations.empty())
        throw UsageError("--deviations goes with --check only");
    if (arguments.limit == 0)
        throw UsageError("--limit: 0 is no number of objects, expected 1 or more");
    check_filters(arguments, verb.filters);
}

/// Gives the namespace of the request to references that have none.
Object in_name_space(Object object, const std::string& name_space) {
    if (object.name_space.empty())
        object.name_space = name_space;
    for (Property& key : object.keys)
        if (const auto* reference = std::get_if<Value::Reference>(&key.value.data))
            key.value.data = std::make_shared<const Object>(in_name_space(**reference, object.name_space));
    return object;
}

std::string query_for(const Object& path, const std::optional<std::vector<std::string>>& properties) {
    std::string columns;
    for (const std::string& property : properties.value_or(std::vector<std::string>()))
        columns += (columns.empty() ? "" : ", ") + property;
    return "SELECT " + (columns.empty() ? "*" : columns) + " FROM " + path.class_name;
}

/// A value as a key of an object path has it; what is none there is a text.
Property named_value(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == 0 || equals == std::string::npos)
        throw UsageError("'" + text + "': expected NAME=VALUE");
    const std::string name = text.substr(0, equals);
    try {
        const Object object = parse_path("C." + text);
        if (object.keys.size() == 1)
            return object.keys.front();
    } catch (const PathError&) { // a text without quotes
    }
    return {name, "string", {text.substr(equals + 1)}};
}

/// What follows OBJECT, of the verbs that bring values.
void read_values(const std::vector<std::string>& words, Request& request) {
    auto next = words.begin();
    if (request.operation == Request::Operation::invoke_method) {
        if (next == words.end())
            throw UsageError("cm needs a METHOD after OBJECT");
        request.method = *next++;
    }
    auto& values = request.operation == Request::Operation::invoke_method ? request.arguments : request.values;
    std::transform(next, words.end(), std::back_inserter(values), named_value);
    if (request.operation != Request::Operation::modify_instance || values.empty())
        return;
    request.properties.emplace(); // what is not named stays
    for (const Property& value : values)
        request.properties->push_back(value.name);
}

bool brings_values(Request::Operation operation) {
    using enum Request::Operation;
    return operation == create_instance || operation == modify_instance || operation == invoke_method;
}

Request request_for(const Arguments& arguments, const Verb& verb) {
    Request request;
    request.operation = verb.operation;
    request.path = in_name_space(parse_path(arguments.object), arguments.name_space);
    const bool associators = verb.filters == Filters::associators;
    request.assoc_class = associators ? arguments.ac : arguments.arc;
    if (associators)
        request.result_class = arguments.arc;
    request.role = arguments.ar;
    request.result_role = arguments.arr;
    if (brings_values(verb.operation)) {
        read_values(arguments.properties, request);
    } else if (!arguments.properties.empty()) {
        request.properties = arguments.properties;
        std::erase(*request.properties, "");
    }
    request.query = query_for(request.path, request.properties);
    return request;
}

const Verb& verb_of(const Arguments& arguments) {
    if (arguments.verb.empty())
        throw UsageError("a VERB is needed");
    const Verb* verb = find_verb(arguments.verb);
    if (verb == nullptr)
        throw UsageError("unknown verb '" + arguments.verb + "'");
    if (verb->shape == Shape::request && arguments.object.empty())
        throw UsageError(arguments.verb + " needs an OBJECT");
    check_arguments(arguments, *verb);
    return *verb;
}

Options options_for(const Arguments& arguments) {
    Options options;
    options.verb = &verb_of(arguments);
    options.provider = arguments.provider.empty() ? default_provider() : arguments.provider;
    options.name = arguments.name;
    options.scenario = arguments.scenario;
    options.trace = arguments.trace;
    options.format = arguments.format == "json" ? Format::json : arguments.format == "mof" ? Format::mof : Format::text;
    options.format_given = arguments.format.has_value();
    options.schema = arguments.schema;
    options.deviations = arguments.deviations;
    options.check = arguments.check;
    options.graph_format = arguments.graph_format == "dot" ? GraphFormat::dot : GraphFormat::text;
    options.limit = arguments.limit.value_or(default_limit);
    options.name_space = arguments.name_space;
    if (options.verb->shape == Shape::request)
        options.request = request_for(arguments, *options.verb);
    else if (!arguments.object.empty())
        options.start = in_name_space(parse_path(arguments.object), arguments.name_space);
    return options;
}

CommandLine usage_error(const std::string& what) {
    return {std::nullopt, exit_usage, {}, "cmpihost: " + what + "\nTry cmpihost --help.\n"};
}

/// Help, version or a wrong option.
CommandLine stopped(const CLI::App& app, const CLI::ParseError& error) {
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success))
        return usage_error(error.what());
    std::ostringstream output;
    std::ostringstream unused;
    app.exit(error, output, unused);
    return {std::nullopt, exit_ok, output.str(), {}};
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
        return stopped(app, error);
    } catch (const UsageError& error) {
        return usage_error(error.what());
    } catch (const PathError& error) {
        return usage_error(error.what());
    }
}

} // namespace cmpihost
