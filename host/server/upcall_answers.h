// What providers ask the broker for is answered by the served classes.
#pragma once

#include "host/broker/upcalls.h"
#include "host/server/catalogue.h"

namespace cmpihost::server {

/// Answers for as long as it lives.
class UpcallAnswers {
  public:
    /// @param catalogue must outlive this
    explicit UpcallAnswers(const Catalogue& catalogue);
    ~UpcallAnswers();
    UpcallAnswers(const UpcallAnswers&) = delete;
    UpcallAnswers& operator=(const UpcallAnswers&) = delete;

  private:
    Upcalled answer_;
};

} // namespace cmpihost::server
