// What the tests of the host share: a scope, and short names for broker calls.
#pragma once

#include "host/broker/broker.h"

#include <cmpimacs.h>

#include <gtest/gtest.h>

#include <string>

namespace cmpihost {

inline std::string text(const CMPIString* string) {
    return string == nullptr ? "(null)" : CMGetCharsPtr(string, nullptr);
}

/// A test inside a scope, as a provider runs in.
class InScope : public testing::Test {
  protected:
    CMPIObjectPath* new_object_path(const char* class_name = "C") {
        return CMNewObjectPath(broker(), "root/test", class_name, nullptr);
    }

    CMPIInstance* new_instance(const char* class_name = "C") {
        return CMNewInstance(broker(), new_object_path(class_name), nullptr);
    }

    CMPIDateTime* new_date_time(const char* chars) {
        return broker()->eft->newDateTimeFromChars(broker(), chars, nullptr);
    }

    CallScope scope;
};

/// A pointer that leads nowhere.
template <class Handle>
Handle* wild_pointer() {
    return reinterpret_cast<Handle*>(-1);
}

inline Property string_property(const std::string& name, const std::string& value) {
    return {name, "string", {value}};
}

inline Property uint_property(const std::string& name, std::uint64_t value, const std::string& type = "uint64") {
    return {name, type, {value}};
}

} // namespace cmpihost
