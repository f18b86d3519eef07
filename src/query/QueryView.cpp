#include "query/QueryView.h"

#include <QScopedValueRollback>

#include "base/FailureOf.h"
#include "base/RUtils.h"
#include "base/UTIL.h"
#include "controls/RButton.h"
#include "controls/StockPictures.h"
#include "db/SQLServerConnection.h"
#include "platform/forms/Application.h"
#include "platform/forms/CommonDialog.h"
#include "platform/forms/DataGrid.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/MsgBox.h"
#include "platform/forms/ProgressBar.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/WaitCursor.h"
#include "query/ScriptRunner.h"
#include "query/SqlLineScanner.h"

namespace quarv {

namespace {

// Twips.
constexpr double Edge = 120;
constexpr double ButtonTop = 75;
constexpr double ButtonHeight = 345;
constexpr double ButtonWidth = 1350;
constexpr double ButtonGap = 90;

void TellFailedQuery(const QString& description) {
    forms::MsgBox(description, QStringLiteral("Run"), forms::BoxIcon::Information);
}

}  // namespace

QueryView::QueryView(ado::ConnectionFactory newConnection)
    : forms::Form(QStringLiteral("QueryView")),
      DataSrc(std::move(newConnection)),
      RunQuery(new RButton(this, QStringLiteral("RunQuery"))),
      RunScript(new RButton(this, QStringLiteral("RunScript"))),
      Progress(new forms::ProgressBar(this, QStringLiteral("Progress"))),
      Query(new forms::TextBox(this, QStringLiteral("Query"))),
      ResultsFrame(new forms::FramePlus(this, QStringLiteral("ResultsFrame"))),
      Results(new forms::DataGrid(ResultsFrame, QStringLiteral("Results"))),
      OpenDialog(new forms::CommonDialog(this, QStringLiteral("OpenDialog"))) {
    MakeControls();
    Connect();
}

QueryView::~QueryView() {
    Results->SetDataSource(nullptr);
}

void QueryView::MakeControls() {
    Move(Left(), Top(), 14400, 9600);
    SetKeyPreview(true);
    MakeButton(*RunQuery, Edge, QStringLiteral("Run Query"));
    RunQuery->SetToolTipText(QStringLiteral("Run the selected text, or all of it (F5)"));
    MakeButton(*RunScript, Edge + ButtonWidth + ButtonGap, QStringLiteral("Run Script"));
    RunScript->SetToolTipText(QStringLiteral("Run a file, batch by batch"));
    Progress->Move(Edge + 2 * (ButtonWidth + ButtonGap), ButtonTop + 60, 3600, ButtonHeight - 120);
    Progress->SetSpokenName(QStringLiteral("Batches done"));
    Progress->SetVisible(false);
    Query->Move(Edge, 480, 9495, 2175);
    Query->SetMultiLine(true);
    Query->SetScrollBars(forms::TextBox::Both);
    Query->SetAcceptsTab(true);
    Query->SetLineScanner(std::make_shared<SqlLineScanner>());
    Query->SetFontName(QStringLiteral("Courier New"), 10);
    Query->SetSpokenName(QStringLiteral("Query"));
    ResultsFrame->Move(Edge, 2760, 10215, 3015);
    ResultsFrame->SetCaption(QStringLiteral("Results"));
    ResultsFrame->SetFontName(QStringLiteral("MS Sans Serif"));
    Results->Move(Edge, 240, 9975, 2535);
    Results->SetSpokenName(QStringLiteral("Results"));
}

void QueryView::MakeButton(RButton& button, double left, const QString& words) {
    button.Move(left, ButtonTop, ButtonWidth, ButtonHeight);
    button.SetPicture(WordsPicture(words, font()));
    button.SetSpokenName(words);
}

void QueryView::Connect() {
    connect(RunQuery, &RButton::Click, this, &QueryView::RunIt);
    connect(RunScript, &RButton::Click, this, &QueryView::RunScript_Click);
    connect(this, &forms::Form::KeyUp, this, [this](int& keyCode, int shift) {
        if (keyCode == Qt::Key_F5 && shift == 0) RunIt();
    });
    connect(this, &forms::Form::Closed, this, &QueryView::Form_Closed);
    connect(Results, &forms::DataGrid::Error, this,
            [](int, const QString& description) { TellFailedQuery(description); });
}

void QueryView::DoModeless(std::shared_ptr<SQLServerConnection> Db, const QString& Txt) {
    db_ = std::move(Db);
    SetCaption(QStringLiteral("Query: ") + db_->Description());
    Query->SetText(Txt);
    Query->SetFocus();
    Show();
}

void QueryView::Form_Load() {
    CentreOnMainMonitor(*this);
}

void QueryView::Form_Resize() {
    SizeControl(*Query, ScaleWidth() - 2 * Query->Left(), Query->Height());
    SizeControl(*ResultsFrame, ScaleWidth() - 2 * ResultsFrame->Left(),
                ScaleHeight() - ResultsFrame->Top() - 240);
    SizeControl(*Results, ResultsFrame->Width() - 2 * Results->Left(),
                ResultsFrame->Height() - Results->Top() - 240);
}

QString QueryView::QueryText() const {
    return Query->SelLength() >= 1 ? Query->SelText() : Query->Text();
}

void QueryView::RunIt() {
    if (running_) return;
    const QScopedValueRollback running(running_, true);
    if (const auto failure = FailureOf([this] { Run(); })) TellFailedQuery(*failure);
}

void QueryView::Run() {
    const forms::WaitCursor wait;
    DataSrc.SetConnectionString(db_->GetConnectionString());
    DataSrc.SetRecordSource(QueryText());
    DataSrc.Refresh();
    Results->SetDataSource(&DataSrc);
}

void QueryView::Form_Closed() {
    Results->SetDataSource(nullptr);
    DataSrc.Close();
}

void QueryView::RunScript_Click() {
    if (running_) return;
    const QScopedValueRollback running(running_, true);
    OpenDialog->SetFileName({});
    OpenDialog->ShowOpen();
    if (!OpenDialog->FileName().isEmpty()) RunScriptFile(OpenDialog->FileName());
}

void QueryView::RunScriptFile(const QString& path) {
    if (!FileExists(path)) {
        forms::MsgBox(QStringLiteral("File does not exist"));
        return;
    }
    const auto failure = FailureOf([&] {
        const forms::WaitCursor wait;
        ScriptRunner(db_->ADOConn()).Run(path, [this](int done, int total) {
            ShowProgress(done, total);
        });
    });
    Progress->SetVisible(false);
    forms::MsgBox(failure.value_or(QStringLiteral("Complete")));
}

void QueryView::ShowProgress(int done, int total) {
    if (done > 0) return Progress->SetValue(done);
    Progress->SetValue(0);
    Progress->SetMax(total);
    Progress->SetVisible(true);
    forms::Application::DoEvents();
}

}  // namespace quarv
