// Date-times as CMPI objects.
#include "host/broker/broker_tables.h"
#include "host/broker/scope.h"
#include "host/cim/date_time.h"

#include <chrono>

namespace cmpihost {

namespace {

DateTime now() {
    using namespace std::chrono;
    const auto since_epoch = duration_cast<std::chrono::microseconds>(system_clock::now().time_since_epoch());
    return {since_epoch.count(), false, 0};
}

CMPIUint64 get_binary_format(const CMPIDateTime* self, CMPIStatus* status) {
    const DateTime* time = open(self, status);
    if (time == nullptr)
        return 0;
    if (time->microseconds < 0) { // before 1970
        report(status, CMPI_RC_ERR_FAILED);
        return 0;
    }
    return static_cast<CMPIUint64>(time->microseconds);
}

CMPIString* get_string_format(const CMPIDateTime* self, CMPIStatus* status) {
    const DateTime* time = open(self, status);
    return time == nullptr ? nullptr : make_string(format_date_time(*time), status);
}

CMPIBoolean is_interval(const CMPIDateTime* self, CMPIStatus* status) {
    const DateTime* time = open(self, status);
    return time != nullptr && time->interval ? 1 : 0;
}

/// Makes the date-time that was read; nothing read is ERR_INVALID_PARAMETER.
CMPIDateTime* make_date_time(const std::optional<DateTime>& time, CMPIStatus* status) {
    if (time)
        return make<CMPIDateTime>(status, [&time](Store&) { return *time; });
    report(status, CMPI_RC_ERR_INVALID_PARAMETER);
    return nullptr;
}

} // namespace

const CMPIDateTimeFT date_time_table{
    .ftVersion = CMPIVersion100,
    .release = release_object,
    .clone = clone_object,
    .getBinaryFormat = get_binary_format,
    .getStringFormat = get_string_format,
    .isInterval = is_interval,
};

CMPIDateTime* new_date_time(const CMPIBroker*, CMPIStatus* status) {
    return make_date_time(now(), status);
}

CMPIDateTime* new_date_time_from_binary(const CMPIBroker*, CMPIUint64 microseconds, CMPIBoolean interval,
                                        CMPIStatus* status) {
    return make_date_time(date_time_from_binary(microseconds, interval != 0), status);
}

CMPIDateTime* new_date_time_from_chars(const CMPIBroker*, const char* text, CMPIStatus* status) {
    return make_date_time(text == nullptr ? std::nullopt : parse_date_time(text), status);
}

} // namespace cmpihost
