#include "controls/StockPictures.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QPalette>

#include "support/FilledPicture.h"
#include "support/TextPrinter.h"

namespace quarv {
namespace {

// Restores the desktop's palette.
class WithPalette {
  public:
    WithPalette(const QColor& paper, const QColor& ink) {
        QPalette palette;
        palette.setColor(QPalette::Base, paper);
        palette.setColor(QPalette::Text, ink);
        QGuiApplication::setPalette(palette);
    }
    ~WithPalette() { QGuiApplication::setPalette(before_); }

  private:
    QPalette before_ = QGuiApplication::palette();
};

// The pixels of a rendered picture that hold any ink.
QRect Inked(const QImage& image) {
    QRect inked;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() > 0) inked |= QRect(x, y, 1, 1);
    return inked;
}

TEST(StockPictures, HaveTheirSizes) {
    EXPECT_EQ(EmptyBoxPicture()->Width(), 195);
    EXPECT_EQ(EmptyBoxPicture()->Height(), 195);
    EXPECT_EQ(PressedBoxPicture()->Width(), 195);
    EXPECT_EQ(CheckMarkPicture()->Width(), 105);
    EXPECT_EQ(CurrentRowPicture()->Width(), 135);
    EXPECT_EQ(EllipsisPicture()->Width(), 120);
    EXPECT_EQ(EllipsisPicture()->Type(), drawing::PictureType::Icon);
}

TEST(StockPictures, AreShared) {
    EXPECT_EQ(EmptyBoxPicture(), EmptyBoxPicture());
    EXPECT_NE(EmptyBoxPicture(), PressedBoxPicture());
}

TEST(StockPictures, BoxesFillTheirThirteenPixels) {
    const WithPalette light(Qt::white, Qt::black);
    const QImage image = EmptyBoxPicture()->Render(1);
    EXPECT_EQ(Inked(image), QRect(0, 0, 13, 13));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(102, 102, 102));
    EXPECT_EQ(image.pixelColor(12, 6), QColor(102, 102, 102));
    EXPECT_EQ(image.pixelColor(1, 1), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(11, 11), QColor(Qt::white));
    EXPECT_EQ(PressedBoxPicture()->Render(1).pixelColor(6, 6), QColor(204, 204, 204));
}

TEST(StockPictures, FollowADarkPalette) {
    const WithPalette dark(Qt::black, Qt::white);
    const QImage image = EmptyBoxPicture()->Render(1);
    EXPECT_EQ(image.pixelColor(0, 0), QColor(153, 153, 153));
    EXPECT_EQ(image.pixelColor(6, 6), QColor(Qt::black));
    EXPECT_EQ(EllipsisPicture()->Render(1).pixelColor(0, 3), QColor(Qt::white));
    EXPECT_EQ(CurrentRowPicture()->Render(1).pixelColor(3, 4), QColor(Qt::white));
}

TEST(StockPictures, TheTickStaysWithinItsSevenPixels) {
    const WithPalette light(Qt::white, Qt::black);
    const QRect tick = Inked(CheckMarkPicture()->Render(1));
    EXPECT_TRUE(QRect(0, 0, 7, 7).contains(tick));
    EXPECT_GE(tick.width(), 6);
    EXPECT_GE(tick.height(), 5);
}

TEST(StockPictures, TheTriangleNarrowsToTheRight) {
    const WithPalette light(Qt::white, Qt::black);
    const QImage image = CurrentRowPicture()->Render(1);
    const auto height = [&image](int x) {
        int rows = 0;
        for (int y = 0; y < 9; ++y) rows += image.pixelColor(x, y).alpha() > 127;
        return rows;
    };
    EXPECT_GE(height(2), 7);
    EXPECT_GT(height(2), height(4));
    EXPECT_GT(height(4), height(6));
    EXPECT_EQ(height(1), 0);
}

TEST(StockPictures, TheEllipsisIsThreeSharpDots) {
    const WithPalette light(Qt::white, Qt::black);
    for (const int scale : {1, 2}) {
        const QImage image = EllipsisPicture()->Render(scale);
        QString row;
        for (int x = 0; x < 8; ++x)
            row += image.pixelColor(x * scale, 3 * scale).alpha() == 255 ? u'#' : u'.';
        EXPECT_EQ(row, u"##.##.##"_qs);
        EXPECT_EQ(image.pixelColor(0, 2 * scale).alpha(), 0);
        EXPECT_EQ(image.pixelColor(0, 5 * scale).alpha(), 0);
    }
}

TEST(StockPictures, WordsAreAsLargeAsTheirText) {
    const QFont font;
    const auto words = WordsPicture(QStringLiteral("Run Query"), font);
    EXPECT_EQ(words->Width(),
              15 * QFontMetrics(font).horizontalAdvance(QStringLiteral("Run Query")));
    EXPECT_EQ(words->Height(), 15 * QFontMetrics(font).height());
    EXPECT_GT(words->Width(), WordsPicture(QStringLiteral("Run"), font)->Width());
    EXPECT_FALSE(Inked(words->Render(1)).isEmpty());
}

TEST(StockPictures, WordsAreInTheColourOfAButtonsWords) {
    const QPalette before = QGuiApplication::palette();
    QPalette palette;
    palette.setColor(QPalette::ButtonText, Qt::red);
    QGuiApplication::setPalette(palette);
    QFont large;
    large.setPointSize(40);
    const QImage image = WordsPicture(QStringLiteral("I"), large)->Render(1);
    QGuiApplication::setPalette(before);
    int red = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            red += image.pixelColor(x, y) == QColor(Qt::red) ? 1 : 0;
    EXPECT_GT(red, 20);
}

}  // namespace
}  // namespace quarv
