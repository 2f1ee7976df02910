// MOF text as tokens.
#pragma once

#include "host/mof/schema.h"

namespace cmpihost::mof {

/// A word of MOF. `text` is what the file says; of a string or character its contents, escapes resolved.
struct Token {
    enum class Kind { end, name, pragma, string, character, number, alias, mark };
    Kind kind = Kind::end;
    std::string text;
    Place place;

    bool is_mark(char mark) const { return kind == Kind::mark && text[0] == mark; }
    bool is_word(std::string_view word) const { return kind == Kind::name && same_name(text, word); }

    /// The token as messages show it.
    std::string shown() const;
};

/// Cuts one text into tokens; blanks and comments are skipped. Throws Refusal.
class Lexer {
  public:
    Lexer(std::string file, std::string_view text) : file_(std::move(file)), text_(text) {}

    Token next();

  private:
    bool at_end() const { return at_ == text_.size(); }
    char peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
    char take();
    Place place() const { return {file_, line_, column_}; }

    void skip_blanks_and_comments();
    void skip_block_comment();
    std::string take_name();
    std::string take_number();
    std::string take_quoted(char quote);
    std::string take_escape();
    std::string take_code(const Place& start);

    std::string file_;
    std::string_view text_;
    std::size_t at_ = 0;
    unsigned line_ = 1;
    unsigned column_ = 1;
};

} // namespace cmpihost::mof
