// What the CIM server finds in the library: the two factories and, behind them, the management interfaces.
#include "provider/access/lock.h"
#include "provider/common/broker.h"
#include "provider/common/trace.h"
#include "provider/mi/association_operations.h"
#include "provider/mi/instance_operations.h"

namespace fcip {

namespace {

constexpr CMPIStatus not_supported{CMPI_RC_ERR_NOT_SUPPORTED, nullptr};
constexpr CMPIStatus ok{CMPI_RC_OK, nullptr};

CMPIStatus FCIP_Cleanup(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, CMPIBoolean /*terminating*/) {
    return ok;
}

CMPIStatus FCIP_AssociationCleanup(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/,
                                   CMPIBoolean /*terminating*/) {
    return ok;
}

CMPIStatus FCIP_CreateInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* /*result*/,
                               const CMPIObjectPath* /*path*/, const CMPIInstance* /*instance*/) {
    return not_supported;
}

CMPIStatus FCIP_ModifyInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* /*result*/,
                               const CMPIObjectPath* /*path*/, const CMPIInstance* /*instance*/,
                               const char** /*properties*/) {
    return not_supported;
}

CMPIStatus FCIP_DeleteInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* /*result*/,
                               const CMPIObjectPath* /*path*/) {
    return not_supported;
}

CMPIStatus FCIP_ExecQuery(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* /*result*/,
                          const CMPIObjectPath* /*path*/, const char* /*query*/, const char* /*language*/) {
    return not_supported;
}

CMPIInstanceMIFT instance_functions{100,
                                    100,
                                    "instanceFCIPProvider",
                                    FCIP_Cleanup,
                                    FCIP_EnumInstanceNames,
                                    FCIP_EnumInstances,
                                    FCIP_GetInstance,
                                    FCIP_CreateInstance,
                                    FCIP_ModifyInstance,
                                    FCIP_DeleteInstance,
                                    FCIP_ExecQuery};

CMPIAssociationMIFT association_functions{100,
                                          100,
                                          "associationFCIPProvider",
                                          FCIP_AssociationCleanup,
                                          FCIP_Associators,
                                          FCIP_AssociatorNames,
                                          FCIP_References,
                                          FCIP_ReferenceNames};

CMPIInstanceMI instance_mi{nullptr, &instance_functions};
CMPIAssociationMI association_mi{nullptr, &association_functions};

/// Opens the IPC service's response queue. A failure is only traced: later requests find out for themselves.
void initialize() {
    const platform_lock lock;
    if (init_mts(&mts_q) < 0)
        trace("get_using_cmi done init mts response q with error\n");
}

} // namespace

} // namespace fcip

/// Keeps the broker and opens the queue. @return the instance MI, always
extern "C" __attribute__((visibility("default"))) CMPIInstanceMI*
FCIPProvider_Create_InstanceMI(const CMPIBroker* broker, const CMPIContext* /*context*/) {
    _broker = broker;
    fcip::initialize();
    return &fcip::instance_mi;
}

/// Keeps the broker and opens the queue. @return the association MI, always
extern "C" __attribute__((visibility("default"))) CMPIAssociationMI*
FCIPProvider_Create_AssociationMI(const CMPIBroker* broker, const CMPIContext* /*context*/) {
    _broker = broker;
    fcip::initialize();
    return &fcip::association_mi;
}
