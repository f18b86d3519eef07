#include "db/ConnectionDetailsControls.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "controls/PathIcon.h"
#include "controls/PlaceInPixels.h"
#include "platform/forms/Twips.h"

namespace quarv {
namespace {

void DrawHourglass(QPainter& painter, const PathInks& inks) {
    const QColor sand = QColor::fromRgba(0xffe0a63a);
    QPainterPath glass;
    glass.moveTo(4, 2);
    glass.cubicTo(4, 6, 7, 6.5, 7, 8);
    glass.cubicTo(7, 9.5, 4, 10, 4, 14);
    glass.lineTo(12, 14);
    glass.cubicTo(12, 10, 9, 9.5, 9, 8);
    glass.cubicTo(9, 6.5, 12, 6, 12, 2);
    glass.closeSubpath();
    painter.fillPath(glass, inks.paper);
    painter.save();
    painter.setClipPath(glass);
    painter.fillRect(QRectF(3, 4.5, 10, 3.5), sand);
    painter.fillRect(QRectF(3, 11.5, 10, 3), sand);
    painter.restore();
    painter.setPen(inks.line);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(glass);
    for (const qreal y : {1.5, 14.5}) painter.drawLine(QPointF(3, y), QPointF(13, y));
}

constexpr int FormWidth = 592;
constexpr int FormHeight = 456;
constexpr int LabelWidth = 124;
constexpr int AccountLabelWidth = 104;
constexpr int ChoiceWidth = 512;
constexpr int ChoiceMark = 28;  // the round mark before a choice's caption and the air around it
constexpr int FieldHeight = 30;
constexpr int ChoiceHeight = 26;
constexpr int Rounding = 2;      // pixels that a text may need beyond its advance
constexpr int TallestLine = 20;  // of text, that still has air in the boxes and buttons
constexpr int ButtonWidth = 96;
constexpr int ButtonHeight = 32;

}  // namespace

ConnectionDetailsControls::ConnectionDetailsControls(forms::Form& form)
    : Tabs(new forms::TabStrip(&form, QStringLiteral("Tabs"))),
      ConnectionFrame(new forms::FramePlus(&form, QStringLiteral("ConnectionFrame"))),
      Label1(new forms::Label(ConnectionFrame, QStringLiteral("Label1"))),
      Servername(new forms::ComboBox(ConnectionFrame, QStringLiteral("Servername"))),
      Label2(new forms::Label(ConnectionFrame, QStringLiteral("Label2"))),
      DatabaseList(new forms::ComboBox(ConnectionFrame, QStringLiteral("DatabaseList"))),
      CreateDatabase(new forms::ButtonPlus(ConnectionFrame, QStringLiteral("CreateDatabase"))),
      UseWinAccount(new forms::OptionButton(ConnectionFrame, QStringLiteral("UseWinAccount"))),
      UseSQLAccount(new forms::OptionButton(ConnectionFrame, QStringLiteral("UseSQLAccount"))),
      SQLAccountFrame(new forms::FramePlus(ConnectionFrame, QStringLiteral("SQLAccountFrame"))),
      UsernameLabel(new forms::Label(SQLAccountFrame, QStringLiteral("UsernameLabel"))),
      Username(new forms::TextBox(SQLAccountFrame, QStringLiteral("Username"))),
      PaswordLabel(new forms::Label(SQLAccountFrame, QStringLiteral("PaswordLabel"))),
      Password(new forms::TextBox(SQLAccountFrame, QStringLiteral("Password"))),
      Test(new forms::ButtonPlus(&form, QStringLiteral("Test"))),
      PleaseWaitFrame(new forms::FramePlus(ConnectionFrame, QStringLiteral("PleaseWaitFrame"))),
      Image1(new forms::PictureBox(PleaseWaitFrame, QStringLiteral("Image1"))),
      Label3(new forms::Label(PleaseWaitFrame, QStringLiteral("Label3"))),
      Okay(new forms::ButtonPlus(&form, QStringLiteral("Okay"))),
      Cancel(new forms::ButtonPlus(&form, QStringLiteral("Cancel"))) {
    form.SetCaption(QStringLiteral("SQL Server Connection Details"));
    form.SetBorderStyle(forms::Form::FixedDialog);
    Caption();
    scale_ = ScaleFor(form.font());
    form.SetWidth(forms::ToTwips(InScale(FormWidth)));
    form.SetHeight(forms::ToTwips(InScale(FormHeight)));
    Place();
    PlaceAccount();
    PlacePleaseWait();
}

void ConnectionDetailsControls::Caption() {
    Tabs->Tabs().Add(QStringLiteral("Connection"));
    ConnectionFrame->SetCaption(QStringLiteral("Connection"));
    ConnectionFrame->SetTag(QStringLiteral("Connection"));
    Label1->SetCaption(QStringLiteral("Server:"));
    for (forms::Label* label : {Label1, Label2, UsernameLabel, PaswordLabel})
        label->SetWordWrap(false);
    Label1->SetBuddy(*Servername);
    Label2->SetCaption(QStringLiteral("Database name:"));
    Label2->SetBuddy(*DatabaseList);
    CreateDatabase->SetCaption(QStringLiteral("Create"));
    UseWinAccount->SetCaption(
        QStringLiteral("Use your Windows user account to log onto SQL Server"));
    UseSQLAccount->SetCaption(QStringLiteral("Log onto SQL Server with a username and password"));
    SQLAccountFrame->SetCaption(QStringLiteral("SQL Server account"));
    UsernameLabel->SetCaption(QStringLiteral("Username"));
    UsernameLabel->SetBuddy(*Username);
    PaswordLabel->SetCaption(QStringLiteral("Password"));
    PaswordLabel->SetBuddy(*Password);
    Password->SetPasswordChar(QStringLiteral("*"));
    Test->SetCaption(QStringLiteral("Test"));
    PleaseWaitFrame->SetCaption(QStringLiteral("Please Wait"));
    Image1->SetPicture(MakePathIcon(DrawHourglass));
    Label3->SetCaption(
        QStringLiteral("Attempting to talk to your database. This may take a few moments."));
    Okay->SetCaption(QStringLiteral("Okay"));
    Okay->SetDefault(true);
    Cancel->SetCaption(QStringLiteral("Cancel"));
    Cancel->SetCancel(true);
}

// The layout below is drawn for common fonts. Where the texts of a larger one would be cut off, all
// of it grows by as much as the text that is shortest of room.
double ConnectionDetailsControls::ScaleFor(const QFont& font) const {
    const QFontMetricsF metrics(font);
    double scale = std::max(1.0, metrics.height() / TallestLine);
    const auto fit = [&](const QString& text, int room) {
        scale = std::max(scale, (metrics.horizontalAdvance(text) + Rounding) / room);
    };
    fit(Label1->Caption(), LabelWidth);
    fit(Label2->Caption(), LabelWidth);
    fit(UsernameLabel->Caption(), AccountLabelWidth);
    fit(PaswordLabel->Caption(), AccountLabelWidth);
    fit(UseWinAccount->Caption(), ChoiceWidth - ChoiceMark);
    fit(UseSQLAccount->Caption(), ChoiceWidth - ChoiceMark);
    return scale;
}

int ConnectionDetailsControls::InScale(int pixels) const {
    return qRound(pixels * scale_);
}

void ConnectionDetailsControls::Put(forms::Control& control, int left, int top, int width,
                                    int height) const {
    PlaceInPixels(control, InScale(left), InScale(top), InScale(width), InScale(height));
}

void ConnectionDetailsControls::Place() {
    Put(*Tabs, 16, 16, 560, 376);
    Put(*ConnectionFrame, 20, 52, 552, 352);
    Put(*Label1, 20, 24, LabelWidth, FieldHeight);
    Put(*Servername, 148, 24, 384, FieldHeight);
    Put(*Label2, 20, 66, LabelWidth, FieldHeight);
    Put(*DatabaseList, 148, 66, 276, FieldHeight);
    Put(*CreateDatabase, 436, 66, ButtonWidth, FieldHeight);
    Put(*UseWinAccount, 20, 116, ChoiceWidth, ChoiceHeight);
    Put(*UseSQLAccount, 20, 146, ChoiceWidth, ChoiceHeight);
    Put(*SQLAccountFrame, 20, 184, 512, 130);
    Put(*Test, 16, 408, ButtonWidth, ButtonHeight);
    Put(*Okay, 368, 408, ButtonWidth, ButtonHeight);
    Put(*Cancel, 480, 408, ButtonWidth, ButtonHeight);
}

void ConnectionDetailsControls::PlaceAccount() {
    Put(*UsernameLabel, 20, 38, AccountLabelWidth, FieldHeight);
    Put(*Username, 128, 38, 364, FieldHeight);
    Put(*PaswordLabel, 20, 80, AccountLabelWidth, FieldHeight);
    Put(*Password, 128, 80, 364, FieldHeight);
}

// Over the account choices, whole, so that no text shows half; the server's name stays in sight.
void ConnectionDetailsControls::PlacePleaseWait() {
    Put(*PleaseWaitFrame, 20, 108, 512, 206);
    Put(*Image1, 84, 89, 48, 48);
    Put(*Label3, 152, 98, 300, 76);
    PleaseWaitFrame->SetVisible(false);
}

}  // namespace quarv
