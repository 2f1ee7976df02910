// For measurements of replies that nobody reads.
#pragma once

#include "host/server/service.h"

#include <cstddef>
#include <string_view>

namespace cmpihost {

/// Counts what it takes.
struct CountingSink : server::ReplySink {
    void subject(const server::Subject& /*subject*/) override {}
    void append(std::string_view part) override { bytes += part.size(); }
    void discard() override { bytes = 0; }

    std::size_t bytes = 0;
};

} // namespace cmpihost
