#include "inspect/SprocView.h"

#include "base/RUtils.h"
#include "base/UTIL.h"
#include "db/SQLServerConnection.h"
#include "inspect/PaneFont.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/Label.h"
#include "platform/forms/TextBox.h"

namespace quarv {

SprocView::SprocView(QWidget* container, const QString& name)
    : forms::UserControl(container, name),
      BorderFrame(new forms::FramePlus(this, QStringLiteral("BorderFrame"))),
      Info(new forms::Label(BorderFrame, QStringLiteral("Info"))),
      Detail(new forms::TextBox(BorderFrame, QStringLiteral("Detail"))) {
    BorderFrame->SetFontName(PaneFont());
    Info->Move(120, 360, 6000, 255);
    Info->SetWordWrap(false);
    Detail->Move(120, 600, 6000, 3000);
    Detail->SetMultiLine(true);
    Detail->SetScrollBars(forms::TextBox::Both);
    // The pane shows; nothing would save what was typed here.
    Detail->SetLocked(true);
    Detail->SetFontName(QStringLiteral("Courier New"));
    Detail->SetSpokenName(QStringLiteral("Source"));
}

void SprocView::Investigate(const QString& Sproc, SQLServerConnection& Db) {
    ShowRoutine(*Db.GetSprocInfo(Sproc));
    // The first result describes the object, the second its parameters.
    ShowParameters(Db.GetObjectInfo(Sproc)->NextRecordset().get());
}

void SprocView::ShowRoutine(const ado::Recordset& rows) {
    BorderFrame->SetCaption(rows[QStringLiteral("routine_schema")].ToText() + u'.' +
                            rows[QStringLiteral("routine_name")].ToText() +
                            QStringLiteral(", created ") +
                            rows[QStringLiteral("created")].ToText());
    // The blank alone counts: a line break or a tab at an end is part of the source.
    Detail->SetText(TrimBlanks(rows[QStringLiteral("routine_definition")].ToText()));
}

void SprocView::ShowParameters(ado::Recordset* rows) {
    Info->SetCaption(QStringLiteral("No parameters"));
    if (rows == nullptr || rows->State() == ado::adStateClosed) return;
    QString names;
    for (; !rows->EOF(); rows->MoveNext())
        AddToCommaList(names, (*rows)[QStringLiteral("parameter_name")].ToText());
    // An open result without rows leaves nothing to say, not "No parameters".
    Info->SetCaption(names);
}

QString SprocView::Text() const {
    return Detail->Text();
}

void SprocView::UserControl_Resize() {
    SizeControl(*BorderFrame, ScaleWidth(), ScaleHeight());
    const double width = BorderFrame->Width() - 2 * Detail->Left();
    SizeControl(*Info, width, Info->Height());
    SizeControl(*Detail, width, BorderFrame->Height() - (Info->Top() + Info->Height()));
}

}  // namespace quarv
