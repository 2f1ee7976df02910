// What the log says, as lines.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace cmpihost::http {

/// A request that was answered, or refused.
struct LogRecord {
    std::chrono::system_clock::time_point time{};
    std::string address;
    std::string user;      ///< empty: none
    std::string operation; ///< empty: not known
    std::string class_name;
    unsigned http_status = 200;
    unsigned cim_status = 0;
    std::uint64_t objects = 0;
    std::uint64_t bytes = 0; ///< of the reply's body
    std::chrono::microseconds took{0};
};

/// `TIME ADDRESS USER OPERATION CLASS STATUS OBJECTS BYTES MILLISECONDS`, each without blanks; - stands for nothing.
/// The status is ok, cim=CODE or http=STATUS.
std::string text_line(const LogRecord& record);

/// The same as an object of JSON.
std::string json_line(const LogRecord& record);

/// `TIME note TEXT`
std::string note_line(std::chrono::system_clock::time_point time, std::string_view text);
std::string json_note_line(std::chrono::system_clock::time_point time, std::string_view text);

} // namespace cmpihost::http
