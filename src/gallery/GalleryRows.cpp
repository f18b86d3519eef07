#include "gallery/GalleryRows.h"

#include <QStringList>

#include "base/RuntimeError.h"

namespace quarv::gallery {

namespace {

constexpr qint16 MostRows = 32757;

struct Sample {
    const char16_t* name;
    const char16_t* colour;
    int size;
    bool stocked;
    const char16_t* picture;
    const char16_t* note;
    bool deleted = false;
};

constexpr Sample Samples[] = {
    {u"Kettle", u"red", 2, true, u"kettle.png", u"boils in two minutes"},
    {u"Teapot", u"blue", 1, true, u"teapot.png", u"for four cups"},
    {u"Sold out", u"red", 0, false, u"", u"hidden", true},
    {u"Lamp", u"green", 3, false, u"lamp.png",
     u"a long note that goes on far beyond the end of its cell, to be read in the tool tip"},
    {u"Чайник", u"blue", 2, true, u"chainik.png", u"non-Latin text"},
    {u"茶壺", u"green", 1, false, u"", u"line\nbreak and\ttab"},
    {u"إبريق شاي", u"red", 3, true, u"", u"from right to left"},
    {u"Mug \U0001F375", u"amber", 1, true, u"mug.png", u"a colour that is no choice"},
    {u"Gone", u"blue", 1, true, u"", u"hidden", true},
    {u"Tray", u"", 0, false, u"tray.png", u""},
    {u"Spoon", u"green", 1, true, u"spoon.png", u"NULL"},
};

std::shared_ptr<StringList> ListOf(std::initializer_list<const char16_t*> texts) {
    auto list = std::make_shared<StringList>();
    for (const char16_t* text : texts) list->Add(QString::fromUtf16(text));
    return list;
}

QString WordsOf(qint16 number) {
    return QStringLiteral("row %1 of %2").arg(number).arg(MostRows);
}

QString LineOf(const KelEditGridRow& row, qint16 columns) {
    QStringList fields;
    for (qint16 c = 1; c <= columns; ++c) fields.append(row.ColumnValue(c).ToText());
    return fields.join(u'\t') + u'\n';
}

}  // namespace

Value GalleryRow::ColumnValue(qint16 ColNum) const {
    const auto index = static_cast<size_t>(ColNum) - 1;
    return index < values_.size() ? values_[index] : Value();
}

void GalleryRow::SetColumnValue(qint16 ColNum, const Value& value) {
    if (ColNum < 1) throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    const auto index = static_cast<size_t>(ColNum) - 1;
    if (index >= values_.size()) values_.resize(index + 1);
    values_[index] = value;
}

bool GalleryRow::IsEmpty() const {
    for (const Value& value : values_) {
        const bool unset = value.kind() == Value::Kind::Boolean   ? !value.ToBoolean()
                           : value.kind() == Value::Kind::Integer ? value.ToInteger() == 0
                                                                  : value.ToText().isEmpty();
        if (!unset) return false;
    }
    return true;
}

ColumnListRef AllKinds() {
    auto columns = std::make_shared<KelEditGridColumnList>();
    columns->AddColumn(QStringLiteral("Name"), 1500, 0);
    columns->AddColumn(QStringLiteral("Colour"), 1400, 0)->Choices =
        ListOf({u"red", u"green", u"blue"});
    columns->AddColumn(QStringLiteral("Size"), 1200, 1)->Choices =
        ListOf({u"small", u"medium", u"large"});
    columns->AddColumn(QStringLiteral("In stock"), 1000, 3);
    const ColumnRef picture = columns->AddColumn(QStringLiteral("Picture"), 1700, 4);
    picture->BrowseText = QStringLiteral("Pictures (*.png)|*.png|All files|*");
    columns->AddColumn(QStringLiteral("Note"), 2600, 5);
    return columns;
}

RowListRef SomeRows() {
    auto rows = std::make_shared<KelEditGridRowList>();
    for (const Sample& sample : Samples) {
        auto row = std::make_shared<GalleryRow>(
            std::vector<Value>{Value(sample.name), Value(sample.colour), Value(sample.size),
                               Value(sample.stocked), Value(sample.picture), Value(sample.note)});
        if (sample.deleted) row->SetPersistStatus(KelEditGridRow::Deleted);
        rows->Add(row);
    }
    return rows;
}

ColumnListRef LongColumns() {
    auto columns = std::make_shared<KelEditGridColumnList>();
    columns->AddColumn(QStringLiteral("Number"), 1400, 0);
    columns->AddColumn(QStringLiteral("Square"), 1800, 0);
    columns->AddColumn(QStringLiteral("In words"), 60000, 0);
    return columns;
}

// Each row that is added numbers all rows anew, so that this takes seconds.
RowListRef LongRows() {
    auto rows = std::make_shared<KelEditGridRowList>();
    for (qint16 i = 1; i <= MostRows; ++i) {
        rows->Add(std::make_shared<GalleryRow>(
            std::vector<Value>{Value(i), Value(qint64{i} * i), Value(WordsOf(i))}));
    }
    return rows;
}

QString TextOf(const KelEditGridRowList& rows, const KelEditGridColumnList& columns) {
    QString text;
    for (qint16 i = 1; i <= rows.Count(); ++i)
        if (!rows.Items(i)->IsDeleted()) text += LineOf(*rows.Items(i), columns.Count());
    return text;
}

QString ChangedLongRows(const KelEditGridRowList& rows) {
    QString text;
    for (qint16 i = 1; i <= rows.Count(); ++i)
        if (rows.Items(i)->ColumnValue(3).ToText() != WordsOf(i)) text += LineOf(*rows.Items(i), 3);
    return text;
}

}  // namespace quarv::gallery
