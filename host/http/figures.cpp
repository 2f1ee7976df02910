#include "host/http/figures.h"

#include "host/cimxml/operations.h"
#include "host/http/page_check.h"
#include "host/metrics/metric_text.h"

#include <algorithm>

namespace cmpihost::http {

namespace {

constexpr unsigned highest_cim_status = 29;

/// The operation as a label: one of few, whatever clients send.
std::string label_of(const LogRecord& record) {
    if (record.operation == "GET" || record.operation == "HEAD")
        return record.class_name == metrics_path ? "metrics" : "page";
    if (record.operation.empty())
        return "none";
    const auto* known = cimxml::find_operation(record.operation);
    return known == nullptr ? "other" : std::string(known->name);
}

std::string status_of(const LogRecord& record) {
    if (record.http_status != 200)
        return "http " + std::to_string(record.http_status);
    if (record.cim_status == 0)
        return "ok";
    return record.cim_status > highest_cim_status ? "cim other" : "cim " + std::to_string(record.cim_status);
}

using metrics::append_head;
using metrics::append_label;
using metrics::append_number;
using metrics::append_seconds;
using metrics::Text;

void append_single(Text& text, std::string_view name, std::string_view type, std::string_view help,
                   std::uint64_t value) {
    append_head(text, name, type, help);
    text.append(name).append(" ");
    append_number(text, value);
    text.append("\n");
}

} // namespace

std::uint64_t Figures::since() const {
    return static_cast<std::uint64_t>(std::chrono::floor<std::chrono::seconds>(since_.time_since_epoch()).count());
}

void Figures::count(const LogRecord& record) {
    ++requests_;
    failures_ += record.http_status != 200 || record.cim_status != 0 ? 1U : 0U;
    const std::string operation = label_of(record);
    ++statuses_[{operation, status_of(record)}];
    Durations& durations = durations_[operation];
    const double seconds = std::chrono::duration<double>(record.took).count();
    const auto* limit = std::find_if(limits.begin(), limits.end(), [seconds](double most) { return seconds <= most; });
    if (limit != limits.end())
        ++durations.within.at(static_cast<std::size_t>(limit - limits.begin()));
    ++durations.count;
    durations.sum += record.took;
}

void Figures::append_requests(Text& text) const {
    constexpr std::string_view name = "cmpihost_requests_total";
    append_head(text, name, "counter", "Requests that were answered or refused, by operation and status.");
    for (const auto& [key, count] : statuses_) {
        text.append(name).append("{");
        append_label(text, "operation", key.first);
        append_label(text, "status", key.second);
        text.append("} ");
        append_number(text, count);
        text.append("\n");
    }
}

void Figures::append_durations(Text& text) const {
    const std::string name = "cmpihost_request_duration_seconds";
    append_head(text, name, "histogram", "Time from a request's last byte to the last byte of its reply.");
    for (const auto& [operation, durations] : durations_) {
        Text label;
        append_label(label, "operation", operation);
        std::uint64_t sum = 0;
        for (std::size_t index = 0; index < limits.size(); ++index) {
            text.append(name).append("_bucket{").append(label.view()).append(",le=\"");
            append_number(text, limits.at(index));
            text.append("\"} ");
            append_number(text, sum += durations.within.at(index));
            text.append("\n");
        }
        text.append(name).append("_bucket{").append(label.view()).append(",le=\"+Inf\"} ");
        append_number(text, durations.count);
        text.append("\n").append(name).append("_sum{").append(label.view()).append("} ");
        append_seconds(text, durations.sum);
        text.append("\n").append(name).append("_count{").append(label.view()).append("} ");
        append_number(text, durations.count);
        text.append("\n");
    }
}

std::string Figures::text(const Moment& moment) const {
    Text text;
    append_requests(text);
    append_durations(text);
    append_single(text, "cmpihost_connections", "gauge", "Connections that are open.", moment.connections);
    append_single(text, "cmpihost_connections_total", "counter", "Connections that were taken.", connections_);
    append_single(text, "cmpihost_provider_restarts_total", "counter",
                  "How often the process that runs the providers ended, or had to be ended.", moment.restarts);
    append_single(text, "cmpihost_provider_up", "gauge", "Whether the providers' process answered this scrape.",
                  moment.answered ? 1 : 0);
    append_single(text, "cmpihost_start_time_seconds", "gauge", "When the server began, in seconds since 1970.",
                  since());
    return std::string(text.view());
}

} // namespace cmpihost::http
