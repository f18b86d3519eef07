// TableListPane: what the panes that list the parts of a table are made of: a titled frame around a
// list that fills it. The pane derived from it adds the list's columns and reads its rows; nothing
// here knows a connection.
#pragma once

#include "platform/forms/UserControl.h"

namespace quarv {

namespace forms {
class FramePlus;
class ListView;
}  // namespace forms

class TableListPane : public forms::UserControl {
    Q_OBJECT

  protected:
    // `parts` is what the list holds, for the title and for assistive tools: "Fields".
    TableListPane(QWidget* container, const QString& name, const QString& parts);

    // Empties the list and writes "Fields: " and the table into the title.
    void Begin(const QString& table);
    void UserControl_Resize() override;

    forms::FramePlus* BorderFrame;
    forms::ListView* Detail;

  private:
    QString parts_;
    QString table_;
};

}  // namespace quarv
