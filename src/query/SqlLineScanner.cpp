#include "query/SqlLineScanner.h"

#include <algorithm>
#include <array>
#include <utility>

#include "query/SqlKeywords.h"

namespace quarv {

namespace {

using forms::LineKind;
using forms::LineSpan;

constexpr int InNothing = SqlLineScanner::InNothing;
constexpr int InComment = SqlLineScanner::InComment;

// What a unit may begin.
enum class Start : quint8 { Nothing, Blank, Name, Number, Money, Dot, Quote, Dash, Slash };

constexpr std::array<Start, 128> MakeStarts() {
    std::array<Start, 128> starts{};
    for (char c = 'a'; c <= 'z'; ++c) starts[c] = starts[c - 'a' + 'A'] = Start::Name;
    for (char c = '0'; c <= '9'; ++c) starts[c] = Start::Number;
    for (char c : {'_', '@', '#'}) starts[c] = Start::Name;
    for (char c : {'\'', '"', '['}) starts[c] = Start::Quote;
    for (char c : {' ', '\t'}) starts[c] = Start::Blank;
    starts['$'] = Start::Money;
    starts['.'] = Start::Dot;
    starts['-'] = Start::Dash;
    starts['/'] = Start::Slash;
    return starts;
}

constexpr std::array<Start, 128> Starts = MakeStarts();

// Half of a pair passes for a letter: a name goes on over it.
Start StartOf(QChar unit) {
    if (unit.unicode() < Starts.size()) return Starts[unit.unicode()];
    if (unit.isLetter() || unit.isSurrogate()) return Start::Name;
    return unit.isSpace() ? Start::Blank : Start::Nothing;
}

bool IsDigit(QChar unit) {
    return unit >= u'0' && unit <= u'9';
}

bool IsHexDigit(QChar unit) {
    return IsDigit(unit) || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}

constexpr std::array<bool, 128> MakeNameUnits() {
    std::array<bool, 128> units{};
    for (size_t i = 0; i < units.size(); ++i)
        units[i] =
            Starts[i] == Start::Name || Starts[i] == Start::Number || Starts[i] == Start::Money;
    return units;
}

constexpr std::array<bool, 128> NameUnits = MakeNameUnits();

bool GoesOnInName(QChar unit) {
    if (unit.unicode() < NameUnits.size()) return NameUnits[unit.unicode()];
    return unit.isLetterOrNumber() || unit.isSurrogate() || unit.isMark();
}

struct Quote {
    char16_t open;
    char16_t close;
    LineKind kind;
};

// By State, from InText on. Names in quotes are names like others.
constexpr Quote Quotes[] = {
    {u'\'', u'\'', LineKind::String}, {u'"', u'"', LineKind::Plain}, {u'[', u']', LineKind::Plain}};

// GO alone on its line parts batches; elsewhere it may be a name.
bool IsSeparator(QStringView line) {
    return line.startsWith(u"go", Qt::CaseInsensitive) && line.mid(2).trimmed().isEmpty();
}

// One way along a line.
class Walk {
  public:
    Walk(QStringView line, std::vector<LineSpan>* spans) : line_(line), spans_(spans) {}

    int Run(int state) {
        if (state >= InComment)
            state = Comment(0, std::min(state - InComment + 1, SqlLineScanner::DeepestComment));
        else if (state > InNothing)
            state = Quoted(0, state);
        else
            state = Separator();
        while (state == InNothing && at_ < line_.size()) state = Token();
        return state;
    }

  private:
    bool Has(qsizetype ahead, char16_t unit) const {
        return at_ + ahead < line_.size() && line_.at(at_ + ahead) == unit;
    }
    bool HasDigit(qsizetype ahead) const {
        return at_ + ahead < line_.size() && IsDigit(line_.at(at_ + ahead));
    }
    void Add(qsizetype start, LineKind kind) {
        if (spans_ && kind != LineKind::Plain && at_ > start)
            spans_->push_back({static_cast<int>(start), static_cast<int>(at_ - start), kind});
    }
    template <typename Belongs>
    void SkipWhile(Belongs&& belongs) {
        while (at_ < line_.size() && belongs(line_.at(at_))) ++at_;
    }

    int Separator() {
        if (!IsSeparator(line_)) return InNothing;
        at_ = 2;
        Add(0, LineKind::Keyword);
        at_ = line_.size();
        return InNothing;
    }

    int Token() {
        const qsizetype start = at_;
        const Start kind = StartOf(line_.at(at_));
        if (kind == Start::Blank) {
            ++at_;
            return InNothing;
        }
        const bool part = std::exchange(afterDot_, false);
        switch (kind) {
            case Start::Name:
                return Name(start, part);
            case Start::Number:
                return Number(start);
            case Start::Money:
                return Money(start);
            case Start::Dot:
                return Dot(start);
            case Start::Quote:
                return OpenQuote(start);
            case Start::Dash:
                if (!Has(1, u'-')) break;
                at_ = line_.size();
                Add(start, LineKind::Comment);
                return InNothing;
            case Start::Slash:
                if (!Has(1, u'*')) break;
                at_ += 2;
                return Comment(start, 1);
            case Start::Blank:
            case Start::Nothing:
                break;
        }
        ++at_;
        return InNothing;
    }

    // `part`: of a longer name, as the column of a table is; that is no keyword.
    int Name(qsizetype start, bool part) {
        SkipWhile(GoesOnInName);
        const QStringView word = line_.mid(start, at_ - start);
        if (Has(0, u'\'') && word.compare(u"n", Qt::CaseInsensitive) == 0) return OpenQuote(start);
        if (spans_ && !part && IsSqlKeyword(word)) Add(start, LineKind::Keyword);
        return InNothing;
    }

    int Number(qsizetype start) {
        if (line_.at(at_) == u'0' && (Has(1, u'x') || Has(1, u'X'))) {
            at_ += 2;
            SkipWhile(IsHexDigit);
        } else {
            Digits();
            Exponent();
        }
        Add(start, LineKind::Number);
        return InNothing;
    }

    // Digits with at most one point in or around them.
    void Digits() {
        SkipWhile(IsDigit);
        if (!Has(0, u'.')) return;
        ++at_;
        SkipWhile(IsDigit);
    }

    void Exponent() {
        if (!Has(0, u'e') && !Has(0, u'E')) return;
        const qsizetype sign = Has(1, u'+') || Has(1, u'-') ? 1 : 0;
        if (!HasDigit(1 + sign)) return;
        at_ += 1 + sign;
        SkipWhile(IsDigit);
    }

    int Dot(qsizetype start) {
        if (HasDigit(1)) return Number(start);
        ++at_;
        afterDot_ = true;
        return InNothing;
    }

    int Money(qsizetype start) {
        ++at_;
        if (HasDigit(0) || (Has(0, u'.') && HasDigit(1))) {
            Digits();
            Add(start, LineKind::Number);
        } else {
            SkipWhile(GoesOnInName);
        }
        return InNothing;
    }

    int OpenQuote(qsizetype start) {
        int state = SqlLineScanner::InText;
        for (const Quote& quote : Quotes) {
            if (line_.at(at_) == quote.open) break;
            ++state;
        }
        ++at_;
        return Quoted(start, state);
    }

    int Quoted(qsizetype start, int state) {
        const Quote& quote = Quotes[state - SqlLineScanner::InText];
        while (true) {
            at_ = line_.indexOf(quote.close, at_);
            if (at_ < 0) break;
            ++at_;
            if (!Has(0, quote.close)) {
                Add(start, quote.kind);
                return InNothing;
            }
            ++at_;
        }
        at_ = line_.size();
        Add(start, quote.kind);
        return state;
    }

    int Comment(qsizetype start, int depth) {
        while (at_ < line_.size() && depth > 0) {
            if (Has(0, u'*') && Has(1, u'/')) {
                --depth;
                at_ += 2;
            } else if (Has(0, u'/') && Has(1, u'*')) {
                depth = std::min(depth + 1, SqlLineScanner::DeepestComment);
                at_ += 2;
            } else {
                ++at_;
            }
        }
        Add(start, LineKind::Comment);
        return depth > 0 ? InComment + depth - 1 : InNothing;
    }

    QStringView line_;
    std::vector<LineSpan>* spans_;
    qsizetype at_ = 0;
    bool afterDot_ = false;
};

}  // namespace

int SqlLineScanner::Scan(QStringView line, int state, std::vector<LineSpan>* spans) const {
    return Walk(line, spans).Run(state);
}

}  // namespace quarv
