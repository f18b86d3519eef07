// PackedText: a text in the fewest bytes that give it back unit by unit: a byte a character where
// its characters allow it, else UTF-8 or UTF-16. It writes to and reads from a ByteLog and knows
// nothing of cells.
#pragma once

#include <QString>

#include "platform/ado/ByteLog.h"

namespace quarv::ado {

class PackedText {
  public:
    enum class Form : quint8 {
        Latin1,
        Utf8,   // behind the length in UTF-16 units
        Utf16,  // as it is: halves of pairs stay what they were
    };
    // Where a text lies.
    struct Place {
        Form form;
        quint64 start;
        quint64 bytes;
    };

    // Looks at `text`, which must outlive this.
    explicit PackedText(QStringView text);

    Form GetForm() const { return form_; }
    // Bytes that Write writes.
    quint64 Bytes() const { return bytes_; }
    void Write(ByteLog& log) const;

    // In UTF-16 units.
    static qint64 Length(const ByteLog& log, const Place& place);
    // The text's first `most` units, or all of a shorter one.
    static QString Read(const ByteLog& log, const Place& place, qint64 most);

  private:
    QStringView text_;
    Form form_;
    quint64 bytes_;
};

}  // namespace quarv::ado
