#include "app/DatabaseView.h"

#include "app/Catalogue.h"
#include "controls/PlaceInPixels.h"
#include "db/SQLServerConnection.h"
#include "inspect/TableFieldView.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/ImageList.h"
#include "platform/forms/TreeView.h"
#include "platform/forms/Twips.h"
#include "query/QueryView.h"

namespace quarv {
DatabaseView::DatabaseView(ado::ConnectionFactory newConnection)
    : forms::Form(QStringLiteral("DatabaseView")),
      newConnection_(std::move(newConnection)),
      connection_(std::make_shared<SQLServerConnection>(newConnection_)),
      DBObjectList(new forms::TreeView(this, QStringLiteral("DBObjectList"))),
      Icons(new forms::ImageList(this, QStringLiteral("Icons"))),
      LaunchQuery(new forms::ButtonPlus(this, QStringLiteral("LaunchQuery"))),
      LaunchScript(new forms::ButtonPlus(this, QStringLiteral("LaunchScript"))),
      TableFrame(new forms::FramePlus(this, QStringLiteral("TableFrame"))),
      TableFieldViewer(new TableFieldView(TableFrame, QStringLiteral("TableFieldViewer"))) {
    MakeControls();
    connect(DBObjectList, &forms::TreeView::NodeClick, this,
            [this](const forms::Node* node) { DBObjectList_NodeClick(*node); });
    connect(LaunchQuery, &forms::ButtonPlus::Click, this, [this] { OpenQuery({}); });
    connect(LaunchScript, &forms::ButtonPlus::Click, this, [this] { OpenQuery(scriptText_); });
}

DatabaseView::~DatabaseView() = default;

void DatabaseView::MakeControls() {
    for (int i = TableIcon; i <= RoutinesIcon; ++i)
        Icons->Add(MakeCatalogueIcon(static_cast<CatalogueIcon>(i)));
    DBObjectList->SetImageList(*Icons);
    DBObjectList->SetSpokenName(QStringLiteral("Database objects"));
    // Fits, with its title bar and the desktop's own bars, on a screen of 1280 by 720.
    SetWidth(forms::ToTwips(1240));
    SetHeight(forms::ToTwips(660));
    PlaceInPixels(*LaunchQuery, 12, 12, 88, 28);
    LaunchQuery->SetCaption(QStringLiteral("Query"));
    PlaceInPixels(*LaunchScript, 108, 12, 88, 28);
    LaunchScript->SetCaption(QStringLiteral("Script"));
    PlaceInPixels(*DBObjectList, 12, 52, 440, 596);
    PlaceInPixels(*TableFrame, 464, 12, 764, 636);
    TableFrame->SetBorderStyle(0);
    PlaceInPixels(*TableFieldViewer, 0, 0, 764, 636);
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
    if (IsProcedureKey(node.Key())) ShowProcedure();
}

void DatabaseView::ShowTable(const QString& name) {
    TableFrame->SetVisible(true);
    TableFieldViewer->Investigate(name, *connection_);
    scriptText_ = TableFieldViewer->ScriptText();
}

void DatabaseView::ShowProcedure() {
    TableFrame->SetVisible(false);
}

void DatabaseView::OpenQuery(const QString& text) {
    if (!query_) query_ = std::make_unique<QueryView>(newConnection_);
    query_->DoModeless(connection_, text);
}

}  // namespace quarv
