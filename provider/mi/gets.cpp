#include "provider/mi/gets.h"

#include "provider/classes/net/tcp_statistics.h"
#include "provider/common/results.h"
#include "provider/common/trace.h"

namespace fcip {

namespace {

void return_built(const get_route& route, const get_request& request) {
    FcipLinkEntry link{};
    if (!look_up_link(request, route.mode, link))
        return;
    const char* class_name = route.fixed_class != nullptr ? route.fixed_class : request.class_name;
    return_instance(request.result, route.build(class_name, request.name_space, &link, request.properties));
}

} // namespace

void dispatch_get(std::span<const class_row<get_route>> routes, const get_request& request) {
    const auto* row = row_for(routes, request.class_name);
    if (row == nullptr)
        return;
    if (row->serves.build != nullptr)
        return_built(row->serves, request);
    else if (row->serves.get != nullptr)
        row->serves.get(request);
    else if (row->serves.rebuild != nullptr)
        row->serves.rebuild(request.path, request.result, request.properties);
}

bool look_up_link(const get_request& request, lookup_mode mode, FcipLinkEntry& link) {
    return get_fcip_link_entry_from(request.key_value, &link, mode) == 0;
}

void return_tcp_statistics(const get_request& request, lookup_mode mode, const char* function) {
    FcipLinkEntry link{};
    if (!look_up_link(request, mode, link))
        return;
    fetched<FcipLinkErrors> errors = fetch_link_errors(link); // not used, but asked for
    if (errors.status != 0 && errors.row != nullptr) {
        errors.row.reset();
        trace_location(function, 418);
    }
    // Always of this class, whichever was requested.
    const CMPIInstance* instance =
        tcp_statistical_data_build_instance("ZANTO_TCPStatisticalData", request.name_space, &link, request.properties);
    errors.row.reset(); // ahead of the return
    return_instance(request.result, instance);
}

} // namespace fcip
