// The standard's return codes: their names, and what they mean.
#include "host/broker/broker.h"

#include <algorithm>
#include <array>

namespace cmpihost {

namespace {

struct RcRow {
    int rc;
    std::string_view name;
};

constexpr std::array names{
    RcRow{CMPI_RC_OK, "OK"},
    RcRow{CMPI_RC_ERR_FAILED, "FAILED"},
    RcRow{CMPI_RC_ERR_ACCESS_DENIED, "ACCESS_DENIED"},
    RcRow{CMPI_RC_ERR_INVALID_NAMESPACE, "INVALID_NAMESPACE"},
    RcRow{CMPI_RC_ERR_INVALID_PARAMETER, "INVALID_PARAMETER"},
    RcRow{CMPI_RC_ERR_INVALID_CLASS, "INVALID_CLASS"},
    RcRow{CMPI_RC_ERR_NOT_FOUND, "NOT_FOUND"},
    RcRow{CMPI_RC_ERR_NOT_SUPPORTED, "NOT_SUPPORTED"},
    RcRow{CMPI_RC_ERR_CLASS_HAS_CHILDREN, "CLASS_HAS_CHILDREN"},
    RcRow{CMPI_RC_ERR_CLASS_HAS_INSTANCES, "CLASS_HAS_INSTANCES"},
    RcRow{CMPI_RC_ERR_INVALID_SUPERCLASS, "INVALID_SUPERCLASS"},
    RcRow{CMPI_RC_ERR_ALREADY_EXISTS, "ALREADY_EXISTS"},
    RcRow{CMPI_RC_ERR_NO_SUCH_PROPERTY, "NO_SUCH_PROPERTY"},
    RcRow{CMPI_RC_ERR_TYPE_MISMATCH, "TYPE_MISMATCH"},
    RcRow{CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED, "QUERY_LANGUAGE_NOT_SUPPORTED"},
    RcRow{CMPI_RC_ERR_INVALID_QUERY, "INVALID_QUERY"},
    RcRow{CMPI_RC_ERR_METHOD_NOT_AVAILABLE, "METHOD_NOT_AVAILABLE"},
    RcRow{CMPI_RC_ERR_METHOD_NOT_FOUND, "METHOD_NOT_FOUND"},
    RcRow{CMPI_RC_DO_NOT_UNLOAD, "DO_NOT_UNLOAD"},
    RcRow{CMPI_RC_NEVER_UNLOAD, "NEVER_UNLOAD"},
    RcRow{CMPI_RC_ERR_INVALID_HANDLE, "INVALID_HANDLE"},
    RcRow{CMPI_RC_ERR_INVALID_DATA_TYPE, "INVALID_DATA_TYPE"},
    RcRow{CMPI_RC_ERROR_SYSTEM, "ERROR_SYSTEM"},
    RcRow{CMPI_RC_ERROR, "ERROR"},
};

} // namespace

std::string_view rc_name(int rc) {
    const auto* row = std::find_if(names.begin(), names.end(), [rc](const RcRow& r) { return r.rc == rc; });
    return row == names.end() ? "UNKNOWN" : row->name;
}

bool is_not_served(int rc) {
    return rc == CMPI_RC_ERR_NOT_SUPPORTED || rc == CMPI_RC_ERR_INVALID_CLASS;
}

} // namespace cmpihost
