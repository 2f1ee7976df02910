#include "host/cli/session.h"

namespace cmpihost {

Session::Session(const Options& options, const Streams& streams)
    : redirected_(options.trace, streams.err), library_(options.provider) {
    if (!options.scenario.empty())
        library_.load_scenario(options.scenario);
    library_.create(options.name);
}

} // namespace cmpihost
