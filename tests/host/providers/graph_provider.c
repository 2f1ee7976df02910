/*
 * A provider of a few objects that are tied, for the tests of the graph.
 *
 *   Net_Port  three of them: p1 in slot 1, p2 in slot 1, p1 in slot 2
 *   Net_Card  one, with a quotation mark in its key
 *   Net_Rack  not served, but answered
 *
 *   Net_OnCard   each port and the card; answers to its superclass Net_Part too. The card spells ports otherwise
 *   Net_Line     p1 in slot 1 to p2, not back; p1 in slot 2 to itself
 *   Net_Mounted  the card and the rack. But the card answers the rack to every association that is not Net_OnCard;
 *                only its reference names tell them apart
 *   Net_Broken   each port fails
 *   Net_Null     each port returns a null and an invalid result
 */
#include "cmpidt.h"
#include "cmpift.h"
#include "cmpimacs.h"

#include <stdio.h>
#include <string.h>
#include <strings.h>

#define EXPORT __attribute__((visibility("default")))

static const CMPIBroker* broker;

static CMPIStatus status_of(CMPIrc rc) {
    CMPIStatus status = {CMPI_RC_OK, NULL};
    status.rc = rc;
    return status;
}

static int is_class(const CMPIObjectPath* path, const char* name) {
    return strcasecmp(CMGetCharsPtr(CMGetClassName(path, NULL), NULL), name) == 0;
}

static CMPIObjectPath* port(unsigned number, int other_spelling) {
    CMPIValue slot;
    CMPIObjectPath* path = CMNewObjectPath(broker, "root/net", other_spelling ? "NET_PORT" : "Net_Port", NULL);
    slot.uint32 = number == 3 ? 2 : 1;
    if (other_spelling) {
        CMSetHostname(path, "switch");
        CMAddKey(path, "SLOT", &slot, CMPI_uint32);
    }
    CMAddKey(path, "Name", number == 2 ? "p2" : "p1", CMPI_chars);
    if (!other_spelling)
        CMAddKey(path, "Slot", &slot, CMPI_uint32);
    return path;
}

/* From a path of this provider, or one that was written on a command line. */
static unsigned number_of(const CMPIObjectPath* path) {
    const CMPIData name = CMGetKey(path, "Name", NULL);
    const CMPIData slot = CMGetKey(path, "Slot", NULL);
    if (strcmp(CMGetCharsPtr(name.value.string, NULL), "p2") == 0)
        return 2;
    return (slot.type == CMPI_uint32 ? slot.value.uint32 : slot.value.uint64) == 2 ? 3 : 1;
}

static CMPIObjectPath* card(void) {
    CMPIObjectPath* path = CMNewObjectPath(broker, "root/net", "Net_Card", NULL);
    CMAddKey(path, "InstanceID", "card \"1\"", CMPI_chars);
    return path;
}

static CMPIObjectPath* rack(void) {
    CMPIObjectPath* path = CMNewObjectPath(broker, "root/net", "Net_Rack", NULL);
    CMAddKey(path, "Row", "7", CMPI_chars);
    return path;
}

/* ---------------------------------------------------------------------------------------------------- Instance MI */

static CMPIStatus cleanup_instances(CMPIInstanceMI* mi, const CMPIContext* context, CMPIBoolean terminating) {
    (void)mi;
    (void)context;
    (void)terminating;
    return status_of(CMPI_RC_OK);
}

static CMPIStatus enumerate_instance_names(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                           const CMPIObjectPath* path) {
    unsigned number;
    (void)mi;
    (void)context;
    if (is_class(path, "Net_Port"))
        for (number = 1; number <= 3; ++number)
            CMReturnObjectPath(result, port(number, 0));
    else if (is_class(path, "Net_Card"))
        CMReturnObjectPath(result, card());
    else
        return status_of(CMPI_RC_ERR_INVALID_CLASS);
    return status_of(CMPI_RC_OK);
}

/* ------------------------------------------------------------------------------------------------- Association MI */

static CMPIStatus cleanup_associations(CMPIAssociationMI* mi, const CMPIContext* context, CMPIBoolean terminating) {
    (void)mi;
    (void)context;
    (void)terminating;
    return status_of(CMPI_RC_OK);
}

static int is_on_card(const char* association) {
    return strcmp(association, "Net_OnCard") == 0 || strcmp(association, "Net_Part") == 0;
}

static CMPIStatus names_of_port(const CMPIResult* result, const CMPIObjectPath* path, const char* association) {
    const unsigned number = number_of(path);
    printf("port %u by %s\n", number, association);
    if (is_on_card(association))
        CMReturnObjectPath(result, card());
    else if (strcmp(association, "Net_Line") == 0 && number != 2)
        CMReturnObjectPath(result, port(number == 1 ? 2 : 3, 0));
    else if (strcmp(association, "Net_Null") == 0) {
        CMReturnObjectPath(result, NULL);
        CMReturnObjectPath(result, (const CMPIObjectPath*)-1);
    } else if (strcmp(association, "Net_Broken") == 0)
        return status_of(CMPI_RC_ERR_FAILED);
    return status_of(CMPI_RC_OK);
}

static CMPIStatus names_of_card(const CMPIResult* result, const char* association) {
    unsigned number;
    if (!is_on_card(association)) {
        CMReturnObjectPath(result, rack());
        return status_of(CMPI_RC_OK);
    }
    for (number = 1; number <= 3; ++number)
        CMReturnObjectPath(result, port(number, 1));
    return status_of(CMPI_RC_OK);
}

static CMPIStatus associator_names(CMPIAssociationMI* mi, const CMPIContext* context, const CMPIResult* result,
                                   const CMPIObjectPath* path, const char* association, const char* result_class,
                                   const char* role, const char* result_role) {
    (void)mi;
    (void)context;
    if (association == NULL || result_class != NULL || role != NULL || result_role != NULL)
        return status_of(CMPI_RC_ERR_INVALID_PARAMETER);
    if (is_class(path, "Net_Port"))
        return names_of_port(result, path, association);
    return is_class(path, "Net_Card") ? names_of_card(result, association) : status_of(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus reference_names(CMPIAssociationMI* mi, const CMPIContext* context, const CMPIResult* result,
                                  const CMPIObjectPath* path, const char* association, const char* role) {
    CMPIValue value;
    CMPIObjectPath* mounted = CMNewObjectPath(broker, "root/net", "Net_Mounted", NULL);
    (void)mi;
    (void)context;
    if (association == NULL || role != NULL)
        return status_of(CMPI_RC_ERR_INVALID_PARAMETER);
    if (!is_class(path, "Net_Card") || strcmp(association, "Net_Mounted") != 0)
        return status_of(CMPI_RC_OK);
    value.ref = card();
    CMAddKey(mounted, "Card", &value, CMPI_ref);
    value.ref = rack();
    CMAddKey(mounted, "Rack", &value, CMPI_ref);
    CMReturnObjectPath(result, mounted);
    return status_of(CMPI_RC_OK);
}

/* The graph asks for names only: what it does not use is not there. */
static const CMPIInstanceMIFT instance_table = {
    CMPIVersion100, CMPIVersion100, "instanceNet", cleanup_instances, enumerate_instance_names, NULL, NULL, NULL,
    NULL,           NULL,           NULL,
};
static const CMPIAssociationMIFT association_table = {
    CMPIVersion100,   CMPIVersion100, "associationNet", cleanup_associations, NULL,
    associator_names, NULL,           reference_names,
};

EXPORT CMPIInstanceMI* Net_Create_InstanceMI(const CMPIBroker* given, const CMPIContext* context) {
    static CMPIInstanceMI mi = {NULL, &instance_table};
    (void)context;
    broker = given;
    return &mi;
}

EXPORT CMPIAssociationMI* Net_Create_AssociationMI(const CMPIBroker* given, const CMPIContext* context) {
    static CMPIAssociationMI mi = {NULL, &association_table};
    (void)context;
    broker = given;
    return &mi;
}
