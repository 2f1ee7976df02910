// A provider, ready to be asked, here or in a process of its own.
#pragma once

#include "host/broker/held.h"
#include "host/cli/provider_process.h"

namespace cmpihost {

class Session {
  public:
    using Take = ProviderProcess::Take;

    /// @throws std::runtime_error whose what() is one line, ProviderFailed
    Session(const Options& options, const Streams& streams) {
        if (options.fork)
            process_.emplace(options, streams);
        else
            here_.emplace(options, streams);
    }

    /// The answer without its objects, which `take` gets. @throws ProviderFailed
    Answer ask(const Request& request, const Take& take) {
        if (process_)
            return process_->ask(request, take);
        return here_->ask(request,
                          [&take](const HeldObject& object, bool is_instance) { take(plain(object), is_instance); });
    }

    /// Has the provider clean up. Nothing can be asked then. @throws ProviderFailed
    void close() {
        if (process_)
            process_->close();
        here_.reset();
    }

  private:
    std::optional<LoadedProvider> here_;
    std::optional<ProviderProcess> process_;
};

} // namespace cmpihost
