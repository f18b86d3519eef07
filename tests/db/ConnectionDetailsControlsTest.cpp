#include "db/ConnectionDetailsControls.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontMetrics>

namespace quarv {
namespace {

// The dialog's controls on a form, shown in a font of so many pixels.
class DialogInFont : public testing::TestWithParam<int> {
  protected:
    DialogInFont() {
        QFont font = before_;
        font.setPixelSize(GetParam());
        QApplication::setFont(font);
        form_ = std::make_unique<forms::Form>(QStringLiteral("Details"));
        controls_ = std::make_unique<ConnectionDetailsControls>(*form_);
        form_->Show();
    }
    ~DialogInFont() override {
        form_.reset();
        QApplication::setFont(before_);
    }

    QFont before_ = QApplication::font();
    std::unique_ptr<forms::Form> form_;
    std::unique_ptr<ConnectionDetailsControls> controls_;
};

INSTANTIATE_TEST_SUITE_P(, DialogInFont, testing::Values(9, 12, 16, 19, 24, 32));

TEST_P(DialogInFont, NoCaptionIsCutOff) {
    const ConnectionDetailsControls& c = *controls_;
    for (const QWidget* one : std::initializer_list<QWidget*>{
             c.Label1, c.Label2, c.UsernameLabel, c.PaswordLabel, c.UseWinAccount, c.UseSQLAccount,
             c.CreateDatabase, c.Test, c.Okay, c.Cancel})
        EXPECT_GE(one->width(), one->sizeHint().width()) << one->objectName().toStdString();
    EXPECT_GE(c.Label3->height(), c.Label3->heightForWidth(c.Label3->width()));
}

TEST_P(DialogInFont, ALineOfTextFitsEachBox) {
    const ConnectionDetailsControls& c = *controls_;
    for (const QWidget* box : std::initializer_list<QWidget*>{
             c.Servername, c.DatabaseList, c.Username, c.Password, c.UseWinAccount})
        EXPECT_GE(box->height(), QFontMetrics(box->font()).height() + 4)
            << box->objectName().toStdString();
}

TEST_P(DialogInFont, EachControlLiesInsideWhatHoldsIt) {
    for (const forms::Control* control : form_->Controls()) {
        const QWidget* widget = control->Widget();
        EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry()))
            << widget->objectName().toStdString();
    }
}

}  // namespace
}  // namespace quarv
