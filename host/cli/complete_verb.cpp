#include "host/cli/complete_verb.h"

#include "host/cli/help_verb.h"
#include "host/cli/programs.h"
#include "host/cli/schema_files.h"
#include "host/cli/verbs.h"
#include "host/mof/provider_classes.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace cmpihost {

namespace {

using Words = std::vector<std::string>;

Words verb_names() {
    Words names;
    for (const Verb& verb : all_verbs())
        names.emplace_back(verb.name);
    for (const Program& program : all_programs())
        if (!program.help.empty())
            names.emplace_back(program.name);
    return names;
}

/// The verb among the words before the last; empty if there is none yet.
std::string verb_in(const Words& words) {
    const Words names = verb_names();
    const auto is_verb = [&names](const std::string& word) { return std::ranges::count(names, word) > 0; };
    const auto found = std::find_if(words.begin(), words.end() - 1, is_verb);
    return found == words.end() - 1 ? std::string() : *found;
}

/// An option as help has it.
struct KnownOption {
    std::string name;
    bool takes_value;
};

/// Each option begins a line of the help text: "  -h,--help   Print ...", "  --schema FILE   MOF file ...".
std::vector<KnownOption> options_in(const std::string& help) {
    std::vector<KnownOption> options;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("  -"))
            continue;
        const std::size_t end = line.find(' ', 2);
        const bool takes_value = end != std::string::npos && end + 1 < line.size() && line[end + 1] != ' ';
        std::istringstream names(line.substr(2, end - 2));
        for (std::string name; std::getline(names, name, ',');)
            options.push_back({name, takes_value});
    }
    return options;
}

/// The option whose value the last word is; empty if it is none's.
std::string option_before(const Words& words, const std::vector<KnownOption>& options) {
    if (words.size() < 2)
        return {};
    const auto is_it = [&words](const KnownOption& option) {
        return option.takes_value && option.name == words[words.size() - 2];
    };
    return std::ranges::any_of(options, is_it) ? words[words.size() - 2] : std::string();
}

/// Of the schema that the words name, or else the default one.
Words class_names(const Words& words, bool associations_alone) {
    Options options;
    for (std::size_t i = 0; i + 2 < words.size(); ++i)
        if (words[i] == "--schema")
            options.schema.push_back(words[i + 1]);
    const mof::Schema schema = load_schema(options);
    Words names;
    for (const mof::ClassDeclaration& declaration : schema.classes())
        if (mof::is_provider_class(declaration) && (declaration.association || !associations_alone))
            names.push_back(declaration.name);
    return names;
}

Words values_of(const std::string& option, const std::string& verb, const Words& words) {
    if (option == "-o")
        return verb == "graph" ? Words{"text", "dot", "json"} : Words{"text", "mof", "json", "paths"};
    if (option == "--format")
        return {"text", "dot"};
    if (option == "--color")
        return {"auto", "always", "never"};
    if (option == "--arc")
        return class_names(words, false);
    if (option != "--ac")
        return {};
    Words names = class_names(words, true);
    names.emplace_back("all");
    return names;
}

/// The words, each behind the same beginning.
Words behind(const std::string& beginning, const Words& words) {
    Words whole;
    for (const std::string& word : words)
        whole.push_back(beginning + word);
    return whole;
}

/// Classes behind the namespace that the word begins with, if it does.
Words objects_for(const std::string& word, const Words& words) {
    const std::size_t colon = word.rfind(':');
    const std::string name_space = colon == std::string::npos ? "" : word.substr(0, colon + 1);
    return behind(name_space, class_names(words, false));
}

/// All that may stand there, whatever the last word begins with.
Words candidates(const Words& words) {
    const std::string& last = words.back();
    const std::string verb = verb_in(words);
    const std::vector<KnownOption> options = options_in(help_text(verb));
    const std::size_t equals = last.starts_with("--") ? last.find('=') : std::string::npos;
    if (equals != std::string::npos) {
        const std::string option = last.substr(0, equals);
        return behind(option + "=", values_of(option, verb, words));
    }
    if (const std::string option = option_before(words, options); !option.empty())
        return values_of(option, verb, words);
    if (last.starts_with("-")) {
        Words names;
        for (const KnownOption& option : options)
            names.push_back(option.name);
        return names;
    }
    const bool is_first = words.size() >= 2 && words[words.size() - 2] == verb;
    if (verb.empty() || (verb == "help" && is_first))
        return verb_names();
    const bool wants_object = find_verb(verb) != nullptr && !find_verb(verb)->words.empty();
    return wants_object && is_first ? objects_for(last, words) : Words();
}

} // namespace

Words completions(const Words& words) {
    if (words.empty())
        return {};
    Words fitting;
    for (const std::string& candidate : candidates(words))
        if (candidate.starts_with(words.back()))
            fitting.push_back(candidate);
    return fitting;
}

int complete(const Words& words, const Streams& streams) {
    std::string text;
    try {
        for (const std::string& word : completions(words))
            text += word + "\n";
    } catch (const std::runtime_error&) { // without a schema there are no classes to offer
    }
    return print(streams, text);
}

} // namespace cmpihost
