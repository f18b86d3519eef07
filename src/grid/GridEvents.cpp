#include "grid/GridEvents.h"

#include "grid/KelEditGrid.h"
#include "platform/forms/Application.h"
#include "platform/forms/CommonDialog.h"
#include "platform/forms/MsgBox.h"

namespace quarv {

using forms::Application;

void GridEvents::AddRow(RowRef& row) {
    Application::RunEvent([&] { Q_EMIT grid_.AddRow(row); });
}

void GridEvents::DeleteRow(RowRef& row) {
    Application::RunEvent([&] { Q_EMIT grid_.DeleteRow(row); });
}

void GridEvents::RowSelected(RowRef& row) {
    Application::RunEvent([&] { Q_EMIT grid_.RowSelected(row); });
}

void GridEvents::ColumnChanged(RowRef& row, ColumnRef& column) {
    Application::RunEvent([&] { Q_EMIT grid_.ColumnChanged(row, column); });
}

void GridEvents::CustomColumnElipsis(RowRef& row, ColumnRef& column) {
    Application::RunEvent([&] { Q_EMIT grid_.CustomColumnElipsis(row, column); });
}

void GridEvents::GetDirectoryForBrowse(RowRef& row, ColumnRef& column, QString& directory) {
    Application::RunEvent([&] { Q_EMIT grid_.GetDirectoryForBrowse(row, column, directory); });
}

std::optional<QString> GridEvents::ChooseFile(const QString& directory,
                                              const KelEditGridColumn& column) {
    finder_.SetInitDir(directory);
    finder_.SetFilter(column.BrowseText);
    finder_.SetFilterIndex(1);
    finder_.SetDialogTitle(column.Name);
    finder_.SetFileName(QString());
    if (!finder_.ShowOpen()) return std::nullopt;
    return finder_.FileName();
}

void GridEvents::ShowNoEditor() {
    forms::MsgBox(QStringLiteral("boom"));
}

}  // namespace quarv
