#include "inspect/TableListPane.h"

#include "base/UTIL.h"
#include "inspect/PaneFont.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/ListView.h"

namespace quarv {

TableListPane::TableListPane(QWidget* container, const QString& name, const QString& parts)
    : forms::UserControl(container, name),
      BorderFrame(new forms::FramePlus(this, QStringLiteral("BorderFrame"))),
      Detail(new forms::ListView(BorderFrame, QStringLiteral("Detail"))),
      parts_(parts) {
    BorderFrame->SetFontName(PaneFont());
    Detail->SetFontName(PaneFont());
    Detail->Move(120, forms::FramePlus::BandHeight + 120, 6000, 3000);
    Detail->SetSpokenName(parts);
}

void TableListPane::Begin(const QString& table) {
    table_ = table;
    Detail->ListItems().Clear();
    BorderFrame->SetCaption(parts_ + QStringLiteral(": ") + table);
}

void TableListPane::UserControl_Resize() {
    SizeControl(*BorderFrame, ScaleWidth(), ScaleHeight());
    SizeControl(*Detail, BorderFrame->Width() - 2 * Detail->Left(),
                BorderFrame->Height() - (Detail->Top() + 120));
}

}  // namespace quarv
