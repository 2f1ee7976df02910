// Object paths as text: what is read can be written and read again.
#include "fuzz/invariant.h"
#include "host/cim/path_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    cmpihost::Object path;
    try {
        path = cmpihost::parse_path(text);
    } catch (const cmpihost::PathError& error) {
        fuzz::require(fuzz::is_one_line(error.what()), "an error is one line");
        return 0;
    }
    const std::string written = cmpihost::path_text(path);
    fuzz::require(cmpihost::path_text(cmpihost::parse_path(written)) == written, "a path reads back as it was written");
    return 0;
}
