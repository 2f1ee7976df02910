// Text that is written in place.
#pragma once

#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>

namespace cmpihost::metrics {

/// As std::string, which would clear the room for a number before the number is written there.
class Text {
  public:
    Text() = default;
    Text(Text&& other) noexcept
        : memory_(std::move(other.memory_)), size_(std::exchange(other.size_, 0)),
          capacity_(std::exchange(other.capacity_, 0)) {}
    Text& operator=(Text&& other) noexcept {
        memory_ = std::move(other.memory_);
        size_ = std::exchange(other.size_, 0);
        capacity_ = std::exchange(other.capacity_, 0);
        return *this;
    }

    std::string_view view() const { return {memory_.get(), size_}; }
    std::size_t size() const { return size_; }

    /// Forgets what is behind the first `size` characters, and keeps the memory.
    void cut(std::size_t size) { size_ = size; }

    /// Memory behind the text, for `most` characters; until the text changes.
    char* room(std::size_t most) {
        if (capacity_ - size_ < most)
            grow(most);
        return memory_.get() + size_;
    }

    /// What there is to read behind a text, and to write behind the room asked for, whatever stands there.
    static constexpr std::size_t block = 32;

    /// What was written into the room belongs to the text.
    void end_at(const char* end) { size_ = static_cast<std::size_t>(end - memory_.get()); }

    Text& append(std::string_view part) {
        if (part.empty())
            return *this;
        std::memcpy(room(part.size()), part.data(), part.size());
        size_ += part.size();
        return *this;
    }

  private:
    void grow(std::size_t most);

    std::unique_ptr<char[]> memory_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

/// Copies what lies in a Text to a room in another one, in whole blocks: that is quicker than to look how much it is.
/// @return behind the copy
inline char* write_blocks(char* at, std::string_view text) {
    for (std::size_t from = 0; from < text.size(); from += Text::block)
        std::memcpy(at + from, text.data() + from, Text::block);
    return at + text.size();
}

/// Hands over a text piece by piece while it is written, so that what is written stays in the processor's caches.
class Pieces {
  public:
    using Take = std::function<void(std::string_view piece)>;

    explicit Pieces(const Take& take) : take_(take) { text_.room(usual); }

    /// Where the next line is to be appended; what is written may be handed over before.
    Text& line() {
        if (text_.size() >= usual / 2)
            end();
        return text_;
    }

    /// Hands over what is left.
    void end() {
        take_(text_.view());
        text_.cut(0);
    }

  private:
    static constexpr std::size_t usual = 8 << 10;

    const Take& take_;
    Text text_;
};

} // namespace cmpihost::metrics
