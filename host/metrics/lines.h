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

    /// No more lines come. @return how many stood there before already
    std::size_t end();

    /// After end() all lines, of which those that stood there before are empty. They live until clear() or the next
    /// begin(), and each lies in a Text.
    const std::vector<std::string_view>& kept() const { return kept_; }

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = 0; ///< of the line, from 1 on; 0: nothing is here
    };

    std::string_view line(std::size_t index) const;
    Slot& slot_of(std::string_view line, std::uint32_t hash);

    Text text_;
    std::vector<std::size_t> begins_;
    std::vector<std::string_view> kept_;
    std::vector<Slot> slots_; ///< a power of two, at most half full; open addressing
};

} // namespace cmpihost::metrics
