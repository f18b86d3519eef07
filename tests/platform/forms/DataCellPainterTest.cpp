#include "platform/forms/DataCellPainter.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

constexpr QRect CellArea(20, 10, 100, 24);

class CellPainter : public testing::Test {
  protected:
    QPalette palette{QColor(240, 240, 240)};
    DataCellFonts fonts{QFont()};

    void SetUp() override {
        palette.setColor(QPalette::Base, Qt::white);
        palette.setColor(QPalette::Text, Qt::black);
        palette.setColor(QPalette::Active, QPalette::Highlight, QColor(0, 0, 200));
        palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(90, 90, 90));
        palette.setColor(QPalette::HighlightedText, QColor(255, 255, 0));
    }
    static DataCellState State(const QString& text) {
        return {text, CellLook::Text, false, false, false, QPalette::Active};
    }
    QImage Paint(const DataCellState& state, const QRect& cell = CellArea) const {
        QImage image(140, 44, QImage::Format_RGB32);
        image.fill(palette.color(QPalette::Base));
        QPainter painter(&image);
        PaintDataCell(painter, cell, state, fonts, palette);
        return image;
    }
    static QRect Inked(const QImage& image, const QColor& ground = Qt::white) {
        QRect inked;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) != ground) inked |= QRect(x, y, 1, 1);
        return inked;
    }
    // The grey of the darkest pixel, 0 to 255.
    static int Darkest(const QImage& image) {
        int darkest = 255;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                darkest = std::min(darkest, qGray(image.pixel(x, y)));
        return darkest;
    }
    static int Count(const QImage& image, const QColor& color) {
        int found = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) found += image.pixelColor(x, y) == color;
        return found;
    }
};

TEST_F(CellPainter, TextIsLeftAndNumbersAreRight) {
    const QRect text = Inked(Paint(State(u"12"_qs)));
    EXPECT_LT(text.right(), CellArea.center().x());
    EXPECT_GE(text.left(), CellArea.left() + CellMargin - 1);
    DataCellState number = State(u"12"_qs);
    number.look = CellLook::Number;
    const QRect right = Inked(Paint(number));
    EXPECT_GT(right.left(), CellArea.center().x());
    EXPECT_LE(right.right(), CellArea.right() - CellMargin + 1);
}

TEST_F(CellPainter, ADesktopFromRightToLeftTurnsBothRound) {
    DataCellState state = State(u"12"_qs);
    state.rightToLeft = true;
    EXPECT_GT(Inked(Paint(state)).left(), CellArea.center().x());
    state.look = CellLook::Number;
    EXPECT_LT(Inked(Paint(state)).right(), CellArea.center().x());
}

TEST_F(CellPainter, TextFromRightToLeftKeepsTheCellsSide) {
    const QRect inked = Inked(Paint(State(u"\u05D0\u05D1"_qs)));
    EXPECT_FALSE(inked.isEmpty());
    EXPECT_LT(inked.right(), CellArea.center().x());
}

TEST_F(CellPainter, NullIsItalicAndFainterThanText) {
    DataCellState null = State(u"NULL"_qs);
    null.look = CellLook::Null;
    const QImage picture = Paint(null);
    const QImage text = Paint(State(u"NULL"_qs));
    EXPECT_EQ(Darkest(text), 0);
    EXPECT_GE(Darkest(picture), 95);
    EXPECT_LE(Darkest(picture), 125);
    EXPECT_TRUE(fonts.null.italic());
    EXPECT_FALSE(fonts.normal.italic());
}

TEST_F(CellPainter, NullCanBeReadOnADarkGround) {
    palette.setColor(QPalette::Base, QColor(35, 38, 41));
    palette.setColor(QPalette::Text, QColor(239, 240, 241));
    palette.setColor(QPalette::PlaceholderText, Qt::black);
    DataCellState null = State(u"NULL"_qs);
    null.look = CellLook::Null;
    QImage picture = Paint(null);
    picture.invertPixels();
    EXPECT_LE(Darkest(picture), 120);
}

TEST_F(CellPainter, ASelectedCellFillsItsRectangle) {
    DataCellState state = State(u"NULL"_qs);
    state.selected = true;
    state.look = CellLook::Null;
    const QImage picture = Paint(state);
    EXPECT_EQ(Inked(picture), CellArea);
    EXPECT_EQ(picture.pixelColor(CellArea.topLeft()), QColor(0, 0, 200));
    EXPECT_GT(Count(picture, QColor(255, 255, 0)), 0);
}

TEST_F(CellPainter, TheCurrentCellHasAFrame) {
    DataCellState state = State({});
    state.current = true;
    QImage picture = Paint(state);
    EXPECT_EQ(Inked(picture), CellArea);
    EXPECT_EQ(picture.pixelColor(CellArea.bottomRight()), QColor(0, 0, 200));
    EXPECT_EQ(picture.pixelColor(CellArea.center()), QColor(Qt::white));
    state.selected = true;
    picture = Paint(state);
    EXPECT_EQ(picture.pixelColor(CellArea.topLeft()), QColor(255, 255, 0));
    EXPECT_EQ(picture.pixelColor(CellArea.center()), QColor(0, 0, 200));
}

TEST_F(CellPainter, AnInactiveSelectionStaysVisible) {
    EXPECT_EQ(SelectionGroup(palette, QPalette::Inactive), QPalette::Inactive);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(248, 248, 248));
    EXPECT_EQ(SelectionGroup(palette, QPalette::Inactive), QPalette::Active);
    DataCellState state = State({});
    state.selected = true;
    state.group = QPalette::Inactive;
    EXPECT_EQ(Paint(state).pixelColor(CellArea.center()), QColor(0, 0, 200));
}

TEST_F(CellPainter, LongTextEndsInAnEllipsisInsideTheCell) {
    const QRect cell = CellArea.adjusted(0, 0, -40, 0);
    const QRect inked = Inked(Paint(State(QString(200, u'w')), cell));
    EXPECT_GT(inked.width(), 30);
    EXPECT_TRUE(cell.contains(inked));
}

TEST_F(CellPainter, CharactersHigherThanTheRowStayInsideTheCell) {
    const QRect low(20, 18, 100, 6);
    const QRect inked = Inked(Paint(State(u"\u00C5\u0323g"_qs), low));
    EXPECT_EQ(inked.height(), 6);
    EXPECT_TRUE(low.contains(inked));
}

TEST_F(CellPainter, AnyCharacterCanBePainted) {
    const QString odd = u"\U0001F600\U0010FFFF\uFFFE\u202E x"_qs + QChar(0xD800) + QChar(0xDC00);
    EXPECT_FALSE(Inked(Paint(State(odd))).isEmpty());
    EXPECT_TRUE(Inked(Paint(State(u"x"_qs), QRect(20, 10, 3, 24))).isEmpty());
}

TEST_F(CellPainter, DarkPalettesPaintLightText) {
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::Text, QColor(230, 230, 230));
    const QImage picture = Paint(State(u"dark"_qs));
    EXPECT_GT(Count(picture, QColor(230, 230, 230)), 0);
    EXPECT_EQ(picture.pixelColor(CellArea.bottomRight()), QColor(30, 30, 30));
}

}  // namespace
}  // namespace quarv::forms
