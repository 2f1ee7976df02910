#include "provider/common/values.h"

#include "provider/common/text.h"

#include <type_traits>

namespace fcip {

namespace {

/// A value in an area that is zero to its last byte: `{}` would clear no more than its first member.
template <typename Member>
CMPIValue value_of(Member CMPIValue::*member, std::type_identity_t<Member> value) {
    CMPIValue area = CMPIValue();
    area.*member = value;
    return area;
}

/// A text in the place of a value, as CMPI_chars wants it.
const CMPIValue* as_value(const char* text) {
    return reinterpret_cast<const CMPIValue*>(text);
}

void set(CMPIInstance* instance, const char* name, const CMPIValue& value, CMPIType type) {
    instance->ft->setProperty(instance, name, &value, type);
}

void add(CMPIObjectPath* path, const char* name, const CMPIValue& value, CMPIType type) {
    path->ft->addKey(path, name, &value, type);
}

/// Calls setPropertyFilter(), whose lists are of `const char*` in some header sets and of `char*` in others.
template <typename Instance, typename Properties, typename Keys>
void filter(CMPIStatus (*set_filter)(Instance*, Properties, Keys), CMPIInstance* instance, const char** properties,
            const char** keys) {
    set_filter(instance, const_cast<Properties>(properties), const_cast<Keys>(keys));
}

} // namespace

const char* chars_of(const CMPIString* string) {
    return string == nullptr ? "" : text_or_empty(string->ft->getCharPtr(string, nullptr));
}

const char* text_or_empty(const char* text) {
    return text == nullptr ? "" : text;
}

void set_string(CMPIInstance* instance, const char* name, const char* text) {
    instance->ft->setProperty(instance, name, as_value(text), CMPI_chars);
}

void set_boolean(CMPIInstance* instance, const char* name, CMPIBoolean value) {
    set(instance, name, value_of(&CMPIValue::boolean, value), CMPI_boolean);
}

void set_uint8(CMPIInstance* instance, const char* name, std::uint8_t value) {
    set(instance, name, value_of(&CMPIValue::uint8, value), CMPI_uint8);
}

void set_uint16(CMPIInstance* instance, const char* name, std::uint16_t value) {
    set(instance, name, value_of(&CMPIValue::uint16, value), CMPI_uint16);
}

void set_uint32(CMPIInstance* instance, const char* name, std::uint32_t value) {
    set(instance, name, value_of(&CMPIValue::uint32, value), CMPI_uint32);
}

void set_uint64(CMPIInstance* instance, const char* name, std::uint64_t value) {
    set(instance, name, value_of(&CMPIValue::uint64, value), CMPI_uint64);
}

void set_reference(CMPIInstance* instance, const char* name, CMPIObjectPath* path) {
    set(instance, name, value_of(&CMPIValue::ref, path), CMPI_ref);
}

void set_host(CMPIObjectPath* path, const char* host) {
    path->ft->setHostname(path, host);
}

void filter_properties(CMPIInstance* instance, const char** properties) {
    const char* no_keys[] = {nullptr};
    filter(instance->ft->setPropertyFilter, instance, properties, no_keys);
}

void add_string_key(CMPIObjectPath* path, const char* name, const char* text) {
    path->ft->addKey(path, name, as_value(text), CMPI_chars);
}

void add_uint16_key(CMPIObjectPath* path, const char* name, std::uint16_t value) {
    add(path, name, value_of(&CMPIValue::uint16, value), CMPI_uint16);
}

void add_reference_key(CMPIObjectPath* path, const char* name, CMPIObjectPath* reference) {
    add(path, name, value_of(&CMPIValue::ref, reference), CMPI_ref);
}

const char* path_class_name(const CMPIObjectPath* path) {
    return chars_of(path->ft->getClassName(path, nullptr));
}

const char* path_name_space(const CMPIObjectPath* path) {
    return chars_of(path->ft->getNameSpace(path, nullptr));
}

CMPICount key_count(const CMPIObjectPath* path) {
    return path->ft->getKeyCount(path, nullptr);
}

path_key key_at(const CMPIObjectPath* path, CMPICount index) {
    CMPIString* name = nullptr;
    const CMPIData data = path->ft->getKeyAt(path, index, &name, nullptr);
    return {copy_text<254>(chars_of(name)), data};
}

bool is_usable(const CMPIObjectPath* path) {
    return path != nullptr && path->hdl != nullptr;
}

bool is_usable(const CMPIInstance* instance) {
    return instance != nullptr && instance->hdl != nullptr;
}

CMPIObjectPath* new_path(const char* name_space, const char* class_name, const CMPIBroker* broker) {
    return broker->eft->newObjectPath(broker, name_space, class_name, nullptr);
}

CMPIInstance* new_instance(const CMPIObjectPath* path, const CMPIBroker* broker) {
    return broker->eft->newInstance(broker, path, nullptr);
}

CMPIString* new_string(const char* text) {
    return _broker->eft->newString(_broker, text, nullptr);
}

} // namespace fcip
