#include "host/metrics/units.h"

#include "host/cim/whole_number.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>

namespace cmpihost::metrics {

namespace {

struct BaseUnit {
    std::string_view word;
    std::string_view many; ///< as a name ends
    std::string_view one;
    std::uint64_t by;
};

constexpr std::array base_units{
    BaseUnit{"count", "", "", 1},
    BaseUnit{"byte", "bytes", "byte", 1},
    BaseUnit{"bit", "bytes", "byte", 8},
    BaseUnit{"second", "seconds", "second", 1},
};

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

/// A unit that is put together factor by factor.
class Composition {
  public:
    /// Whether it is one that we know.
    bool add(std::string_view factor, bool divides) {
        if (const std::size_t power = factor.find('^'); power != std::string_view::npos)
            return scale(whole_number<int>(trimmed(factor.substr(0, power))),
                         whole_number<int>(trimmed(factor.substr(power + 1))), divides);
        const auto* base = std::find_if(base_units.begin(), base_units.end(),
                                        [factor](const BaseUnit& unit) { return unit.word == factor; });
        if (base == base_units.end() || (!divides && !unit_.name.empty()) || (divides && base->by != 1))
            return false;
        if (divides)
            unit_.name += (unit_.name.empty() ? "per_" : "_per_") + std::string(base->one);
        else
            unit_.name = base->many;
        return !__builtin_mul_overflow(unit_.by, base->by, &unit_.by);
    }

    Unit result() {
        const std::uint64_t common = std::gcd(unit_.times, unit_.by);
        unit_.times /= common;
        unit_.by /= common;
        return std::move(unit_);
    }

  private:
    bool scale(std::optional<int> base, std::optional<int> exponent, bool divides) {
        if (!base || !exponent || (*base != 2 && *base != 10))
            return false;
        const int most = *base == 2 ? 53 : 13;
        if (*exponent > most || *exponent < -most)
            return false;
        std::uint64_t& side = (*exponent < 0) == divides ? unit_.times : unit_.by;
        for (int i = 0; i < std::abs(*exponent); ++i)
            if (__builtin_mul_overflow(side, static_cast<std::uint64_t>(*base), &side))
                return false;
        return true;
    }

    Unit unit_;
};

} // namespace

Unit read_unit(std::string_view punit) {
    Composition composition;
    bool divides = false;
    while (!trimmed(punit).empty()) {
        const std::size_t end = std::min(punit.find_first_of("*/"), punit.size());
        if (!composition.add(trimmed(punit.substr(0, end)), divides))
            return {};
        divides = end < punit.size() && punit[end] == '/';
        punit.remove_prefix(std::min(end + 1, punit.size()));
    }
    return composition.result();
}

} // namespace cmpihost::metrics
