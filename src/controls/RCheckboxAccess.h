// RCheckboxAccess: what assistive tools see of an RCheckbox: a check box by its spoken name,
// checked or not, that can be toggled. Qt's accessibility makes and owns it.
#pragma once

#include <QAccessibleWidget>

namespace quarv {

class RCheckbox;

class RCheckboxAccess : public QAccessibleWidget {
  public:
    explicit RCheckboxAccess(RCheckbox* box);

    // Makes Qt ask for this view of every RCheckbox. Calling it again changes nothing.
    static void Install();
    // Tells the tools that the mark came or went.
    static void NoteChecked(RCheckbox& box);

    QAccessible::State state() const override;
    // "Toggle" and "Press" do what a click does; a disabled check box offers nothing.
    QStringList actionNames() const override;
    void doAction(const QString& action) override;

  private:
    RCheckbox* Box() const;
};

}  // namespace quarv
