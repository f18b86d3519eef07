// GridEditorAccess: what assistive tools see of a text box on a grid: while it lies over a cell it
// belongs to that cell, so that who meets it finds the row and the heading. Qt's accessibility
// makes and owns it; the editing in it is told by what the box is made of.
#pragma once

#include <QAccessibleWidget>

namespace quarv {

class GridEditorAccess : public QAccessibleWidget {
  public:
    explicit GridEditorAccess(QWidget* box) : QAccessibleWidget(box, QAccessible::Client) {}

    // Makes Qt ask for this view of every text box that lies directly on a grid. Calling it again
    // changes nothing.
    static void Install();

    QAccessibleInterface* parent() const override;
};

}  // namespace quarv
