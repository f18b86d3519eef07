// GridScreen: what layout and editing of a grid ask of its scroll bars and its surface. The control
// implements it; nothing here raises an event of a bar.
#pragma once

#include <QtGlobal>

namespace quarv {

class GridScreen {
  public:
    virtual ~GridScreen() = default;

    // Shows the vertical bar up to `max` with `page` rows for a large step; the value stays where
    // it fits.
    virtual void ShowVertical(qint16 max, qint16 page) = 0;
    // The bar keeps its range.
    virtual void HideVertical() = 0;
    // Brought into the bar's range.
    virtual void SetVerticalValue(qint16 value) = 0;
    virtual void SetVerticalToMin() = 0;

    // Shows the horizontal scroller from 0 to `max` twips, at 0.
    virtual void ShowHorizontal(qint32 max, qint16 page) = 0;
    virtual void HideHorizontal() = 0;
    // Moves the scroller to `value` twips, brought into its range, and gives where it stands; 0
    // where it is hidden.
    virtual qint32 SetHorizontalValue(qint32 value) = 0;

    // Everything is to be painted again.
    virtual void Repaint() = 0;

  protected:
    GridScreen() = default;
    GridScreen(const GridScreen&) = default;
    GridScreen& operator=(const GridScreen&) = default;
};

}  // namespace quarv
