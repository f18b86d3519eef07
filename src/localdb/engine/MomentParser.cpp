#include <QDate>
#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <vector>

#include "localdb/engine/Moment.h"

namespace quarv::localdb::engine {

namespace {

constexpr std::array<const char*, 12> MonthNames = {
    "january", "february", "march",     "april",   "may",      "june",
    "july",    "august",   "september", "october", "november", "december"};

struct Part {
    enum Kind { Number, Word, Mark } kind;
    std::string text;
    int value = 0;  // of a number; of a word the month, or 0
};

int MonthByName(const std::string& word) {
    for (size_t i = 0; i < MonthNames.size(); ++i) {
        const bool full = word == MonthNames[i];
        const bool three = word.size() == 3 && std::strncmp(word.c_str(), MonthNames[i], 3) == 0;
        if (full || three) return static_cast<int>(i) + 1;
    }
    return 0;
}

// The numbers of a date by their places in a text with "/", "-" or ".".
struct Places {
    size_t year, month, day;
};

Places PlacesOf(Moment::Order order) {
    switch (order) {
        case Moment::Order::DayFirst:
            return {2, 1, 0};
        case Moment::Order::YearFirst:
            return {0, 1, 2};
        default:
            return {2, 0, 1};
    }
}

bool IsOldKind(TypeKind kind) {
    return kind == TypeKind::DateTime || kind == TypeKind::SmallDateTime;
}

class Reader {
  public:
    Reader(TypeKind kind, Moment::Order order) : kind_(kind), order_(order) {}

    // False where the text holds what no date can.
    bool Split(std::string_view text);
    std::optional<Moment> Read();

  private:
    bool At(Part::Kind kind, size_t ahead = 0) const {
        return at_ + ahead < parts_.size() && parts_[at_ + ahead].kind == kind;
    }
    bool AtMark(char mark, size_t ahead = 0) const {
        return At(Part::Mark, ahead) && parts_[at_ + ahead].text[0] == mark;
    }
    bool ReadDate();
    bool ReadPacked();
    bool ReadNumeric();
    bool ReadNamed();
    bool ReadTime();
    bool ReadFraction();
    bool ReadMeridian();
    bool ReadOffset();
    int FullYear(const Part& part) const;

    TypeKind kind_;
    Moment::Order order_;
    std::vector<Part> parts_;
    size_t at_ = 0;
    Moment moment_;
};

bool Reader::Split(std::string_view text) {
    for (size_t i = 0; i < text.size();) {
        const auto c = static_cast<unsigned char>(text[i]);
        size_t end = i;
        if (std::isdigit(c)) {
            while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end]))) ++end;
            if (end - i > 8 + 1) return false;
            const std::string digits(text.substr(i, end - i));
            parts_.push_back({Part::Number, digits, std::atoi(digits.c_str())});
        } else if (std::isalpha(c)) {
            std::string word;
            for (; end < text.size() && std::isalpha(static_cast<unsigned char>(text[end]));
                 ++end) {
                word += static_cast<char>(std::tolower(static_cast<unsigned char>(text[end])));
            }
            parts_.push_back({Part::Word, word, MonthByName(word)});
        } else if (std::strchr("/-.:,+", c)) {
            parts_.push_back({Part::Mark, std::string(1, static_cast<char>(c)), 0});
            ++end;
        } else if (c == ' ') {
            ++end;
        } else {
            return false;
        }
        i = end;
    }
    return true;
}

int Reader::FullYear(const Part& part) const {
    if (part.text.size() > 2) return part.value;
    // "two digit year cutoff" 2049.
    return part.value < 50 ? 2000 + part.value : 1900 + part.value;
}

// 20240131, or 240131.
bool Reader::ReadPacked() {
    const Part& part = parts_[at_];
    if (part.text.size() == 8) {
        moment_.year = part.value / 10000;
    } else {
        moment_.year = FullYear({Part::Number, part.text.substr(0, 2), part.value / 10000});
    }
    moment_.month = part.value / 100 % 100;
    moment_.day = part.value % 100;
    ++at_;
    return true;
}

// Year first where it has four digits, else in the order asked for.
bool Reader::ReadNumeric() {
    const char mark = parts_[at_ + 1].text[0];
    if (!At(Part::Number, 2) || !AtMark(mark, 3) || !At(Part::Number, 4)) return false;
    const Part* numbers[] = {&parts_[at_], &parts_[at_ + 2], &parts_[at_ + 4]};
    const bool yearFirst = numbers[0]->text.size() == 4;
    const Places places = yearFirst ? Places{0, 1, 2} : PlacesOf(order_);
    if (numbers[places.month]->text.size() > 2 || numbers[places.day]->text.size() > 2) {
        return false;
    }
    moment_.year = FullYear(*numbers[places.year]);
    moment_.month = numbers[places.month]->value;
    moment_.day = numbers[places.day]->value;
    at_ += 5;
    return true;
}

// "Jan 31 2024", "31 January 2024", "2024 Jan 31", commas allowed.
bool Reader::ReadNamed() {
    std::vector<Part> numbers;
    int month = 0;
    while (at_ < parts_.size() && numbers.size() < 2) {
        if (At(Part::Word)) {
            if (parts_[at_].value == 0 || month != 0) return false;
            month = parts_[at_].value;
        } else if (At(Part::Number) && !AtMark(':', 1)) {
            numbers.push_back(parts_[at_]);
        } else if (!AtMark(',') && !AtMark('-')) {
            break;
        }
        ++at_;
        if (month != 0 && numbers.size() == 2) break;
        if (month == 0 && numbers.size() == 2) {
            if (!At(Part::Word) || parts_[at_].value == 0) return false;
            month = parts_[at_++].value;
        }
    }
    if (month == 0 || numbers.size() != 2) return false;
    const bool yearFirst = numbers[0].text.size() == 4;
    moment_.month = month;
    moment_.year = FullYear(numbers[yearFirst ? 0 : 1]);
    moment_.day = numbers[yearFirst ? 1 : 0].value;
    return true;
}

bool Reader::ReadDate() {
    const bool named = std::any_of(parts_.begin(), parts_.end(), [](const Part& part) {
        return part.kind == Part::Word && part.value != 0;
    });
    if (named) return ReadNamed();
    if (!At(Part::Number)) return false;
    const size_t digits = parts_[at_].text.size();
    if ((digits == 8 || digits == 6) && !At(Part::Mark, 1)) return ReadPacked();
    if (digits == 8 || digits == 6) return false;
    if (AtMark('/', 1) || AtMark('-', 1) || AtMark('.', 1)) return ReadNumeric();
    if (digits == 4 && parts_.size() == 1) {
        moment_.year = parts_[at_++].value;
        return true;
    }
    // A time alone is on the first day.
    return AtMark(':', 1) || At(Part::Word, 1);
}

// Behind "." up to seven digits of a second; behind ":" milliseconds.
bool Reader::ReadFraction() {
    const bool point = AtMark('.');
    ++at_;
    if (!At(Part::Number)) return false;
    std::string digits = parts_[at_++].text;
    if (!point) {
        if (digits.size() > 3) return false;
        digits.insert(0, 3 - digits.size(), '0');
    }
    if (digits.size() > (IsOldKind(kind_) ? 3 : 7)) return false;
    digits.resize(7, '0');
    moment_.fraction = std::atoi(digits.c_str());
    return true;
}

bool Reader::ReadMeridian() {
    if (!At(Part::Word)) return true;
    const std::string& word = parts_[at_].text;
    if (word == "z") return true;
    if (word != "am" && word != "pm") return false;
    if (moment_.hour > 12) return word == "pm" && ++at_;
    moment_.hour = moment_.hour % 12 + (word == "pm" ? 12 : 0);
    ++at_;
    return true;
}

// "Z", or hours and minutes behind a sign. The old kinds know "Z" alone.
bool Reader::ReadOffset() {
    if (At(Part::Word) && parts_[at_].text == "z") {
        ++at_;
        return true;
    }
    if (!AtMark('+') && !AtMark('-')) return true;
    const bool behind = AtMark('-');
    ++at_;
    if (IsOldKind(kind_) || !At(Part::Number) || !AtMark(':', 1) || !At(Part::Number, 2)) {
        return false;
    }
    const int minutes = parts_[at_].value * 60 + parts_[at_ + 2].value;
    if (parts_[at_ + 2].value > 59 || minutes > Moment::MaxOffset) return false;
    moment_.offset = behind ? -minutes : minutes;
    at_ += 3;
    return true;
}

bool Reader::ReadTime() {
    if (At(Part::Word) && parts_[at_].text == "t") ++at_;
    if (at_ == parts_.size()) return true;
    if (!At(Part::Number)) return ReadOffset();
    moment_.hour = parts_[at_++].value;
    if (AtMark(':')) {
        ++at_;
        if (!At(Part::Number)) return false;
        moment_.minute = parts_[at_++].value;
        if (AtMark(':')) {
            ++at_;
            if (!At(Part::Number)) return false;
            moment_.second = parts_[at_++].value;
            if ((AtMark('.') || AtMark(':')) && !ReadFraction()) return false;
        }
    } else if (!At(Part::Word)) {
        return false;
    }
    return ReadMeridian() && ReadOffset();
}

std::optional<Moment> Reader::Read() {
    if (parts_.empty()) return moment_;
    if (!ReadDate() || !ReadTime() || at_ != parts_.size()) return std::nullopt;
    const bool clock = moment_.hour < 24 && moment_.minute < 60 && moment_.second < 60;
    const bool year = moment_.year >= 1 && moment_.year <= 9999;
    if (!clock || !year || !QDate::isValid(moment_.year, moment_.month, moment_.day)) {
        return std::nullopt;
    }
    return moment_;
}

}  // namespace

std::optional<Moment> Moment::Parse(std::string_view text, TypeKind kind, Order order) {
    Reader reader(kind, order);
    if (!reader.Split(text)) return std::nullopt;
    return reader.Read();
}

}  // namespace quarv::localdb::engine
