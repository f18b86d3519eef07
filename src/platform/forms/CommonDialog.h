// CommonDialog: the platform's dialog for choosing a file. On its form it is a control that is
// never seen; it keeps what the next showing starts with and what the last one gave.
#pragma once

#include <QWidget>

#include "platform/forms/Control.h"

class QFileDialog;

namespace quarv::forms {

class CommonDialog : public QWidget, public Control {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString InitDir READ InitDir WRITE SetInitDir)
    Q_PROPERTY(QString Filter READ Filter WRITE SetFilter)
    Q_PROPERTY(int FilterIndex READ FilterIndex WRITE SetFilterIndex)
    Q_PROPERTY(QString DialogTitle READ DialogTitle WRITE SetDialogTitle)
    Q_PROPERTY(QString FileName READ FileName WRITE SetFileName)

  public:
    CommonDialog(QWidget* container, const QString& name);

    // Where the dialog starts; with nothing, or a folder that is not there, in the one used last.
    QString InitDir() const { return initDir_; }
    void SetInitDir(const QString& folder) { initDir_ = folder; }

    // "Text (*.txt)|*.txt|All files|*.*". With nothing every file is shown.
    QString Filter() const { return filter_; }
    void SetFilter(const QString& filter) { filter_ = filter; }
    // 1-based; outside the list it stands for the first. After a choice, the filter then used.
    int FilterIndex() const { return filterIndex_; }
    void SetFilterIndex(int index) { filterIndex_ = index; }

    // "Open" where it is empty.
    QString DialogTitle() const { return title_; }
    void SetDialogTitle(const QString& title) { title_ = title; }

    // The chosen file with its path. The dialog starts with it, and in its folder where there is
    // one.
    QString FileName() const { return fileName_; }
    void SetFileName(const QString& name) { fileName_ = name; }

    // Lets the user choose an existing file. True where one was chosen; after a cancel FileName and
    // FilterIndex stay.
    Q_INVOKABLE bool ShowOpen();

  protected:
    void ApplyVisible(bool visible) override;

  private:
    void StartWith(QFileDialog& dialog, const QStringList& filters) const;

    QString initDir_;
    QString filter_;
    QString title_;
    QString fileName_;
    int filterIndex_ = 1;
};

}  // namespace quarv::forms
