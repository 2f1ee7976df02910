#include "host/cli/help_verb.h"

#include "host/cli/arguments.h"
#include "host/cli/programs.h"
#include "host/cli/verbs.h"

#include <cstdlib>

namespace cmpihost {

namespace {

/// What a verb with a command line of its own prints about it.
std::string help_of(const Program& program) {
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* memory = open_memstream(&text, &size);
    if (memory == nullptr)
        return {};
    program.run({"--help"}, {memory, memory});
    std::fclose(memory);
    std::string help(text, size);
    std::free(text);
    return help;
}

std::string general_help() {
    Arguments unused;
    return read_arguments({"--help"}, unused)->output;
}

} // namespace

std::string help_text(const std::string& verb) {
    if (verb.empty() || verb == "help")
        return general_help();
    if (const Verb* found = find_verb(verb))
        return verb_help(*found);
    const Program* program = find_program(verb);
    return program == nullptr || program->help.empty() ? std::string() : help_of(*program);
}

int help(const std::vector<std::string>& words, const Streams& streams) {
    const std::string verb = words.empty() ? std::string() : words.front();
    const std::string text = help_text(verb == "--help" ? std::string() : verb);
    if (!text.empty() && words.size() <= 1)
        return print(streams, text);
    const std::string what = text.empty() ? "help: unknown verb '" + verb + "'" : "help: expected one VERB";
    return refuse(streams, what);
}

} // namespace cmpihost
