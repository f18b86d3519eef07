// DatabaseViewFixture: the main window over a database in memory and settings in an empty folder.
// Its parts are found by their names, and the user's doings are real events.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QTest>

#include "app/DatabaseView.h"
#include "app/FakeDatabase.h"
#include "base/Hooks.h"
#include "grid/KelEditGrid.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/MessageHooks.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/TreeView.h"
#include "query/QueryView.h"
#include "support/BoxWatcher.h"
#include "support/Raised.h"

namespace quarv {

class DatabaseViewFixture : public testing::Test {
  protected:
    DatabaseViewFixture() {
        forms::RegisterMessageHooks();
        registry_.SetCurrentRoot(registry::HKEY_CURRENT_USER);
    }
    ~DatabaseViewFixture() override { ProgramHooks() = Hooks(); }

    template <typename Part>
    Part& PartNamed(const char* name) {
        return *window_.findChild<Part*>(QLatin1String(name));
    }
    forms::TreeView& Tree() { return PartNamed<forms::TreeView>("DBObjectList"); }
    forms::Nodes& Nodes() { return Tree().Nodes(); }
    forms::FramePlus& TableFrame() { return PartNamed<forms::FramePlus>("TableFrame"); }
    forms::FramePlus& SprocFrame() { return PartNamed<forms::FramePlus>("SprocFrame"); }
    forms::FramePlus& TableEditFrame() { return PartNamed<forms::FramePlus>("TableEditFrame"); }
    forms::ComboBox& Condition() { return PartNamed<forms::ComboBox>("TableEditCondition"); }

    void ClickNode(const char* key) {
        const forms::Node& node = Nodes().Item(QLatin1String(key));
        Nodes().Item(1).SetExpanded(true);
        node.Parent()->SetExpanded(true);
        QCoreApplication::processEvents();
        const QModelIndexList found =
            Tree().model()->match(Tree().model()->index(0, 0), Qt::DisplayRole, node.Text(), 1,
                                  Qt::MatchExactly | Qt::MatchRecursive | Qt::MatchCaseSensitive);
        ASSERT_EQ(found.size(), 1);
        Tree().scrollTo(found[0]);
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {},
                          Tree().visualRect(found[0]).center());
    }
    void Press(const char* name) {
        QTest::mouseClick(&PartNamed<forms::ButtonPlus>(name), Qt::LeftButton);
    }
    // Types over what the condition box holds.
    void TypeCondition(const char* text) {
        Condition().SetText(QString());
        QTest::keyClicks(&Condition(), QString::fromUtf8(text));
    }
    // The records' cells, joined by "|".
    QStringList Records() {
        const GridState& state = PartNamed<KelEditGrid>("Editor").State();
        QStringList texts;
        for (qint16 i = 1; i <= state.rows->Count(); ++i) {
            QStringList cells;
            for (qint16 c = 1; c <= state.columns->Count(); ++c)
                cells += state.rows->Items(i)->ColumnValue(c).ToText();
            texts += cells.join(u'|');
        }
        return texts;
    }
    static QueryView* QueryWindow() {
        QueryView* found = nullptr;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* query = qobject_cast<QueryView*>(window)) found = query;
        return found;
    }
    static QString QueryText() {
        return QueryWindow()->findChild<forms::TextBox*>(QStringLiteral("Query"))->Text();
    }

    FakeDatabase database_;
    QTemporaryDir folder_;
    const QByteArray root_ = folder_.path().toUtf8();
    registry::Hives hives_{{.user = root_ + "/user.hive",
                            .machine = root_ + "/machine.hive",
                            .overlay = root_ + "/overlay.hive"}};
    Registry registry_{hives_};
    DatabaseView window_{database_.script->Factory(), registry_};
    test::BoxWatcher boxes_;
};

}  // namespace quarv
