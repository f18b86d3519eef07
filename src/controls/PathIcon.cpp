#include "controls/PathIcon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

namespace quarv {
namespace {

class PathIconEngine : public QIconEngine {
  public:
    PathIconEngine(DrawPathIcon draw, const QSize& units) : draw_(std::move(draw)), units_(units) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const QPalette palette = QGuiApplication::palette();
        QColor line = palette.color(QPalette::Text);
        line.setAlphaF(0.75F);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (mode == QIcon::Disabled) painter->setOpacity(0.5);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / units_.width(), rect.height() / units_.height());
        draw_(*painter, PathInks{palette.color(QPalette::Base), QPen(line, 1),
                                 palette.color(QPalette::ButtonText)});
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new PathIconEngine(*this); }

  private:
    DrawPathIcon draw_;
    QSizeF units_;
};

}  // namespace

QIcon MakePathIcon(DrawPathIcon draw, const QSize& units) {
    return QIcon(new PathIconEngine(std::move(draw), units));
}

}  // namespace quarv
