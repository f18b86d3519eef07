#include "localdb/tsql/Lexer.h"

#include <array>

#include "localdb/tsql/ReservedWords.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::tsql {

namespace {

bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

bool IsHexDigit(char16_t c) {
    return IsDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

bool IsBlank(char16_t c) {
    return c <= u' ' || c == 0x00A0 || c == 0xFEFF || c == 0x3000;
}

bool BeginsName(char16_t c) {
    return c == u'_' || c == u'#' || QChar::isLetter(c) || QChar::isSurrogate(c);
}

bool ContinuesName(char16_t c) {
    return BeginsName(c) || c == u'@' || c == u'$' || QChar::isLetterOrNumber(c) ||
           QChar::isMark(c);
}

// Longer signs first, so that "<=" is not read as "<".
constexpr std::array<QStringView, 34> Signs = {
    u"<>", u"!=", u"<=", u">=", u"!<", u"!>", u"+=", u"-=", u"*=", u"/=", u"%=", u"&=",
    u"|=", u"^=", u"::", u"=",  u"<",  u">",  u"+",  u"-",  u"*",  u"/",  u"%",  u"&",
    u"|",  u"^",  u"~",  u"(",  u")",  u",",  u";",  u".",  u":",  u"\\"};

}  // namespace

Token Lexer::Next() {
    SkipBlanksAndComments();
    start_.offset = place_;
    start_.line = line_;
    start_.column = static_cast<int>(place_ - lineStart_) + 1;
    if (AtEnd()) return Finish(TokenKind::End, {});
    const char16_t c = At();
    if ((c == u'N' || c == u'n') && At(1) == u'\'') {
        Advance();
        return Quoted(TokenKind::NationalString, u'\'');
    }
    if (c == u'\'') return Quoted(TokenKind::String, u'\'');
    if (c == u'[') return Quoted(TokenKind::QuotedName, u']');
    if (c == u'"') return Quoted(TokenKind::QuotedName, u'"');
    if (c == u'@') return Variable();
    if (c == u'0' && (At(1) == u'x' || At(1) == u'X')) return BinaryLiteral();
    if (IsDigit(c) || (c == u'.' && IsDigit(At(1)))) return Number();
    if (c == u'$') return MoneyLiteral();
    if (BeginsName(c)) return Word();
    return Sign();
}

void Lexer::Advance() {
    if (text_[place_] == u'\n') {
        ++line_;
        lineStart_ = place_ + 1;
    }
    ++place_;
}

void Lexer::SkipBlanksAndComments() {
    while (!AtEnd()) {
        if (IsBlank(At())) {
            Advance();
        } else if (At() == u'-' && At(1) == u'-') {
            while (!AtEnd() && At() != u'\n') Advance();
        } else if (At() == u'/' && At(1) == u'*') {
            SkipBlockComment();
        } else {
            return;
        }
    }
}

void Lexer::SkipBlockComment() {
    const int line = line_;
    const int column = static_cast<int>(place_ - lineStart_) + 1;
    qsizetype depth = 0;
    do {
        if (AtEnd()) throw SyntaxError(SyntaxError::MissingCommentEnd, {}, line, column);
        const bool opens = At() == u'/' && At(1) == u'*';
        const bool closes = At() == u'*' && At(1) == u'/';
        depth += opens ? 1 : closes ? -1 : 0;
        if (opens || closes) Advance();
        Advance();
    } while (depth > 0);
}

Token Lexer::Word() {
    while (!AtEnd() && ContinuesName(At())) Advance();
    Token token =
        Finish(TokenKind::Word, text_.mid(start_.offset, place_ - start_.offset).toString());
    CheckName(token.text);
    // A label is no alias and no argument of the statement before it.
    const bool label = At() == u':' && At(1) != u':';
    token.reserved = label || IsReservedWord(token.text);
    return token;
}

Token Lexer::Variable() {
    Advance();
    while (!AtEnd() && ContinuesName(At())) Advance();
    Token token =
        Finish(TokenKind::Variable, text_.mid(start_.offset, place_ - start_.offset).toString());
    CheckName(token.text);
    return token;
}

Token Lexer::Quoted(TokenKind kind, char16_t close) {
    Advance();
    const qsizetype begin = place_;
    qsizetype run = begin;
    QString value;
    while (true) {
        if (AtEnd()) {
            throw SyntaxError(SyntaxError::UnclosedQuote, {text_.mid(begin).toString()},
                              start_.line, start_.column);
        }
        if (At() == close) {
            value += text_.mid(run, place_ - run);
            Advance();
            if (At() != close) break;
            run = place_;
        }
        Advance();
    }
    Token token = Finish(kind, std::move(value));
    if (kind == TokenKind::QuotedName) CheckName(token.text);
    return token;
}

void Lexer::TakeDigits() {
    while (IsDigit(At())) Advance();
}

Token Lexer::Number() {
    TokenKind kind = TokenKind::Integer;
    TakeDigits();
    if (At() == u'.') {
        kind = TokenKind::Decimal;
        Advance();
        TakeDigits();
    }
    if (At() == u'e' || At() == u'E') {
        kind = TokenKind::Float;
        Advance();
        if (At() == u'+' || At() == u'-') Advance();
        TakeDigits();
    }
    return Finish(kind, text_.mid(start_.offset, place_ - start_.offset).toString());
}

Token Lexer::MoneyLiteral() {
    Advance();
    const qsizetype begin = place_;
    TakeDigits();
    if (At() == u'.') Advance();
    TakeDigits();
    return Finish(TokenKind::Money, text_.mid(begin, place_ - begin).toString());
}

Token Lexer::BinaryLiteral() {
    Advance();
    Advance();
    const qsizetype begin = place_;
    while (IsHexDigit(At())) Advance();
    return Finish(TokenKind::Binary, text_.mid(begin, place_ - begin).toString());
}

Token Lexer::Sign() {
    const QStringView rest = text_.mid(place_);
    for (const QStringView sign : Signs) {
        if (rest.front() != sign.front() || !rest.startsWith(sign)) continue;
        place_ += sign.size();
        return Finish(TokenKind::Sign, QString::fromRawData(sign.data(), sign.size()));
    }
    throw SyntaxError(SyntaxError::Near, {text_.mid(place_, 1).toString()}, start_.line,
                      start_.column);
}

Token Lexer::Finish(TokenKind kind, QString text) {
    Token token = start_;
    token.kind = kind;
    token.length = place_ - start_.offset;
    token.text = std::move(text);
    return token;
}

void Lexer::CheckName(const QString& name) const {
    if (name.isEmpty()) throw SyntaxError(SyntaxError::EmptyName, {}, start_.line, start_.column);
    if (name.size() > MaxIdentifier) {
        throw SyntaxError(SyntaxError::IdentifierTooLong, {name.left(MaxIdentifier)}, start_.line,
                          start_.column);
    }
}

}  // namespace quarv::localdb::tsql
