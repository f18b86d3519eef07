#include "inspect/TableFieldView.h"

#include "base/UTIL.h"
#include "db/SQLServerConnection.h"
#include "inspect/PaneFont.h"
#include "platform/forms/FramePlus.h"
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
    : forms::UserControl(container, name),
      BorderFrame(new forms::FramePlus(this, QStringLiteral("BorderFrame"))),
      Detail(new forms::ListView(BorderFrame, QStringLiteral("Detail"))) {
    BorderFrame->SetFontName(PaneFont());
    Detail->SetFontName(PaneFont());
    Detail->Move(120, forms::FramePlus::BandHeight + 120, 6000, 3000);
    Detail->SetSpokenName(QStringLiteral("Fields"));
    auto& headers = Detail->ColumnHeaders();
    headers.Add({}, QStringLiteral("Name"), 1440, forms::ColumnAlignment::Left);
    headers.Add({}, QStringLiteral("Type"), 2440, forms::ColumnAlignment::Left);
    headers.Add({}, QStringLiteral("Nullable"), 1000, forms::ColumnAlignment::Centre);
    headers.Add({}, QStringLiteral("Default"), 1440, forms::ColumnAlignment::Left);
}

void TableFieldView::Investigate(const QString& Tbl, SQLServerConnection& Db) {
    const ado::RecordsetPtr rows = Db.GetTableInfo(Tbl);
    table_ = Tbl;
    Detail->ListItems().Clear();
    BorderFrame->SetCaption(QStringLiteral("Fields: ") + Tbl);
    script_.Begin(Tbl);
    ListedColumns list(*Detail);
    script_.ReadColumns(*rows, list);
    script_.Finish();
}

void TableFieldView::UserControl_Resize() {
    SizeControl(*BorderFrame, ScaleWidth(), ScaleHeight());
    SizeControl(*Detail, BorderFrame->Width() - 2 * Detail->Left(),
                BorderFrame->Height() - (Detail->Top() + 120));
}

}  // namespace quarv
