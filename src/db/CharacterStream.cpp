#include "db/CharacterStream.h"

#include <limits>

#include "base/RuntimeError.h"

namespace quarv {

namespace {

constexpr QStringView WhiteSpace = u" \r\n\t";
constexpr QStringView IdentDelims = u" \r\n\t<>,.\"'=\\/?&%!~";
const QString NumberDelims = QStringLiteral("(,)[] ");

}  // namespace

void CharacterStream::SetTextData(const Value& sTxt) {
    QString text = sTxt.ToText();
    if (text.size() > std::numeric_limits<qint32>::max() - 1) {
        throw RuntimeError(RuntimeError::Overflow);
    }
    text_ = std::move(text);
    position_ = 1;
    length_ = static_cast<qint32>(text_.size());
}

QString CharacterStream::GetTextData(const Value&) const {
    return text_;
}

Value CharacterStream::Rewind() {
    position_ = 1;
    return {};
}

QString CharacterStream::NextChar() {
    QString result = PeekChar();
    if (!result.isEmpty()) ++position_;
    return result;
}

QString CharacterStream::GetCharsUntil(const QString& ch) {
    if (position_ < 1) throw RuntimeError(RuntimeError::InvalidProcedureCall);
    const qsizetype found = EndOfStream() ? -1 : text_.indexOf(ch, position_ - 1);
    if (found < 0) return {};
    const qint32 start = position_;
    position_ = static_cast<qint32>(found) + 1;
    return Since(start);
}

QString CharacterStream::NextNonWhiteChar() {
    SkipWhiteSpace();
    return NextChar();
}

QString CharacterStream::PeekChar() const {
    QChar unit;
    return Peek(unit) ? QString(unit) : QString();
}

QString CharacterStream::PeekNonWhiteChar() {
    SkipWhiteSpace();
    return PeekChar();
}

QString CharacterStream::Char(qint32 pos) const {
    if (pos < 1) throw RuntimeError(RuntimeError::InvalidProcedureCall);
    return pos <= length_ ? QString(text_[pos - 1]) : QString();
}

void CharacterStream::SetChar(qint32 pos, const QString& newChar) {
    if (pos < 1 || pos > length_) throw RuntimeError(RuntimeError::InvalidProcedureCall);
    if (!newChar.isEmpty()) text_[pos - 1] = newChar.front();
}

void CharacterStream::SkipWhiteSpace() {
    for (QChar unit; Peek(unit) && WhiteSpace.contains(unit);) ++position_;
}

double CharacterStream::GetNextNumber() {
    return Value(GetNextString(NumberDelims)).ToDouble();
}

QString CharacterStream::GetNextIdent() {
    SkipWhiteSpace();
    const qint32 start = position_;
    for (QChar unit; Peek(unit) && !IdentDelims.contains(unit);) ++position_;
    return Since(start);
}

QString CharacterStream::GetNextElementToComma() {
    return GetNextString(QStringLiteral(","));
}

QString CharacterStream::GetNextString(const QString& sStartDelims, const QString& sEndDelims,
                                       bool storeDelims) {
    QStringView terminators = sEndDelims.isEmpty() ? sStartDelims : sEndDelims;
    SkipWhiteSpace();
    QChar unit;
    QChar quote;
    qint32 start = position_;
    if (Peek(unit) && sStartDelims.contains(unit)) {
        ++position_;
        if (!storeDelims) start = position_;
        if (terminators.contains(unit)) {
            quote = unit;
            terminators = QStringView(&quote, 1);
        }
    }
    while (Peek(unit) && !terminators.contains(unit)) ++position_;
    QString result = Since(start);
    if (Peek(unit)) {
        ++position_;
        if (storeDelims) result += unit;
    }
    return result;
}

bool CharacterStream::Peek(QChar& unit) const {
    if (EndOfStream()) return false;
    if (position_ < 1) throw RuntimeError(RuntimeError::InvalidProcedureCall);
    unit = text_[position_ - 1];
    return true;
}

QString CharacterStream::Since(qint32 start) const {
    if (start == position_) return {};  // the cursor may stand anywhere
    return text_.sliced(start - 1, position_ - start);
}

}  // namespace quarv
