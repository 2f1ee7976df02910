// Authorization: Basic
#include "host/http/basic.h"

#include <gtest/gtest.h>

namespace cmpihost::http {
namespace {

std::string base64(std::string_view text) {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t at = 0; at < text.size(); at += 3) {
        unsigned bits = 0;
        for (std::size_t i = 0; i < 3; ++i)
            bits = (bits << 8) | (at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0U);
        for (unsigned i = 0; i < 4; ++i)
            out += at + i > text.size() ? '=' : digits[(bits >> (18 - 6 * i)) & 63];
    }
    return out;
}

TEST(BasicHeaders, TellUserAndPassword) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"u", "p"}, {"user", "pass:word"}, {"", ""}, {"someone", ""}, {"d\xc3\xa9", "\xc3\xbc"}, {"ab", "?>~"}};
    for (const auto& [user, password] : rows) {
        const auto read = read_basic("Basic " + base64(user + ":" + password));
        ASSERT_TRUE(read.has_value()) << user;
        EXPECT_EQ(read->user, user);
        EXPECT_EQ(read->password.view(), password);
    }
}

TEST(BasicHeaders, SchemeHasNoCase) {
    EXPECT_TRUE(read_basic("bASIC dTpw").has_value());
    EXPECT_TRUE(read_basic("Basic   dTpw ").has_value());
}

TEST(BasicHeaders, OtherHeadersAreNone) {
    for (const char* header :
         {"", "Basic", "Basic ", "Bearer dTpw", "BasicdTpw", "Basic dTp", "Basic dT=w",
          "Basic dTpw=", "Basic d===", "Basic ====", "Basic dTpw dTpw", "Basic dTp\xff", "Basic dTpx-_"})
        EXPECT_FALSE(read_basic(header).has_value()) << header;
}

TEST(BasicHeaders, BitsLeftOverAreZero) {
    EXPECT_TRUE(read_basic("Basic dTo=").has_value());
    EXPECT_FALSE(read_basic("Basic dTp=").has_value());
}

TEST(BasicHeaders, WithoutColonOrWithControlsAreNone) {
    for (const std::string& text :
         {std::string("user"), std::string("u\n:p"), std::string("u:p\0q", 5), std::string("u:\x7f")})
        EXPECT_FALSE(read_basic("Basic " + base64(text)).has_value()) << text;
}

TEST(BasicHeaders, AreLimited) {
    const auto with_sizes = [](std::size_t user, std::size_t password) {
        return read_basic("Basic " + base64(std::string(user, 'u') + ":" + std::string(password, 'p'))).has_value();
    };
    EXPECT_TRUE(with_sizes(510, 512));
    EXPECT_FALSE(with_sizes(511, 512)) << "1,024 bytes in all";
    EXPECT_FALSE(with_sizes(10, 513));
    EXPECT_FALSE(with_sizes(100'000, 1));
}

} // namespace
} // namespace cmpihost::http
