// PanelRow: raised panels of every style and with some sets of edges side by side, each with a
// label in its middle that tells its values. A click on a panel gives it the next style.
#pragma once

#include "platform/forms/UserControl.h"

namespace quarv {

class RaisedPanel;

namespace gallery {

class PanelRow : public forms::UserControl {
    Q_OBJECT

  public:
    PanelRow(QWidget* container, const QString& name);

  private:
    void AddPanel(int index, qint32 style, qint32 edges);
};

}  // namespace gallery
}  // namespace quarv
