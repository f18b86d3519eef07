#include "localdb/engine/CollationNames.h"

#include <QRegularExpression>
#include <QSet>
#include <array>

#include "localdb/engine/Collation.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

struct Entry {
    const char* name;
    TextOrder narrow, unicode;  // of varchar and of nvarchar
};

constexpr std::array<Entry, 11> Table = {{
    {Collation::Name, TextOrder::CaseInsensitive, TextOrder::CaseInsensitive},
    {"SQL_Latin1_General_CP1_CS_AS", TextOrder::UpperFirst, TextOrder::LowerFirst},
    {"SQL_Latin1_General_CP1_CI_AI", TextOrder::Letters, TextOrder::Letters},
    {"Latin1_General_CI_AS", TextOrder::CaseInsensitive, TextOrder::CaseInsensitive},
    {"Latin1_General_CS_AS", TextOrder::LowerFirst, TextOrder::LowerFirst},
    {"Latin1_General_CI_AI", TextOrder::Letters, TextOrder::Letters},
    {"Latin1_General_CS_AI", TextOrder::LettersAndCase, TextOrder::LettersAndCase},
    {"Latin1_General_BIN", TextOrder::CodePage, TextOrder::UnitBytes},
    {"Latin1_General_BIN2", TextOrder::CodePage, TextOrder::CodePoints},
    {"Latin1_General_100_BIN", TextOrder::CodePage, TextOrder::UnitBytes},
    {"Latin1_General_100_BIN2", TextOrder::CodePage, TextOrder::CodePoints},
}};

// "Collation and Unicode support": the designators of the Windows collations.
const QSet<QString>& Designators() {
    static const QSet<QString> names = [] {
        constexpr const char16_t* Words =
            u"albanian arabic assamese azeri_cyrillic azeri_latin bashkir bengali bosnian_cyrillic "
            u"bosnian_latin breton chinese_hong_kong_stroke chinese_prc chinese_prc_stroke "
            u"chinese_simplified_pinyin chinese_simplified_stroke_order chinese_taiwan_bopomofo "
            u"chinese_taiwan_stroke chinese_traditional_bopomofo chinese_traditional_pinyin "
            u"chinese_traditional_stroke_count chinese_traditional_stroke_order corsican croatian "
            u"cyrillic_general czech danish_greenlandic danish_norwegian dari divehi estonian "
            u"finnish_swedish french frisian georgian_modern_sort german_phonebook greek hebrew "
            u"hungarian hungarian_technical icelandic indic_general japanese "
            u"japanese_bushu_kakusu japanese_unicode japanese_xjis kazakh khmer korean "
            u"korean_wansung lao latin1_general latvian lithuanian macedonian_fyrom maltese maori "
            u"mapudungan modern_spanish mohawk nepali norwegian pashto persian polish romanian "
            u"romansh sami_norway sami_sweden_finland serbian_cyrillic serbian_latin slovak "
            u"slovenian syriac tamazight tatar thai tibetan traditional_spanish turkish turkmen "
            u"uighur ukrainian upper_sorbian urdu uzbek_latin vietnamese welsh yakut";
        const QStringList list = QString::fromUtf16(Words).split(u' ');
        return QSet<QString>(list.begin(), list.end());
    }();
    return names;
}

// Whether SQL Server has a collation of this name, by how such names are built.
bool IsKnown(const QString& name) {
    const QString lower = name.toLower();
    static const QRegularExpression windows(QStringLiteral(
        "^([a-z0-9_]+?)(_(90|100|140|160))?_(bin2?(_utf8)?|(ci|cs)_(ai|as)(_ks)?(_ws)?(_vss)?(_sc)?"
        "(_utf8)?)$"));
    static const QRegularExpression old(
        QStringLiteral("^sql_[a-z0-9]+(_[a-z0-9]+)*_cp[0-9]{1,4}_(c[is]_a[is]|bin2?)$"));
    const QRegularExpressionMatch match = windows.match(lower);
    if (match.hasMatch() && Designators().contains(match.captured(1))) return true;
    return old.match(lower).hasMatch() || lower == u"catalog_default";
}

}  // namespace

void Collating::Meet(const Collating& added) {
    unicode = unicode || added.unicode;
    if (added.clash || (added.label == label && added.label == CollationLabel::Explicit &&
                        added.id != id && !clash)) {
        other = added.clash ? added.other : id;
        id = added.id;
        clash = true;
        return;
    }
    if (clash || added.label < label) return;
    if (added.label > label) {
        label = added.label;
        id = added.id;
        other = added.other;
    } else if (label == CollationLabel::Implicit && added.id != id) {
        label = CollationLabel::Unresolved;
        other = id;
        id = added.id;
    }
}

void Collating::Settle() {
    const Entry& entry = Table[static_cast<size_t>(id)];
    order = unicode ? entry.unicode : entry.narrow;
}

std::optional<CollationId> TryFindCollation(const QString& name) {
    for (size_t i = 0; i < Table.size(); ++i) {
        if (name.compare(QLatin1String(Table[i].name), Qt::CaseInsensitive) == 0) {
            return static_cast<CollationId>(i);
        }
    }
    return std::nullopt;
}

CollationId FindCollation(const QString& name) {
    if (name.compare(u"database_default", Qt::CaseInsensitive) == 0) return CollationId::Server;
    if (const std::optional<CollationId> id = TryFindCollation(name)) return *id;
    if (!IsKnown(name)) throw SqlError(448, {name});
    throw SqlError(40517, {QStringLiteral("COLLATE ") + name});
}

QString NameOf(CollationId id) {
    return QString::fromLatin1(Table[static_cast<size_t>(id)].name);
}

int ComparisonStyleOf(CollationId id) {
    switch (Table[static_cast<size_t>(id)].unicode) {
        case TextOrder::CaseInsensitive:
            return 0x30001;
        case TextOrder::LowerFirst:
            return 0x30000;
        case TextOrder::Letters:
            return 0x30003;
        case TextOrder::LettersAndCase:
            return 0x30002;
        default:
            return 0;
    }
}

void RequireServerCollation(CollationId id) {
    if (id == CollationId::Server) return;
    throw SqlError(40517,
                   {QStringLiteral("COLLATE ") + NameOf(id) + QStringLiteral(" of a column")});
}

void CheckColumnCollation(const QString& name, const SqlType& type, int line) {
    if (name.isEmpty()) return;
    if (ClassOf(type) != TypeClass::Text || type.kind == TypeKind::Xml) {
        throw SqlError(447, {type.Name()}, line);
    }
    RequireServerCollation(FindCollation(name));
}

const char* StorageName(TextOrder order) {
    constexpr const char* Names[TextOrderCount] = {"tsql",         "tsql_lower", "tsql_upper",
                                                   "tsql_letters", "tsql_cased", "tsql_page",
                                                   "tsql_points",  "tsql_units"};
    return Names[static_cast<size_t>(order)];
}

}  // namespace quarv::localdb::engine
