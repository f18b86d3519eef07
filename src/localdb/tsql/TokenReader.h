// TokenReader: the parsers' view of a batch: tokens with look-ahead, the questions that parsers ask
// of them, and the errors. Bounds nesting and the number of tokens. Borrows the batch's text.
#pragma once

#include <deque>

#include "localdb/tsql/Jumps.h"
#include "localdb/tsql/Lexer.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::tsql {

class TokenReader {
  public:
    static constexpr int MaxDepth = 100;  // nested parentheses, blocks and queries
    static constexpr qsizetype MaxTokens = 1'000'000;
    static constexpr qsizetype MaxLength = 16 * 1024 * 1024;  // UTF-16 units

    // Raises SyntaxError for a batch that is too long.
    explicit TokenReader(const QString& batch);

    const Token& Peek(size_t ahead = 0);
    Token Take();
    bool AtEnd() { return Peek().kind == TokenKind::End; }
    // The line of the token that Peek gives.
    int Line() { return Peek().line; }

    bool AtWord(QStringView word, size_t ahead = 0) { return Peek(ahead).IsWord(word); }
    bool AtSign(QStringView sign, size_t ahead = 0) { return Peek(ahead).IsSign(sign); }
    // Take the token if it is this one.
    bool TryWord(QStringView word);
    bool TrySign(QStringView sign);
    // Take the token or raise the syntax error near it.
    void ExpectWord(QStringView word);
    void ExpectSign(QStringView sign);
    // A name: quoted, or bare and not reserved.
    QString ExpectName();
    QString ExpectVariable();
    int ExpectInteger();

    // The token that a message names: the next one, or at the batch's end the last.
    const Token& Near();
    // "Incorrect syntax near" the token that Peek gives.
    [[noreturn]] void Fail();
    // T-SQL that this server does not have, at the token that Peek gives.
    [[noreturn]] void Unsupported(const QString& construct);
    [[noreturn]] void Unsupported(const QString& construct, const Token& at);

    // Whether the token taken last is this sign.
    bool IsBehindSign(QStringView sign) const { return last_.IsSign(sign); }

    // Where in the batch's blocks the statement that is being parsed stands.
    Jumps& ControlFlow() { return jumps_; }

    const QString& Batch() const { return batch_; }
    // The batch's text from `offset` to the end of the last token that was taken.
    QString TextSince(qsizetype offset) const { return batch_.mid(offset, lastEnd_ - offset); }
    // Whether this token, already taken, opened the batch.
    bool IsFirst(const Token& token) const { return token.offset == firstOffset_; }

    // One level of nesting for as long as it lives. Raises TooDeep beyond MaxDepth.
    class Nesting {
      public:
        explicit Nesting(TokenReader& reader);
        ~Nesting() { --reader_.depth_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

      private:
        TokenReader& reader_;
    };

  private:
    const QString& batch_;
    Lexer lexer_;
    std::deque<Token> ahead_;
    Token last_;
    qsizetype lastEnd_ = 0;
    qsizetype firstOffset_ = -1;
    qsizetype taken_ = 0;
    int depth_ = 0;
    Jumps jumps_;
};

}  // namespace quarv::localdb::tsql
