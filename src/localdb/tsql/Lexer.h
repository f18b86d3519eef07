// Lexer: cuts a batch into tokens, one at a time, so that a long batch needs no list of them. It
// borrows the batch's text; whoever makes it keeps that alive.
#pragma once

#include "localdb/tsql/Token.h"

namespace quarv::localdb::tsql {

class Lexer {
  public:
    static constexpr int MaxIdentifier = 128;  // UTF-16 units, as sysname

    explicit Lexer(QStringView batch) : text_(batch) {}

    // The next token; End for ever at the end. Raises SyntaxError for an unclosed quote or comment,
    // an empty or overlong name and a character that begins nothing.
    Token Next();

  private:
    char16_t At(qsizetype ahead = 0) const {
        return place_ + ahead < text_.size() ? text_[place_ + ahead].unicode() : u'\0';
    }
    bool AtEnd() const { return place_ >= text_.size(); }
    void Advance();
    void SkipBlanksAndComments();
    void SkipBlockComment();
    Token Word();
    Token Variable();
    Token Quoted(TokenKind kind, char16_t close);
    Token Number();
    Token MoneyLiteral();
    Token BinaryLiteral();
    Token Sign();
    void TakeDigits();
    Token Finish(TokenKind kind, QString text);
    void CheckName(const QString& name) const;

    QStringView text_;
    qsizetype place_ = 0;
    int line_ = 1;
    qsizetype lineStart_ = 0;
    Token start_;  // place of the token being read
};

}  // namespace quarv::localdb::tsql
