// Trace lines on standard output. The texts are part of the provider's behaviour.
//
// One rule: a line is printed where it happens, by one call of trace(), whose arguments are the pieces of the line in
// their order: texts as they stand, numbers in decimal. The three lines that most functions have are
// trace_entering, trace_exiting and trace_location. Where several lines belong together, as those of a row in a lookup,
// trace_lines holds them back and prints them with one write. (The dumps of access/dumps.h are no traces: they print
// with formats.)
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace fcip {

/// Trace lines that are printed together.
class trace_lines {
  public:
    trace_lines() {} // which leaves the storage unset: it is not to be cleared for each line

    /// Adds pieces: texts and numbers.
    template <typename... Pieces>
    void add(const Pieces&... pieces) {
        const std::size_t most = (longest(pieces) + ...); // one look for room: the lines of a lookup are many
        if (most > text_.size() - size_)
            print();
        if (most <= text_.size())
            (put(pieces), ...);
        else
            (print_alone(pieces), ...);
    }

    /// Adds " Function : FUNCTION Line LINE ".
    void location(std::string_view function, int line) { add(" Function : ", function, " Line ", line, " \n"); }

    /// Prints what was added since the last print, with one write unless it is longer than the storage.
    void print();

  private:
    /// How many characters a piece can take.
    template <std::size_t Size>
    static constexpr std::size_t longest(const char (&/*literal*/)[Size]) {
        return Size - 1;
    }
    static std::size_t longest(std::string_view text) { return text.size(); }
    static constexpr std::size_t longest(std::int32_t /*number*/) { return 11; }
    static constexpr std::size_t longest(std::uint32_t /*number*/) { return 10; }

    /// Adds a piece that there is room for.
    template <std::size_t Size>
    void put(const char (&literal)[Size]) { // whose length the compiler knows
        put(std::string_view(literal, Size - 1));
    }
    void put(std::string_view text) {
        std::memcpy(text_.data() + size_, text.data(), text.size());
        size_ += text.size();
    }
    void put(std::int32_t number);
    void put(std::uint32_t number);

    template <typename Piece>
    void print_alone(const Piece& piece) {
        if constexpr (std::is_convertible_v<Piece, std::string_view>)
            std::fwrite(std::string_view(piece).data(), 1, std::string_view(piece).size(), stdout);
        else
            put(piece), print();
    }

    std::array<char, 512> text_;
    std::size_t size_ = 0;
};

/// Prints a line, or a part of one, with one write.
template <typename... Pieces>
void trace(const Pieces&... pieces) {
    trace_lines lines;
    lines.add(pieces...);
    lines.print();
}

/// "Entering FUNCTION" and "Exiting FUNCTION".
void trace_entering(const char* function);
void trace_exiting(const char* function);

/// " Function : FUNCTION Line LINE ". The line is a fixed number that names the place, not a line of our source.
void trace_location(const char* function, int line);

} // namespace fcip
