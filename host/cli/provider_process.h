// A provider in a process of its own, which may crash, end or hang without harm to this one.
#pragma once

#include "host/cli/loaded_provider.h"

#include <sys/types.h>

namespace cmpihost {

/// The process is a copy of this one, made before the provider is loaded. Requests go there, and answers come back,
/// object by object at the moment when the provider returns them.
class ProviderProcess {
  public:
    using Take = std::function<void(Object object, bool is_instance)>;

    /// Waits until the provider is loaded. @throws std::runtime_error whose what() is one line, ProviderFailed
    ProviderProcess(const Options& options, const Streams& streams);

    /// Ends the process at once unless close() did.
    ~ProviderProcess();
    ProviderProcess(const ProviderProcess&) = delete;
    ProviderProcess& operator=(const ProviderProcess&) = delete;

    /// The answer without its objects, which `take` gets. @throws ProviderFailed
    Answer ask(const Request& request, const Take& take);

    /// Has the provider clean up, and waits for its end. @throws ProviderFailed
    void close();

  private:
    /// A message from there. At the end of the process, and when the time is over, ProviderFailed.
    std::string receive();
    bool wait_for_bytes() const;
    [[noreturn]] void fail_by_time();
    [[noreturn]] void fail_by_death();
    void end(int signal);

    double timeout_;
    std::size_t max_objects_;
    std::string doing_ = "while it was loaded"; ///< what the provider is at, for messages
    pid_t process_ = -1;
    int socket_ = -1;
    std::string received_;
    std::size_t read_ = 0; ///< bytes at the beginning of received_ that are done with
};

} // namespace cmpihost
