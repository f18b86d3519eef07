#include "localdb/engine/Collation.h"

#include <QList>
#include <vector>

#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

// What a character weighs: first its base letter, then its accents. An accent that stands alone in
// the text has no first weight and counts with the letter before it.
struct Weight {
    uint32_t first = 0;
    uint32_t second = 0;
};

constexpr char32_t TableSize = 0x3000;

uint32_t ClassOfCharacter(char32_t code) {
    if (QChar::isDigit(code)) return 2;
    if (QChar::isLetter(code)) return 3;
    return code < 0x10000 ? 1 : 4;
}

Weight ComputeWeight(char32_t code) {
    if (QChar::isMark(code)) return {0, code};
    Weight weight;
    char32_t base = code;
    while (QChar::decompositionTag(base) == QChar::Canonical) {
        const QList<uint> parts = QChar::decomposition(base).toUcs4();
        for (qsizetype i = 1; i < parts.size(); ++i) weight.second = weight.second * 31 + parts[i];
        base = parts[0];
    }
    base = QChar::toCaseFolded(base);
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
    return {ClassOfCharacter(folded) << 24 | folded, 0};
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

bool Collation::SameCharacter(char32_t a, char32_t b) {
    if (a == b) return true;
    const Weight x = WeightOf(a), y = WeightOf(b);
    return x.first == y.first && x.second == y.second;
}

int Collation::CompareCharacters(char32_t a, char32_t b) {
    const Weight x = WeightOf(a), y = WeightOf(b);
    return x.first != y.first ? Sign(x.first, y.first) : Sign(x.second, y.second);
}

}  // namespace quarv::localdb::engine
