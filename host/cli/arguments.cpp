#include "host/cli/arguments.h"

#include "host/cli/options.h"
#include "host/cli/programs.h"
#include "host/cli/verbs.h"

#include <CLI/CLI.hpp>

#include <cctype>

namespace cmpihost {

namespace {

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
           "system looks; with the simulated switch's own provider, if that is in the same folder]")
        ->type_name("FILE");
    app.add_option("--name", arguments.name, "What the names of its factories begin with")
        ->type_name("FACTORY_PREFIX")
        ->default_str(default_name);
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

/// Whether an option has a meaning for a verb.
bool goes_with(const std::string& option, const Verb& verb) {
    const auto is_one_of = [&option](auto... names) { return ((option == names) || ...); };
    const bool asks = verb.shape != Shape::classes;
    const bool graph = verb.shape == Shape::graph;
    if (is_one_of("VERB", "OBJECT", "PROPERTY"))
        return false; // they stand in the line of usage
    if (is_one_of("--ac", "--arr"))
        return verb.filters == Filters::associators;
    if (is_one_of("--arc", "--ar"))
        return verb.filters != Filters::none;
    if (is_one_of("--format", "--limit"))
        return graph;
    if (is_one_of("--tree"))
        return !asks;
    if (is_one_of("--count", "--repeat"))
        return verb.shape == Shape::request;
    if (is_one_of("--version"))
        return false;
    return asks || is_one_of("-o", "--schema", "--color", "--help");
}

} // namespace

std::optional<ParseEnd> read_arguments(const std::vector<std::string>& words, Arguments& arguments) {
    CLI::App app("Loads a CMPI provider library as a CIM server does, and shows what it answers to one request.",
                 "cmpihost");
    describe_options(app, arguments);
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        return parse_end(app, error, "cmpihost");
    }
}

std::string verb_help(const Verb& verb) {
    const std::string words = std::string(verb.name) + (verb.words.empty() ? "" : " ") + std::string(verb.words);
    std::string help(verb.help);
    help.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(help.front())));
    CLI::App app(help + ".", "cmpihost " + words);
    Arguments unused;
    describe_options(app, unused);
    for (CLI::Option* option : app.get_options({}))
        if (!goes_with(option->get_name(), verb))
            app.remove_option(option);
    app.footer("cmpihost --help tells how an OBJECT and a VALUE are written, and what the exit status means.");
    return app.help();
}

} // namespace cmpihost
