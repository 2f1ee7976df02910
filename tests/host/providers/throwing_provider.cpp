// A provider in C++ that lets exceptions out of its calls, as the class that it is asked for says:
//
//   Throw_Exception  std::runtime_error     Throw_Number  an int
//   Throw_Noexcept   an exception out of a function that admits none
#include "cmpidt.h"
#include "cmpift.h"
#include "cmpimacs.h"

#include <stdexcept>
#include <string_view>

namespace {

char break_promise(std::string_view text) noexcept {
    return text.at(text.size()); // std::out_of_range
}

CMPIStatus enumerate_instance_names(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*,
                                    const CMPIObjectPath* path) {
    const std::string_view name = CMGetCharsPtr(CMGetClassName(path, nullptr), nullptr);
    if (name == "Throw_Number")
        throw 5;
    if (name == "Throw_Noexcept")
        return {break_promise(name) == 0 ? CMPI_RC_OK : CMPI_RC_ERR_FAILED, nullptr};
    throw std::runtime_error("no memory\nfor this");
}

CMPIStatus cleanup(CMPIInstanceMI*, const CMPIContext*, CMPIBoolean) {
    return {CMPI_RC_OK, nullptr};
}

} // namespace

extern "C" __attribute__((visibility("default"))) CMPIInstanceMI* Throw_Create_InstanceMI(const CMPIBroker*,
                                                                                          const CMPIContext*) {
    static const CMPIInstanceMIFT table{.ftVersion = 100,
                                        .miVersion = 100,
                                        .miName = "instanceThrow",
                                        .cleanup = cleanup,
                                        .enumerateInstanceNames = enumerate_instance_names,
                                        .enumerateInstances = nullptr,
                                        .getInstance = nullptr,
                                        .createInstance = nullptr,
                                        .modifyInstance = nullptr,
                                        .deleteInstance = nullptr,
                                        .execQuery = nullptr};
    static CMPIInstanceMI mi{nullptr, &table};
    return &mi;
}
