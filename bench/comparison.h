// One class and operation on a switch of some size: the provider's answer beside the bare loop's.
#pragma once

#include "bench/bare_answer.h"

#include <vector>

namespace bench {

class Comparison {
  public:
    /// Fills the simulator with so many tunnels, and as many profiles and Ethernet ports (if it does not hold them
    /// yet), and makes the request ready: a get and a traversal ask for the last object of its class.
    /// @throws std::runtime_error when the two sides do not give the same answer by the same platform calls
    Comparison(const Case& measured, unsigned tunnels);
    Comparison(const Comparison&) = delete;
    Comparison& operator=(const Comparison&) = delete;

    void run_provider();
    void run_bare();

  private:
    void ask_for_last();
    void check();
    void read_key(const CMPIObjectPath* path) const;
    CMPIStatus answer(const CMPIResult* result, const CMPIObjectPath* path, const char** properties) const;
    static CMPIInstanceMIFT instance_functions();
    static CMPIAssociationMIFT association_functions();

    const Case& case_;
    cmpihost::Request request_;
    Wanted wanted_;
    cmpihost::Answer recorded_;
    std::vector<Replay> replays_;
    CMPIInstanceMIFT instance_functions_;
    CMPIAssociationMIFT association_functions_;
    CMPIInstanceMI instance_mi_;
    CMPIAssociationMI association_mi_;
};

} // namespace bench
