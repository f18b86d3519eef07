// Moments as text, by the style numbers of CONVERT ("CAST and CONVERT: date and time styles").
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "localdb/engine/Moment.h"

namespace quarv::localdb::engine {

namespace {

constexpr std::array<const char*, 12> Months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// Letters of a pattern: Y year, y its last two digits, M month, N its name, D day, d day with a
// blank before; H hour, h hour of twelve with a blank before, m, s; f fraction behind a point,
// F the same where it is not zero, g fraction as the styles with milliseconds have it; A AM or PM.
// Everything else stands for itself.
struct Style {
    int number;
    const char* date;
    const char* between;
    const char* time;
    const char* beforeOffset = " ";
};

constexpr std::array<Style, 40> Styles = {{
    {0, "N d Y", " ", "h:mA"},
    {1, "M/D/y", "", ""},
    {2, "y.M.D", "", ""},
    {3, "D/M/y", "", ""},
    {4, "D.M.y", "", ""},
    {5, "D-M-y", "", ""},
    {6, "D N y", "", ""},
    {7, "N D, y", "", ""},
    {8, "", "", "H:m:s"},
    {9, "N d Y", " ", "h:m:sgA"},
    {10, "M-D-y", "", ""},
    {11, "y/M/D", "", ""},
    {12, "yMD", "", ""},
    {13, "D N Y", " ", "H:m:sg"},
    {14, "", "", "H:m:sg"},
    {20, "Y-M-D", " ", "H:m:s"},
    {21, "Y-M-D", " ", "H:m:sf"},
    {22, "M/D/y", " ", "h:m:s A"},
    {23, "Y-M-D", "", ""},
    {24, "", "", "H:m:s"},
    {25, "Y-M-D", " ", "H:m:sf"},
    {100, "N d Y", " ", "h:mA"},
    {101, "M/D/Y", "", ""},
    {102, "Y.M.D", "", ""},
    {103, "D/M/Y", "", ""},
    {104, "D.M.Y", "", ""},
    {105, "D-M-Y", "", ""},
    {106, "D N Y", "", ""},
    {107, "N D, Y", "", ""},
    {108, "", "", "H:m:s"},
    {109, "N d Y", " ", "h:m:sgA"},
    {110, "M-D-Y", "", ""},
    {111, "Y/M/D", "", ""},
    {112, "YMD", "", ""},
    {113, "D N Y", " ", "H:m:sg"},
    {114, "", "", "H:m:sg"},
    {120, "Y-M-D", " ", "H:m:s"},
    {121, "Y-M-D", " ", "H:m:sf"},
    {126, "Y-M-D", "T", "H:m:sF", ""},
    {127, "Y-M-D", "T", "H:m:sF", ""},
}};

constexpr int UtcStyle = 127;

void AppendNumber(std::string& text, int number, int width, char fill) {
    std::array<char, 8> digits;
    const int size = std::snprintf(digits.data(), digits.size(), "%d", number);
    for (int i = size; i < width; ++i) text += fill;
    text.append(digits.data(), static_cast<size_t>(size));
}

// A datetime shows three digits, the kinds with a scale as many as it says.
void AppendFraction(std::string& text, const Moment& moment, const SqlType& type, char mark) {
    const bool old = type.kind == TypeKind::DateTime || type.kind == TypeKind::SmallDateTime;
    const size_t digits = old ? 3 : type.scale;
    if (digits == 0) return;
    std::string all;
    AppendNumber(all, moment.fraction, 7, '0');
    text += old ? mark : '.';
    text += all.substr(0, digits);
}

void AppendPart(std::string& text, const Moment& m, const SqlType& type, char letter) {
    switch (letter) {
        case 'Y':
            return AppendNumber(text, m.year, 4, '0');
        case 'y':
            return AppendNumber(text, m.year % 100, 2, '0');
        case 'M':
            return AppendNumber(text, m.month, 2, '0');
        case 'N':
            text += Months[static_cast<size_t>(m.month - 1)];
            return;
        case 'D':
            return AppendNumber(text, m.day, 2, '0');
        case 'd':
            return AppendNumber(text, m.day, 2, ' ');
        case 'H':
            return AppendNumber(text, m.hour, 2, '0');
        case 'h':
            return AppendNumber(text, m.hour % 12 == 0 ? 12 : m.hour % 12, 2, ' ');
        case 'm':
            return AppendNumber(text, m.minute, 2, '0');
        case 's':
            return AppendNumber(text, m.second, 2, '0');
        case 'A':
            text += m.hour < 12 ? "AM" : "PM";
            return;
        case 'F':
            if (m.fraction == 0) return;
            [[fallthrough]];
        case 'f':
            return AppendFraction(text, m, type, '.');
        case 'g':
            return AppendFraction(text, m, type, ':');
        default:
            text += letter;
    }
}

void AppendPattern(std::string& text, const Moment& m, const SqlType& type, const char* pattern) {
    for (; *pattern; ++pattern) AppendPart(text, m, type, *pattern);
}

void AppendOffset(std::string& text, int minutes) {
    text += minutes < 0 ? '-' : '+';
    AppendNumber(text, std::abs(minutes) / 60, 2, '0');
    text += ':';
    AppendNumber(text, std::abs(minutes) % 60, 2, '0');
}

}  // namespace

std::optional<std::string> Moment::ToText(TypeKind kind, int style) const {
    return ToText(SqlType{kind, 0, 0, 7}, style);
}

std::optional<std::string> Moment::ToText(const SqlType& type, int style) const {
    const auto* found = std::find_if(Styles.begin(), Styles.end(),
                                     [style](const Style& s) { return s.number == style; });
    if (found == Styles.end()) return std::nullopt;
    const bool date = type.kind != TypeKind::Time && *found->date;
    const bool time = type.kind != TypeKind::Date && *found->time;
    if (!date && !time) return std::nullopt;
    Moment shown = *this;
    const bool zoned = type.kind == TypeKind::DateTimeOffset;
    if (zoned && style == UtcStyle) {
        shown = Load(type.kind, Store(TypeKind::DateTimeOffset).value_or(0));
    }
    std::string text;
    if (date) AppendPattern(text, shown, type, found->date);
    if (date && time) text += found->between;
    if (!time) return text;
    AppendPattern(text, shown, type, found->time);
    if (zoned && style == UtcStyle) {
        text += 'Z';
    } else if (zoned) {
        text += found->beforeOffset;
        AppendOffset(text, offset);
    }
    return text;
}

int Moment::PlainStyle(TypeKind kind) {
    return kind == TypeKind::DateTime || kind == TypeKind::SmallDateTime ? 0 : 121;
}

Moment::Order Moment::OrderOf(int style) {
    switch (style % 100) {
        case 3:
        case 4:
        case 5:
        case 6:
        case 13:
            return Order::DayFirst;
        case 2:
        case 11:
            return Order::YearFirst;
        default:
            return Order::MonthFirst;
    }
}

}  // namespace quarv::localdb::engine
