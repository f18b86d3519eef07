#include "app/WarmUp.h"

#include <QImage>
#include <QPainter>

#include "inspect/PaneFont.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "platform/drawing/Fonts.h"

namespace quarv {
namespace {

// A font is found when it is named, and each of its glyphs is loaded when it is first painted.
void LoadFont(const QString& name) {
    QString ascii;
    for (char16_t c = u'!'; c <= u'~'; ++c) ascii += c;
    QImage line(16, 16, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&line);
    painter.setFont(drawing::FontNamed(name, QFont().pointSizeF()));
    painter.drawText(QPointF(0, 12), ascii);
}

}  // namespace

void WarmUp() {
    ado::odbc::LoadDriver();
    LoadFont(PaneFont());
}

}  // namespace quarv
