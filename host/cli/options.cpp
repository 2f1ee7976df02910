#include "host/cli/options.h"

#include "host/cim/path_text.h"
#include "host/cli/arguments.h"
#include "host/cli/programs.h"
#include "host/cli/request_words.h"
#include "host/cli/verbs.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace cmpihost {

namespace {

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

void set_provider(const Arguments& arguments, Options& options) {
    options.provider = arguments.provider.empty() ? default_provider() : arguments.provider;
    options.name = arguments.name.value_or(default_name);
    if (arguments.provider.empty() && !arguments.name)
        options.beside = registration_beside(options.provider);
}

Options options_for(const Arguments& arguments) {
    Options options;
    options.verb = &verb_of(arguments);
    set_provider(arguments, options);
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
    constexpr std::array folders{".", "../lib", CMPIHOST_PROVIDER_FOLDERS};
    std::string file = "libFCIPProvider.so";
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const char* folder : folders)
        if (const auto candidate = program / folder / file; std::filesystem::exists(candidate, error))
            return candidate.lexically_normal().string();
    return file;
}

std::string registration_beside(const std::string& provider) {
    const std::filesystem::path folder = std::filesystem::path(provider).parent_path();
    const std::filesystem::path file = folder / "switchsimProvider.reg";
    std::error_code error;
    return !folder.empty() && std::filesystem::exists(file, error) ? file.string() : "";
}

CommandLine read_command_line(const std::vector<std::string>& words) {
    Arguments arguments;
    if (std::optional<ParseEnd> end = read_arguments(words, arguments))
        return ended(std::move(*end));
    try {
        return {options_for(arguments), exit_ok, {}, {}};
    } catch (const UsageError& error) {
        return usage_error(error.what());
    } catch (const PathError& error) {
        return usage_error(error.what());
    } catch (const std::runtime_error& error) {
        return {std::nullopt, exit_usage, {}, "cmpihost: " + std::string(error.what()) + "\n"};
    }
}

} // namespace cmpihost
