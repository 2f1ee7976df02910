#include "simulator/address_text.h"

#include <charconv>

namespace switchsim {

namespace {

using Groups = std::array<unsigned, 8>;

/// Groups that "::" stands for.
struct Gap {
    std::size_t begin = 0;
    std::size_t length = 0;
};

Groups groups_of(std::span<const std::uint8_t, 16> address) {
    Groups groups{};
    for (std::size_t i = 0; i < groups.size(); ++i)
        groups[i] = static_cast<unsigned>(address[2 * i] << 8 | address[2 * i + 1]);
    return groups;
}

/// The first of the longest runs of zeroes, if there is one of two groups at least.
Gap gap_in(const Groups& groups) {
    Gap longest;
    Gap run;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        run = groups[i] != 0 ? Gap{i + 1, 0} : Gap{run.begin, run.length + 1};
        if (run.length > longest.length)
            longest = run;
    }
    return longest.length < 2 ? Gap{} : longest;
}

/// Whether the last two groups are written as an IPv4 address.
bool holds_ipv4(const Groups& groups, const Gap& gap) {
    return gap.begin == 0 && (gap.length == 6 || (gap.length == 5 && groups[5] == 0xffff));
}

char* write_ipv4(char* out, char* end, std::span<const std::uint8_t, 4> address) {
    for (std::size_t i = 0; i < address.size(); ++i) {
        if (i > 0)
            *out++ = '.';
        out = std::to_chars(out, end, address[i]).ptr;
    }
    return out;
}

} // namespace

AddressText ipv4_text(std::span<const std::uint8_t, 4> address) {
    AddressText text{};
    write_ipv4(text.data(), text.data() + text.size(), address);
    return text;
}

AddressText ipv6_text(std::span<const std::uint8_t, 16> address) {
    AddressText text{};
    char* out = text.data();
    char* const end = out + text.size();
    const Groups groups = groups_of(address);
    const Gap gap = gap_in(groups);
    const std::size_t in_hexadecimal = holds_ipv4(groups, gap) ? 6 : 8;
    for (std::size_t i = 0; i < in_hexadecimal; ++i) {
        const bool left_out = i >= gap.begin && i < gap.begin + gap.length;
        if (left_out ? i == gap.begin : i > 0)
            *out++ = ':';
        if (!left_out)
            out = std::to_chars(out, end, groups[i], 16).ptr;
    }
    if (gap.length > 0 && gap.begin + gap.length == 8)
        *out++ = ':';
    if (in_hexadecimal == 6) {
        *out++ = ':';
        write_ipv4(out, end, address.last<4>());
    }
    return text;
}

} // namespace switchsim
