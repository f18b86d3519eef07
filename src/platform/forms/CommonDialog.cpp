#include "platform/forms/CommonDialog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeView>

#include "platform/forms/FileFilters.h"

namespace quarv::forms {

namespace {

constexpr QSize RoomForDates(760, 480);  // pixels

// Qt would leave out its mark for changed documents; doubled, it is shown.
QString Literally(QString title) {
    return title.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

void Dress(QFileDialog& dialog) {
    dialog.resize(dialog.size().expandedTo(RoomForDates));
    // The column of the dates, the last one, is else kept too narrow for them.
    for (QTreeView* files : dialog.findChildren<QTreeView*>())
        files->header()->setStretchLastSection(true);
    // As on every other button, the word alone.
    for (QPushButton* button : dialog.findChildren<QPushButton*>()) button->setIcon({});
}

}  // namespace

CommonDialog::CommonDialog(QWidget* container, const QString& name)
    : QWidget(container), Control(this, container, name) {
    hide();
}

void CommonDialog::ApplyVisible(bool) {}

bool CommonDialog::ShowOpen() {
    QFileDialog dialog(parentWidget() ? window() : nullptr,
                       title_.isEmpty() ? QStringLiteral("Open") : Literally(title_));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    Dress(dialog);
    const QStringList filters = NameFilters(filter_);
    StartWith(dialog, filters);
    if (dialog.exec() != QDialog::Accepted) return false;
    const QStringList chosen = dialog.selectedFiles();
    if (chosen.isEmpty()) return false;
    fileName_ = QDir::toNativeSeparators(chosen.first());
    if (!filters.isEmpty())
        filterIndex_ = static_cast<int>(filters.indexOf(dialog.selectedNameFilter())) + 1;
    return true;
}

void CommonDialog::StartWith(QFileDialog& dialog, const QStringList& filters) const {
    if (!initDir_.isEmpty() && QFileInfo(initDir_).isDir()) dialog.setDirectory(initDir_);
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
        dialog.selectNameFilter(filters.value(filterIndex_ - 1, filters.first()));
    }
    if (fileName_.isEmpty()) return;
    const QFileInfo file(fileName_);
    dialog.selectFile(file.isAbsolute() && file.dir().exists() ? fileName_ : file.fileName());
}

}  // namespace quarv::forms
