// The bare loop: answers a request by the platform calls of its case and by the CMPI calls of a recorded answer.
// No dispatch, no trace, and no text that it formats itself.
#pragma once

#include "bench/cases.h"
#include "bench/replay.h"

#include <vector>

namespace bench {

/// What a bare loop knows of the switch: the row that a lookup has to come to.
struct Wanted {
    std::uint32_t link_index = 0;
    std::uint32_t profile = 0;
    std::uint32_t port = 0;
};

/// One request on its way.
class BareAnswer {
  public:
    BareAnswer(const Case& measured, const std::vector<Replay>& objects, const CMPIResult* result,
               const char** properties)
        : case_(measured), objects_(objects), result_(result), properties_(properties) {}

    /// Walks the case's rows and answers with one object for each that the answer is made from.
    void run(const Wanted& wanted);

  private:
    void answer(const Row& row);
    void walk_links();
    void walk_profiles();
    void walk_ports();
    void find_link(std::uint32_t link_index);
    void find_profile(const Wanted& wanted);
    void read_port(std::uint32_t if_index);

    const Case& case_;
    const std::vector<Replay>& objects_;
    const CMPIResult* result_;
    const char** properties_;
    std::size_t next_ = 0;
};

/// Whether an operation answers with instances; the others answer with paths.
bool gives_instances(Operation operation);

} // namespace bench
