#include "host/http/log_line.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cstdio>
#include <ctime>

namespace cmpihost::http {

namespace {

constexpr std::size_t longest_text = 1'000;

/// RFC 3339, in UTC.
std::string time_text(std::chrono::system_clock::time_point time) {
    const auto since = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch());
    const std::time_t whole = std::chrono::floor<std::chrono::seconds>(since).count();
    std::tm parts{};
    gmtime_r(&whole, &parts);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", parts.tm_year + 1900,
                  parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec,
                  static_cast<int>(since.count() % 1000));
    return text.data();
}

/// Printable ASCII without `least` and what comes before it; the rest as \xNN, and a backslash, too.
std::string escaped(std::string_view text, char least) {
    std::string out;
    for (const char c : text.substr(0, longest_text)) {
        if (c > least && c <= '~' && c != '\\') {
            out += c;
            continue;
        }
        std::array<char, 8> code{};
        std::snprintf(code.data(), code.size(), "\\x%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
        out += code.data();
    }
    return out;
}

std::string word(std::string_view text) {
    return text.empty() ? "-" : escaped(text, ' ');
}

std::string status_text(const LogRecord& record) {
    if (record.http_status != 200)
        return "http=" + std::to_string(record.http_status);
    return record.cim_status == 0 ? "ok" : "cim=" + std::to_string(record.cim_status);
}

std::string json_text(const nlohmann::ordered_json& object) {
    return object.dump(-1, ' ', true, nlohmann::ordered_json::error_handler_t::replace);
}

} // namespace

std::string text_line(const LogRecord& record) {
    std::array<char, 32> took{};
    std::snprintf(took.data(), took.size(), "%.3f", static_cast<double>(record.took.count()) / 1000);
    std::string line = time_text(record.time);
    for (const std::string& text :
         {word(record.address), word(record.user), word(record.operation), word(record.class_name), status_text(record),
          std::to_string(record.objects), std::to_string(record.bytes), std::string(took.data())})
        line.append(" ").append(text);
    return line;
}

std::string json_line(const LogRecord& record) {
    return json_text({{"time", time_text(record.time)},
                      {"address", record.address},
                      {"user", record.user.substr(0, longest_text)},
                      {"operation", record.operation.substr(0, longest_text)},
                      {"class", record.class_name.substr(0, longest_text)},
                      {"http_status", record.http_status},
                      {"cim_status", record.cim_status},
                      {"objects", record.objects},
                      {"bytes", record.bytes},
                      {"milliseconds", static_cast<double>(record.took.count()) / 1000}});
}

std::string note_line(std::chrono::system_clock::time_point time, std::string_view text) {
    return time_text(time) + " note " + escaped(text, '\x1f');
}

std::string json_note_line(std::chrono::system_clock::time_point time, std::string_view text) {
    return json_text({{"time", time_text(time)}, {"note", std::string(text.substr(0, longest_text))}});
}

} // namespace cmpihost::http
