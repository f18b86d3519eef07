#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

TokenReader::TokenReader(const QString& batch) : batch_(batch), lexer_(batch) {
    if (batch.size() > MaxLength) throw SyntaxError(SyntaxError::TooComplex, {}, 1, 1);
}

const Token& TokenReader::Peek(size_t ahead) {
    while (ahead_.size() <= ahead) ahead_.push_back(lexer_.Next());
    return ahead_[ahead];
}

Token TokenReader::Take() {
    Peek();
    last_ = std::move(ahead_.front());
    ahead_.pop_front();
    lastEnd_ = last_.offset + last_.length;
    if (firstOffset_ < 0 && !last_.IsSign(u";")) firstOffset_ = last_.offset;
    if (++taken_ > MaxTokens) {
        throw SyntaxError(SyntaxError::TooComplex, {}, last_.line, last_.column);
    }
    return last_;
}

bool TokenReader::TryWord(QStringView word) {
    if (!AtWord(word)) return false;
    Take();
    return true;
}

bool TokenReader::TrySign(QStringView sign) {
    if (!AtSign(sign)) return false;
    Take();
    return true;
}

void TokenReader::ExpectWord(QStringView word) {
    if (!TryWord(word)) Fail();
}

void TokenReader::ExpectSign(QStringView sign) {
    if (!TrySign(sign)) Fail();
}

QString TokenReader::ExpectName() {
    if (!Peek().IsName()) Fail();
    return Take().text;
}

QString TokenReader::ExpectVariable() {
    if (Peek().kind != TokenKind::Variable) Fail();
    return Take().text;
}

int TokenReader::ExpectInteger() {
    bool fits = false;
    const int value = Peek().kind == TokenKind::Integer ? Peek().text.toInt(&fits) : 0;
    if (!fits) Fail();
    Take();
    return value;
}

const Token& TokenReader::Near() {
    return AtEnd() && lastEnd_ > 0 ? last_ : Peek();
}

void TokenReader::Fail() {
    const Token& at = Near();
    const bool keyword = at.kind == TokenKind::Word && at.reserved && !AtEnd();
    throw SyntaxError(keyword ? SyntaxError::NearKeyword : SyntaxError::Near, {at.text}, at.line,
                      at.column);
}

void TokenReader::Unsupported(const QString& construct) {
    Unsupported(construct, Peek());
}

void TokenReader::Unsupported(const QString& construct, const Token& at) {
    throw SyntaxError(SyntaxError::Unsupported, {construct}, at.line, at.column);
}

TokenReader::Nesting::Nesting(TokenReader& reader) : reader_(reader) {
    if (reader_.depth_ >= MaxDepth) {
        const Token& at = reader_.Peek();
        throw SyntaxError(SyntaxError::TooDeep, {}, at.line, at.column);
    }
    ++reader_.depth_;
}

}  // namespace quarv::localdb::tsql
