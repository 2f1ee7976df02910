#include "host/cli/loaded_provider.h"

#include "host/cli/call_text.h"
#include "host/cli/output.h"

namespace cmpihost {

LoadedProvider::LoadedProvider(const Options& options, const Streams& streams)
    : redirected_(options.trace, streams.err), library_(options.provider),
      upcalled_([this](const Request& request) { return run(library_.provider(), request); }) {
    if (options.scenario_wanted || (!options.scenario.empty() && library_.takes_scenario()))
        library_.load_scenario(options.scenario);
    library_.create(options.name);
    serve_upcalls(&upcalled_);
}

LoadedProvider::~LoadedProvider() {
    end_upcalls(&upcalled_);
}

Answer LoadedProvider::ask(const Request& request, const Sink& sink) const {
    const auto threw = [&request](const std::string& what) {
        return ProviderFailed("the provider threw " + what + " in " + call_text(request));
    };
    try {
        return run(library_.provider(), request, sink);
    } catch (const std::exception& error) {
        throw threw("an exception (" + printable(error.what()) + ")");
    } catch (...) {
        throw threw("an object that is no exception");
    }
}

} // namespace cmpihost
