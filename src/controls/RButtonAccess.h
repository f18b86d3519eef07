// RButtonAccess: what assistive tools see of an RButton: a button by its spoken name that can be
// pressed. Qt's accessibility makes and owns it.
#pragma once

#include <QAccessibleWidget>

namespace quarv {

class RButton;

class RButtonAccess : public QAccessibleWidget {
  public:
    explicit RButtonAccess(RButton* button);

    // Makes Qt ask for this view of every RButton. Calling it again changes nothing.
    static void Install();
    // Tells the tools that the button is, or is no longer, down.
    static void NotePressed(RButton& button);

    // Pressed is a latched button too.
    QAccessible::State state() const override;
    // "Press" clicks; a disabled button offers nothing.
    QStringList actionNames() const override;
    void doAction(const QString& action) override;

  private:
    RButton* Button() const;
};

}  // namespace quarv
