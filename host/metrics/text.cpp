#include "host/metrics/text.h"

#include <algorithm>

namespace cmpihost::metrics {

void Text::grow(std::size_t most) {
    const std::size_t capacity = std::max({2 * capacity_, size_ + most, std::size_t{256}});
    auto memory = std::make_unique_for_overwrite<char[]>(capacity + block);
    if (size_ != 0)
        std::memcpy(memory.get(), memory_.get(), size_);
    memory_ = std::move(memory);
    capacity_ = capacity;
}

} // namespace cmpihost::metrics
