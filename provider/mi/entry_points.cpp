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

CMPIStatus FCIP_Cleanup(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, CMPIBoolean /*terminating*/) noexcept {
    return ok;
}

CMPIStatus FCIP_AssociationCleanup(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/,
                                   CMPIBoolean /*terminating*/) noexcept {
    return ok;
}

CMPIStatus FCIP_CreateInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* /*result*/,
                               const CMPIObjectPath* /*path*/, const CMPIInstance* /*instance*/) noexcept {
    return not_supported;
}

CMPIStatus FCIP_ModifyInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* /*result*/,
                               const CMPIObjectPath* /*path*/, const CMPIInstance* /*instance*/,
                               const char** /*properties*/) noexcept {
    return not_supported;
}

CMPIStatus FCIP_DeleteInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* /*result*/,
                               const CMPIObjectPath* /*path*/) noexcept {
    return not_supported;
}

CMPIStatus FCIP_ExecQuery(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* /*result*/,
                          const CMPIObjectPath* /*path*/, const char* /*query*/, const char* /*language*/) noexcept {
    return not_supported;
}

// The tables are filled member by member: what a later version of CMPI has behind these stays null.

consteval CMPIInstanceMIFT make_instance_functions() {
    CMPIInstanceMIFT table{};
    table.ftVersion = 100;
    table.miVersion = 100;
    table.miName = "instanceFCIPProvider";
    table.cleanup = FCIP_Cleanup;
    table.enumerateInstanceNames = FCIP_EnumInstanceNames;
    table.enumerateInstances = FCIP_EnumInstances;
    table.getInstance = FCIP_GetInstance;
    table.createInstance = FCIP_CreateInstance;
    table.modifyInstance = FCIP_ModifyInstance;
    table.deleteInstance = FCIP_DeleteInstance;
    table.execQuery = FCIP_ExecQuery;
    return table;
}

consteval CMPIAssociationMIFT make_association_functions() {
    CMPIAssociationMIFT table{};
    table.ftVersion = 100;
    table.miVersion = 100;
    table.miName = "associationFCIPProvider";
    table.cleanup = FCIP_AssociationCleanup;
    table.associators = FCIP_Associators;
    table.associatorNames = FCIP_AssociatorNames;
    table.references = FCIP_References;
    table.referenceNames = FCIP_ReferenceNames;
    return table;
}

CMPIInstanceMIFT instance_functions = make_instance_functions();
CMPIAssociationMIFT association_functions = make_association_functions();

CMPIInstanceMI instance_mi{nullptr, &instance_functions};
CMPIAssociationMI association_mi{nullptr, &association_functions};

/// Opens the IPC service's response queue. A failure is only traced: later requests find out for themselves.
void initialize() noexcept {
    const platform_lock lock;
    if (init_mts(&mts_q) < 0)
        trace("get_using_cmi done init mts response q with error\n");
}

} // namespace

} // namespace fcip

/// Keeps the broker and opens the queue. @return the instance MI, always
extern "C" __attribute__((visibility("default"))) CMPIInstanceMI*
FCIPProvider_Create_InstanceMI(const CMPIBroker* broker, const CMPIContext* /*context*/) noexcept {
    _broker = broker;
    fcip::initialize();
    return &fcip::instance_mi;
}

/// Keeps the broker and opens the queue. @return the association MI, always
extern "C" __attribute__((visibility("default"))) CMPIAssociationMI*
FCIPProvider_Create_AssociationMI(const CMPIBroker* broker, const CMPIContext* /*context*/) noexcept {
    _broker = broker;
    fcip::initialize();
    return &fcip::association_mi;
}
