#include "simulator/provider/values.h"

#include <cmpimacs.h>

namespace switchsim {

namespace {

/// A property that is an array; without memory for it there is none.
template <class Element, class Put>
void set_array(const CMPIBroker* broker, CMPIInstance* instance, const char* name, CMPIType type,
               const std::vector<Element>& elements, Put put) {
    CMPIValue value{};
    value.array = CMNewArray(broker, static_cast<CMPICount>(elements.size()), type, nullptr);
    if (!value.array)
        return;
    for (std::size_t at = 0; at < elements.size(); ++at)
        put(value.array, static_cast<CMPICount>(at), elements[at]);
    CMSetProperty(instance, name, &value, static_cast<CMPIType>(CMPI_ARRAY | type));
}

} // namespace

void set_state(const CMPIBroker* broker, CMPIInstance* instance, const State& state) {
    set_numbers(broker, instance, "OperationalStatus", {state.operational_status});
    set_number(instance, "EnabledState", state.enabled_state);
}

void set_number(CMPIInstance* instance, const char* name, std::uint16_t number) {
    CMPIValue value{};
    value.uint16 = number;
    CMSetProperty(instance, name, &value, CMPI_uint16);
}

void set_numbers(const CMPIBroker* broker, CMPIInstance* instance, const char* name,
                 const std::vector<std::uint16_t>& numbers) {
    set_array(broker, instance, name, CMPI_uint16, numbers,
              [](const CMPIArray* array, CMPICount at, std::uint16_t number) {
                  CMPIValue value{};
                  value.uint16 = number;
                  CMSetArrayElementAt(array, at, &value, CMPI_uint16);
              });
}

void set_texts(const CMPIBroker* broker, CMPIInstance* instance, const char* name,
               const std::vector<std::string>& texts) {
    set_array(broker, instance, name, CMPI_string, texts,
              [](const CMPIArray* array, CMPICount at, const std::string& text) {
                  CMSetArrayElementAt(array, at, text.c_str(), CMPI_chars);
              });
}

} // namespace switchsim
