// BoxWatcher: answers message boxes while it lives, and remembers what they said.
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <ostream>
#include <vector>

#include "platform/forms/MsgBox.h"

namespace quarv::test {

struct SeenBox {
    QString text;
    QString title;
    forms::BoxIcon icon;

    bool operator==(const SeenBox&) const = default;
};

// For GoogleTest.
inline void PrintTo(const SeenBox& box, std::ostream* out) {
    *out << '"' << box.text.toStdString() << "\" titled \"" << box.title.toStdString()
         << "\", icon " << static_cast<int>(box.icon);
}

class BoxWatcher : public QObject {
    Q_OBJECT

  public:
    // Questions get `answer`; boxes with an OK button alone are confirmed.
    explicit BoxWatcher(forms::BoxAnswer answer = forms::BoxAnswer::Yes);
    ~BoxWatcher() override;

    // Called while a box is up, before it is answered, where it is set.
    std::function<void()> onShow;

    // In the order of showing.
    const std::vector<SeenBox>& Seen() const { return seen_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    forms::BoxAnswer answer_;
    std::vector<SeenBox> seen_;
};

}  // namespace quarv::test
