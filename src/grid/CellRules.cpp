#include "grid/CellRules.h"

#include <algorithm>

#include "base/RUtils.h"
#include "base/RuntimeError.h"

namespace quarv {

namespace {

// More than the widest cell of the widest screen has room for.
constexpr qsizetype MostBytesShown = 4096;

void ShowPlainText(CellEditors& editors, const KelEditGridColumn& column, const Value& value,
                   const QRectF& place) {
    editors.ShowText({CellText(value), column.MaxLength, false}, place);
}

void ShowTextWithButton(CellEditors& editors, const KelEditGridColumn& column, const Value& value,
                        const QRectF& place) {
    editors.ShowText({CellText(value), column.MaxLength, true}, place);
}

// Letter for letter: an entry that only looks alike would change the text.
int EntryOf(const StringList& choices, const QString& text) {
    for (qint16 i = 1; i <= choices.Count(); ++i)
        if (choices.Items(i) == text) return i - 1;
    return -1;
}

void ShowChoices(CellEditors& editors, const KelEditGridColumn& column, const Value& value,
                 const QRectF& place) {
    const QString text = CellText(value);
    editors.ShowList({column.Choices.get(), EntryOf(*column.Choices, text), text, true}, place);
}

void ShowNumberedChoices(CellEditors& editors, const KelEditGridColumn& column, const Value& value,
                         const QRectF& place) {
    const qint64 entry = value.IsNull() ? 0 : value.ToInteger();
    const qint64 count = column.Choices ? column.Choices->Count() : 0;
    if (entry < 0 || entry > count) throw RuntimeError(RuntimeError::InvalidPropertyValue);
    editors.ShowList({column.Choices.get(), static_cast<int>(entry) - 1, {}, false}, place);
}

void ShowCheckBox(CellEditors& editors, const KelEditGridColumn&, const Value& value,
                  const QRectF& place) {
    editors.ShowCheck(!value.IsNull() && value.ToBoolean(), place);
}

Value ReadText(const CellEditors& editors, const KelEditGridColumn&) {
    return editors.Text();
}

Value ReadFileName(const CellEditors& editors, const KelEditGridColumn& column) {
    return column.FileNameOnly ? FileNameOf(editors.Text()) : editors.Text();
}

Value ReadListText(const CellEditors& editors, const KelEditGridColumn&) {
    return editors.ListText();
}

Value ReadEntryNumber(const CellEditors& editors, const KelEditGridColumn&) {
    return Narrow16(editors.ListIndex() + 1);
}

Value ReadCheck(const CellEditors& editors, const KelEditGridColumn&) {
    return editors.Checked();
}

QString EntryText(const KelEditGridColumn& column, qint64 entry) {
    const bool listed = column.Choices && entry >= 1 && entry <= column.Choices->Count();
    return listed ? column.Choices->Items(static_cast<qint16>(entry)) : QString();
}

constexpr CellRule PlainText{ShowPlainText, ReadText};
constexpr CellRule TextWithChoices{ShowChoices, ReadListText};

struct Entry {
    CellKind kind;
    CellRule rule;
};

constexpr Entry Table[] = {
    {CellKind::Text, PlainText},
    {CellKind::List, {ShowNumberedChoices, ReadEntryNumber}},
    {CellKind::Check, {ShowCheckBox, ReadCheck}},
    {CellKind::Browse, {ShowTextWithButton, ReadFileName}},
    {CellKind::Custom, {ShowTextWithButton, ReadText}},
};

}  // namespace

const CellRule* FindCellRule(const KelEditGridColumn& column) {
    if (column.Is(CellKind::Text) && column.HasChoices()) return &TextWithChoices;
    const auto* found =
        std::find_if(std::begin(Table), std::end(Table),
                     [&column](const Entry& entry) { return column.Is(entry.kind); });
    return found != std::end(Table) ? &found->rule : nullptr;
}

QString ShownText(const KelEditGridColumn& column, const Value& value) {
    switch (value.kind()) {
        case Value::Kind::Object:
            return {};
        case Value::Kind::Bytes:
            return Value(value.Bytes().left(MostBytesShown)).ToText();
        case Value::Kind::Integer:
            return column.Is(CellKind::List) ? EntryText(column, value.ToInteger())
                                             : value.ToText();
        default:
            return CellText(value);
    }
}

QString CellText(const Value& value) {
    return value.IsNull() ? QString() : value.ToText();
}

}  // namespace quarv
