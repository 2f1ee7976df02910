// Units as Prometheus wants them.
#include "host/metrics/units.h"

#include <gtest/gtest.h>

#include <vector>

namespace cmpihost::metrics {
namespace {

std::string shown(const Unit& unit) {
    return unit.name + " * " + std::to_string(unit.times) + " / " + std::to_string(unit.by);
}

TEST(Units, FactorsAndNamesOfBaseUnits) {
    const std::vector<std::pair<const char*, const char*>> rows{
        {"count", " * 1 / 1"},
        {"byte", "bytes * 1 / 1"},
        {"bit", "bytes * 1 / 8"},
        {"second", "seconds * 1 / 1"},
        {"second * 10^-3", "seconds * 1 / 1000"},
        {"second*10^-6", "seconds * 1 / 1000000"},
        {"count * 2^32", " * 4294967296 / 1"},
        {"bit / second * 10^3", "bytes_per_second * 125 / 1"},
        {"byte / second", "bytes_per_second * 1 / 1"},
        {"count / second", "per_second * 1 / 1"},
    };
    for (const auto& [punit, expected] : rows)
        EXPECT_EQ(shown(read_unit(punit)), expected) << punit;
}

TEST(Units, OthersLeaveValuesAsTheyAre) {
    for (const char* punit :
         {"", "degree celsius", "count * 2^99", "count * 10^x", "byte * byte", "byte / bit", "^", "*", "count * 3^2",
          "percent", "count * 2^40 * 2^40", "count * 2^53 * 2^53 / 2^53 / 2^53", "count * 2^-2147483648"})
        EXPECT_EQ(shown(read_unit(punit)), " * 1 / 1") << punit;
}

} // namespace
} // namespace cmpihost::metrics
