// The classes of the switch's own provider: computer systems and ports, from the simulated switch's tables.
#pragma once

#include "simulator/provider/look.h"

#include <string>
#include <vector>

namespace switchsim {

/// A class, and the part of its objects' keys that tells them apart.
struct SwitchClass {
    const char* name;
    const char* id_key;

    /// The ids of all its objects, each once.
    std::vector<std::string> (*ids)(const Switch& contents);

    /// Whether an object has this id.
    bool (*has)(const Switch& contents, const std::string& id);

    /// The objects' path and instance. Null: the broker has no memory.
    CMPIObjectPath* (*path)(const CimClass& of, const std::string& id);
    CMPIInstance* (*instance)(Look& look, const CimClass& of, const std::string& id, const char** properties);
};

/// The class of this name, in any case; null if it is not served.
const SwitchClass* find_class(const char* name);

} // namespace switchsim
