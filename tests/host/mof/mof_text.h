// Small MOF texts, for tests.
#pragma once

#include "host/mof/schema.h"

#include <gtest/gtest.h>

namespace cmpihost::mof {

using Lines = std::vector<std::string>;

/// Reads a text that is to be accepted.
inline Schema read_mof(std::string_view text) {
    auto result = Schema::read_text("t.mof", text);
    if (const Error* error = std::get_if<Error>(&result)) {
        ADD_FAILURE() << error->text();
        return {};
    }
    return std::get<Schema>(std::move(result));
}

} // namespace cmpihost::mof
