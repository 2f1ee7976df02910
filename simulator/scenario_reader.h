// Strict reading of one TOML table: every key is asked for by name, type and range, and what nobody asked for is an
// error. Errors are noted, with the place and what was expected, and reading goes on.
#pragma once

#include "simulator/statistics_layout.h"
#include "simulator/switchsim.h"

// The parser asserts what some malformed files break ("[" at a line's end); without, it reports the error.
#define TOML_ASSERT(expr) static_assert(true)
#include <toml++/toml.h>

#include <concepts>
#include <functional>
#include <limits>
#include <set>

namespace switchsim {

/// One thing that is wrong with a scenario.
struct ScenarioError {
    toml::source_position where;
    std::string text; ///< "KEY: WHAT", the key with its full path
};

/// All that is wrong with a scenario.
class ScenarioErrors {
  public:
    void note(toml::source_position where, const std::string& key, const std::string& what);
    bool empty() const { return list_.empty(); }

    /// The errors in order of place.
    std::vector<ScenarioError> in_order() const;

    /// Says that a section's rows (or a key's values) are not known, since what is wrong with them was noted:
    /// references to them are no further errors.
    void doubt(const std::string& what) { doubted_.insert(what); }
    bool doubts(const std::string& what) const { return doubted_.contains(what); }

  private:
    std::vector<ScenarioError> list_;
    std::set<std::string> doubted_;
};

inline constexpr std::uint32_t any_word = std::numeric_limits<std::uint32_t>::max();

class TableReader {
  public:
    TableReader(const toml::table& table, std::string path, ScenarioErrors& errors)
        : table_(&table), path_(std::move(path)), errors_(&errors) {}

    /// Whether the key is there.
    bool has(std::string_view key);

    /// Whether the key is there with the value false, which stands for "there is none" with keys of other types.
    bool is_false(std::string_view key);

    /// Notes an error about a key: "expected EXPECTED". If the key is not there, the place is that of the table.
    void fail(std::string_view key, const std::string& expected) { wrong(key, "expected " + expected); }

    /// Notes an error about a key in other words.
    void wrong(std::string_view key, const std::string& what);

    /// Notes that a key that has to be there is not, unless it is there and wrong.
    void missing(std::string_view key, const std::string& expected);

    /// Whether no error about any of the keys was noted so far.
    bool good(std::initializer_list<std::string_view> keys) const;

    ScenarioErrors& errors() const { return *errors_; }

    /// An integer, or a text of decimal digits for those above 2^63 - 1.
    std::optional<std::uint64_t> integer(std::string_view key, std::uint64_t lowest, std::uint64_t highest);

    template <std::unsigned_integral Word>
    std::optional<Word> number(std::string_view key, Word lowest = 0, Word highest = std::numeric_limits<Word>::max()) {
        const auto value = integer(key, lowest, highest);
        return value ? std::optional(static_cast<Word>(*value)) : std::nullopt;
    }

    /// The same for a key that has to be there.
    template <std::unsigned_integral Word>
    std::optional<Word> required(std::string_view key, Word lowest = 0,
                                 Word highest = std::numeric_limits<Word>::max()) {
        const auto value = number(key, lowest, highest);
        if (!value)
            missing(key, range_text(lowest, highest));
        return value;
    }

    /// A boolean as 1 or 0, or any 32-bit word as it is.
    std::optional<std::uint32_t> flag(std::string_view key);

    std::optional<bool> boolean(std::string_view key);
    std::optional<std::string> text(std::string_view key);

    /// A text that the platform writes into buffers of its callers, and that is no longer than these have room for.
    std::optional<std::string> short_text(std::string_view key);
    std::optional<ip_addr_value> address(std::string_view key);
    std::optional<std::array<std::uint8_t, 4>> ipv4(std::string_view key);
    std::optional<Wwn> wwn(std::string_view key);
    std::optional<std::string> mac(std::string_view key);

    /// A text "SLOT/PORT".
    std::optional<std::pair<std::uint8_t, std::uint8_t>> place(std::string_view key);

    /// Distinct integers of 0 to 255.
    std::optional<std::vector<std::uint8_t>> bytes(std::string_view key);

    /// A table inside this one.
    std::optional<TableReader> table(std::string_view key);

    /// The tables of an array of tables; none if the key is not there.
    std::vector<TableReader> tables(std::string_view key);

    /// Reads counters into a record: every field of the layout is a key. Those that move are handed to `take_rate`.
    /// @param now the switch's clock, milliseconds
    void counters(std::span<const CounterField> fields, std::uint8_t* record, std::uint64_t now,
                  const std::function<void(const CounterField& field, const Rate& rate)>& take_rate);

    /// Seconds, with up to three digits behind the point, as milliseconds.
    std::optional<std::uint64_t> seconds(std::string_view key);

    /// Makes keys known that are asked for later.
    void announce(std::initializer_list<std::string_view> keys);

    /// The keys that unknown ones are misspelt for.
    std::vector<std::string> misspelt() const;

    /// Notes every key that was not asked for, and those that are missing; the last call.
    void finish();

  private:
    const toml::node* find(std::string_view key);
    template <class Value>
    std::optional<Value> parsed(std::string_view key, const char* expected,
                                bool (*parse)(const std::string& text, Value& value));
    std::optional<std::string> text(std::string_view key, std::size_t longest, const std::string& expected);
    void rate(const CounterField& field, std::uint64_t highest, std::uint8_t* record, Rate& rate);
    static std::string range_text(std::uint64_t lowest, std::uint64_t highest);

    const std::string* meant(std::string_view unknown) const;
    std::string full(std::string_view key) const;

    const toml::table* table_;
    std::string path_;
    ScenarioErrors* errors_;
    std::vector<std::string> known_;
    std::vector<std::string> wrong_;
    std::vector<std::pair<std::string, std::string>> absent_; ///< what is wrong with keys that are not there
};

} // namespace switchsim
