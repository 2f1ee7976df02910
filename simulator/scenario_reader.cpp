#include "simulator/scenario_reader.h"

#include "simulator/whole_number.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include <arpa/inet.h>

namespace switchsim {
namespace {

/// Reads "xx:xx:...", two hexadecimal digits each.
bool parse_octets(std::string_view text, std::uint8_t* octets, std::size_t count) {
    if (text.size() != 3 * count - 1)
        return false;
    for (std::size_t i = 0; i < count; ++i) {
        const auto octet = whole_number<std::uint8_t>(text.substr(3 * i, 2), 16);
        if (!octet || (i + 1 < count && text[3 * i + 2] != ':'))
            return false;
        octets[i] = *octet;
    }
    return true;
}

bool parse_address(const std::string& text, ip_addr_value& value) {
    value = {};
    if (text == "none")
        return true;
    value.family = text.find(':') == std::string::npos ? ip_family_ipv4 : ip_family_ipv6;
    return inet_pton(value.family == ip_family_ipv4 ? AF_INET : AF_INET6, text.c_str(), value.address) == 1;
}

bool parse_ipv4(const std::string& text, std::array<std::uint8_t, 4>& value) {
    return inet_pton(AF_INET, text.c_str(), value.data()) == 1;
}

bool parse_wwn(const std::string& text, Wwn& value) {
    return parse_octets(text, value.data(), value.size());
}

bool parse_mac(const std::string& text, std::string& value) {
    std::uint8_t octets[6];
    value = text;
    return parse_octets(text, octets, sizeof octets);
}

bool parse_place(const std::string& text, std::pair<std::uint8_t, std::uint8_t>& value) {
    const std::size_t slash = text.find('/');
    const auto slot = whole_number<std::uint8_t>(text.substr(0, slash));
    const auto port = slash == std::string::npos ? std::nullopt : whole_number<std::uint8_t>(text.substr(slash + 1));
    if (!slot || !port)
        return false;
    value = {*slot, *port};
    return true;
}

std::string joined(const std::vector<std::string>& words) {
    std::string list;
    for (const std::string& word : words)
        list += (list.empty() ? "" : ", ") + word;
    return list;
}

/// How many signs have to be put in, taken out or replaced, or neighbours exchanged, to make one word of another.
std::size_t distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> before;
    std::vector<std::size_t> last(other.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::vector<std::size_t> row(other.size() + 1, i + 1);
        for (std::size_t k = 0; k < other.size(); ++k) {
            const std::size_t replaced = last[k] + (one[i] == other[k] ? 0 : 1);
            row[k + 1] = std::min({replaced, last[k + 1] + 1, row[k] + 1});
            if (i > 0 && k > 0 && one[i] == other[k - 1] && one[i - 1] == other[k])
                row[k + 1] = std::min(row[k + 1], before[k - 1] + 1);
        }
        before = std::exchange(last, std::move(row));
    }
    return last.back();
}

bool contains(const std::vector<std::string>& words, std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

} // namespace

void ScenarioErrors::note(toml::source_position where, const std::string& key, const std::string& what) {
    list_.push_back({where, key + ": " + what});
}

std::vector<ScenarioError> ScenarioErrors::in_order() const {
    auto sorted = list_;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& one, const auto& other) { return one.where < other.where; });
    return sorted;
}

const toml::node* TableReader::find(std::string_view key) {
    if (!contains(known_, key))
        known_.emplace_back(key);
    return table_->get(key);
}

bool TableReader::has(std::string_view key) {
    return find(key) != nullptr;
}

bool TableReader::is_false(std::string_view key) {
    const toml::node* node = find(key);
    return node && node->is_boolean() && !node->ref<bool>();
}

std::string TableReader::full(std::string_view key) const {
    return path_.empty() ? std::string(key) : path_ + "." + std::string(key);
}

void TableReader::wrong(std::string_view key, const std::string& what) {
    wrong_.emplace_back(key);
    if (const toml::node* node = table_->get(key))
        errors_->note(node->source().begin, full(key), what);
    else
        absent_.emplace_back(key, what);
}

void TableReader::missing(std::string_view key, const std::string& expected) {
    if (!table_->contains(key))
        fail(key, expected + ", but the key is missing");
}

bool TableReader::good(std::initializer_list<std::string_view> keys) const {
    return std::none_of(keys.begin(), keys.end(), [&](std::string_view key) { return contains(wrong_, key); });
}

std::string TableReader::range_text(std::uint64_t lowest, std::uint64_t highest) {
    return "an integer from " + std::to_string(lowest) + " to " + std::to_string(highest);
}

std::optional<std::uint64_t> TableReader::integer(std::string_view key, std::uint64_t lowest, std::uint64_t highest) {
    const toml::node* node = find(key);
    if (!node)
        return std::nullopt;
    std::uint64_t value = 0;
    bool good = false;
    if (const auto* integer = node->as_integer()) {
        good = integer->get() >= 0;
        value = static_cast<std::uint64_t>(integer->get());
    } else if (const auto* digits = node->as_string()) {
        const auto number = whole_number<std::uint64_t>(digits->get());
        good = number.has_value();
        value = number.value_or(0);
    }
    if (good && value >= lowest && value <= highest)
        return value;
    fail(key, range_text(lowest, highest));
    return std::nullopt;
}

std::optional<std::uint32_t> TableReader::flag(std::string_view key) {
    const toml::node* node = find(key);
    if (!node)
        return std::nullopt;
    if (const auto* boolean = node->as_boolean())
        return boolean->get() ? 1U : 0U;
    const auto* word = node->as_integer();
    if (word && word->get() >= 0 && word->get() <= any_word)
        return static_cast<std::uint32_t>(word->get());
    fail(key, "true, false or " + range_text(0, any_word));
    return std::nullopt;
}

std::optional<bool> TableReader::boolean(std::string_view key) {
    const toml::node* node = find(key);
    if (!node)
        return std::nullopt;
    if (node->is_boolean())
        return node->ref<bool>();
    fail(key, "true or false");
    return std::nullopt;
}

std::optional<std::string> TableReader::text(std::string_view key, std::size_t longest, const std::string& expected) {
    const toml::node* node = find(key);
    if (!node)
        return std::nullopt;
    const auto* text = node->as_string();
    if (text && text->get().find('\0') == std::string::npos && text->get().size() <= longest)
        return text->get();
    fail(key, expected);
    return std::nullopt;
}

std::optional<std::string> TableReader::text(std::string_view key) {
    return text(key, std::string::npos, "a text");
}

std::optional<std::string> TableReader::short_text(std::string_view key) {
    return text(key, longest_text, "a text of at most " + std::to_string(longest_text) + " bytes");
}

template <class Value>
std::optional<Value> TableReader::parsed(std::string_view key, const char* expected,
                                         bool (*parse)(const std::string& text, Value& value)) {
    const toml::node* node = find(key);
    if (!node)
        return std::nullopt;
    Value value{};
    const auto* text = node->as_string();
    if (text && parse(text->get(), value))
        return value;
    fail(key, expected);
    return std::nullopt;
}

std::optional<ip_addr_value> TableReader::address(std::string_view key) {
    return parsed<ip_addr_value>(key, "an IPv4 or IPv6 address or \"none\"", parse_address);
}

std::optional<std::array<std::uint8_t, 4>> TableReader::ipv4(std::string_view key) {
    return parsed<std::array<std::uint8_t, 4>>(key, "four numbers like \"255.255.255.0\"", parse_ipv4);
}

std::optional<Wwn> TableReader::wwn(std::string_view key) {
    return parsed<Wwn>(key, "a WWN like \"20:00:00:00:5e:11:22:33\"", parse_wwn);
}

std::optional<std::string> TableReader::mac(std::string_view key) {
    return parsed<std::string>(key, "a MAC address like \"02:00:00:aa:bb:cc\"", parse_mac);
}

std::optional<std::pair<std::uint8_t, std::uint8_t>> TableReader::place(std::string_view key) {
    return parsed<std::pair<std::uint8_t, std::uint8_t>>(key, "slot and port like \"1/2\"", parse_place);
}

std::optional<std::vector<std::uint8_t>> TableReader::bytes(std::string_view key) {
    const toml::node* node = find(key);
    if (!node)
        return std::nullopt;
    std::vector<std::uint8_t> values;
    const auto take = [&](const toml::node& element) {
        const auto value = element.value_exact<std::int64_t>();
        if (!value || *value < 0 || *value > 255 || std::find(values.begin(), values.end(), *value) != values.end())
            return false;
        values.push_back(static_cast<std::uint8_t>(*value));
        return true;
    };
    const auto* array = node->as_array();
    if (array && std::all_of(array->begin(), array->end(), take))
        return values;
    fail(key, "an array of different integers from 0 to 255");
    return std::nullopt;
}

std::optional<TableReader> TableReader::table(std::string_view key) {
    const toml::node* node = find(key);
    if (!node)
        return std::nullopt;
    const auto* inner = node->as_table();
    if (inner)
        return TableReader(*inner, full(key), *errors_);
    fail(key, "a table");
    return std::nullopt;
}

std::vector<TableReader> TableReader::tables(std::string_view key) {
    std::vector<TableReader> readers;
    const toml::node* node = find(key);
    if (!node)
        return readers;
    const auto* array = node->as_array();
    if (!array || !std::all_of(array->begin(), array->end(), [](const toml::node& one) { return one.is_table(); })) {
        fail(key, "an array of tables [[" + std::string(key) + "]]");
        errors_->doubt(std::string(key));
        return readers;
    }
    for (std::size_t i = 0; i < array->size(); ++i)
        readers.emplace_back(*(*array)[i].as_table(), std::string(key) + "[" + std::to_string(i) + "]", *errors_);
    return readers;
}

std::optional<std::uint64_t> TableReader::seconds(std::string_view key) {
    const toml::node* node = find(key);
    if (!node)
        return std::nullopt;
    constexpr double most = 1e9;
    const auto value = node->value<double>();
    if (node->is_number() && value && *value >= 0 && *value <= most)
        return static_cast<std::uint64_t>(std::llround(*value * 1000));
    fail(key, "seconds from 0 to 1000000000");
    return std::nullopt;
}

/// A counter that moves, as {value = 5, rate = 100, period = 1, jitter = 10} and more.
/// @param rate its `since` is the switch's clock before
void TableReader::rate(const CounterField& field, std::uint64_t highest, std::uint8_t* record, Rate& rate) {
    TableReader reader = *table(field.key);
    constexpr std::uint32_t longest = 1000000;
    const std::uint64_t value = reader.integer("value", 0, highest).value_or(0);
    field.put(record, value);
    const auto per_second = reader.integer("rate", 0, std::numeric_limits<std::uint64_t>::max() / longest / 1000);
    if (!per_second)
        reader.missing("rate", "an integer, how much is counted in a second");
    rate.per_second = per_second.value_or(0);
    const std::uint64_t period = reader.seconds("period").value_or(rate.period);
    if (period == 0 || period > std::uint64_t{longest} * 1000)
        reader.fail("period", "seconds from 0.001 to 1000000");
    rate.period = static_cast<std::uint32_t>(period);
    rate.jitter = reader.number<std::uint8_t>("jitter", 0, 100).value_or(0);
    rate.start = reader.integer("start", 0, highest).value_or(value);
    const std::uint64_t since = reader.seconds("since").value_or(rate.since);
    if (since > rate.since)
        reader.fail("since", "seconds that are not after [clock] now");
    rate.since = std::min(since, rate.since);
    reader.finish();
}

void TableReader::counters(std::span<const CounterField> fields, std::uint8_t* record, std::uint64_t now,
                           const std::function<void(const CounterField& field, const Rate& rate)>& take_rate) {
    for (const CounterField& field : fields) {
        const std::uint64_t highest = field.bits == 64 ? std::numeric_limits<std::uint64_t>::max() : any_word;
        const toml::node* node = find(field.key);
        if (node && node->is_table()) {
            Rate moving{.since = now};
            rate(field, highest, record, moving);
            take_rate(field, moving);
        } else if (const auto value = integer(field.key, 0, highest)) {
            field.put(record, *value);
        }
    }
}

void TableReader::announce(std::initializer_list<std::string_view> keys) {
    for (const std::string_view key : keys)
        find(key);
}

/// The key that an unknown one is most like, among those that are not there; null if none is like it.
const std::string* TableReader::meant(std::string_view unknown) const {
    const std::string* nearest = nullptr;
    std::size_t least = std::max<std::size_t>(unknown.size() / 3, 1);
    for (const std::string& key : known_) {
        const std::size_t longer = std::max(unknown.size(), key.size()) - std::min(unknown.size(), key.size());
        if (longer > least || key.size() < 3 || table_->contains(key))
            continue;
        const std::size_t found = distance(unknown, key);
        if (found < least || (found == least && !nearest)) {
            least = found;
            nearest = &key;
        }
    }
    return nearest;
}

std::vector<std::string> TableReader::misspelt() const {
    std::vector<std::string> keys;
    for (const auto& [key, node] : *table_) {
        const std::string* likely = contains(known_, key.str()) ? nullptr : meant(key.str());
        if (likely)
            keys.push_back(*likely);
    }
    return keys;
}

void TableReader::finish() {
    for (const auto& [key, node] : *table_) {
        if (contains(known_, key.str()))
            continue;
        const auto& where = key.source().begin;
        const std::string* likely = meant(key.str());
        if (!likely) {
            errors_->note(where, full(key.str()), "expected one of the keys " + joined(known_));
            continue;
        }
        errors_->note(where, full(key.str()),
                      "unknown key " + std::string(key.str()) + "; did you mean " + *likely + "?");
        // What is missing because of it stands behind it.
        for (const auto& [absent, what] : absent_)
            if (absent == *likely)
                errors_->note(where, full(absent), what);
        std::erase_if(absent_, [&](const auto& absent) { return absent.first == *likely; });
    }
    for (const auto& [key, what] : absent_)
        errors_->note(table_->source().begin, full(key), what);
}

} // namespace switchsim
