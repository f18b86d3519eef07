// BoxWatch: answers the message boxes that a test's clicks bring up, and keeps what they said.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QPushButton>
#include <functional>
#include <vector>

#include "platform/forms/MessageDialog.h"

namespace quarv {

struct SeenBox {
    QString text;
    QString title;
    forms::BoxIcon icon;

    bool operator==(const SeenBox&) const = default;
};

inline void PrintTo(const SeenBox& box, std::ostream* out) {
    *out << "\"" << box.text.toStdString() << "\" titled \"" << box.title.toStdString()
         << "\" with icon " << static_cast<int>(box.icon);
}

class BoxWatch : public QObject {
  public:
    BoxWatch() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* receiver, QEvent* event) override {
        if (event->type() != QEvent::Show) return false;
        auto* box = qobject_cast<forms::MessageDialog*>(receiver);
        if (box == nullptr) return false;
        boxes.push_back({box->Text(), box->windowTitle(), box->Icon()});
        if (whenShown) whenShown();
        QMetaObject::invokeMethod(
            box, [this, box] { Answer(*box); }, Qt::QueuedConnection);
        return false;
    }

    std::vector<SeenBox> boxes;
    // The name of the button pressed on a box that has it; every other box is confirmed.
    QString answer = QStringLiteral("Yes");
    std::function<void()> whenShown;

  private:
    void Answer(const QWidget& box) const {
        auto* button = box.findChild<QPushButton*>(answer);
        if (button == nullptr) button = box.findChild<QPushButton*>(QStringLiteral("Ok"));
        button->click();
    }
};

}  // namespace quarv
