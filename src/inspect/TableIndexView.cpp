#include "inspect/TableIndexView.h"

#include "db/SQLServerConnection.h"
#include "platform/forms/ListView.h"

namespace quarv {

TableIndexView::TableIndexView(QWidget* container, const QString& name)
    : TableListPane(container, name, QStringLiteral("Indexes")) {
    auto& headers = Detail->ColumnHeaders();
    headers.Add({}, QStringLiteral("Name"), 1440, forms::ColumnAlignment::Left);
    headers.Add({}, QStringLiteral("Fields"), 2440, forms::ColumnAlignment::Left);
    headers.Add({}, QStringLiteral("Additional"), 1000, forms::ColumnAlignment::Centre);
}

void TableIndexView::Investigate(const QString& Tbl, SQLServerConnection& Db) {
    const ado::RecordsetPtr rows = Db.GetIndexInfo(Tbl);
    Begin(Tbl);
    // For a table without indexes the server sends a message in place of an empty result.
    if (rows->State() == ado::adStateClosed) return;
    for (; !rows->EOF(); rows->MoveNext()) {
        const QString name = (*rows)[QStringLiteral("index_name")].ToText();
        forms::ListItem& item = Detail->ListItems().Add(name, name);
        item.SetSubItem(1, (*rows)[QStringLiteral("index_keys")].ToText());
        item.SetSubItem(2, (*rows)[QStringLiteral("index_description")].ToText());
    }
}

}  // namespace quarv
