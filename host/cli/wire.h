// Requests and answers as bytes, for the two ends of a pipe on one machine.
#pragma once

#include "host/broker/broker.h"

namespace cmpihost {

/// Puts values one behind the other.
class WireWriter {
  public:
    void number(std::uint64_t value);
    void text(std::string_view text);
    void property(const Property& property);
    void object(const Object& object);
    void request(const Request& request);
    /// Without its objects, which go one by one.
    void answer(const Answer& answer);

    const std::string& bytes() const { return bytes_; }

  private:
    void optional(const std::optional<std::string>& text);
    void properties(const std::vector<Property>& properties);
    void value(const Value& value);

    std::string bytes_;
};

/// Takes them out in the same order. Throws std::runtime_error where there are too few bytes.
class WireReader {
  public:
    explicit WireReader(std::string_view bytes) : rest_(bytes) {}

    std::uint64_t number();
    std::string text();
    Property property();
    Object object();
    Request request();
    Answer answer();

  private:
    std::string_view take(std::uint64_t size);
    std::optional<std::string> optional();
    std::vector<Property> properties();
    Value value();

    std::string_view rest_;
};

} // namespace cmpihost
