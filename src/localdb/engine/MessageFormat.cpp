#include "localdb/engine/MessageFormat.h"

#include <algorithm>

#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

const QString Null = QStringLiteral("(null)");

bool IsInteger(const SqlType& type) {
    return type.kind == TypeKind::TinyInt || type.kind == TypeKind::SmallInt ||
           type.kind == TypeKind::Int || type.kind == TypeKind::BigInt;
}

bool IsText(const SqlType& type) {
    return type.kind == TypeKind::Char || type.kind == TypeKind::VarChar ||
           type.kind == TypeKind::NChar || type.kind == TypeKind::NVarChar;
}

// One "%..." of a format.
struct Specification {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool zero = false;
    bool prefix = false;
    int width = 0;
    int precision = -1;  // -1: none
    int bits = 32;
    char16_t kind = 0;  // d, o, u, x, X or s
};

class Filler {
  public:
    Filler(const QString& format, const std::vector<FormatArgument>& arguments)
        : format_(format), arguments_(arguments) {}

    QString Run();

  private:
    [[noreturn]] void RefuseFormat() const { throw SqlError(2787, {format_.mid(begin_)}); }
    [[noreturn]] void RefuseArgument() const { throw SqlError(2786, {QString::number(next_)}); }
    char16_t At() const { return place_ < format_.size() ? format_[place_].unicode() : u'\0'; }
    bool Try(char16_t unit) {
        if (place_ >= format_.size() || At() != unit) return false;
        ++place_;
        return true;
    }
    Specification Read();
    void ReadFlags(Specification& specification);
    void ReadSize(Specification& specification);
    int ReadNumber();
    const FormatArgument* Next();
    QString One(const Specification& specification);
    QString Digits(const Specification& specification, int64_t value) const;
    QString Integer(const Specification& specification, int64_t value) const;
    static QString Pad(const Specification& specification, const QString& text, bool zero,
                       qsizetype behind);

    const QString& format_;
    const std::vector<FormatArgument>& arguments_;
    qsizetype place_ = 0;
    qsizetype begin_ = 0;  // of the conversion that is being read
    size_t next_ = 0;      // arguments taken
};

// Nothing where there are no more.
const FormatArgument* Filler::Next() {
    return next_ < arguments_.size() ? &arguments_[next_++] : nullptr;
}

void Filler::ReadFlags(Specification& specification) {
    for (;; ++place_) {
        switch (At()) {
            case u'-':
                specification.left = true;
                break;
            case u'+':
                specification.plus = true;
                break;
            case u' ':
                specification.blank = true;
                break;
            case u'0':
                specification.zero = true;
                break;
            case u'#':
                specification.prefix = true;
                break;
            default:
                return;
        }
    }
}

// A width or a precision: digits, or "*" for an argument. More than a message can hold is cut.
int Filler::ReadNumber() {
    constexpr int Most = 4000;
    if (Try(u'*')) {
        const FormatArgument* argument = Next();
        if (!argument) return 0;
        if (!IsInteger(argument->type)) RefuseArgument();
        return static_cast<int>(std::clamp<int64_t>(argument->value.View().integer, -Most, Most));
    }
    int number = 0;
    for (; At() >= u'0' && At() <= u'9'; ++place_) {
        number = std::min(Most, number * 10 + (At() - u'0'));
    }
    return number;
}

void Filler::ReadSize(Specification& specification) {
    if (format_.mid(place_, 3) == u"I64") {
        place_ += 3;
        specification.bits = 64;
    } else if (Try(u'h')) {
        specification.bits = 16;
    } else {
        Try(u'l');
    }
}

Specification Filler::Read() {
    Specification specification;
    ReadFlags(specification);
    specification.width = ReadNumber();
    if (specification.width < 0) {
        specification.left = true;
        specification.width = -specification.width;
    }
    if (Try(u'.')) specification.precision = std::max(-1, ReadNumber());
    ReadSize(specification);
    const char16_t kind = At();
    if (kind == 0 || QStringView(u"diosuxX").indexOf(QChar(kind)) < 0) RefuseFormat();
    specification.kind = kind == u'i' ? u'd' : kind;
    ++place_;
    return specification;
}

// `behind` units, a sign or a prefix, stay in front of padding zeros.
QString Filler::Pad(const Specification& specification, const QString& text, bool zero,
                    qsizetype behind) {
    const qsizetype missing = specification.width - text.size();
    if (missing <= 0) return text;
    if (specification.left) return text + QString(missing, u' ');
    if (!zero) return QString(missing, u' ') + text;
    return text.left(behind) + QString(missing, u'0') + text.mid(behind);
}

// The digits alone; a negative number counts as its two's complement where no sign is wanted.
QString Filler::Digits(const Specification& specification, int64_t value) const {
    if (specification.kind == u'd') {
        const QString digits = QString::number(value);
        return value < 0 ? digits.mid(1) : digits;
    }
    const uint64_t mask =
        specification.bits == 64 ? ~uint64_t{0} : (uint64_t{1} << specification.bits) - 1;
    const int base = specification.kind == u'u' ? 10 : specification.kind == u'o' ? 8 : 16;
    const QString digits = QString::number(static_cast<uint64_t>(value) & mask, base);
    return specification.kind == u'X' ? digits.toUpper() : digits;
}

QString Filler::Integer(const Specification& specification, int64_t value) const {
    if (specification.bits == 16) value = static_cast<int16_t>(value);
    QString digits = Digits(specification, value);
    if (specification.precision > digits.size()) {
        digits = digits.rightJustified(specification.precision, u'0');
    }
    QString front;
    if (specification.kind == u'd') {
        if (value < 0) {
            front = u'-';
        } else if (specification.plus) {
            front = u'+';
        } else if (specification.blank) {
            front = u' ';
        }
    } else if (specification.prefix && value != 0) {
        if (specification.kind == u'o') front = u'0';
        if (specification.kind == u'x') front = QStringLiteral("0x");
        if (specification.kind == u'X') front = QStringLiteral("0X");
    }
    const bool zero = specification.zero && specification.precision < 0;
    return Pad(specification, front + digits, zero, front.size());
}

QString Filler::One(const Specification& specification) {
    const FormatArgument* argument = Next();
    if (!argument || argument->value.View().IsNull()) return Pad(specification, Null, false, 0);
    const SqlValue value = argument->value.View();
    if (specification.kind == u's') {
        if (!IsText(argument->type)) RefuseArgument();
        const QString text = FromUtf8(value.text);
        return Pad(specification, text.left(specification.precision), false, 0);
    }
    const bool wide = argument->type.kind == TypeKind::BigInt;
    if (!IsInteger(argument->type) || (wide && specification.bits != 64)) RefuseArgument();
    return Integer(specification, value.integer);
}

QString Filler::Run() {
    QString text;
    while (place_ < format_.size() && text.size() <= MessageFormat::MaxLength) {
        if (At() != u'%') {
            text += format_[place_++];
            continue;
        }
        begin_ = place_++;
        if (Try(u'%')) {
            text += u'%';
        } else {
            text += One(Read());
        }
    }
    return MessageFormat::Cut(text);
}

}  // namespace

const MessageText* MessageFormat::FindRaisable(int64_t number) {
    const bool fits = number == static_cast<int>(number);
    return fits && IsRaisable(number) ? LookUpMessage(static_cast<int>(number)) : nullptr;
}

void MessageFormat::CheckArguments(const std::vector<FormatArgument>& arguments, int firstPlace) {
    if (arguments.size() > MaxArguments) throw SqlError(2747, {QString::number(MaxArguments)});
    for (size_t i = 0; i < arguments.size(); ++i) {
        const SqlType& type = arguments[i].type;
        if (IsInteger(type) || IsText(type)) continue;
        throw SqlError(2748, {type.Name(), QString::number(firstPlace + static_cast<int>(i))});
    }
}

QString MessageFormat::Fill(const QString& format, const std::vector<FormatArgument>& arguments) {
    return Filler(format, arguments).Run();
}

QStringList MessageFormat::Plain(const std::vector<FormatArgument>& arguments) {
    QStringList texts;
    for (const FormatArgument& argument : arguments) {
        const SqlValue value = argument.value.View();
        if (value.IsNull()) {
            texts += Null;
        } else {
            texts += IsText(argument.type) ? FromUtf8(value.text) : QString::number(value.integer);
        }
    }
    return texts;
}

QString MessageFormat::Cut(const QString& text) {
    if (text.size() <= MaxLength) return text;
    return text.left(MaxLength - 3) + QStringLiteral("...");
}

}  // namespace quarv::localdb::engine
