#include "localdb/engine/SelectShape.h"

namespace quarv::localdb::engine {

namespace {

using tsql::LiteralKind;

bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

bool BeginsWord(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
}

// Whatever might go on a word or a number, or make it something else.
bool MayContinue(char16_t c) {
    return BeginsWord(c) || IsDigit(c) || c == u'@' || c == u'#' || c == u'$' || c >= 0x80;
}

bool IsBlank(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

// Signs that mean the same whatever stands next to them.
bool IsSign(char16_t c) {
    return QStringView(u"*=<>,.();").contains(QChar(c));
}

class Scanner {
  public:
    Scanner(const QString& batch, SelectShape& shape) : text_(batch), shape_(shape) {}

    // False where something stands in the batch that is not plain.
    bool Run() {
        while (at_ < text_.size()) {
            if (!Next()) return false;
        }
        return true;
    }

  private:
    char16_t At(qsizetype ahead = 0) const {
        return at_ + ahead < text_.size() ? text_[at_ + ahead].unicode() : u'\0';
    }

    bool Next() {
        const char16_t c = At();
        if ((c == u'N' || c == u'n') && At(1) == u'\'') {
            ++at_;
            return String(LiteralKind::NationalString, u'\3');
        }
        if (c == u'\'') return String(LiteralKind::String, u'\2');
        if (IsDigit(c)) return Number();
        if (BeginsWord(c)) return Word();
        if (!IsBlank(c) && !IsSign(c)) return false;
        if (c == u'.' && IsDigit(At(1))) return false;
        shape_.key += QChar(c);
        ++at_;
        return true;
    }

    bool Word() {
        const qsizetype begin = at_;
        while (BeginsWord(At()) || IsDigit(At())) ++at_;
        shape_.key += text_.mid(begin, at_ - begin);
        return !MayContinue(At());
    }

    bool Number() {
        const qsizetype begin = at_;
        while (IsDigit(At())) ++at_;
        Add(LiteralKind::Integer, u'\1', text_.mid(begin, at_ - begin).toString());
        return !MayContinue(At()) && At() != u'.';
    }

    bool String(LiteralKind kind, char16_t mark) {
        QString value;
        for (++at_;; ++at_) {
            // A line's end inside a literal would move the lines behind it.
            if (At() < u' ') return false;
            if (At() == u'\'' && At(1) != u'\'') break;
            if (At() == u'\'') ++at_;
            value += QChar(At());
        }
        ++at_;
        Add(kind, mark, std::move(value));
        return true;
    }

    void Add(LiteralKind kind, char16_t mark, QString value) {
        shape_.key += QChar(mark);
        shape_.literals.emplace_back(kind, std::move(value));
    }

    const QStringView text_;
    qsizetype at_ = 0;
    SelectShape& shape_;
};

}  // namespace

std::optional<SelectShape> SelectShape::Of(const QString& batch) {
    const bool maybe = batch.size() <= LongestBatch && batch.startsWith(u's', Qt::CaseInsensitive);
    if (!maybe) return std::nullopt;
    std::optional<SelectShape> shape(std::in_place);
    shape->key.reserve(batch.size());
    if (!Scanner(batch, *shape).Run()) return std::nullopt;
    return shape;
}

}  // namespace quarv::localdb::engine
