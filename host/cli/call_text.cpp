#include "host/cli/call_text.h"

#include "host/cim/path_text.h"
#include "host/cli/output.h"

#include <array>

namespace cmpihost {

namespace {

/// In the order of Request::Operation.
constexpr std::array operation_names{
    "enumerateInstances", "enumerateInstanceNames", "getInstance",    "associators",    "associatorNames",
    "references",         "referenceNames",         "createInstance", "modifyInstance", "deleteInstance",
    "execQuery",          "invokeMethod",           "setProperty",    "getProperty"};

} // namespace

std::string operation_name(Request::Operation operation) {
    return operation_names.at(static_cast<std::size_t>(operation));
}

std::string call_text(const Request& request) {
    return operation_name(request.operation) + " of " + printable(path_text(request.path));
}

} // namespace cmpihost
