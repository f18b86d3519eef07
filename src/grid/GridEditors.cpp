#include "grid/GridEditors.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <algorithm>

#include "controls/RButton.h"
#include "controls/RCheckbox.h"
#include "controls/StockPictures.h"
#include "grid/GridPainter.h"
#include "platform/forms/Application.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/Twips.h"

namespace quarv {

namespace {

using drawing::Stored;
using drawing::SystemColor;

// Above and below a line of text in its box.
constexpr int EditorAir = 3;

}  // namespace

GridEditors::GridEditors(QWidget* grid)
    : QObject(grid),
      editor_(new forms::TextBox(grid, QStringLiteral("Editor"))),
      combo_(new forms::ComboBox(grid, QStringLiteral("Combo"))),
      check_(new RCheckbox(grid, QStringLiteral("Check"))),
      button_(new RButton(grid, QStringLiteral("Elipsis"))) {
    button_->SetPicture(EllipsisPicture());
    button_->SetSpokenName(tr("Choose"));
    // The keyboard stays in the text box, where F4 presses the button.
    button_->setFocusPolicy(Qt::NoFocus);
    check_->SetBackColor(Stored(SystemColor::WindowBackground));
    editor_->SetBorderStyle(0);
    for (QWidget* widget : {editor_->focusProxy(), combo_->Widget(), check_->Widget()})
        widget->installEventFilter(this);
    connect(button_, &RButton::Click, this, &GridEditors::ButtonClicked);
    HideAll();
}

double GridEditors::EditorHeight() const {
    return forms::ToTwips(QFontMetricsF(editor_->font()).height() + 2 * EditorAir);
}

void GridEditors::MakeButtonSquare(double side) {
    buttonSide_ = side;
    button_->Move(button_->Left(), button_->Top(), side, side);
}

// The box of a check box lies one pixel inside its control on every side.
double GridEditors::CheckHeight() const {
    return EmptyBoxPicture()->Height() + 2 * forms::TwipsPerPixel;
}

void GridEditors::DrawCheck(QPainter& painter, bool checked, double left, double top) const {
    check_->DrawEx(false, checked, 0, 0, left, top, painter);
}

QWidget* GridEditors::Shown() const {
    for (const forms::Control* control :
         {static_cast<forms::Control*>(editor_), static_cast<forms::Control*>(combo_),
          static_cast<forms::Control*>(check_)})
        if (control->Visible()) return control->Widget();
    return nullptr;
}

void GridEditors::HideAll() {
    if (const QWidget* shown = Shown();
        shown && (shown->hasFocus() || editor_->focusProxy()->hasFocus()))
        Q_EMIT FocusLeaving();
    editor_->SetVisible(false);
    combo_->SetVisible(false);
    check_->SetVisible(false);
    button_->SetVisible(false);
}

void GridEditors::Show(forms::Control& editor, const QRectF& place) {
    editor.Move(place.left(), place.top(), std::max(0.0, place.width()), place.height());
    Mask(*editor.Widget());
    editor.SetVisible(true);
}

void GridEditors::SetVisiblePart(const QRect& pixels) {
    visiblePart_ = pixels;
    if (QWidget* shown = Shown()) Mask(*shown);
    if (button_->Visible()) Mask(*button_);
}

void GridEditors::Mask(QWidget& widget) {
    QRect shown = visiblePart_ & widget.geometry();
    // The list box has a frame of its own; the others leave the lines of the grid free.
    if (&widget != combo_) shown &= widget.geometry().adjusted(0, 0, -1, -1);
    // A mask without any part would be none at all.
    widget.setMask(shown.isEmpty() ? QRegion(-1, -1, 1, 1)
                                   : QRegion(shown.translated(-widget.pos())));
}

void GridEditors::ShowText(const TextStart& start, const QRectF& place) {
    maxLength_ = start.maxLength;
    SetText(start.text);
    PlaceText(place, start.withButton);
    editor_->SetSelStart(0);
    editor_->SetSelLength(static_cast<int>(text_.Shown().size()));
    editor_->SetFocus();
}

void GridEditors::PlaceText(const QRectF& place, bool withButton) {
    QRectF text = place;
    if (withButton) {
        text.setWidth(std::max(0.0, place.width() - buttonSide_));
        Show(*button_, QRectF(text.right(), place.top(), buttonSide_, buttonSide_));
    }
    Show(*editor_, text);
}

void GridEditors::ShowList(const ListStart& start, const QRectF& place) {
    combo_->Clear();
    if (start.choices) start.choices->AddToListControl(*combo_);
    combo_->SetListIndex(start.chosen);
    if (start.chosen < 0) combo_->SetText(start.text);
    combo_->SetLocked(!start.takesFreeText);
    Show(*combo_, place);
    combo_->lineEdit()->selectAll();
    combo_->SetFocus();
}

void GridEditors::ShowCheck(bool checked, const QRectF& place) {
    check_->SetChecked(checked);
    Show(*check_, CheckPlace(place, CheckHeight()));
    check_->SetFocus();
}

void GridEditors::MoveTo(const QRectF& place) {
    if (check_->Visible()) return Show(*check_, CheckPlace(place, CheckHeight()));
    if (combo_->Visible()) return Show(*combo_, place);
    if (editor_->Visible()) PlaceText(place, button_->Visible());
}

QString GridEditors::Text() const {
    return text_.Whole(editor_->Text());
}

// A limit keeps more from being typed; what the program puts in is never cut.
void GridEditors::SetText(const QString& text) {
    text_ = EditedText(text);
    const QString& shown = text_.Shown();
    editor_->SetMaxLength(0);
    editor_->SetText(shown);
    if (maxLength_ <= 0) return;
    const qsizetype room = maxLength_ - std::max<qsizetype>(text_.Hidden(), 0);
    editor_->SetMaxLength(static_cast<qint32>(std::max(room, shown.size())));
}

QString GridEditors::ListText() const {
    return combo_->Text();
}

int GridEditors::ListIndex() const {
    return combo_->ListIndex();
}

bool GridEditors::Checked() const {
    return check_->Checked();
}

bool GridEditors::IsButtonShown() const {
    return button_->Visible();
}

bool GridEditors::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
    const KeyPlace place = watched == combo_ ? KeyPlace::List : KeyPlace::Text;
    const GridKey key = GridKeyOf(*static_cast<QKeyEvent*>(event), place);
    if (key == GridKey::None) return QObject::eventFilter(watched, event);
    forms::Application::RunEvent([&] { Q_EMIT KeyTyped(key); });
    return true;
}

}  // namespace quarv
