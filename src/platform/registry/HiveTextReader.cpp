// The reading half of HiveText: one line at a time, and a cursor within the line.
#include <QtEndian>

#include "platform/registry/HiveText.h"
#include "platform/registry/KeyPath.h"
#include "platform/registry/RegTypes.h"
#include "platform/registry/Utf8.h"

namespace quarv::registry {

namespace {

struct Damage {
    QString problem;
};

[[noreturn]] void Fail(const char16_t* problem) {
    throw Damage{QString::fromUtf16(problem)};
}

class LineCursor {
  public:
    explicit LineCursor(QByteArrayView line) : rest_(line) {}

    bool AtEnd() const { return rest_.isEmpty(); }

    // Steps over `word` where the line goes on with it, as a whole word.
    bool Take(QByteArrayView word) {
        if (!rest_.startsWith(word)) return false;
        const QByteArrayView after = rest_.sliced(word.size());
        if (!after.isEmpty() && after[0] != ' ') return false;
        rest_ = after;
        return true;
    }

    void Blank() {
        if (!rest_.startsWith(' ')) Fail(u"a blank is missing");
        rest_ = rest_.sliced(1);
    }

    // What stands between double quotes, its escapes resolved, as UTF-8.
    QByteArray String() {
        if (!rest_.startsWith('"')) Fail(u"a double quote is missing");
        rest_ = rest_.sliced(1);
        QByteArray text;
        while (!rest_.startsWith('"')) {
            const qsizetype plain = PlainRun();
            text.append(rest_.first(plain));
            rest_ = rest_.sliced(plain);
            if (rest_.startsWith('\\')) text.append(Escape());
        }
        rest_ = rest_.sliced(1);
        return text;
    }

    quint32 Number() {
        qsizetype digits = 0;
        while (digits < rest_.size() && rest_[digits] >= '0' && rest_[digits] <= '9') ++digits;
        bool ok = false;
        const quint32 number = rest_.first(digits).toByteArray().toUInt(&ok);
        if (!ok) Fail(u"a number from 0 to 4294967295 is missing");
        rest_ = rest_.sliced(digits);
        return number;
    }

    // The rest of the line as pairs of hexadecimal digits.
    QByteArray Hex() {
        const QByteArray digits = rest_.toByteArray();
        const QByteArray data = QByteArray::fromHex(digits);
        if (digits.size() % 2 != 0 || data.toHex() != digits.toLower())
            Fail(u"the data are not pairs of hexadecimal digits");
        rest_ = {};
        return data;
    }

  private:
    // How many bytes stand before the next quote or backslash.
    qsizetype PlainRun() const {
        for (qsizetype i = 0; i < rest_.size(); ++i) {
            const auto byte = static_cast<uchar>(rest_[i]);
            if (byte == '"' || byte == '\\') return i;
            if (byte < 0x20 || byte == 0x7f) Fail(u"a control character stands in a string");
        }
        Fail(u"a string has no end");
    }

    QByteArray Escape() {
        if (rest_.size() < 2) Fail(u"a string has no end");
        const char kind = rest_[1];
        rest_ = rest_.sliced(2);
        switch (kind) {
            case '"':
            case '\\':
                return QByteArray(1, kind);
            case 'n':
                return "\n";
            case 'r':
                return "\r";
            case 't':
                return "\t";
            case 'u':
                return NumberedCharacter();
            default:
                Fail(u"an escape is not known");
        }
    }

    QByteArray NumberedCharacter() {
        const qsizetype close = rest_.indexOf('}');
        if (!rest_.startsWith('{') || close < 2 || close > 7) Fail(u"an escape is not known");
        bool ok = false;
        const uint code = rest_.sliced(1, close - 1).toByteArray().toUInt(&ok, 16);
        if (!ok || code > 0x10ffff || (code >= 0xd800 && code < 0xe000))
            Fail(u"an escape is no character");
        rest_ = rest_.sliced(close + 1);
        return QStringView(QChar::fromUcs4(code)).toUtf8();
    }

    QByteArrayView rest_;
};

class Reader {
  public:
    Reader(ParsedHive& hive, HiveKind kind) : hive_(hive), kind_(kind), key_(&hive.root) {}

    void Line(QByteArrayView line) {
        LineCursor cursor(line);
        if (cursor.Take("key"))
            KeyLine(cursor);
        else if (cursor.Take("value"))
            ValueLine(cursor);
        else
            Fail(u"the line is neither a key nor a value");
        if (!cursor.AtEnd()) Fail(u"the line goes on behind its end");
    }

  private:
    void KeyLine(LineCursor& cursor) {
        cursor.Blank();
        QStringList path;
        if (SplitKeyPath(cursor.String(), path) != ERROR_SUCCESS)
            Fail(u"the key path is not valid");
        key_ = Ensure(path);
        if (cursor.AtEnd()) return;
        cursor.Blank();
        if (kind_ != HiveKind::Overlay || path.isEmpty() || !key_->IsBare())
            Fail(u"a mark of deletion cannot stand here");
        if (cursor.Take("deleted"))
            key_->mark = HiveKey::Mark::Deleted;
        else if (cursor.Take("anew"))
            key_->mark = HiveKey::Mark::Anew;
        else
            Fail(u"the mark is not known");
    }

    // As HiveKey::Ensure, but counts what it makes and lets nothing stand below a deleted key.
    HiveKey* Ensure(const QStringList& path) {
        HiveKey* key = &hive_.root;
        for (const QString& name : path) {
            if (key->children.Find(name) == nullptr && ++keys_ > MaxHiveKeys)
                Fail(u"there are too many keys");
            key = &key->EnsureChild(name);
            if (key->mark == HiveKey::Mark::Deleted) Fail(u"the key stands below a deleted one");
        }
        return key;
    }

    void ValueLine(LineCursor& cursor) {
        cursor.Blank();
        HiveValue value;
        if (CheckValueName(cursor.String(), value.name) != ERROR_SUCCESS)
            Fail(u"the name is not valid");
        if (key_->mark == HiveKey::Mark::Deleted) Fail(u"a deleted key has no values");
        if (key_->values.Find(value.name) != nullptr) Fail(u"the value stands there twice");
        cursor.Blank();
        Data(cursor, value);
        key_->SetValue(std::move(value));
    }

    void Data(LineCursor& cursor, HiveValue& value) {
        if (cursor.Take("text")) {
            cursor.Blank();
            value.type = REG_SZ;
            value.data = cursor.String();
            value.data.append('\0');
        } else if (cursor.Take("number")) {
            cursor.Blank();
            value.type = REG_DWORD;
            value.data.resize(4);
            qToLittleEndian(cursor.Number(), value.data.data());
        } else if (cursor.Take("data")) {
            cursor.Blank();
            value.type = cursor.Number();
            if (cursor.AtEnd()) return;
            cursor.Blank();
            value.data = cursor.Hex();
        } else if (kind_ == HiveKind::Overlay && cursor.Take("deleted")) {
            value.deleted = true;
        } else {
            Fail(u"the kind of value is not known");
        }
    }

    ParsedHive& hive_;
    const HiveKind kind_;
    HiveKey* key_;
    int keys_ = 1;
};

// False at the end of the bytes; a last line without its line feed is cut short.
bool NextLine(QByteArrayView& rest, QByteArrayView& line) {
    if (rest.isEmpty()) return false;
    const qsizetype feed = rest.indexOf('\n');
    if (feed < 0) Fail(u"the line has no end");
    line = rest.first(feed);
    rest = rest.sliced(feed + 1);
    return true;
}

ParsedHive::Outcome OutcomeOfHeader(QByteArrayView line) {
    LineCursor cursor(line);
    if (!cursor.Take("quarv-hive")) Fail(u"the file is no hive");
    cursor.Blank();
    const quint32 version = cursor.Number();
    if (version == 1 && cursor.AtEnd()) return ParsedHive::Outcome::Good;
    if (version < 2) Fail(u"the version is not valid");
    return ParsedHive::Outcome::Unsupported;
}

void Read(QByteArrayView rest, HiveKind kind, ParsedHive& hive) {
    QByteArrayView line;
    hive.line = 1;
    if (!NextLine(rest, line)) Fail(u"the file is empty");
    hive.outcome = OutcomeOfHeader(line);
    if (hive.outcome == ParsedHive::Outcome::Unsupported) return;
    Reader reader(hive, kind);
    for (++hive.line; NextLine(rest, line); ++hive.line) {
        if (line == QByteArrayView("end")) {
            if (!rest.isEmpty()) Fail(u"the file goes on behind its end");
            return;
        }
        if (!line.isValidUtf8()) Fail(u"the line is not UTF-8");
        if (!line.isEmpty()) reader.Line(line);
    }
    Fail(u"the file is cut short");
}

}  // namespace

ParsedHive ParseHive(const QByteArray& bytes, HiveKind kind) {
    ParsedHive hive;
    try {
        if (bytes.size() > MaxHiveBytes) Fail(u"the file is too large");
        Read(bytes, kind, hive);
    } catch (const Damage& damage) {
        hive.outcome = ParsedHive::Outcome::Damaged;
        hive.root = HiveKey();
        hive.problem = damage.problem;
    }
    return hive;
}

}  // namespace quarv::registry
