// The header Authorization: credentials within limits, or none.
#include "host/http/basic.h"

#include "fuzz/invariant.h"

#include <algorithm>

namespace {

using namespace cmpihost::http;

bool is_clean(std::string_view text) {
    return std::ranges::none_of(text, [](unsigned char c) { return c < 0x20 || c == 0x7f; });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string header(reinterpret_cast<const char*>(data), size);
    for (const std::string& text : {header, "Basic " + header}) {
        const auto read = read_basic(text);
        if (!read)
            continue;
        const std::string_view password = read->password.view();
        fuzz::require(read->user.size() + 1 + password.size() <= max_credentials && password.size() <= max_password,
                      "credentials are as long as they may be at most");
        fuzz::require(read->user.find(':') == std::string::npos, "a user has no colon");
        fuzz::require(is_clean(read->user) && is_clean(password), "there are no control characters");
    }
    return 0;
}
