// OptionButtonAccess: what assistive tools see of an OptionButton: a choice among several, where
// Qt's own view of a button without its exclusion is a check box. Qt's accessibility makes and
// owns it; it knows nothing of the other choices.
#pragma once

#include <QAccessibleWidget>

namespace quarv::forms {

class OptionButton;

class OptionButtonAccess : public QAccessibleWidget {
  public:
    explicit OptionButtonAccess(OptionButton* choice);

    // Makes Qt ask for this view of every OptionButton. Calling it again changes nothing.
    static void Install();

    QAccessible::State state() const override;
    // "Toggle" chooses, as a click does; a disabled choice offers nothing.
    QStringList actionNames() const override;
    void doAction(const QString& action) override;

  private:
    OptionButton* Choice() const;
};

}  // namespace quarv::forms
