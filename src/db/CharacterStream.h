// CharacterStream: a cursor over one text that cuts it into keys, values, identifiers, numbers and
// elements. Positions are 1-based and count UTF-16 units; characters compare exactly. It owns its
// copy of the text and knows nothing of what the pieces mean.
//
// The empty text stands for the end of the stream. A cursor that was set below 1 raises
// InvalidProcedureCall when it is read from.
#pragma once

#include <QString>
#include <QStringView>

#include "base/Value.h"

namespace quarv {

class CharacterStream {
  public:
    // Takes the value's text and goes to its start. Raises as Value::ToText.
    void SetTextData(const Value& sTxt);
    // The whole text; the argument is ignored.
    QString GetTextData(const Value& sTxt = {}) const;
    // Goes back to the start; the result is the empty value.
    Value Rewind();

    // The character at the cursor, which steps behind it.
    QString NextChar();
    // The characters before the next `ch`, to which the cursor goes. Empty, and the cursor stays,
    // where there is none or the cursor already stands at it.
    QString GetCharsUntil(const QString& ch);
    QString NextNonWhiteChar();
    QString PeekChar() const;
    // Consumes the white space, not the character behind it.
    QString PeekNonWhiteChar();

    // The character at a position, empty past the end. Raises InvalidProcedureCall below 1.
    QString Char(qint32 pos) const;
    // Replaces it by the first of `newChar`; an empty `newChar` changes nothing. Raises
    // InvalidProcedureCall outside the text.
    void SetChar(qint32 pos, const QString& newChar);

    bool EndOfStream() const { return position_ > length_; }
    // White space is blank, carriage return, line feed and tab.
    void SkipWhiteSpace();
    // A run up to one of "(,)[] ", as a number. A number right behind "(" or "," runs to the next
    // one of that same character. Raises TypeMismatch where the run is no number.
    double GetNextNumber();
    // A run up to a delimiter of identifiers, which is not consumed.
    QString GetNextIdent();
    QString GetNextElementToComma();

    // Behind white space, a run up to one of `sEndDelims` (empty: of `sStartDelims`), which is
    // consumed. A start delimiter in front is dropped; one that is also an end delimiter is closed
    // only by itself. With `storeDelims` the delimiters stay in the result.
    QString GetNextString(const QString& sStartDelims, const QString& sEndDelims = {},
                          bool storeDelims = false);

    // The cursor; setting it checks nothing.
    qint32 Position() const { return position_; }
    void SetPosition(qint32 position) { position_ = position; }

  private:
    // True where a character is at the cursor, which is then `unit`.
    bool Peek(QChar& unit) const;
    // The text from `start` to before the cursor.
    QString Since(qint32 start) const;

    QString text_;
    qint32 position_ = 1;
    qint32 length_ = 0;
};

}  // namespace quarv
