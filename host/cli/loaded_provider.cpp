#include "host/cli/loaded_provider.h"

#include "host/cli/call_text.h"
#include "host/cli/output.h"
#include "host/server/registration.h"

#include <filesystem>
#include <map>

namespace cmpihost {

LoadedProvider::LoadedProvider(const Options& options, const Streams& streams)
    : redirected_(options.trace, streams.err), library_(options.provider),
      upcalled_([this](const Request& request) { return run(provider_for(request), request); }) {
    if (options.scenario_wanted || (!options.scenario.empty() && library_.platform() != nullptr))
        library_.load_scenario(options.scenario);
    library_.create(options.name);
    if (!options.beside.empty())
        load_beside(options.beside);
    serve_upcalls(&upcalled_);
}

LoadedProvider::~LoadedProvider() {
    end_upcalls(&upcalled_);
}

void LoadedProvider::load_beside(const std::string& registration) {
    const std::string folder = std::filesystem::path(registration).parent_path().string();
    std::map<std::pair<std::string, std::string>, const Provider*> loaded; // by library and name
    for (const server::RegisteredClass& each : server::read_registration_file(registration)) {
        const std::string file = server::library_file(folder, each);
        const Provider*& provider = loaded[{file, each.provider}];
        if (provider == nullptr) {
            Library& library = beside_.emplace_back(file);
            library.create(each.provider);
            provider = &library.provider();
        }
        served_beside_.emplace(each.class_name, provider);
    }
}

const Provider& LoadedProvider::provider_for(const Request& request) const {
    const auto found = served_beside_.find(request.path.class_name);
    return is_traversal(request.operation) || found == served_beside_.end() ? library_.provider() : *found->second;
}

Answer LoadedProvider::ask(const Request& request, const Sink& sink) const {
    const auto threw = [&request](const std::string& what) {
        return ProviderFailed("the provider threw " + what + " in " + call_text(request));
    };
    try {
        return run(provider_for(request), request, sink);
    } catch (const std::exception& error) {
        throw threw("an exception (" + printable(error.what()) + ")");
    } catch (...) {
        throw threw("an object that is no exception");
    }
}

} // namespace cmpihost
