// QueryBoxBench: the query box against Qt's bare editor of plain text, each with 10 MB in it: a
// keystroke in the middle up to its repaint, the box in colours, and the paste of all of it.
#include <QClipboard>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QWindow>
#include <memory>
#include <stdexcept>
#include <vector>

#include "Ratio.h"
#include "platform/forms/Application.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/Twips.h"
#include "query/SqlLineScanner.h"

namespace {

using namespace quarv;
using bench::Cost;
using bench::Measure;
using bench::Median;

constexpr QSize Screen(1280, 800);    // pixels
constexpr int TextSize = 10'000'000;  // UTF-16 units
constexpr int KeyRounds = 100;
constexpr int KeysPerRound = 5;
constexpr double KeyLimit = 1.5;
constexpr int PasteRounds = 7;
constexpr double PasteLimit = 2.0;

// The longest has 200 units.
const char* const Lines[] = {
    "SELECT o.OrderID, o.OrderDate, c.CompanyName, SUM(d.Quantity * d.UnitPrice) AS Total, "
    "COUNT(*) "
    "AS Positions, MAX(d.Discount) AS Discount, N'every second order' AS Remark, 0x1F AS Flags -- "
    "2 units",
    "FROM dbo.Orders AS o INNER JOIN dbo.Customers AS c ON c.CustomerID = o.CustomerID",
    "    LEFT OUTER JOIN [Order Details] AS d ON d.OrderID = o.OrderID AND d.Quantity > 1.5",
    "WHERE o.OrderDate >= '2024-01-01' AND o.ShipCountry IN (N'Norway', N'Sweden', N'Denmark')",
    "/* the small ones */ GROUP BY o.OrderID, o.OrderDate, c.CompanyName HAVING COUNT(*) < 1e3",
    "",
    "GO",
};

QString MakeText() {
    QString text;
    text.reserve(TextSize + 1000);
    while (text.size() < TextSize)
        for (const char* line : Lines) text += QLatin1String(line) + QLatin1Char('\n');
    return text;
}

// Until then a window paints nothing.
void Show(QWidget& window) {
    window.show();
    while (!window.windowHandle()->isExposed())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void Press(QWidget& editor, int key, const QString& text, Qt::KeyboardModifiers held = {}) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, held, text);
        QCoreApplication::sendEvent(&editor, &event);
    }
    QCoreApplication::processEvents();
}

struct OurBox {
    explicit OurBox() : box(&window, QStringLiteral("Query")) {
        box.SetMultiLine(true);
        box.SetScrollBars(forms::TextBox::Both);
        box.SetFontName(QStringLiteral("Courier New"), 10);
        box.SetLineScanner(std::make_shared<SqlLineScanner>());
        box.Move(0, 0, forms::ToTwips(Screen.width()), forms::ToTwips(Screen.height()));
        box.SetVisible(true);
        window.resize(Screen);
        Show(window);
    }
    QPlainTextEdit& Editor() { return *box.findChild<QPlainTextEdit*>(); }

    QWidget window;
    forms::TextBox box;
};

struct BareBox {
    explicit BareBox(const QFont& font) : editor(&window) {
        editor.setLineWrapMode(QPlainTextEdit::NoWrap);
        editor.setFont(font);
        editor.setGeometry(QRect(QPoint(), Screen));
        window.resize(Screen);
        Show(window);
    }
    QPlainTextEdit& Editor() { return editor; }

    QWidget window;
    QPlainTextEdit editor;
};

void GoToTheMiddle(QPlainTextEdit& editor) {
    const QTextDocument& document = *editor.document();
    QTextBlock line = document.findBlockByNumber(document.blockCount() / 2);
    while (!line.text().startsWith(QLatin1String("WHERE"))) line = line.next();
    QTextCursor cursor(line);
    cursor.setPosition(line.position() + line.length() / 4);
    editor.window()->activateWindow();
    editor.setFocus();
    editor.setTextCursor(cursor);
    editor.centerCursor();
    QCoreApplication::processEvents();
}

Cost TypeInto(QPlainTextEdit& editor) {
    const Cost cost = Measure([&] {
        for (int i = 0; i < KeysPerRound; ++i) Press(editor, Qt::Key_X, QStringLiteral("x"));
    });
    for (int i = 0; i < KeysPerRound; ++i) Press(editor, Qt::Key_Backspace, QStringLiteral("\b"));
    return cost;
}

bool IsColoured(QPlainTextEdit& editor) {
    return editor.textCursor().block().userState() == 0;
}

bool CompareKeys(const QString& text) {
    OurBox ours;
    BareBox bare(ours.Editor().document()->defaultFont());
    ours.box.SetText(text);
    bare.editor.setPlainText(text);
    GoToTheMiddle(bare.Editor());
    GoToTheMiddle(ours.Editor());
    if (!IsColoured(ours.Editor())) throw std::runtime_error("the text is not coloured");
    std::vector<Cost> ourCosts, bareCosts;
    for (int round = 0; round < KeyRounds; ++round) {
        bareCosts.push_back(TypeInto(bare.Editor()));
        ourCosts.push_back(TypeInto(ours.Editor()));
    }
    if (ours.Editor().document()->characterCount() != text.size() + 1 ||
        !ours.Editor().document()->isUndoAvailable())
        throw std::runtime_error("the keys were not typed");
    std::printf("# a keystroke: ours %.1f us, the bare editor's %.1f us\n",
                Median(ourCosts).elapsed * 1e6 / KeysPerRound,
                Median(bareCosts).elapsed * 1e6 / KeysPerRound);
    return bench::Report("query_keystroke", Median(ourCosts), Median(bareCosts), KeyLimit);
}

Cost PasteInto(QPlainTextEdit& editor, int units) {
    editor.clear();
    editor.window()->activateWindow();
    editor.setFocus();
    QCoreApplication::processEvents();
    const Cost cost =
        Measure([&] { Press(editor, Qt::Key_V, QStringLiteral("\x16"), Qt::ControlModifier); });
    if (editor.document()->characterCount() != units + 1)
        throw std::runtime_error("the text was not pasted");
    return cost;
}

bool ComparePaste(const QString& text) {
    OurBox ours;
    BareBox bare(ours.Editor().document()->defaultFont());
    QGuiApplication::clipboard()->setText(text);
    std::vector<Cost> ourCosts, bareCosts;
    const int units = static_cast<int>(text.size());
    for (int round = 0; round < PasteRounds; ++round) {
        bareCosts.push_back(PasteInto(bare.Editor(), units));
        ourCosts.push_back(PasteInto(ours.Editor(), units));
    }
    std::printf("# a paste: ours %.1f ms, the bare editor's %.1f ms\n",
                Median(ourCosts).elapsed * 1e3, Median(bareCosts).elapsed * 1e3);
    return bench::Report("query_paste", Median(ourCosts), Median(bareCosts), PasteLimit);
}

}  // namespace

int main(int argc, char** argv) {
    forms::Application application(argc, argv);
    try {
        const QString text = MakeText();
        const bool keys = CompareKeys(text);
        const bool paste = ComparePaste(text);
        return keys && paste ? 0 : 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "QueryBoxBench: %s\n", e.what());
        return 2;
    }
}
