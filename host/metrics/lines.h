// Lines of text, and which of them stand there twice.
#pragma once

#include "host/metrics/text.h"

#include <cstdint>
#include <vector>

namespace cmpihost::metrics {

/// Keeps lines one after the other in one text, since there are as many of them as objects.
class Lines {
  public:
    /// Forgets all lines, and keeps their memory.
    void clear();

    /// Begins a line behind those that are there, which is to be appended to the text returned.
    Text& begin();

    std::size_t size() const { return begins_.size(); }

    std::string_view line(std::size_t index) const {
        const std::size_t end = index + 1 < begins_.size() ? begins_[index + 1] : text_.size();
        return text_.view().substr(begins_[index], end - begins_[index]);
    }

    /// Finds the lines that stand there before already. @return how many there are
    std::size_t find_doubles();

    /// Whether the last find_doubles() found it to be one.
    bool is_double(std::size_t index) const { return doubles_[index] != 0; }

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = 0; ///< of the line, from 1 on; 0: nothing is here
    };

    Slot& slot_of(std::string_view line, std::uint32_t hash);

    Text text_;
    std::vector<std::size_t> begins_;
    std::vector<std::uint8_t> doubles_; ///< of each line
    std::vector<Slot> slots_;           ///< a power of two, at most half full; open addressing
};

} // namespace cmpihost::metrics
