#include "provider/classes/fcip/link_statistics.h"

#include "provider/common/endian.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

using namespace fcip;

namespace {

struct counter {
    const char* property;
    std::size_t offset; ///< in the link error record
};

constexpr counter counters[] = {
    {"FcipLossofFcSynchs", 8},  {"FcipSfNotRcv", 16},       {"FcipSfRespNotRcv", 24},
    {"FcipSfRespMismatch", 32}, {"FcipSfInvalidNonce", 40}, {"FcipDuplicateSfRcv", 48},
    {"FcipSfInvalidWWN", 56},   {"FcipBB2LkaTimeOut", 64},  {"FcipSntpTimeStampExp", 72},
};

} // namespace

CMPIInstance* populate_fcip_statistics(CMPIInstance* instance, const FcipLinkErrors* errors) {
    trace_entering(__func__);
    if (!is_usable(instance))
        return instance;
    for (const auto& [property, offset] : counters)
        set_uint64(instance, property, read_be64(errors->bytes + offset));
    trace_exiting(__func__);
    return instance;
}
