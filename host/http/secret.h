// Text that does not stay in memory.
#pragma once

#include <openssl/crypto.h>

#include <string_view>
#include <vector>

namespace cmpihost::http {

/// A text that is overwritten when it goes. It can be moved, not copied.
class Secret {
  public:
    Secret() = default;
    explicit Secret(std::string_view text) : text_(text.begin(), text.end()) { text_.push_back('\0'); }
    ~Secret() { erase(); }
    Secret(Secret&& other) noexcept { text_.swap(other.text_); }
    Secret& operator=(Secret&& other) noexcept {
        erase();
        text_.swap(other.text_);
        return *this;
    }
    Secret(const Secret&) = delete;
    Secret& operator=(const Secret&) = delete;

    std::string_view view() const { return text_.empty() ? std::string_view() : std::string_view(c_str()); }

    /// Ends at the first null byte.
    const char* c_str() const { return text_.empty() ? "" : text_.data(); }

  private:
    void erase() {
        OPENSSL_cleanse(text_.data(), text_.size());
        text_.clear();
    }

    std::vector<char> text_;
};

} // namespace cmpihost::http
