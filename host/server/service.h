// The WBEM server's operations, from the bytes of a request to the bytes of its reply.
#pragma once

#include "host/server/question.h"
#include "host/server/settings.h"

#include <memory>

namespace cmpihost::server {

class Catalogue;

/// Schema, providers and open enumerations. Answers several requests at once, each on the thread that asks.
class Service {
  public:
    /// Reads the schema and loads the providers.
    /// @throws std::runtime_error whose what() is one line
    explicit Service(const Settings& settings);
    ~Service();
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    /// What it has loaded.
    const Catalogue& catalogue() const;

    /// Answers a request. Never throws for what the request holds or a provider answers.
    Outcome answer(const Question& question, ReplySink& sink);

  private:
    class State;
    std::unique_ptr<State> state_;
};

} // namespace cmpihost::server
