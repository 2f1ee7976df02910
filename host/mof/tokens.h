// The tokens of a MOF text, one ahead.
#pragma once

#include "host/mof/lexer.h"

namespace cmpihost::mof {

/// What stands next, and ways to take it. Throws Refusal where something else was expected.
class Tokens {
  public:
    Tokens(const std::string& name, std::string_view text) : lexer_(name, text), next_(lexer_.next()) {}

    const Token& next() const { return next_; }
    Token take();

    /// Takes the mark if it is next.
    bool take_mark(char mark);

    /// Takes the word, in any case, if it is next.
    bool take_word(std::string_view word);

    Token expect(Token::Kind kind, const std::string& expected);
    void expect_mark(char mark, const std::string& where);

    [[noreturn]] void refuse(const std::string& expected) const;

  private:
    Lexer lexer_;
    Token next_;
};

} // namespace cmpihost::mof
