/*
 * Factories that a loader must refuse, or just accept, each under a prefix of its own; and a scenario function that
 * tells whether it was called before the factories.
 */
#include "cmpidt.h"
#include "cmpift.h"

#include <stdio.h>
#include <string.h>

#define EXPORT __attribute__((visibility("default")))

static int factory_called = 0;

#define INSTANCE_FACTORY(PREFIX, TABLE_VERSION, MI_VERSION)                                                            \
    EXPORT CMPIInstanceMI* PREFIX##_Create_InstanceMI(const CMPIBroker* broker, const CMPIContext* context) {          \
        static const CMPIInstanceMIFT table = {.ftVersion = TABLE_VERSION, .miVersion = MI_VERSION, .miName = "odd"};  \
        static CMPIInstanceMI mi = {NULL, &table};                                                                     \
        (void)broker;                                                                                                  \
        (void)context;                                                                                                 \
        factory_called = 1;                                                                                            \
        return &mi;                                                                                                    \
    }

INSTANCE_FACTORY(OldTable, 86, 100)
INSTANCE_FACTORY(OldMi, 100, 99)
INSTANCE_FACTORY(TooNewTable, 201, 100)
INSTANCE_FACTORY(TooNewMi, 100, 210)
INSTANCE_FACTORY(Newer, 200, 200)
INSTANCE_FACTORY(Empty, 100, 100)

EXPORT CMPIInstanceMI* NoMi_Create_InstanceMI(const CMPIBroker* broker, const CMPIContext* context) {
    (void)broker;
    (void)context;
    return NULL;
}

EXPORT CMPIInstanceMI* NoTable_Create_InstanceMI(const CMPIBroker* broker, const CMPIContext* context) {
    static CMPIInstanceMI mi = {NULL, NULL};
    (void)broker;
    (void)context;
    return &mi;
}

EXPORT CMPIAssociationMI* NoAssociations_Create_AssociationMI(const CMPIBroker* broker, const CMPIContext* context) {
    (void)broker;
    (void)context;
    return NULL;
}

EXPORT void Told_Create_IndicationMI(void) {}

EXPORT int switchsim_load_scenario(const char* file, char* message, size_t size) {
    if (strcmp(file, "silent.toml") == 0)
        return 1;
    if (factory_called)
        snprintf(message, size, "the factory was called before the scenario");
    else if (strcmp(file, "good.toml") != 0)
        snprintf(message, size, "%s:3:7: ports: a list of tables is expected", file);
    else
        return 0;
    return -1;
}
