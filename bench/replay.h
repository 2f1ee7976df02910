// The CMPI calls behind an answer: what the provider gave once is made again, with its names, types and values.
#pragma once

#include "host/broker/broker.h"

#include <cmpimacs.h>

#include <vector>

namespace bench {

/// One object of an answer. Refers to the recorded object, which has to stay where it is. A property that the provider
/// sets twice is set once here.
class Replay {
  public:
    explicit Replay(const cmpihost::Object& object);

    /// Makes the instance on a path without keys, and returns it. @param filter whether the property list is applied
    void return_instance(const CMPIBroker* broker, const CMPIResult* result, bool filter,
                         const char** properties) const;

    /// Makes the path with its keys, and returns it.
    void return_path(const CMPIBroker* broker, const CMPIResult* result) const;

  private:
    struct Setting {
        const char* name;
        CMPIType type;
        CMPIValue value;
        const char* text; ///< instead of the value, for chars
        std::vector<Replay> reference;
    };

    static Setting setting_of(const cmpihost::Property& property);
    static std::vector<Setting> settings_of(const std::vector<cmpihost::Property>& properties);
    CMPIObjectPath* make_path(const CMPIBroker* broker) const;
    CMPIObjectPath* make_keyed_path(const CMPIBroker* broker) const;

    const cmpihost::Object* object_;
    std::vector<Setting> keys_;
    std::vector<Setting> properties_;
};

} // namespace bench
