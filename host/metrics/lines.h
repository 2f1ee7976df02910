// Lines of text, each once.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace cmpihost::metrics {

/// Keeps lines one after the other in one text, since there are as many of them as objects.
class Lines {
  public:
    /// Begins a line, which is to be appended to the text returned.
    std::string& begin();

    /// The line since begin().
    std::string_view line() const { return std::string_view(text_).substr(begin_); }

    /// Ends the line. False: it was there before, and is there no more.
    bool keep();

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t length = 0; ///< 0: nothing is here
        std::size_t begin = 0;
    };

    Slot& slot_of(std::string_view line, std::uint32_t hash);
    void grow();

    std::string text_;
    std::size_t begin_ = 0;
    std::vector<Slot> slots_; // a power of two, at most half full; open addressing
    std::size_t count_ = 0;
};

} // namespace cmpihost::metrics
