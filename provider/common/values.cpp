#include "provider/common/values.h"

namespace fcip {

const char* chars_of(const CMPIString* string) {
    return string == nullptr ? "" : text_or_empty(CMGetCharsPtr(string, nullptr));
}

const char* text_or_empty(const char* text) {
    return text == nullptr ? "" : text;
}

void set_string(CMPIInstance* instance, const char* name, const char* text) {
    CMSetProperty(instance, name, text, CMPI_chars);
}

void set_boolean(CMPIInstance* instance, const char* name, CMPIBoolean value) {
    CMPIValue cim{};
    cim.boolean = value;
    CMSetProperty(instance, name, &cim, CMPI_boolean);
}

void set_uint8(CMPIInstance* instance, const char* name, std::uint8_t value) {
    CMPIValue cim{};
    cim.uint8 = value;
    CMSetProperty(instance, name, &cim, CMPI_uint8);
}

void set_uint16(CMPIInstance* instance, const char* name, std::uint16_t value) {
    CMPIValue cim{};
    cim.uint16 = value;
    CMSetProperty(instance, name, &cim, CMPI_uint16);
}

void set_uint32(CMPIInstance* instance, const char* name, std::uint32_t value) {
    CMPIValue cim{};
    cim.uint32 = value;
    CMSetProperty(instance, name, &cim, CMPI_uint32);
}

void set_uint64(CMPIInstance* instance, const char* name, std::uint64_t value) {
    CMPIValue cim{};
    cim.uint64 = value;
    CMSetProperty(instance, name, &cim, CMPI_uint64);
}

void set_reference(CMPIInstance* instance, const char* name, CMPIObjectPath* path) {
    CMPIValue cim{};
    cim.ref = path;
    CMSetProperty(instance, name, &cim, CMPI_ref);
}

void filter_properties(CMPIInstance* instance, const char** properties) {
    const char* no_keys[] = {nullptr};
    CMSetPropertyFilter(instance, properties, no_keys);
}

void add_string_key(CMPIObjectPath* path, const char* name, const char* text) {
    CMAddKey(path, name, text, CMPI_chars);
}

void add_uint16_key(CMPIObjectPath* path, const char* name, std::uint16_t value) {
    CMPIValue cim{};
    cim.uint16 = value;
    CMAddKey(path, name, &cim, CMPI_uint16);
}

void add_reference_key(CMPIObjectPath* path, const char* name, CMPIObjectPath* reference) {
    CMPIValue cim{};
    cim.ref = reference;
    CMAddKey(path, name, &cim, CMPI_ref);
}

bool is_usable(const CMPIObjectPath* path) {
    return path != nullptr && path->hdl != nullptr;
}

bool is_usable(const CMPIInstance* instance) {
    return instance != nullptr && instance->hdl != nullptr;
}

CMPIObjectPath* new_path(const char* name_space, const char* class_name) {
    return CMNewObjectPath(_broker, name_space, class_name, nullptr);
}

CMPIInstance* new_instance(const CMPIObjectPath* path) {
    return CMNewInstance(_broker, path, nullptr);
}

} // namespace fcip
