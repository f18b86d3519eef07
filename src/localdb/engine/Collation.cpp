#include "localdb/engine/Collation.h"

#include <QList>
#include <utility>
#include <vector>

#include "base/CodePage1252.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

// What a character weighs: first its base letter, then its accents, then its case. An accent that
// stands alone in the text has no first weight and counts with the letter before it.
struct Weight {
    uint32_t first = 0;
    uint32_t second = 0;
    uint32_t third = 0;  // 1 for a capital letter
};

constexpr char32_t TableSize = 0x3000;

uint32_t ClassOfCharacter(char32_t code) {
    if (QChar::isDigit(code)) return 2;
    if (QChar::isLetter(code)) return 3;
    return code < 0x10000 ? 1 : 4;
}

Weight ComputeWeight(char32_t code) {
    if (QChar::isMark(code)) return {0, code, 0};
    Weight weight;
    char32_t base = code;
    while (QChar::decompositionTag(base) == QChar::Canonical) {
        const QList<uint> parts = QChar::decomposition(base).toUcs4();
        for (qsizetype i = 1; i < parts.size(); ++i) weight.second = weight.second * 31 + parts[i];
        base = parts[0];
    }
    const char32_t letter = base;
    base = QChar::toCaseFolded(base);
    weight.third = base != letter;
    weight.first = ClassOfCharacter(base) << 24 | base;
    return weight;
}

const std::vector<Weight>& Table() {
    static const std::vector<Weight> table = [] {
        std::vector<Weight> weights(TableSize);
        for (char32_t code = 0; code < TableSize; ++code) weights[code] = ComputeWeight(code);
        return weights;
    }();
    return table;
}

Weight WeightOf(char32_t code) {
    if (code < TableSize) return Table()[code];
    const char32_t folded = QChar::toCaseFolded(code);
    return {ClassOfCharacter(folded) << 24 | folded, 0, folded != code};
}

const Weight& Blank() {
    static const Weight weight = WeightOf(U' ');
    return weight;
}

// Steps through a text letter by letter, the accents that follow a letter taken with it.
class Letters {
  public:
    explicit Letters(std::string_view text) : text_(text) {}

    // A blank behind the end, for ever.
    Weight Next() {
        if (at_ >= text_.size()) return Blank();
        Weight weight = WeightOf(NextCodePoint(text_, at_));
        while (at_ < text_.size() && static_cast<unsigned char>(text_[at_]) >= 0x80) {
            size_t after = at_;
            const Weight mark = WeightOf(NextCodePoint(text_, after));
            if (mark.first != 0) break;
            weight.second = weight.second * 31 + mark.second;
            at_ = after;
        }
        return weight;
    }
    bool AtEnd() const { return at_ >= text_.size(); }

  private:
    std::string_view text_;
    size_t at_ = 0;
};

int Sign(uint32_t a, uint32_t b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

bool HasAccents(TextOrder order) {
    return order < TextOrder::Letters;
}

// The order of two letters by their case alone.
int CompareCase(const Weight& x, const Weight& y, TextOrder order) {
    if (order == TextOrder::CaseInsensitive || order == TextOrder::Letters) return 0;
    return order == TextOrder::UpperFirst ? Sign(y.third, x.third) : Sign(x.third, y.third);
}

// What comes first in the alphabet decides, then the accents, then the case.
int CompareLetters(std::string_view a, std::string_view b, TextOrder order) {
    Letters left(a), right(b);
    int accents = 0, cases = 0;
    while (!left.AtEnd() || !right.AtEnd()) {
        const Weight x = left.Next();
        const Weight y = right.Next();
        if (x.first != y.first) return Sign(x.first, y.first);
        if (accents == 0 && HasAccents(order)) accents = Sign(x.second, y.second);
        if (cases == 0) cases = CompareCase(x, y, order);
    }
    return accents != 0 ? accents : cases;
}

// Steps through a text by what a binary order compares, blanks behind the end for ever.
class Codes {
  public:
    Codes(std::string_view text, TextOrder order) : text_(text), order_(order) {}

    uint32_t Next() {
        if (pending_ >= 0) return static_cast<uint32_t>(std::exchange(pending_, -1));
        const char32_t code = at_ < text_.size() ? NextCodePoint(text_, at_) : U' ';
        if (order_ == TextOrder::CodePoints) return code;
        if (order_ == TextOrder::CodePage) {
            return code > 0xFFFF ? '?' : Cp1252Of(static_cast<char16_t>(code));
        }
        if (code < 0x10000) return Unit(code);
        pending_ = static_cast<int64_t>(Unit(QChar::lowSurrogate(code)));
        return Unit(QChar::highSurrogate(code));
    }
    bool AtEnd() const { return at_ >= text_.size() && pending_ < 0; }

  private:
    // Behind the first unit the lower byte decides before the higher one.
    uint32_t Unit(char32_t unit) {
        if (std::exchange(first_, false)) return unit;
        return (unit & 0xFF) << 8 | unit >> 8;
    }

    std::string_view text_;
    TextOrder order_;
    size_t at_ = 0;
    int64_t pending_ = -1;
    bool first_ = true;
};

int CompareCodes(std::string_view a, std::string_view b, TextOrder order) {
    Codes left(a, order), right(b, order);
    while (!left.AtEnd() || !right.AtEnd()) {
        if (const int sign = Sign(left.Next(), right.Next())) return sign;
    }
    return 0;
}

}  // namespace

int Collation::Compare(std::string_view a, std::string_view b) {
    Letters left(a), right(b);
    int accents = 0;
    while (!left.AtEnd() || !right.AtEnd()) {
        const Weight x = left.Next();
        const Weight y = right.Next();
        if (x.first != y.first) return Sign(x.first, y.first);
        if (accents == 0) accents = Sign(x.second, y.second);
    }
    return accents;
}

int Collation::Compare(std::string_view a, std::string_view b, TextOrder order) {
    if (order == TextOrder::CaseInsensitive) return Compare(a, b);
    if (order >= TextOrder::CodePage) return CompareCodes(a, b, order);
    return CompareLetters(a, b, order);
}

bool Collation::SameCharacter(char32_t a, char32_t b, TextOrder order) {
    return a == b || CompareCharacters(a, b, order) == 0;
}

int Collation::CompareCharacters(char32_t a, char32_t b, TextOrder order) {
    if (order >= TextOrder::CodePage) {
        char x[4], y[4];
        return CompareCodes({x, PutCodePoint(a, x)}, {y, PutCodePoint(b, y)}, order);
    }
    const Weight x = WeightOf(a), y = WeightOf(b);
    if (x.first != y.first) return Sign(x.first, y.first);
    const int accents = HasAccents(order) ? Sign(x.second, y.second) : 0;
    return accents != 0 ? accents : CompareCase(x, y, order);
}

}  // namespace quarv::localdb::engine
