// MessageDialog: the window of MsgBox. Its buttons' object names are "Ok", "Yes" and "No", its text
// stands in the widget "Message".
#pragma once

#include <QDialog>

#include "platform/forms/MsgBox.h"

namespace quarv::forms {

class MessageDialog : public QDialog {
    Q_OBJECT

  public:
    MessageDialog(QWidget* parent, const QString& text, const QString& title, BoxIcon icon,
                  BoxButtons buttons);

    const QString& Text() const { return text_; }
    BoxIcon Icon() const { return icon_; }
    BoxAnswer Answer() const { return answer_; }

  private:
    QWidget* MakeIcon();
    QWidget* MakeMessage();
    QWidget* MakeScrollingMessage(int width, int height);
    QWidget* MakeButtons(BoxButtons buttons);

    QString text_;
    BoxIcon icon_;
    BoxAnswer answer_;
};

}  // namespace quarv::forms
