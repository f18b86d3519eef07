#include "localdb/engine/CustomNumberFormat.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "localdb/engine/DecimalDigits.h"

namespace quarv::localdb::engine {

namespace {

// One sign of a picture: a placeholder, or what stands for itself.
struct Piece {
    enum class Kind { Zero, Digit, Point, Exponent, Text };
    Kind kind = Kind::Text;
    std::string text;
};

struct Picture {
    std::vector<Piece> pieces;
    int whole = 0;       // placeholders before the point
    int firstZero = -1;  // the first of them that is a zero, counted from the left
    int decimals = 0;    // placeholders behind the point
    int lastZero = 0;    // the last of them that is a zero, counted from 1
    int shift = 0;       // places by which per cent and thousands move the point
    bool grouped = false;
    int exponentWidth = 0;  // 0: none
    bool exponentPlus = false;
    char exponentLetter = 'E';
    bool empty = true;
};

// Reads a picture up to its end or the ";" behind it.
class PictureReader {
  public:
    explicit PictureReader(std::string_view format) : format_(format) {}

    // False where a quotation is not closed.
    bool Read(Picture& picture) {
        picture_ = &picture;
        while (at_ < format_.size() && format_[at_] != ';') {
            picture.empty = false;
            if (!Take()) return false;
        }
        if (picture.decimals == 0 && pending_ > 0) picture.shift -= 3 * pending_;
        return true;
    }
    // Steps over the ";"; false at the end.
    bool Next() {
        pending_ = 0;
        behindPoint_ = false;
        if (at_ >= format_.size()) return false;
        ++at_;
        return true;
    }

  private:
    bool Take() {
        const char c = format_[at_++];
        switch (c) {
            case '0':
            case '#':
                TakePlaceholder(c == '0');
                return true;
            case '.':
                TakePoint();
                return true;
            case ',':
                if (!behindPoint_ && picture_->whole > 0) ++pending_;
                return true;
            case '%':
                picture_->shift += 2;
                AddText("%");
                return true;
            case '\'':
            case '"':
                return TakeQuoted(c);
            case '\\':
                if (at_ < format_.size()) AddText(format_.substr(at_++, 1));
                return true;
            case 'e':
            case 'E':
                if (TakeExponent(c)) return true;
                [[fallthrough]];
            default:
                AddText({&c, 1});
                return true;
        }
    }
    void TakePlaceholder(bool zero) {
        if (behindPoint_) {
            ++picture_->decimals;
            if (zero) picture_->lastZero = picture_->decimals;
        } else {
            // A comma between two placeholders groups; one behind the last divides by a thousand.
            if (pending_ > 0) picture_->grouped = true;
            pending_ = 0;
            if (zero && picture_->firstZero < 0) picture_->firstZero = picture_->whole;
            ++picture_->whole;
        }
        picture_->pieces.push_back({zero ? Piece::Kind::Zero : Piece::Kind::Digit, {}});
    }
    void TakePoint() {
        if (behindPoint_) return;
        behindPoint_ = true;
        picture_->shift -= 3 * pending_;
        pending_ = 0;
        picture_->pieces.push_back({Piece::Kind::Point, {}});
    }
    bool TakeQuoted(char quote) {
        const size_t close = format_.find(quote, at_);
        if (close == std::string_view::npos) return false;
        AddText(format_.substr(at_, close - at_));
        at_ = close + 1;
        return true;
    }
    // E0, E+0 or E-0 with any number of zeros.
    bool TakeExponent(char letter) {
        size_t at = at_;
        const bool sign = at < format_.size() && (format_[at] == '+' || format_[at] == '-');
        const bool plus = sign && format_[at] == '+';
        if (sign) ++at;
        size_t end = at;
        while (end < format_.size() && format_[end] == '0') ++end;
        if (end == at || picture_->exponentWidth > 0) return false;
        picture_->exponentWidth = static_cast<int>(std::min<size_t>(end - at, 10));
        picture_->exponentPlus = plus;
        picture_->exponentLetter = letter;
        picture_->pieces.push_back({Piece::Kind::Exponent, {}});
        at_ = end;
        return true;
    }
    void AddText(std::string_view text) {
        picture_->pieces.push_back({Piece::Kind::Text, std::string(text)});
    }

    std::string_view format_;
    size_t at_ = 0;
    Picture* picture_ = nullptr;
    bool behindPoint_ = false;
    int pending_ = 0;  // commas since the last placeholder before the point
};

// Writes the digits into a picture's places.
class PictureWriter {
  public:
    PictureWriter(const Picture& picture, DecimalDigits digits)
        : picture_(picture), digits_(std::move(digits)) {
        digits_.point += picture.shift;
        if (picture.exponentWidth > 0) ScaleForExponent();
        digits_.RoundTo(picture.decimals);
        whole_ = digits_.Whole();
        if (whole_ == "0") whole_.clear();
        fraction_ = digits_.Fraction(picture.decimals);
        least_ = picture.firstZero < 0 ? 0 : picture.whole - picture.firstZero;
        shown_ = picture.decimals;
        while (shown_ > picture.lastZero && fraction_[static_cast<size_t>(shown_ - 1)] == '0') {
            --shown_;
        }
    }
    bool IsZero() const { return digits_.IsZero(); }

    std::string Write() {
        bool behindPoint = false;
        for (const Piece& piece : picture_.pieces) {
            switch (piece.kind) {
                case Piece::Kind::Text:
                    text_ += piece.text;
                    break;
                case Piece::Kind::Point:
                    if (picture_.whole == 0) WriteWhole(0);
                    behindPoint = true;
                    if (shown_ > 0) text_ += '.';
                    break;
                case Piece::Kind::Exponent:
                    WriteExponent();
                    break;
                default:
                    behindPoint ? WriteDecimal() : WritePlace();
            }
        }
        return text_;
    }

  private:
    // As many digits before the point as there are placeholders.
    void ScaleForExponent() {
        const int wanted = std::max(picture_.whole, 1);
        digits_.RoundToSignificant(wanted + picture_.decimals);
        if (digits_.IsZero()) return;
        exponent_ = digits_.point - wanted;
        digits_.point = wanted;
    }
    // The digits from the left down to those that `places` placeholders are left for.
    void WriteWhole(int places) {
        for (auto rest = static_cast<int>(whole_.size()); rest > places; --rest) {
            WriteDigit(whole_[whole_.size() - static_cast<size_t>(rest)], rest - 1);
        }
    }
    void WritePlace() {
        const int rest = picture_.whole - written_++;  // this place and those behind it
        if (written_ == 1) WriteWhole(rest);
        if (rest <= static_cast<int>(whole_.size())) {
            WriteDigit(whole_[whole_.size() - static_cast<size_t>(rest)], rest - 1);
        } else if (rest <= least_) {
            WriteDigit('0', rest - 1);
        }
    }
    void WriteDigit(char digit, int behind) {
        text_ += digit;
        if (picture_.grouped && behind > 0 && behind % 3 == 0) text_ += ',';
    }
    void WriteDecimal() {
        if (decimal_ < shown_) text_ += fraction_[static_cast<size_t>(decimal_)];
        ++decimal_;
    }
    void WriteExponent() {
        std::array<char, 32> text;
        std::snprintf(text.data(), text.size(), "%0*d", picture_.exponentWidth,
                      exponent_ < 0 ? -exponent_ : exponent_);
        text_ += picture_.exponentLetter;
        if (exponent_ < 0) text_ += '-';
        if (exponent_ >= 0 && picture_.exponentPlus) text_ += '+';
        text_ += text.data();
    }

    const Picture& picture_;
    DecimalDigits digits_;
    std::string whole_, fraction_, text_;
    int least_ = 0, shown_ = 0, written_ = 0, decimal_ = 0, exponent_ = 0;
};

}  // namespace

// The sections are for positive numbers, negative ones and zero; a missing one is the first, and a
// negative number keeps its sign in it.
std::optional<std::string> FormatCustom(const FormattedNumber& number, std::string_view format) {
    std::array<Picture, 3> pictures;
    PictureReader reader(format);
    size_t count = 0;
    do {
        if (!reader.Read(pictures[count++])) return std::nullopt;
    } while (count < pictures.size() && reader.Next());
    const DecimalDigits digits{number.digits, number.point};
    const bool own = number.negative && count > 1 && !pictures[1].empty;
    const Picture* picture = own ? &pictures[1] : &pictures[0];
    PictureWriter writer(*picture, digits);
    if (writer.IsZero() && count > 2 && !pictures[2].empty) {
        return PictureWriter(pictures[2], digits).Write();
    }
    const bool sign = number.negative && !own && !writer.IsZero();
    return (sign ? "-" : "") + writer.Write();
}

}  // namespace quarv::localdb::engine
