#include "host/metrics/metric_names.h"

#include "host/cim/names.h"

#include <algorithm>
#include <array>

namespace cmpihost::metrics {

namespace {

bool is_upper(char c) {
    return c >= 'A' && c <= 'Z';
}

bool is_lower(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

/// Whether nothing small follows that would belong to the word.
bool ends_word(std::string_view rest) {
    return rest.empty() || !is_lower(rest.front());
}

std::size_t plural(std::string_view rest) {
    return rest.starts_with('s') && ends_word(rest.substr(1)) ? 1 : 0;
}

/// The acronym that `rest` begins with, and its plural; 0 if there is none.
std::size_t acronym_length(std::string_view rest, std::span<const std::string> acronyms) {
    std::size_t longest = 0;
    for (const std::string& acronym : acronyms) {
        if (acronym.empty() || !rest.starts_with(acronym))
            continue;
        const std::size_t length = acronym.size() + plural(rest.substr(acronym.size()));
        if (ends_word(rest.substr(length)))
            longest = std::max(longest, length);
    }
    return longest;
}

/// The length of the word that `rest` begins with.
std::size_t word_length(std::string_view rest, std::span<const std::string> acronyms) {
    if (const std::size_t acronym = acronym_length(rest, acronyms))
        return acronym;
    const auto* capitals_end = std::find_if_not(rest.begin(), rest.end(), is_upper);
    const auto capitals = static_cast<std::size_t>(capitals_end - rest.begin());
    if (capitals > 1) {
        const std::size_t end = capitals + plural(rest.substr(capitals));
        return end > capitals || ends_word(rest.substr(capitals)) ? end : capitals - 1;
    }
    const auto* end = std::find_if_not(capitals_end, rest.end(), is_lower);
    return std::max<std::size_t>(static_cast<std::size_t>(end - rest.begin()), 1);
}

bool is_word_character(char c) {
    return is_upper(c) || is_lower(c);
}

} // namespace

std::string snake_case(std::string_view name, std::span<const std::string> acronyms) {
    std::string out;
    while (!name.empty()) {
        if (!is_word_character(name.front())) {
            name.remove_prefix(1);
            continue;
        }
        const std::size_t length = word_length(name, acronyms);
        if (!out.empty())
            out += '_';
        std::transform(name.begin(), name.begin() + static_cast<std::ptrdiff_t>(length), std::back_inserter(out),
                       lower);
        name.remove_prefix(length);
    }
    return out;
}

std::string label_name(std::string_view key, std::span<const std::string> acronyms) {
    static constexpr std::array taken{"job", "instance", "le", "quantile"};
    const std::string name = snake_case(key, acronyms);
    const bool is_taken = name.empty() || is_lower(name.front()) != (name.front() >= 'a') ||
                          std::find(taken.begin(), taken.end(), name) != taken.end();
    return is_taken ? "key_" + name : name;
}

} // namespace cmpihost::metrics
