#include "edit/TableEdit.h"

#include "base/FailureOf.h"
#include "base/RuntimeError.h"
#include "base/UTIL.h"
#include "db/SQLServerConnection.h"
#include "edit/TableEditGridRow.h"
#include "edit/UpdateStatement.h"
#include "grid/KelEditGrid.h"

namespace quarv {
namespace {

constexpr qint32 ColumnWidth = 1400;  // twips

void TellError(const QString& text) {
    ShowNote(QStringLiteral("Error: ") + text, QStringLiteral("Note"));
}

RowListRef ReadRows(ado::Recordset& rows, const StringList& primaryKey) {
    const auto list = std::make_shared<KelEditGridRowList>();
    for (; !rows.EOF(); rows.MoveNext()) {
        if (list->Count() == KelEditGridRowList::MaxCount)
            throw RuntimeError(RuntimeError::Overflow,
                               QStringLiteral("more than %1 rows").arg(list->Count()));
        const auto row = std::make_shared<TableEditGridRow>();
        row->Init(rows, primaryKey);
        list->AddUnnumbered(row);
    }
    list->RenumberVisibleFields();
    return list;
}

}  // namespace

TableEdit::TableEdit(QWidget* container, const QString& name)
    : forms::UserControl(container, name), Editor(new KelEditGrid(this, QStringLiteral("Editor"))) {
    Editor->SetSpokenName(QStringLiteral("Records"));
    setFocusProxy(Editor);
    connect(Editor, &KelEditGrid::ColumnChanged, this, &TableEdit::Editor_ColumnChanged);
}

void TableEdit::Investigate(const QString& Query, const QString& TableName,
                            const std::shared_ptr<SQLServerConnection>& Db) {
    db_ = Db;
    // Deliberately before the cell being edited is written back, which comes with the new columns:
    // what is composed for that cell is about the new table, and nothing sends it.
    DeterminePrimaryKey(TableName);
    query_ = Query;
    tableName_ = TableName;
    if (const auto failure = FailureOf([this] { Load(); })) TellError(*failure);
}

void TableEdit::DeterminePrimaryKey(const QString& Tbl) {
    if (db_ == nullptr) throw RuntimeError(RuntimeError::ObjectNotSet);
    primaryKey_.Clear();
    // Before any table was shown there is none to look up; what is wrong then, the query will tell.
    if (Tbl.isEmpty()) return;
    ado::Table table = db_->GetCatalog()->Tables(Tbl);
    for (const ado::Index& index : table.Indexes()) {
        if (!index.PrimaryKey) continue;
        for (const QString& column : index.Columns) primaryKey_.Add(column);
        return;
    }
    // Whether or not its values are unique.
    const auto first =
        db_->OpenQuery(QStringLiteral("select top 0 * from ") + SQLServerConnection::o(Tbl));
    primaryKey_.Add(first->Fields()[0].Name());
}

void TableEdit::Load() {
    const ado::RecordsetPtr rows = db_->OpenQuery(query_);
    SetColumns(rows->Fields());
    const RowListRef list = ReadRows(*rows, primaryKey_);
    rows->Close();
    Editor->SetRowList(list);
}

// The cell being edited goes with the old rows, so that nothing of it is left in those that come.
void TableEdit::SetColumns(const ado::Fields& fields) {
    const auto columns = std::make_shared<KelEditGridColumnList>();
    for (int i = 0; i < fields.Count(); ++i)
        columns->AddColumn(fields[i].Name(), ColumnWidth, static_cast<qint32>(CellKind::Text));
    Editor->CommitAnyChanges();
    Editor->RowList()->Clear();
    Editor->SetColList(columns);
    Editor->DataHasChanged();
}

void TableEdit::Editor_ColumnChanged(const RowRef& row, const ColumnRef& column) {
    // The list holds no rows of another class.
    auto& changed = static_cast<TableEditGridRow&>(*row);
    const Value now = changed.ColumnValue(column->Index);
    const Value& before = changed.OriginalValue(column->Index);
    // Deliberately, a cell that was null in the database never counts as changed.
    if (before.IsNull() || now.ToText() == before.ToText()) return;
    QString statement;
    try {
        statement =
            UpdateStatement(tableName_, column->Name, now, changed.PrimaryKeyClause(primaryKey_));
        // In place of sending it: from here on the cell counts as agreed with the database.
        changed.CopyNewToOriginal(column->Index);
    } catch (const Error& error) {
        TellError(error.Description() + QStringLiteral(" doing ") + statement);
    }
}

void TableEdit::UserControl_Resize() {
    SizeControl(*Editor, ScaleWidth(), ScaleHeight());
}

}  // namespace quarv
