#include "host/mof/tokens.h"

#include "host/mof/refusal.h"

namespace cmpihost::mof {

Token Tokens::take() {
    Token taken = std::move(next_);
    next_ = lexer_.next();
    return taken;
}

bool Tokens::take_mark(char mark) {
    if (!next_.is_mark(mark))
        return false;
    take();
    return true;
}

bool Tokens::take_word(std::string_view word) {
    if (!next_.is_word(word))
        return false;
    take();
    return true;
}

void Tokens::refuse(const std::string& expected) const {
    throw Refusal(next_.place, next_.shown() + ", expected " + expected);
}

Token Tokens::expect(Token::Kind kind, const std::string& expected) {
    if (next_.kind != kind)
        refuse(expected);
    return take();
}

void Tokens::expect_mark(char mark, const std::string& where) {
    if (!take_mark(mark))
        refuse(std::string(1, mark) + " " + where);
}

} // namespace cmpihost::mof
