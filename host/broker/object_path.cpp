// CMPIObjectPath.
#include "host/broker/broker_tables.h"
#include "host/broker/refusals.h"
#include "host/broker/scope.h"
#include "host/broker/values.h"
#include "host/cim/path_text.h"

namespace cmpihost {

namespace {

/// Sets a member that is a text, or one that may be absent.
template <class Text>
CMPIStatus set_text(const CMPIObjectPath* self, const char* text, Text Object::*member) {
    CMPIStatus status;
    Object* path = open(self, &status);
    if (path == nullptr)
        return status;
    if (text == nullptr)
        return status_of(CMPI_RC_ERR_INVALID_PARAMETER);
    path->*member = text;
    return status;
}

CMPIString* get_text(const CMPIObjectPath* self, CMPIStatus* status, std::string Object::*member) {
    const Object* path = open(self, status);
    return path == nullptr ? nullptr : make<CMPIString>(path->*member, status);
}

CMPIStatus set_name_space(const CMPIObjectPath* self, const char* text) {
    return set_text(self, text, &Object::name_space);
}

CMPIString* get_name_space(const CMPIObjectPath* self, CMPIStatus* status) {
    return get_text(self, status, &Object::name_space);
}

CMPIStatus set_class_name(const CMPIObjectPath* self, const char* text) {
    return set_text(self, text, &Object::class_name);
}

CMPIString* get_class_name(const CMPIObjectPath* self, CMPIStatus* status) {
    return get_text(self, status, &Object::class_name);
}

CMPIStatus set_host_name(const CMPIObjectPath* self, const char* text) {
    return set_text(self, text, &Object::host);
}

/// The host name; "" where none was set.
CMPIString* get_host_name(const CMPIObjectPath* self, CMPIStatus* status) {
    const Object* path = open(self, status);
    return path == nullptr ? nullptr : make<CMPIString>(path->host.value_or(""), status);
}

/// Keys have a value, which is neither an array nor an embedded instance.
CMPIStatus add_key(const CMPIObjectPath* self, const char* name, const CMPIValue* value, CMPIType type) {
    CMPIStatus status;
    Object* path = open(self, &status);
    if (path == nullptr)
        return status;
    if (name == nullptr || *name == '\0')
        return status_of(CMPI_RC_ERR_INVALID_PARAMETER);
    Value read;
    const CMPIrc rc = read_value(value, type, read);
    if (rc != CMPI_RC_OK)
        return status_of(rc);
    if (type == CMPI_instance || (type & CMPI_ARRAY) != 0)
        return status_of(CMPI_RC_ERR_INVALID_DATA_TYPE);
    if (std::holds_alternative<std::monostate>(read.data))
        return status_of(CMPI_RC_ERR_INVALID_PARAMETER);
    put_named(path->keys, name, type, std::move(read));
    return status;
}

/// An absent key is ERR_NOT_FOUND.
CMPIData get_key(const CMPIObjectPath* self, const char* name, CMPIStatus* status) {
    const Object* path = open(self, status);
    return path == nullptr ? nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE)
                           : get_named(path->keys, name, status, CMPI_RC_ERR_NOT_FOUND);
}

/// An index out of range is ERR_NOT_FOUND.
CMPIData get_key_at(const CMPIObjectPath* self, CMPICount index, CMPIString** name, CMPIStatus* status) {
    const Object* path = open(self, status);
    return path == nullptr ? nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE)
                           : get_indexed(path->keys, index, name, status, CMPI_RC_ERR_NOT_FOUND);
}

CMPICount get_key_count(const CMPIObjectPath* self, CMPIStatus* status) {
    const Object* path = open(self, status);
    return path == nullptr ? 0 : static_cast<CMPICount>(path->keys.size());
}

CMPIStatus copy_name_space(const CMPIObjectPath* self, const CMPIObjectPath* source) {
    CMPIStatus status;
    Object* path = open(self, &status);
    if (path == nullptr)
        return status;
    const Object* from = live(source);
    if (from == nullptr)
        return status_of(fault_of(source));
    path->name_space = from->name_space;
    return status;
}

CMPIStatus copy_host_and_name_space(const CMPIObjectPath* self, const CMPIObjectPath* source) {
    const CMPIStatus status = copy_name_space(self, source);
    if (status.rc == CMPI_RC_OK)
        open(self, nullptr)->host = live(source)->host;
    return status;
}

CMPIString* path_to_string(const CMPIObjectPath* self, CMPIStatus* status) {
    const Object* path = open(self, status);
    return path == nullptr ? nullptr : make<CMPIString>(path_text(*path), status);
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
    Object path;
    path.class_name = class_name;
    path.name_space = name_space == nullptr ? "" : name_space;
    return make<CMPIObjectPath>(std::move(path), status);
}

} // namespace cmpihost
