// QueryView: the window in which SQL is typed and run, its rows below it, and from which script
// files are run. The main window owns it and lends it the connection. It builds, connects and
// routes: the rows are the data control's, the scripts the runner's. Closed, it holds no rows and
// no connection of its own.
#pragma once

#include <memory>

#include "platform/ado/DataControl.h"
#include "platform/forms/Form.h"

namespace quarv {

namespace forms {
class CommonDialog;
class DataGrid;
class FramePlus;
class ProgressBar;
class TextBox;
}  // namespace forms
class RButton;
class SQLServerConnection;

class QueryView : public forms::Form {
    Q_OBJECT

  public:
    // The factory makes the connection that queries run on.
    explicit QueryView(ado::ConnectionFactory newConnection);
    ~QueryView() override;

    // Shows the window, not modal, with `Txt` in the query box. The connection stays open whatever
    // happens to the window.
    void DoModeless(std::shared_ptr<SQLServerConnection> Db, const QString& Txt);
    // Runs the selected text, or all of it where nothing is selected. What fails is told in a box;
    // where that is before the first row, the rows shown stay. Nothing happens while a query or a
    // script is being run. To be called after DoModeless.
    Q_INVOKABLE void RunIt();

  protected:
    void Form_Load() override;
    void Form_Resize() override;

  private:
    void MakeControls();
    void MakeButton(RButton& button, double left, const QString& words);
    void Connect();
    QString QueryText() const;
    void Form_Closed();
    void Run();
    void RunScript_Click();
    void RunScriptFile(const QString& path);
    void ShowProgress(int done, int total);

    std::shared_ptr<SQLServerConnection> db_;
    ado::DataControl DataSrc;
    bool running_ = false;
    RButton* RunQuery;
    RButton* RunScript;
    forms::ProgressBar* Progress;
    forms::TextBox* Query;
    forms::FramePlus* ResultsFrame;
    forms::DataGrid* Results;
    forms::CommonDialog* OpenDialog;
};

}  // namespace quarv
