#include "simulator/identity.h"
#include "simulator/call.h"
#include "simulator/state.h"

#include <algorithm>
#include <array>

using namespace switchsim;

namespace switchsim {

const char* switch_name() {
    return current().has_name ? current().name.c_str() : nullptr;
}

const char* system_name() {
    if (!current().has_name)
        return nullptr;
    return current().system_name.empty() ? current().name.c_str() : current().system_name.c_str();
}

} // namespace switchsim

namespace {

/// The text that the scenario gives a WWN; null if it gives none.
const std::string* given_text(const std::uint8_t wwn[8]) {
    Wwn key;
    std::copy(wwn, wwn + key.size(), key.begin());
    const auto found = current().wwn_texts.find(key);
    return found == current().wwn_texts.end() ? nullptr : &found->second;
}

/// The bytes in hexadecimal, "20:00:00:...", by hand: every row of an answer has some.
std::array<char, 24> octets_text(const std::uint8_t wwn[8]) {
    constexpr char digits[] = "0123456789abcdef";
    std::array<char, 24> text{};
    auto* out = text.begin();
    for (std::size_t i = 0; i < 8; ++i) {
        *out++ = digits[wwn[i] >> 4];
        *out++ = digits[wwn[i] & 15];
        *out++ = ':';
    }
    text.back() = '\0';
    return text;
}

} // namespace

std::string switchsim::wwn_text(const Wwn& wwn) {
    const std::string* given = given_text(wwn.data());
    return given ? *given : octets_text(wwn.data()).data();
}

const char* getCSName(void) {
    const Call call(Function::getCSName);
    return call.returns_null() ? nullptr : switch_name();
}

const char* CSgetName(mts_queue queue) {
    const Call call(Function::CSgetName);
    return !call.expect_queue(queue) || call.returns_null() ? nullptr : system_name();
}

int system_cim_get_switch_wwn(mts_queue queue, std::uint8_t wwn[8]) {
    const Call call(Function::system_cim_get_switch_wwn);
    if (!call.expect_queue(queue) || !call.expect_pointer("the WWN", wwn))
        return failed;
    if (const auto fault = call.fault_on_storage(wwn, 8))
        return *fault;
    std::memcpy(wwn, current().wwn.data(), current().wwn.size());
    return 0;
}

int cim_sprintf_wwn(char* text, const std::uint8_t wwn[8]) {
    const Call call(Function::cim_sprintf_wwn);
    if (!call.expect_pointer("the text", text) || !call.expect_pointer("the WWN", wwn))
        return failed;
    if (const auto fault = call.fault_on_storage(text, 1))
        return *fault;
    if (const std::string* given = given_text(wwn))
        write_text(text, *given);
    else
        write_text(text, octets_text(wwn).data());
    return 0;
}
