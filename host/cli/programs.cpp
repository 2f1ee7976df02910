#include "host/cli/programs.h"

#include "host/cli/complete_verb.h"
#include "host/cli/help_verb.h"
#include "host/cli/passwd_verb.h"
#include "host/cli/serve_verb.h"
#include "host/cli/worker_verb.h"

#include <algorithm>
#include <array>

namespace cmpihost {

namespace {

constexpr std::array programs{
    Program{"serve", "answer WBEM clients over HTTP; cmpihost serve --help tells more", serve, true},
    Program{"passwd", "set a user's password for serve; cmpihost passwd --help tells more", set_password},
    Program{"help", "tell how one verb is used: cmpihost help VERB", help},
    Program{"complete", {}, complete}, // for shells
    Program{"worker", {}, work, true},
};

} // namespace

std::span<const Program> all_programs() {
    return programs;
}

const Program* find_program(std::string_view name) {
    const auto* found = std::ranges::find(programs, name, &Program::name);
    return found == programs.end() ? nullptr : found;
}

} // namespace cmpihost
