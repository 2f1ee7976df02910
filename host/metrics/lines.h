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
    /// Forgets all lines, and keeps their memory.
    void clear();

    /// Begins a line, which is to be appended to the text returned.
    std::string& begin();

    /// The line since begin().
    std::string_view line() const { return std::string_view(text_).substr(begins_.back()); }

    /// Ends the line. False: it was there before, and is there no more.
    bool keep();

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = 0; ///< of the line, from 1 on; 0: nothing is here
    };

    std::string_view line(std::size_t index) const;
    Slot& slot_of(std::string_view line, std::uint32_t hash);
    void grow();

    std::string text_;
    std::vector<std::size_t> begins_;
    std::vector<Slot> slots_; // a power of two, at most half full; open addressing
};

} // namespace cmpihost::metrics
