// LookBoard: the looks of the owner-drawn controls side by side, painted as the controls paint
// them, so that those that need a mouse can be seen too. It takes no input.
#pragma once

#include "platform/forms/UserControl.h"

namespace quarv::gallery {

class LookBoard : public forms::UserControl {
    Q_OBJECT

  public:
    LookBoard(QWidget* container, const QString& name);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void PaintButtons(QPainter& painter, int top, bool flat) const;
    void PaintEdges(QPainter& painter, int top) const;
    void PaintChecks(QPainter& painter, int top) const;
};

}  // namespace quarv::gallery
