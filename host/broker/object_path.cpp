// CMPIObjectPath.
#include "host/broker/broker_tables.h"
#include "host/broker/refusals.h"
#include "host/broker/scope.h"
#include "host/broker/values.h"
#include "host/cim/path_text.h"

namespace cmpihost {

namespace {

CMPIStatus set_text(const CMPIObjectPath* self, const char* text, const Name* HeldObject::*member) {
    CMPIStatus status;
    HeldObject* path = open(self, &status);
    if (path == nullptr)
        return status;
    if (text == nullptr)
        return status_of(CMPI_RC_ERR_INVALID_PARAMETER);
    path->*member = store_of(self).name(text);
    return status;
}

/// The member's text; "" where there is none.
CMPIString* get_text(const CMPIObjectPath* self, CMPIStatus* status, const Name* HeldObject::*member) {
    const HeldObject* path = open(self, status);
    if (path == nullptr)
        return nullptr;
    const Name* name = path->*member;
    return make_string(name == nullptr ? std::string_view() : name->text, status);
}

CMPIStatus set_name_space(const CMPIObjectPath* self, const char* text) {
    return set_text(self, text, &HeldObject::name_space);
}

CMPIString* get_name_space(const CMPIObjectPath* self, CMPIStatus* status) {
    return get_text(self, status, &HeldObject::name_space);
}

CMPIStatus set_class_name(const CMPIObjectPath* self, const char* text) {
    return set_text(self, text, &HeldObject::class_name);
}

CMPIString* get_class_name(const CMPIObjectPath* self, CMPIStatus* status) {
    return get_text(self, status, &HeldObject::class_name);
}

CMPIStatus set_host_name(const CMPIObjectPath* self, const char* text) {
    return set_text(self, text, &HeldObject::host);
}

CMPIString* get_host_name(const CMPIObjectPath* self, CMPIStatus* status) {
    return get_text(self, status, &HeldObject::host);
}

/// Keys have a value, which is neither an array nor an embedded instance.
CMPIStatus add_key(const CMPIObjectPath* self, const char* name, const CMPIValue* value, CMPIType type) {
    CMPIStatus status;
    HeldObject* path = open(self, &status);
    if (path == nullptr)
        return status;
    if (name == nullptr || *name == '\0')
        return status_of(CMPI_RC_ERR_INVALID_PARAMETER);
    Store& store = store_of(self);
    HeldValue read;
    const CMPIrc rc = read_value(store, value, type, read);
    if (rc != CMPI_RC_OK)
        return status_of(rc);
    if (type == CMPI_instance || (type & CMPI_ARRAY) != 0) {
        release(store, read);
        return status_of(CMPI_RC_ERR_INVALID_DATA_TYPE);
    }
    if (std::holds_alternative<std::monostate>(read.data))
        return status_of(CMPI_RC_ERR_INVALID_PARAMETER);
    put_named(store, path->keys, name, type, read);
    return status;
}

/// An absent key is ERR_NOT_FOUND.
CMPIData get_key(const CMPIObjectPath* self, const char* name, CMPIStatus* status) {
    const HeldObject* path = open(self, status);
    return path == nullptr ? nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE)
                           : get_named(path->keys, name, status, CMPI_RC_ERR_NOT_FOUND);
}

/// An index out of range is ERR_NOT_FOUND.
CMPIData get_key_at(const CMPIObjectPath* self, CMPICount index, CMPIString** name, CMPIStatus* status) {
    const HeldObject* path = open(self, status);
    return path == nullptr ? nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE)
                           : get_indexed(path->keys, index, name, status, CMPI_RC_ERR_NOT_FOUND);
}

CMPICount get_key_count(const CMPIObjectPath* self, CMPIStatus* status) {
    const HeldObject* path = open(self, status);
    return path == nullptr ? 0 : path->keys.count;
}

CMPIStatus copy_name_space(const CMPIObjectPath* self, const CMPIObjectPath* source) {
    CMPIStatus status;
    HeldObject* path = open(self, &status);
    if (path == nullptr)
        return status;
    const HeldObject* from = live(source);
    if (from == nullptr)
        return status_of(fault_of(source));
    path->name_space = store_of(self).name(from->name_space->text);
    return status;
}

CMPIStatus copy_host_and_name_space(const CMPIObjectPath* self, const CMPIObjectPath* source) {
    const CMPIStatus status = copy_name_space(self, source);
    if (status.rc != CMPI_RC_OK)
        return status;
    const Name* host = live(source)->host;
    open(self, nullptr)->host = host == nullptr ? nullptr : store_of(self).name(host->text);
    return status;
}

CMPIString* path_to_string(const CMPIObjectPath* self, CMPIStatus* status) {
    const HeldObject* path = open(self, status);
    return path == nullptr ? nullptr : make_string(path_text(plain(*path)), status);
}

} // namespace

const CMPIObjectPathFT object_path_table{
    .ftVersion = CMPIVersion100,
    .release = release_object,
    .clone = clone_object,
    .setNameSpace = set_name_space,
    .getNameSpace = get_name_space,
    .setHostname = set_host_name,
    .getHostname = get_host_name,
    .setClassName = set_class_name,
    .getClassName = get_class_name,
    .addKey = add_key,
    .getKey = get_key,
    .getKeyAt = get_key_at,
    .getKeyCount = get_key_count,
    .setNameSpaceFromObjectPath = copy_name_space,
    .setHostAndNameSpaceFromObjectPath = copy_host_and_name_space,
    .getClassQualifier = refuse_data,
    .getPropertyQualifier = refuse_data,
    .getMethodQualifier = refuse_data,
    .getParameterQualifier = refuse_data,
    .toString = path_to_string,
};

/// A null namespace counts as an empty one; a class name is needed.
CMPIObjectPath* new_object_path(const CMPIBroker*, const char* name_space, const char* class_name, CMPIStatus* status) {
    if (class_name == nullptr) {
        report(status, CMPI_RC_ERR_INVALID_PARAMETER);
        return nullptr;
    }
    return make<CMPIObjectPath>(status, [=](Store& store) {
        const Name* space = store.name(name_space == nullptr ? "" : name_space);
        return HeldObject{store.name(class_name), space, nullptr, {}, {}};
    });
}

} // namespace cmpihost
