// How the reader gives up: thrown inside, an Error outside.
#pragma once

#include "host/mof/schema.h"

#include <stdexcept>

namespace cmpihost::mof {

class Refusal : public std::runtime_error {
  public:
    Refusal(Place place, const std::string& what) : std::runtime_error(what), error_{std::move(place), what} {}
    const Error& error() const { return error_; }

  private:
    Error error_;
};

} // namespace cmpihost::mof
