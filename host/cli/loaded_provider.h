// A provider in this process, ready to be asked.
#pragma once

#include "host/broker/loader.h"
#include "host/broker/upcalls.h"
#include "host/cim/names.h"
#include "host/cli/options.h"
#include "host/cli/redirect.h"
#include "host/cli/streams.h"

#include <deque>

namespace cmpihost {

/// A provider that did not come to answer: it crashed, ended the process, threw, or did not stop. what() is one line.
class ProviderFailed : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Loads the provider that the options name, with its scenario and with those beside it, and keeps what it prints out
/// of the program's output. Providers beside it are asked what concerns their classes, and it everything else and what
/// goes along associations.
class LoadedProvider {
  public:
    /// @throws std::runtime_error whose what() is one line
    LoadedProvider(const Options& options, const Streams& streams);
    ~LoadedProvider();
    LoadedProvider(const LoadedProvider&) = delete;
    LoadedProvider& operator=(const LoadedProvider&) = delete;

    /// @throws ProviderFailed: the provider threw an exception
    Answer ask(const Request& request, const Sink& sink) const;

  private:
    void load_beside(const std::string& registration);
    const Provider& provider_for(const Request& request) const;

    StandardOutputElsewhere redirected_;
    Library library_;
    std::deque<Library> beside_;
    NameMap<const Provider*> served_beside_; ///< by class
    Upcalled upcalled_;
};

} // namespace cmpihost
