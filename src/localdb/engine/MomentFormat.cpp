#include "localdb/engine/MomentFormat.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "localdb/engine/DateParts.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

std::string Padded(int number, int width) {
    std::array<char, 16> text;
    std::snprintf(text.data(), text.size(), "%0*d", width, number);
    return text.data();
}

struct Pattern {
    char letter;
    const char* moment;  // of dates
    const char* time;    // of time alone; null where it has none
};

constexpr std::array<Pattern, 19> Patterns = {{
    {'d', "M/d/yyyy", nullptr},
    {'D', "dddd, MMMM d, yyyy", nullptr},
    {'f', "dddd, MMMM d, yyyy h:mm tt", nullptr},
    {'F', "dddd, MMMM d, yyyy h:mm:ss tt", nullptr},
    {'g', "M/d/yyyy h:mm tt", "h\\:mm\\:ss.FFFFFFF"},
    {'G', "M/d/yyyy h:mm:ss tt", "'0:'hh\\:mm\\:ss\\.fffffff"},
    {'m', "MMMM d", nullptr},
    {'M', "MMMM d", nullptr},
    {'o', "yyyy-MM-ddTHH:mm:ss.fffffffK", nullptr},
    {'O', "yyyy-MM-ddTHH:mm:ss.fffffffK", nullptr},
    {'r', "ddd, dd MMM yyyy HH:mm:ss 'GMT'", nullptr},
    {'R', "ddd, dd MMM yyyy HH:mm:ss 'GMT'", nullptr},
    {'s', "yyyy-MM-ddTHH:mm:ss", nullptr},
    {'t', "h:mm tt", "hh\\:mm\\:ss.FFFFFFF"},
    {'T', "h:mm:ss tt", "hh\\:mm\\:ss.FFFFFFF"},
    {'c', nullptr, "hh\\:mm\\:ss.FFFFFFF"},
    {'u', "yyyy-MM-dd HH:mm:ss'Z'", nullptr},
    {'y', "MMMM yyyy", nullptr},
    {'Y', "MMMM yyyy", nullptr},
}};

// Writes a moment by a picture of letters, each as often as the part is wide.
class Writer {
  public:
    Writer(const Moment& moment, const SqlType& type, std::string_view format)
        : moment_(moment), type_(type), format_(format), clock_(type.kind == TypeKind::Time) {}

    std::optional<std::string> Write() {
        while (at_ < format_.size()) {
            if (!Take()) return std::nullopt;
        }
        return text_;
    }

  private:
    bool Take() {
        const char c = format_[at_];
        if (c == '\\') {
            if (at_ + 1 >= format_.size()) return false;
            text_ += format_[at_ + 1];
            at_ += 2;
            return true;
        }
        if (c == '\'' || c == '"') return TakeQuoted(c);
        // A letter alone behind "%" is a picture all the same.
        if (c == '%') return ++at_ < format_.size() && format_[at_] != '%';
        size_t end = at_;
        while (end < format_.size() && format_[end] == c) ++end;
        const auto width = static_cast<int>(end - at_);
        at_ = end;
        if (clock_) return WriteClock(c, width);
        WritePart(c, width);
        return true;
    }
    bool TakeQuoted(char quote) {
        const size_t close = format_.find(quote, at_ + 1);
        if (close == std::string_view::npos) return false;
        text_ += format_.substr(at_ + 1, close - at_ - 1);
        at_ = close + 1;
        return true;
    }
    // Of a time alone only its own letters may stand, everything else has to be quoted.
    bool WriteClock(char letter, int width) {
        const bool fraction = letter == 'f' || letter == 'F';
        if (letter == '.' && at_ < format_.size() && format_[at_] == 'F') {
            text_ += '.';
            return true;
        }
        if (width > (fraction ? 7 : letter == 'd' ? 8 : 2)) return false;
        switch (letter) {
            case 'd':
                text_ += Padded(0, width);
                return true;
            case 'h':
                text_ += Padded(moment_.hour, width);
                return true;
            case 'm':
                text_ += Padded(moment_.minute, width);
                return true;
            case 's':
                text_ += Padded(moment_.second, width);
                return true;
            default:
                if (fraction) WriteFraction(width, letter == 'F');
                return fraction;
        }
    }
    void WritePart(char letter, int width) {
        switch (letter) {
            case 'd':
                WriteDay(width);
                break;
            case 'M':
                WriteMonth(width);
                break;
            case 'y':
                text_ += Padded(width <= 2 ? moment_.year % 100 : moment_.year, width);
                break;
            case 'f':
            case 'F':
                WriteFraction(width, letter == 'F');
                break;
            case 'g':
                text_ += "A.D.";
                break;
            case 't':
                text_ += moment_.hour < 12 ? 'A' : 'P';
                if (width > 1) text_ += 'M';
                break;
            case 'K':
                if (type_.kind == TypeKind::DateTimeOffset) WriteOffset(3);
                break;
            case 'z':
                if (type_.kind != TypeKind::DateTimeOffset) {
                    throw SqlError(40517, {QStringLiteral("FORMAT z of a value without offset")});
                }
                WriteOffset(width);
                break;
            default:
                WriteTime(letter, width);
        }
    }
    // Hours, minutes and seconds have one digit or two; any other sign stands for itself.
    void WriteTime(char letter, int width) {
        const int two = width > 1 ? 2 : 1;
        switch (letter) {
            case 'h':
                text_ += Padded((moment_.hour + 11) % 12 + 1, two);
                break;
            case 'H':
                text_ += Padded(moment_.hour, two);
                break;
            case 'm':
                text_ += Padded(moment_.minute, two);
                break;
            case 's':
                text_ += Padded(moment_.second, two);
                break;
            default:
                text_.append(static_cast<size_t>(width), letter);
        }
    }
    void WriteDay(int width) {
        if (width <= 2) {
            text_ += Padded(moment_.day, width);
            return;
        }
        const std::string name = ToUtf8(DateParts::Name(DatePart::Weekday, moment_, 7));
        text_ += width == 3 ? name.substr(0, 3) : name;
    }
    void WriteMonth(int width) {
        if (width <= 2) {
            text_ += Padded(moment_.month, width);
            return;
        }
        const std::string name = ToUtf8(DateParts::Name(DatePart::Month, moment_, 7));
        text_ += width == 3 ? name.substr(0, 3) : name;
    }
    // `optional`: zeros at the end go, and with the last of them a point in front.
    void WriteFraction(int width, bool optional) {
        std::string digits = Padded(moment_.fraction, 7);
        digits.resize(static_cast<size_t>(std::min(width, 7)));
        while (optional && !digits.empty() && digits.back() == '0') digits.pop_back();
        if (digits.empty() && !text_.empty() && text_.back() == '.') text_.pop_back();
        text_ += digits;
    }
    void WriteOffset(int width) {
        const int minutes = std::abs(moment_.offset);
        text_ += moment_.offset < 0 ? '-' : '+';
        text_ += Padded(minutes / 60, width > 1 ? 2 : 1);
        if (width > 2) text_ += ':' + Padded(minutes % 60, 2);
    }

    const Moment& moment_;
    const SqlType& type_;
    std::string_view format_;
    bool clock_;
    size_t at_ = 0;
    std::string text_;
};

}  // namespace

std::optional<std::string> MomentFormat::Format(const Moment& moment, const SqlType& type,
                                                std::string_view format) {
    const bool clock = type.kind == TypeKind::Time;
    if (format.empty()) format = clock ? "c" : "G";
    if (format.size() > 1) return Writer(moment, type, format).Write();
    if (format == "U") throw SqlError(40517, {QStringLiteral("FORMAT U")});
    for (const Pattern& pattern : Patterns) {
        if (pattern.letter != format[0]) continue;
        const char* picture = clock ? pattern.time : pattern.moment;
        if (!picture) return std::nullopt;
        // These three show the time in UTC.
        const bool utc = type.kind == TypeKind::DateTimeOffset &&
                         (format == "r" || format == "R" || format == "u");
        Moment shown = moment;
        if (utc) {
            DateParts::Add(DatePart::Minute, -moment.offset, shown);
            shown.offset = 0;
        }
        return Writer(shown, type, picture).Write();
    }
    return std::nullopt;
}

}  // namespace quarv::localdb::engine
