#include "app/WarmUp.h"

#include <malloc.h>

#include <QImage>
#include <QPainter>
#include <cstdlib>
#include <cstring>

#include "edit/TableEdit.h"
#include "inspect/PaneFont.h"
#include "inspect/SprocView.h"
#include "inspect/TableIndexView.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "platform/drawing/Fonts.h"
#include "platform/forms/Form.h"
#include "platform/forms/FramePlus.h"

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

// The first of a kind costs twice as much as the next: its fonts are found and its code is bound.
void MakePanes() {
    forms::Form unseen(QStringLiteral("WarmUp"));
    const TableIndexView list(&unseen, QStringLiteral("List"));
    const TableEdit grid(&unseen, QStringLiteral("Grid"));
    const SprocView source(&unseen, QStringLiteral("Source"));
    forms::FramePlus frame(&unseen, QStringLiteral("Frame"));
    frame.SetCaption(QStringLiteral("Records:"));
    frame.grab();  // a title's font is found when it is painted
}

}  // namespace

void WarmUp() {
    ado::odbc::LoadDriver();
    LoadFont(PaneFont());
    MakePanes();
    FetchMemory();
}

}  // namespace quarv
