// GridBars: the grid's vertical bar VScr and horizontal scroller HScr, as layout and editing see
// them: what they set raises nothing, what the user moves is told. The grid owns it; the widget
// tree owns the bars.
#pragma once

#include <QObject>
#include <functional>

#include "grid/GridGeometry.h"
#include "grid/GridScreen.h"

namespace quarv {

class HBigScroller;

namespace forms {
class ScrollBar;
}  // namespace forms

class GridBars : public QObject, public GridScreen {
    Q_OBJECT

  public:
    // `repaint` is called where everything is to be painted again.
    GridBars(QWidget* grid, std::function<void()> repaint);

    // How thick the bars are, in twips.
    double Thickness() const;
    void Place(const GridGeometry& geometry);
    // The vertical bar has the keyboard focus.
    bool HasFocus() const;
    // The part of the grid that no bar covers, in pixels.
    QRect Uncovered() const;
    // Right of the horizontal scroller, in pixels; nothing where that is hidden.
    QRect Corner() const;

    void ShowVertical(qint16 max, qint16 page) override;
    void HideVertical() override;
    void SetVerticalValue(qint16 value) override;
    void SetVerticalToMin() override;
    void ShowHorizontal(qint32 max, qint16 page) override;
    void HideHorizontal() override;
    qint32 SetHorizontalValue(qint32 value) override;
    void Repaint() override { repaint_(); }

  Q_SIGNALS:
    // The user moved a bar there.
    void VerticalMoved(qint16 value);
    void HorizontalMoved(qint32 twips);

  private:
    void TellVertical();

    QWidget& grid_;
    std::function<void()> repaint_;
    forms::ScrollBar* vertical_;
    HBigScroller* horizontal_;
};

}  // namespace quarv
