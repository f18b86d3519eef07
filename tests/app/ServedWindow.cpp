#include "app/ServedWindow.h"

#include "base/Hooks.h"
#include "inspect/SprocView.h"
#include "inspect/TableFieldView.h"
#include "inspect/TableIndexView.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/Label.h"
#include "platform/forms/ListView.h"
#include "platform/forms/MessageHooks.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/TreeView.h"
#include "support/TextPrinter.h"

namespace quarv::test {

namespace {

constexpr qsizetype LongestTyped = 200;  // UTF-16 units

ado::ConnectionFactory WithTimeout(int seconds) {
    return [make = ado::odbc::OdbcConnectionFactory(), seconds] {
        ado::ConnectionPtr connection = make();
        connection->SetCommandTimeout(seconds);
        return connection;
    };
}

registry::HivePaths PathsIn(const QString& folder) {
    const QByteArray root = folder.toUtf8();
    return {.user = root + "/user.hive",
            .machine = root + "/machine.hive",
            .overlay = root + "/overlay.hive"};
}

QString CaptionOf(const QWidget& pane) {
    return pane.findChild<forms::FramePlus*>(QStringLiteral("BorderFrame"))->Caption();
}

}  // namespace

QString LogOf(const std::function<void()>& action) {
    testing::internal::CaptureStderr();
    action();
    return QString::fromStdString(testing::internal::GetCapturedStderr());
}

ServedWindow::ServedWindow(const QString& connectionString, int commandTimeout)
    : hives_(PathsIn(folder_.path())),
      window(WithTimeout(commandTimeout), registry_),
      editor(Child<TableEdit>("TableEditor")) {
    forms::RegisterMessageHooks();
    registry_.SetCurrentRoot(registry::HKEY_CURRENT_USER);
    window.DoView(connectionString);
    QApplication::setActiveWindow(&window);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
}

ServedWindow::~ServedWindow() {
    ProgramHooks() = Hooks();
}

QString ServedWindow::ClickNode(const QString& key) {
    auto& tree = Child<forms::TreeView>("DBObjectList");
    const forms::Node& node = tree.Nodes().Item(key);
    node.Parent()->SetExpanded(true);
    tree.SetSelectedItem(node);
    tree.scrollTo(tree.currentIndex());
    const QPoint place = tree.visualRect(tree.currentIndex()).center();
    return LogOf([&] { QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, place); });
}

QString ServedWindow::RunCondition(const QString& text) {
    auto& box = Child<forms::ComboBox>("TableEditCondition");
    box.SetFocus();
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_Delete);
    // Nobody types that much.
    if (text.size() > LongestTyped)
        box.SetText(text);
    else
        for (const QChar each : text)
            QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_unknown, each, Qt::NoModifier);
    return LogOf([&] { QTest::keyClick(&box, Qt::Key_Return); });
}

QStringList ServedWindow::Captions() const {
    return {CaptionOf(Child<TableFieldView>("TableFieldViewer")),
            CaptionOf(Child<TableIndexView>("TableIndexViewer")),
            Child<forms::FramePlus>("TableEditFrame").Caption()};
}

QStringList ServedWindow::Procedure() const {
    const auto& pane = Child<SprocView>("SprocViewer");
    return {CaptionOf(pane), pane.findChild<forms::Label*>(QStringLiteral("Info"))->Caption(),
            pane.Text()};
}

QStringList ServedWindow::Listed(const char* pane) const {
    auto& list = *Child<QWidget>(pane).findChild<forms::ListView*>(QStringLiteral("Detail"));
    QStringList names;
    for (int i = 1; i <= list.ListItems().Count(); ++i) names += list.ListItems().Item(i).Text();
    return names;
}

QStringList ServedWindow::TakeBoxes() {
    QStringList texts;
    for (; boxesTaken_ < boxes.Seen().size(); ++boxesTaken_) {
        const SeenBox& box = boxes.Seen()[boxesTaken_];
        EXPECT_EQ(box, (SeenBox{box.text, "Note", forms::BoxIcon::Information}));
        texts += box.text;
    }
    return texts;
}

}  // namespace quarv::test
