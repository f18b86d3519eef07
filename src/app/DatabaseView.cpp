#include "app/DatabaseView.h"

#include "app/Catalogue.h"
#include "base/RUtils.h"
#include "controls/PlaceInPixels.h"
#include "db/SQLServerConnection.h"
#include "edit/TableEdit.h"
#include "inspect/SprocView.h"
#include "inspect/TableFieldView.h"
#include "inspect/TableIndexView.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/ImageList.h"
#include "platform/forms/Label.h"
#include "platform/forms/TreeView.h"
#include "platform/forms/Twips.h"
#include "platform/forms/WaitCursor.h"
#include "query/QueryView.h"

namespace quarv {
namespace {

constexpr int EnterCharacter = 13;

// The size, with a title bar and a desktop's own bars, fits on a screen of 1440 by 900. Pixels.
constexpr int WindowWidth = 1400;
constexpr int WindowHeight = 800;
constexpr int Gap = 12;
constexpr int ButtonWidth = 96;
constexpr int ButtonHeight = 28;
constexpr int ButtonGap = 8;
constexpr int TreeTop = Gap + ButtonHeight + Gap;
constexpr int TreeWidth = 340;
constexpr int PanesLeft = Gap + TreeWidth + Gap;
constexpr int PanesWidth = WindowWidth - PanesLeft - Gap;
constexpr int PanesHeight = WindowHeight - 2 * Gap;
constexpr int FieldsWidth = 468;
constexpr int FieldsHeight = 268;
constexpr int RecordsTop = FieldsHeight + Gap;
constexpr int RecordsHeight = PanesHeight - RecordsTop;
// Inside the frame of the records.
constexpr int Inset = 8;
constexpr int ConditionTop = 24;
constexpr int ConditionHeight = 26;
constexpr int LabelWidth = 76;
constexpr int GridTop = ConditionTop + ConditionHeight + Inset;

QString FirstRowsOf(const QString& table) {
    return QStringLiteral("select top 100 * from ") + SQLServerConnection::o(table);
}

}  // namespace

DatabaseView::DatabaseView(ado::ConnectionFactory newConnection, Registry& registry)
    : forms::Form(QStringLiteral("DatabaseView")),
      newConnection_(std::move(newConnection)),
      connection_(std::make_shared<SQLServerConnection>(newConnection_)),
      conditionHistory_(registry),
      LaunchQuery(new forms::ButtonPlus(this, QStringLiteral("LaunchQuery"))),
      LaunchScript(new forms::ButtonPlus(this, QStringLiteral("LaunchScript"))),
      Icons(new forms::ImageList(this, QStringLiteral("Icons"))),
      DBObjectList(new forms::TreeView(this, QStringLiteral("DBObjectList"))),
      TableFrame(new forms::FramePlus(this, QStringLiteral("TableFrame"))),
      TableFieldViewer(new TableFieldView(TableFrame, QStringLiteral("TableFieldViewer"))),
      TableIndexViewer(new TableIndexView(TableFrame, QStringLiteral("TableIndexViewer"))),
      TableEditFrame(new forms::FramePlus(TableFrame, QStringLiteral("TableEditFrame"))),
      Label1(new forms::Label(TableEditFrame, QStringLiteral("Label1"))),
      TableEditCondition(new forms::ComboBox(TableEditFrame, QStringLiteral("TableEditCondition"))),
      TableEditor(new TableEdit(TableEditFrame, QStringLiteral("TableEditor"))),
      SprocFrame(new forms::FramePlus(this, QStringLiteral("SprocFrame"))),
      SprocViewer(new SprocView(SprocFrame, QStringLiteral("SprocViewer"))) {
    MakeControls();
    Connect();
}

DatabaseView::~DatabaseView() = default;

void DatabaseView::MakeControls() {
    SetWidth(forms::ToTwips(WindowWidth));
    SetHeight(forms::ToTwips(WindowHeight));
    PlaceInPixels(*LaunchQuery, Gap, Gap, ButtonWidth, ButtonHeight);
    LaunchQuery->SetCaption(QStringLiteral("Query"));
    PlaceInPixels(*LaunchScript, Gap + ButtonWidth + ButtonGap, Gap, ButtonWidth, ButtonHeight);
    LaunchScript->SetCaption(QStringLiteral("Script"));
    PlaceTree();
    PlaceTablePanes();
    PlaceRecords();
    PlaceProcedurePane();
    DBObjectList->SetFocus();
}

void DatabaseView::PlaceTree() {
    for (int i = TableIcon; i <= RoutinesIcon; ++i)
        Icons->Add(MakeCatalogueIcon(static_cast<CatalogueIcon>(i)));
    DBObjectList->SetImageList(*Icons);
    DBObjectList->SetSpokenName(QStringLiteral("Database objects"));
    PlaceInPixels(*DBObjectList, Gap, TreeTop, TreeWidth, WindowHeight - TreeTop - Gap);
}

void DatabaseView::PlaceTablePanes() {
    PlaceInPixels(*TableFrame, PanesLeft, Gap, PanesWidth, PanesHeight);
    TableFrame->SetBorderStyle(0);
    PlaceInPixels(*TableFieldViewer, 0, 0, FieldsWidth, FieldsHeight);
    PlaceInPixels(*TableIndexViewer, FieldsWidth + Gap, 0, PanesWidth - FieldsWidth - Gap,
                  FieldsHeight);
}

void DatabaseView::PlaceRecords() {
    PlaceInPixels(*TableEditFrame, 0, RecordsTop, PanesWidth, RecordsHeight);
    TableEditFrame->SetCaption(QStringLiteral("Records:"));
    PlaceInPixels(*Label1, Inset, ConditionTop, LabelWidth, ConditionHeight);
    Label1->SetCaption(QStringLiteral("Condition:"));
    Label1->SetWordWrap(false);
    Label1->SetBuddy(*TableEditCondition);
    PlaceInPixels(*TableEditCondition, Inset + LabelWidth, ConditionTop,
                  PanesWidth - 2 * Inset - LabelWidth, ConditionHeight);
    PlaceInPixels(*TableEditor, Inset, GridTop, PanesWidth - 2 * Inset,
                  RecordsHeight - GridTop - Inset);
}

void DatabaseView::PlaceProcedurePane() {
    PlaceInPixels(*SprocFrame, PanesLeft, Gap, PanesWidth, PanesHeight);
    SprocFrame->SetBorderStyle(0);
    SprocFrame->SetVisible(false);
    PlaceInPixels(*SprocViewer, 0, 0, PanesWidth, PanesHeight);
}

void DatabaseView::Connect() {
    connect(DBObjectList, &forms::TreeView::NodeClick, this,
            [this](const forms::Node* node) { DBObjectList_NodeClick(*node); });
    connect(LaunchQuery, &forms::ButtonPlus::Click, this, [this] { OpenQuery({}); });
    connect(LaunchScript, &forms::ButtonPlus::Click, this, [this] { OpenQuery(scriptText_); });
    connect(TableEditCondition, &forms::ComboBox::KeyPress, this, [this](int& keyAscii) {
        if (keyAscii != EnterCharacter) return;
        keyAscii = 0;  // also where the condition fails
        RunCondition();
    });
}

void DatabaseView::Form_Load() {
    conditionHistory_.Init(*TableEditCondition, QStringLiteral("where"), QStringLiteral("Where"));
}

void DatabaseView::DoView(const QString& ConnStr) {
    connection_->InitOpen(ConnStr);
    SetCaption(connection_->Description());
    FillTree();
    Show();
}

void DatabaseView::FillTree() {
    forms::Nodes& nodes = DBObjectList->Nodes();
    for (const CatalogueNode& node : ReadRoot(*connection_))
        nodes.Add(node.parent, node.key, node.text, node.image);
    nodes.Item(1).SetExpanded(true);
    for (const auto read : {ReadTables, ReadProcedures}) {
        CatalogueGroup group = read(*connection_);
        nodes.AddAll(group.parent, group.keyPrefix, std::move(group.names), group.image);
    }
}

void DatabaseView::DBObjectList_NodeClick(const forms::Node& node) {
    if (IsTableKey(node.Key())) ShowTable(node.Text());
    if (IsProcedureKey(node.Key())) ShowProcedure(node.Text());
}

void DatabaseView::ShowTable(const QString& name) {
    const forms::WaitCursor wait;
    currentTable_ = name;
    TableFrame->SetVisible(true);
    SprocFrame->SetVisible(false);
    TableFieldViewer->Investigate(name, *connection_);
    scriptText_ = TableFieldViewer->ScriptText();
    TableIndexViewer->Investigate(name, *connection_);
    TableEditFrame->SetCaption(QStringLiteral("Records:") + name);
    TableEditor->Investigate(FirstRowsOf(name), name, connection_);
}

void DatabaseView::ShowProcedure(const QString& name) {
    const forms::WaitCursor wait;
    TableFrame->SetVisible(false);
    SprocFrame->SetVisible(true);
    SprocViewer->Investigate(name, *connection_);
    scriptText_ = SprocViewer->Text();
}

void DatabaseView::RunCondition() {
    const forms::WaitCursor wait;
    QString query = FirstRowsOf(currentTable_);
    const QString condition = TableEditCondition->Text();
    if (!TrimBlanks(condition).isEmpty()) {
        conditionHistory_.Add(condition, true);
        query += QStringLiteral(" where ") + condition;
    }
    TableEditor->Investigate(query, currentTable_, connection_);
}

void DatabaseView::OpenQuery(const QString& text) {
    if (!query_) query_ = std::make_unique<QueryView>(newConnection_);
    query_->DoModeless(connection_, text);
}

}  // namespace quarv
