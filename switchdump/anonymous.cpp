#include "switchdump/anonymous.h"

#include "simulator/bytes.h"
#include "simulator/scenario_fields.h"

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <map>
#include <numeric>
#include <random>
#include <vector>

namespace switchdump {

namespace {

using switchsim::put_big;
using switchsim::Wwn;

using Random = std::mt19937_64;

/// The numbers from `first` on, each once, in an order that chance gives.
struct Shuffled {
    std::uint64_t first;
    std::uint64_t size; ///< at least 2, below 2^32
    std::uint64_t offset;
    std::uint64_t step; ///< shares no divisor with the size

    Shuffled(std::uint64_t begin, std::uint64_t count, Random& random)
        : first(begin), size(count), offset(random() % count), step(1) {
        do
            step = 1 + random() % (size - 1);
        while (std::gcd(step, size) != 1);
    }
    std::uint64_t at(std::uint64_t index) const { return first + (index * step + offset) % size; }
};

/// Gives each value that it is asked for a number: of the first range as long as there are some, then of the next.
template <class Value>
class Numbers {
  public:
    Numbers(std::initializer_list<std::uint64_t> sizes, Random& random) {
        std::uint64_t first = 0;
        for (const std::uint64_t size : sizes) {
            ranges_.emplace_back(first, size, random);
            first += size;
        }
    }

    std::uint32_t of(const Value& value) {
        const auto [row, is_new] = numbers_.emplace(value, 0);
        if (is_new)
            row->second = static_cast<std::uint32_t>(number(numbers_.size() - 1));
        return row->second;
    }

  private:
    std::uint64_t number(std::uint64_t index) const {
        for (const Shuffled& range : ranges_)
            if (index < range.first + range.size)
                return range.at(index - range.first);
        return index;
    }

    std::vector<Shuffled> ranges_;
    std::map<Value, std::uint32_t> numbers_;
};

constexpr std::uint32_t documentation_hosts = 254; // of each network
constexpr std::uint32_t all_documentation_hosts = 3 * documentation_hosts;
constexpr std::uint32_t benchmark_hosts = (1U << 17) - 1;
constexpr std::uint32_t shared_hosts = (1U << 22) - 2;
constexpr std::uint32_t documentation_macs = 256;

/// The hosts of the three documentation networks; behind them those of the range for benchmarks, and of the range that
/// carriers share, both of which are no host's on the Internet either.
std::uint32_t ipv4_of(std::uint32_t number) {
    constexpr std::uint32_t networks[] = {0xC0000200, 0xC6336400, 0xCB007100};
    if (number < all_documentation_hosts)
        return networks[number / documentation_hosts] + 1 + number % documentation_hosts;
    number -= all_documentation_hosts;
    return number < benchmark_hosts ? 0xC6120000 + 1 + number : 0x64400001 + number - benchmark_hosts;
}

/// Documentation addresses as far as there are some, then locally administered ones.
std::string mac_of(std::uint32_t number) {
    char text[18];
    const unsigned last = number & 0xFF;
    if (number < documentation_macs)
        std::snprintf(text, sizeof text, "00:00:5e:00:53:%02x", last);
    else
        std::snprintf(text, sizeof text, "02:00:00:%02x:%02x:%02x", number >> 16 & 0xFF, number >> 8 & 0xFF, last);
    return text;
}

/// WWNs over the documentation MAC addresses, 4,096 for each of them.
Wwn wwn_of(std::uint32_t number) {
    Wwn wwn{0x20, 0, 0x00, 0x00, 0x5E, 0x00, 0x53, 0};
    wwn[0] = static_cast<std::uint8_t>(0x20 | (number >> 16 & 0x0F));
    wwn[1] = static_cast<std::uint8_t>(number >> 8);
    wwn[7] = static_cast<std::uint8_t>(number);
    return wwn;
}

class Replacements {
  public:
    explicit Replacements(Random random)
        : ipv4_({all_documentation_hosts, benchmark_hosts, shared_hosts}, random), ipv6_({(1ULL << 32) - 1}, random),
          wwns_({1U << 20}, random), names_({9999, 999999999}, random),
          macs_({documentation_macs, (1U << 24) - documentation_macs}, random) {}

    void address(ip_addr_value& value) {
        if (std::all_of(std::begin(value.address), std::end(value.address), [](auto byte) { return byte == 0; }))
            return;
        const std::vector<std::uint8_t> key(std::begin(value.address), std::end(value.address));
        std::fill(std::begin(value.address), std::end(value.address), std::uint8_t{0});
        if (value.family == ip_family_ipv4) {
            put_big(value.address, 0, ipv4_of(ipv4_.of(key)));
        } else if (value.family == ip_family_ipv6) {
            put_big(value.address, 0, std::uint32_t{0x20010DB8});
            put_big(value.address, 12, ipv6_.of(key) + 1);
        }
    }

    Wwn wwn(const Wwn& value) { return value == Wwn{} ? value : wwn_of(wwns_.of(value)); }

    void wwn(std::uint8_t* bytes) {
        Wwn value;
        std::copy_n(bytes, value.size(), value.begin());
        std::ranges::copy(wwn(value), bytes);
    }

    /// Replaces a text, unless it is the one that stands there anyway.
    void name(std::string& text, const std::string& usual = "") {
        if (!text.empty() && text != usual)
            text = "name-" + std::to_string(names_.of(text) + 1);
    }

    void network_address(std::string& text) {
        if (switchsim::is_mac(text))
            text = mac_of(macs_.of(text));
        else
            name(text);
    }

  private:
    Numbers<std::vector<std::uint8_t>> ipv4_;
    Numbers<std::vector<std::uint8_t>> ipv6_;
    Numbers<Wwn> wwns_;
    Numbers<std::string> names_;
    Numbers<std::string> macs_;
};

void replace_in_ports(switchsim::Switch& contents, Replacements& replacements) {
    std::map<std::uint32_t, std::string> tunnel_names;
    for (const auto& [key, link] : contents.links)
        tunnel_names.emplace(link.link_if_index, switchsim::default_name(link));
    for (auto& [if_index, port] : contents.ports) {
        std::string usual = tunnel_names[if_index];
        std::string usual_kernel_name = usual;
        for (const switchsim::PortKind& kind : switchsim::port_kinds) {
            if (kind.kind == port.kind) {
                usual = default_name(kind, port);
                usual_kernel_name = default_kernel_name(kind, port);
            }
        }
        replacements.name(port.name, usual);
        replacements.name(port.kernel_name, usual_kernel_name);
        replacements.network_address(port.network_address);
    }
}

} // namespace

void make_anonymous(switchsim::Switch& contents, const std::string& salt) {
    const std::vector<std::uint8_t> bytes(salt.begin(), salt.end());
    std::seed_seq seed(bytes.begin(), bytes.end());
    Replacements replacements{Random(seed)};
    replacements.name(contents.name);
    replacements.name(contents.system_name);
    contents.wwn = replacements.wwn(contents.wwn);
    std::map<Wwn, std::string> texts;
    for (auto& [wwn, text] : contents.wwn_texts) {
        replacements.name(text);
        texts[replacements.wwn(wwn)] = text;
    }
    contents.wwn_texts = std::move(texts);
    for (auto& [id, vsan] : contents.vsans) {
        replacements.name(vsan.name, "VSAN" + std::to_string(id));
        if (vsan.domain)
            replacements.name(*vsan.domain);
    }
    for (auto& [id, profile] : contents.profiles)
        replacements.address(profile.local_address);
    for (auto& [key, link] : contents.links) {
        replacements.address(link.remote_address);
        replacements.wwn(link.remote_wwn);
    }
    replace_in_ports(contents, replacements);
}

} // namespace switchdump
