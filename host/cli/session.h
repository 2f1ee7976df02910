// A provider, ready to be asked.
#pragma once

#include "host/broker/loader.h"
#include "host/cli/options.h"
#include "host/cli/redirect.h"
#include "host/cli/streams.h"

namespace cmpihost {

/// Loads the provider that the options name, with its scenario, and keeps what it prints out of the program's output.
class Session {
  public:
    /// @throws std::runtime_error whose what() is one line
    Session(const Options& options, const Streams& streams)
        : redirected_(options.trace, streams.err), library_(options.provider) {
        if (!options.scenario.empty())
            library_.load_scenario(options.scenario);
        library_.create(options.name);
    }

    Answer ask(const Request& request) const { return run(library_.provider(), request); }

  private:
    StandardOutputElsewhere redirected_;
    Library library_;
};

} // namespace cmpihost
