#include "bench/replay.h"

#include <stdexcept>

namespace bench {

namespace {

CMPIType type_of(const std::string& name) {
    for (const CMPIType type : {CMPI_boolean, CMPI_uint8, CMPI_uint16, CMPI_uint32, CMPI_uint64})
        if (cmpihost::type_name(type) == name)
            return type;
    throw std::runtime_error("no replay for a value of type " + name);
}

CMPIValue value_of(CMPIType type, const cmpihost::Value& recorded) {
    CMPIValue value{};
    if (type == CMPI_boolean) {
        value.boolean = std::get<bool>(recorded.data);
        return value;
    }
    const std::uint64_t number = std::get<std::uint64_t>(recorded.data);
    switch (type) {
    case CMPI_uint8:
        value.uint8 = static_cast<CMPIUint8>(number);
        break;
    case CMPI_uint16:
        value.uint16 = static_cast<CMPIUint16>(number);
        break;
    case CMPI_uint32:
        value.uint32 = static_cast<CMPIUint32>(number);
        break;
    default:
        value.uint64 = number;
    }
    return value;
}

} // namespace

Replay::Replay(const cmpihost::Object& object)
    : object_(&object), keys_(settings_of(object.keys)), properties_(settings_of(object.properties)) {}

Replay::Setting Replay::setting_of(const cmpihost::Property& property) {
    const char* name = property.name.c_str();
    if (const auto* text = std::get_if<std::string>(&property.value.data))
        return {name, CMPI_chars, {}, text->c_str(), {}};
    if (const auto* reference = std::get_if<cmpihost::Value::Reference>(&property.value.data))
        return {name, CMPI_ref, {}, nullptr, {Replay(**reference)}};
    const CMPIType type = type_of(property.type);
    return {name, type, value_of(type, property.value), nullptr, {}};
}

std::vector<Replay::Setting> Replay::settings_of(const std::vector<cmpihost::Property>& properties) {
    std::vector<Setting> settings;
    settings.reserve(properties.size());
    for (const cmpihost::Property& property : properties)
        settings.push_back(setting_of(property));
    return settings;
}

CMPIObjectPath* Replay::make_path(const CMPIBroker* broker) const {
    CMPIObjectPath* path = CMNewObjectPath(broker, object_->name_space.c_str(), object_->class_name.c_str(), nullptr);
    if (object_->host)
        CMSetHostname(path, object_->host->c_str());
    return path;
}

CMPIObjectPath* Replay::make_keyed_path(const CMPIBroker* broker) const {
    CMPIObjectPath* path = make_path(broker);
    for (const Setting& key : keys_) {
        CMPIValue value = key.value;
        if (key.type == CMPI_ref)
            value.ref = key.reference.front().make_keyed_path(broker);
        CMAddKey(path, key.name, key.type == CMPI_chars ? static_cast<const void*>(key.text) : &value, key.type);
    }
    return path;
}

void Replay::return_instance(const CMPIBroker* broker, const CMPIResult* result, bool filter,
                             const char** properties) const {
    CMPIInstance* instance = CMNewInstance(broker, make_path(broker), nullptr);
    for (const Setting& property : properties_) {
        CMPIValue value = property.value;
        if (property.type == CMPI_ref)
            value.ref = property.reference.front().make_keyed_path(broker);
        const void* given = property.type == CMPI_chars ? static_cast<const void*>(property.text) : &value;
        CMSetProperty(instance, property.name, given, property.type);
    }
    const char* no_keys[] = {nullptr};
    if (filter)
        CMSetPropertyFilter(instance, properties, no_keys);
    CMReturnInstance(result, instance);
}

void Replay::return_path(const CMPIBroker* broker, const CMPIResult* result) const {
    CMReturnObjectPath(result, make_keyed_path(broker));
}

} // namespace bench
