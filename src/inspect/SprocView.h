// SprocView: the pane that shows a stored procedure: title, parameter names and source. The window
// that shows it owns it and lends the connection on each call; the pane keeps none of it.
#pragma once

#include "platform/forms/UserControl.h"

namespace quarv {

namespace ado {
class Recordset;
}  // namespace ado
namespace forms {
class FramePlus;
class Label;
class TextBox;
}  // namespace forms
class SQLServerConnection;

class SprocView : public forms::UserControl {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(QString Text READ Text)

  public:
    SprocView(QWidget* container, const QString& name);

    // Fills the pane: title, then source, then parameters. What the queries or reading them raise
    // travels on, and the parts that were not reached stay as they were: all of them for a name
    // that is unknown (DataError 3021), all but the title where the source is null, as it is for
    // an encrypted procedure (NullAsText).
    void Investigate(const QString& Sproc, SQLServerConnection& Db);
    // The source as it is shown, without the blanks at its two ends; empty before the first
    // procedure.
    QString Text() const;

  protected:
    void UserControl_Resize() override;

  private:
    void ShowRoutine(const ado::Recordset& rows);
    // `rows` is null where the server tells nothing of parameters.
    void ShowParameters(ado::Recordset* rows);

    forms::FramePlus* BorderFrame;
    forms::Label* Info;
    forms::TextBox* Detail;
};

}  // namespace quarv
