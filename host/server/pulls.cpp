// Operations that return objects at once or in portions.
#include "host/cimxml/write_reply.h"
#include "host/server/asking.h"
#include "host/server/exchange.h"

#include <array>

namespace cmpihost::server {

namespace {

/// Refuses what no enumeration of this server can do.
void check_opening(const cimxml::Call& call) {
    using cimxml::argument;
    if (argument<std::string>(call, "FilterQuery") != nullptr ||
        argument<std::string>(call, "FilterQueryLanguage") != nullptr)
        throw Status{CimCode::filtered_enumeration_not_supported, "filter queries are not supported"};
    const auto* go_on = argument<bool>(call, "ContinueOnError");
    if (go_on != nullptr && *go_on)
        throw Status{CimCode::continuation_on_error_not_supported, "ContinueOnError is not supported"};
}

std::chrono::seconds granted_timeout(const Exchange& exchange) {
    const auto* asked = cimxml::argument<std::uint32_t>(exchange.call, "OperationTimeout");
    const auto granted = exchange.contexts.granted(asked);
    if (!granted)
        throw Status{CimCode::invalid_operation_timeout,
                     "OperationTimeout " + std::to_string(*asked) + ", expected 1 to " +
                         std::to_string(exchange.settings.max_context_timeout.count())};
    return *granted;
}

std::size_t max_object_count(const cimxml::Call& call) {
    const auto* most = cimxml::argument<std::uint32_t>(call, "MaxObjectCount");
    return most == nullptr ? 0 : *most;
}

Status answer_pulled(Exchange& exchange, const Contexts::Pulled& pulled) {
    if (pulled.status.code != CimCode::ok)
        return pulled.status;
    exchange.objects = pulled.objects;
    cimxml::begin_reply(exchange.body.buffer(), exchange.call.envelope);
    exchange.body.append(pulled.bytes);
    cimxml::end_reply(exchange.body.buffer(), pulled.context, pulled.context.empty());
    return {};
}

Status pull(Exchange& exchange, PullKind kind) {
    const auto& context = *cimxml::argument<std::string>(exchange.call, "EnumerationContext");
    return answer_pulled(exchange,
                         exchange.contexts.pull(context, kind, exchange.space.name, max_object_count(exchange.call)));
}

Status pull_instances_with_path(Exchange& exchange) {
    return pull(exchange, PullKind::instances_with_path);
}

Status pull_instance_paths(Exchange& exchange) {
    return pull(exchange, PullKind::instance_paths);
}

/// Queries cannot be opened.
Status pull_instances(Exchange& /*exchange*/) {
    return {CimCode::invalid_enumeration_context, "there is no open query"};
}

Status close_enumeration(Exchange& exchange) {
    const auto& context = *cimxml::argument<std::string>(exchange.call, "EnumerationContext");
    Status status = exchange.contexts.close(context, exchange.space.name);
    if (status.code == CimCode::ok)
        cimxml::append_empty_reply(exchange.body.buffer(), exchange.call.envelope);
    return status;
}

struct PullRow {
    std::string_view name;
    Operation operation;
};

constexpr std::array pull_rows{
    PullRow{"CloseEnumeration", close_enumeration},
    PullRow{"PullInstancePaths", pull_instance_paths},
    PullRow{"PullInstances", pull_instances},
    PullRow{"PullInstancesWithPath", pull_instances_with_path},
};

} // namespace

Status answer_inquiry(Exchange& exchange, const InquiryRow& row) {
    const Inquiry inquiry = make_inquiry(exchange.call, row, exchange.space);
    cimxml::begin_reply(exchange.body.buffer(), exchange.call.envelope);
    Asked asked = ask(inquiry, exchange.place, exchange.body, exchange.notes);
    exchange.objects = asked.objects;
    cimxml::end_reply(exchange.body.buffer());
    return std::move(asked.status);
}

Status answer_opening(Exchange& exchange, const InquiryRow& row) {
    check_opening(exchange.call);
    const std::chrono::seconds timeout = granted_timeout(exchange);
    const Inquiry inquiry = make_inquiry(exchange.call, row, exchange.space);
    OpenedObjects objects(exchange.settings.max_reply);
    Asked asked = ask(inquiry, exchange.place, objects, exchange.notes);
    if (asked.status.code != CimCode::ok)
        return std::move(asked.status);
    const PullKind kind = has_instance(row.form) ? PullKind::instances_with_path : PullKind::instance_paths;
    return answer_pulled(exchange, exchange.contexts.open(kind, exchange.space.name, objects.take(),
                                                          max_object_count(exchange.call), timeout));
}

Operation find_pull_operation(std::string_view name) {
    for (const PullRow& row : pull_rows)
        if (same_name(row.name, name))
            return row.operation;
    return nullptr;
}

} // namespace cmpihost::server
