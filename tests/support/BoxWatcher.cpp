#include "support/BoxWatcher.h"

#include <QApplication>
#include <QEvent>
#include <QPushButton>
#include <QTimer>

#include "platform/forms/MessageDialog.h"

namespace quarv::test {

namespace {

void Press(forms::MessageDialog& dialog, forms::BoxAnswer answer) {
    const QString wanted = answer == forms::BoxAnswer::Yes  ? QStringLiteral("Yes")
                           : answer == forms::BoxAnswer::No ? QStringLiteral("No")
                                                            : QStringLiteral("Ok");
    auto* button = dialog.findChild<QPushButton*>(wanted);
    if (button == nullptr) button = dialog.findChild<QPushButton*>(QStringLiteral("Ok"));
    if (button != nullptr)
        button->click();
    else
        dialog.reject();
}

}  // namespace

BoxWatcher::BoxWatcher(forms::BoxAnswer answer) : answer_(answer) {
    qApp->installEventFilter(this);
}

BoxWatcher::~BoxWatcher() {
    qApp->removeEventFilter(this);
}

bool BoxWatcher::eventFilter(QObject* watched, QEvent* event) {
    auto* dialog =
        event->type() == QEvent::Show ? qobject_cast<forms::MessageDialog*>(watched) : nullptr;
    if (dialog != nullptr) {
        seen_.push_back({dialog->Text(), dialog->windowTitle(), dialog->Icon()});
        QTimer::singleShot(0, dialog, [dialog, answer = answer_, seen = onShow] {
            if (seen) seen();
            Press(*dialog, answer);
        });
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace quarv::test
