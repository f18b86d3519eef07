#include "inspect/TableFieldView.h"

#include "db/SQLServerConnection.h"
#include "platform/forms/ListView.h"

namespace quarv {
namespace {

// Adds to the pane's list while the columns are read.
class ListedColumns : public TableColumnSink {
  public:
    explicit ListedColumns(forms::ListView& list) : list_(list) {}

    void AddItem(const QString& name) override { item_ = &list_.ListItems().Add(name, name); }
    void SetSubItem(int index, const QString& text) override { item_->SetSubItem(index, text); }

  private:
    forms::ListView& list_;
    forms::ListItem* item_ = nullptr;
};

}  // namespace

TableFieldView::TableFieldView(QWidget* container, const QString& name)
    : TableListPane(container, name, QStringLiteral("Fields")) {
    auto& headers = Detail->ColumnHeaders();
    headers.Add({}, QStringLiteral("Name"), 1440, forms::ColumnAlignment::Left);
    headers.Add({}, QStringLiteral("Type"), 2440, forms::ColumnAlignment::Left);
    headers.Add({}, QStringLiteral("Nullable"), 1000, forms::ColumnAlignment::Centre);
    headers.Add({}, QStringLiteral("Default"), 1440, forms::ColumnAlignment::Left);
}

void TableFieldView::Investigate(const QString& Tbl, SQLServerConnection& Db) {
    const ado::RecordsetPtr rows = Db.GetTableInfo(Tbl);
    Begin(Tbl);
    script_.Begin(Tbl);
    ListedColumns list(*Detail);
    script_.ReadColumns(*rows, list);
    script_.Finish();
}

}  // namespace quarv
