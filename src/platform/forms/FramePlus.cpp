#include "platform/forms/FramePlus.h"

#include <QPainter>

#include "platform/forms/FramePlusPainter.h"
#include "platform/forms/Twips.h"

namespace quarv::forms {

FramePlus::FramePlus(QWidget* container, const QString& name)
    : QWidget(container), Control(this, container, name), Bordered(1) {
    RefreshSpokenName();
}

void FramePlus::CaptionChanged(const QString&) {
    DeriveSpokenName(Caption());
    // What the frame holds stays as it is.
    update(0, 0, width(), ToPixels(BandHeight));
}

void FramePlus::paintEvent(QPaintEvent*) {
    // Without a border what is behind shows through: the page of a tab strip, mostly.
    if (BorderStyle() == 0) return;
    QPainter painter(this);
    PaintFramePlus(painter, rect(),
                   {.caption = Caption(),
                    .palette = palette(),
                    .bandHeight = ToPixels(BandHeight),
                    .enabled = isEnabled(),
                    .rightToLeft = isRightToLeft()});
}

}  // namespace quarv::forms
