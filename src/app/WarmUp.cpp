#include "app/WarmUp.h"

#include <QFontMetrics>

#include "inspect/PaneFont.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "platform/drawing/Fonts.h"

namespace quarv {
namespace {

// A font is found when it is named, and loaded when it is first measured.
void LoadFont(const QString& name) {
    const QFont font = drawing::FontNamed(name, QFont().pointSizeF());
    static_cast<void>(QFontMetrics(font).maxWidth());
}

}  // namespace

void WarmUp() {
    ado::odbc::LoadDriver();
    LoadFont(PaneFont());
}

}  // namespace quarv
