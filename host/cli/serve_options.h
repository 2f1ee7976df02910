// The command line of `cmpihost serve` as plain values.
#pragma once

#include "host/http/options.h"
#include "host/pages/site_settings.h"
#include "host/server/settings.h"

namespace cmpihost {

struct ServeOptions {
    server::Settings settings{};
    pages::SiteSettings site{};
    http::ListenerOptions listener{};
    http::LogOptions log{};
    std::string trace;                                ///< where the providers' standard output goes, as for other verbs
    bool in_process = false;                          ///< the providers run in this process
    std::chrono::milliseconds timeout{25'000};        ///< for a provider to answer
    unsigned threads = 8;                             ///< requests that are answered at once
    std::size_t waiting = 256;                        ///< requests that may wait for one of them
    std::size_t max_replies = std::size_t{512} << 20; ///< bytes of all replies that are under way
    std::vector<std::string> arguments{};             ///< as given
};

/// What came of reading the command line: options to go on with, or a text to print and an exit code.
struct ServeLine {
    std::optional<ServeOptions> options;
    int exit_code = 0;
    std::string output;
    std::string error;
};

/// Reads the arguments after `serve`.
ServeLine read_serve_line(const std::vector<std::string>& arguments);

} // namespace cmpihost
