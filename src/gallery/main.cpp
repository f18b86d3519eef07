// The gallery's program.
//   --short  starts at once, its long list left empty
//   --dark   shows the colours of a dark desktop
//   --dump   prints the rows of the small grid, and those of the long list that were changed, at
//            its end
#include <QPalette>
#include <cstdio>

#include "gallery/GalleryWindow.h"
#include "platform/forms/Application.h"

namespace {

QPalette DarkPalette() {
    QPalette palette(QColor(53, 53, 53));
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    return palette;
}

}  // namespace

int main(int argc, char** argv) {
    quarv::forms::Application application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.contains(QStringLiteral("--dark"))) QApplication::setPalette(DarkPalette());
    quarv::gallery::GalleryWindow window(!arguments.contains(QStringLiteral("--short")));
    window.Show();
    const int status = QApplication::exec();
    if (arguments.contains(QStringLiteral("--dump")))
        std::fputs(window.Rows().toUtf8().constData(), stdout);
    return status;
}
