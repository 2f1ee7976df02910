#include "simulator/scenario_text.h"

#include <algorithm>

namespace switchsim {
namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

bool is_ascii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

bool begins_character(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

/// Walks a text from one string or comment to the next. `until` is what ends the one that the walk is in; empty
/// outside.
class Walk {
  public:
    explicit Walk(std::string_view rest) : rest_(rest) {}

    bool at_end() const { return rest_.empty(); }
    bool at_stray() const { return !is_ascii(rest_.front()) && (until_.empty() || until_.size() == 3); }
    TextPlace place() const { return place_; }

    /// Goes on by what stands here.
    void step() {
        if (until_.empty())
            enter();
        else if (rest_.starts_with(until_))
            leave();
        else if (rest_.front() == '\n' && until_.size() == 1)
            until_ = {}; // never closed; the parser says so
        else
            advance(is_escape() ? 2 : 1);
    }

  private:
    void enter() {
        constexpr std::string_view strings[] = {"\"\"\"", "'''", "\"", "'"}; // the longer ones first
        const auto* const found =
            std::find_if(std::begin(strings), std::end(strings), [&](auto mark) { return rest_.starts_with(mark); });
        if (found != std::end(strings))
            until_ = *found;
        else if (rest_.front() == '#')
            until_ = "\n";
        advance(std::max<std::size_t>(until_.size(), 1));
    }

    /// A string of several lines may have two quotes of its own before the three that end it.
    void leave() {
        const char last = until_.front();
        const std::size_t most = until_.size() == 3 ? 5 : 1;
        std::size_t length = until_.size();
        while (length < most && length < rest_.size() && rest_[length] == last)
            ++length;
        until_ = {};
        advance(length);
    }

    bool is_escape() const { return until_.front() == '"' && (rest_.starts_with("\\\"") || rest_.starts_with("\\\\")); }

    void advance(std::size_t bytes) {
        for (const char byte : rest_.substr(0, bytes)) {
            if (byte == '\n')
                place_ = {place_.line + 1, 1};
            else if (begins_character(byte))
                ++place_.column;
        }
        rest_.remove_prefix(std::min(bytes, rest_.size()));
    }

    std::string_view rest_;
    std::string_view until_;
    TextPlace place_;
};

} // namespace

std::optional<TextPlace> stray_character(std::string_view toml) {
    if (toml.starts_with(byte_order_mark))
        toml.remove_prefix(byte_order_mark.size());
    for (Walk walk(toml); !walk.at_end(); walk.step())
        if (walk.at_stray())
            return walk.place();
    return std::nullopt;
}

} // namespace switchsim
