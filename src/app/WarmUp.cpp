#include "app/WarmUp.h"

#include <malloc.h>

#include <QImage>
#include <QPainter>
#include <cstdlib>
#include <cstring>

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

// Names and nodes of ten thousand tables take a few MB, and a page that is first touched costs more
// than what is put into it. So that much is fetched now, and kept when it is free again.
void FetchMemory() {
    constexpr int Room = 4 * 1024 * 1024;
    mallopt(M_MMAP_THRESHOLD, 2 * Room);
    mallopt(M_TRIM_THRESHOLD, 2 * Room);
    void* const room = std::malloc(Room);
    if (room != nullptr) explicit_bzero(room, Room);  // a plain memset would be left out
    std::free(room);
}

}  // namespace

void WarmUp() {
    ado::odbc::LoadDriver();
    LoadFont(PaneFont());
    FetchMemory();
}

}  // namespace quarv
