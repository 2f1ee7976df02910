// Strict reading of one TOML table: every key is asked for by name, type and range, and what nobody asked for is an
// error. All errors are thrown as ScenarioError, with the place and what was expected.
#pragma once

#include "simulator/statistics_layout.h"
#include "simulator/switchsim.h"

// The parser asserts what some malformed files break ("[" at a line's end); without, it reports the error.
#define TOML_ASSERT(expr) static_assert(true)
#include <toml++/toml.h>

#include <concepts>
#include <limits>

namespace switchsim {

/// What is wrong with a scenario, and where.
struct ScenarioError {
    toml::source_position where;
    std::string key; ///< the key's full path
    std::string expected;
};

inline constexpr std::uint32_t any_word = std::numeric_limits<std::uint32_t>::max();

class TableReader {
  public:
    TableReader(const toml::table& table, std::string path) : table_(&table), path_(std::move(path)) {}

    /// Whether the key is there.
    bool has(std::string_view key);

    /// Whether the key is there with the value false, which stands for "there is none" with keys of other types.
    bool is_false(std::string_view key);

    /// Throws an error about a key (or, if it is not there, about the table).
    [[noreturn]] void fail(std::string_view key, std::string expected) const;

    /// An integer, or a text of decimal digits for those above 2^63 - 1.
    std::optional<std::uint64_t> integer(std::string_view key, std::uint64_t lowest, std::uint64_t highest);

    template <std::unsigned_integral Word>
    std::optional<Word> number(std::string_view key, Word lowest = 0, Word highest = std::numeric_limits<Word>::max()) {
        const auto value = integer(key, lowest, highest);
        return value ? std::optional(static_cast<Word>(*value)) : std::nullopt;
    }

    /// The same for a key that has to be there.
    template <std::unsigned_integral Word>
    Word required(std::string_view key, Word lowest = 0, Word highest = std::numeric_limits<Word>::max()) {
        const auto value = number(key, lowest, highest);
        return value ? *value : missing<Word>(key, range_text(lowest, highest));
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

    /// Reads counters into a record: every field of the layout is a key.
    void counters(std::span<const CounterField> fields, std::uint8_t* record);

    /// Throws unless every key was asked for.
    void finish() const;

    /// Throws that a key that has to be there is not.
    template <class Value>
    [[noreturn]] Value missing(std::string_view key, const std::string& expected) const {
        fail(key, expected + ", but the key is missing");
    }

  private:
    const toml::node* find(std::string_view key);
    template <class Value>
    std::optional<Value> parsed(std::string_view key, const char* expected,
                                bool (*parse)(const std::string& text, Value& value));
    std::optional<std::string> text(std::string_view key, std::size_t longest, const std::string& expected);
    static std::string range_text(std::uint64_t lowest, std::uint64_t highest);

    const toml::table* table_;
    std::string path_;
    std::vector<std::string> known_;
};

} // namespace switchsim
