// MOF text: read whole or refused in one line.
#include "fuzz/invariant.h"
#include "host/mof/schema.h"

#include <algorithm>
#include <string>

namespace {

/// Included files would be read from this machine.
bool includes(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), cmpihost::lower);
    return lower.find("include") != std::string::npos;
}

void check(const cmpihost::mof::Schema& schema) {
    for (const auto& declaration : schema.classes()) {
        fuzz::require(schema.find(declaration.name) == &declaration, "a class is found by its name");
        fuzz::require(declaration.superclass.empty() || schema.is_a(declaration.name, declaration.superclass),
                      "a class derives from its superclass");
        for (const auto& property : declaration.properties)
            fuzz::require(declaration.property(property.name) == &property, "a property is found by its name");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (includes(text))
        return 0;
    const auto read = cmpihost::mof::Schema::read_text("classes.mof", text);
    if (const auto* error = std::get_if<cmpihost::mof::Error>(&read)) {
        const std::string message = error->text();
        fuzz::require(fuzz::is_one_line(message) && message.starts_with("classes.mof:"),
                      "an error is one line that begins with the file");
        return 0;
    }
    check(std::get<cmpihost::mof::Schema>(read));
    return 0;
}
