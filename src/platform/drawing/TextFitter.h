// TextFitter: brings texts of any length into the room of a cell: one line, without control
// characters, with an ellipsis where it ends too soon. What it costs depends on the room, not on
// the length of the text. The control owns one for its font.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QString>
#include <array>

namespace quarv::drawing {

class TextFitter {
  public:
    explicit TextFitter(const QFont& font);

    // `room` in device-independent pixels; nothing where there is none.
    QString Fit(const QString& text, double room) const;
    // True where Fit gives the text as it is.
    bool Fits(const QString& text, double room) const;
    // Of a text without control characters, as one line, in device-independent pixels.
    double Width(const QString& text) const;
    // From the top of a line to its base line, and the height of a line.
    double Ascent() const { return metrics_.ascent(); }
    double Height() const { return metrics_.height(); }

  private:
    static constexpr char16_t First = 0x20;
    static constexpr char16_t Last = 0x7E;

    static bool IsPlain(QChar c) { return c.unicode() >= First && c.unicode() <= Last; }
    double Advance(QChar c) const { return advances_[c.unicode() - First]; }
    // Plain characters alone, and they fit; measured without shaping them.
    bool FitsPlainly(const QString& text, double room) const;
    QString Shortened(const QString& text, double room) const;

    QFontMetricsF metrics_;
    std::array<double, Last - First + 1> advances_;
};

}  // namespace quarv::drawing
