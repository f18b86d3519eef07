#include "platform/forms/MessageDialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/forms/BoxIconPainter.h"

namespace quarv::forms {

namespace {

constexpr int LongestLabel = 4000;  // UTF-16 units; beyond, a scrolled editor lays out lazily
constexpr int LongestLine = 1000;   // UTF-16 units; laying out one line costs its length squared
constexpr double WidthShare = 0.5;  // of the screen
constexpr double HeightShare = 0.6;
constexpr int WidestLine = 560;  // pixels

// As the icon themes of desktops name them (freedesktop.org, "Standard Status Icons").
QString ThemeName(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::Question:
            return QStringLiteral("dialog-question");
        case BoxIcon::Critical:
            return QStringLiteral("dialog-error");
        default:
            return QStringLiteral("dialog-information");
    }
}

// `size` is in device-independent pixels. A style's own pictures, which a desktop without a theme
// would show, are small bitmaps.
QPixmap PictureOf(BoxIcon icon, int size, qreal scale) {
    const QIcon themed = QIcon::fromTheme(ThemeName(icon));
    if (!themed.isNull()) return themed.pixmap(QSize(size, size), scale);
    QPixmap picture((QSizeF(size, size) * scale).toSize());
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    PaintBoxIcon(painter, QRectF(0, 0, size, size), icon);
    return picture;
}

QString LineFeeds(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\r', u'\n');
    return text;
}

// `text` with a line end put into every line that would take seconds to lay out.
QString BreakLongLines(const QString& text) {
    QString broken;
    broken.reserve(text.size() + text.size() / LongestLine);
    int inLine = 0;
    for (const QChar c : text) {
        if (inLine >= LongestLine && !c.isLowSurrogate()) {
            broken += u'\n';
            inLine = 0;
        }
        broken += c;
        inLine = c == u'\n' ? 0 : inLine + 1;
    }
    return broken;
}

}  // namespace

MessageDialog::MessageDialog(QWidget* parent, const QString& text, const QString& title,
                             BoxIcon icon, BoxButtons buttons)
    : QDialog(parent),
      text_(text),
      icon_(icon),
      answer_(buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::No) {
    setObjectName(QStringLiteral("MsgBox"));
    setWindowTitle(title);
    setAccessibleName(title);
    setModal(true);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(18, 18, 18, 14);
    rows->setSpacing(16);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    auto* body = new QHBoxLayout;
    body->setSpacing(16);
    if (icon != BoxIcon::None) body->addWidget(MakeIcon(), 0, Qt::AlignTop);
    body->addWidget(MakeMessage(), 1, Qt::AlignVCenter);
    rows->addLayout(body);
    rows->addWidget(MakeButtons(buttons));
}

QWidget* MessageDialog::MakeIcon() {
    auto* picture = new QLabel(this);
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    picture->setPixmap(PictureOf(icon_, size, devicePixelRatio()));
    return picture;
}

QWidget* MessageDialog::MakeMessage() {
    const QSize room = screen()->availableSize();
    const int width = std::min(WidestLine, static_cast<int>(room.width() * WidthShare));
    const int height = static_cast<int>(room.height() * HeightShare);
    const QString shown = LineFeeds(text_);
    if (shown.size() > LongestLabel) return MakeScrollingMessage(width, height);
    const QRect needed = fontMetrics().boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX),
                                                    Qt::TextWordWrap | Qt::TextExpandTabs, shown);
    // A word that is wider than the room cannot wrap in a label.
    if (needed.height() > height || needed.width() > width)
        return MakeScrollingMessage(width, height);
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("Message"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setText(shown);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setFocusPolicy(Qt::ClickFocus);
    label->setFixedWidth(std::max(needed.width() + 8, 200));
    return label;
}

QWidget* MessageDialog::MakeScrollingMessage(int width, int height) {
    auto* memo = new QPlainTextEdit(this);
    memo->setObjectName(QStringLiteral("Message"));
    memo->setPlainText(BreakLongLines(LineFeeds(text_)));
    memo->setReadOnly(true);
    memo->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    memo->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    memo->setTabChangesFocus(true);
    memo->setAccessibleName(windowTitle());
    memo->setFixedSize(width, height);
    return memo;
}

QWidget* MessageDialog::MakeButtons(BoxButtons buttons) {
    auto* box = new QDialogButtonBox(this);
    const auto add = [&](QDialogButtonBox::StandardButton kind, const char16_t* name,
                         BoxAnswer answer) {
        QPushButton* button = box->addButton(kind);
        button->setObjectName(QString::fromUtf16(name));
        // As on every other button, the word alone: a style's small picture crowds it.
        button->setIcon({});
        connect(button, &QPushButton::clicked, this, [this, answer] {
            answer_ = answer;
            accept();
        });
        return button;
    };
    if (buttons == BoxButtons::Ok) {
        add(QDialogButtonBox::Ok, u"Ok", BoxAnswer::Ok)->setDefault(true);
    } else {
        add(QDialogButtonBox::Yes, u"Yes", BoxAnswer::Yes)->setDefault(true);
        add(QDialogButtonBox::No, u"No", BoxAnswer::No);
    }
    return box;
}

}  // namespace quarv::forms
