// ConnectionDetailsControls: the connection dialog's controls by their names, made and laid out on
// the form, which owns them, for the form's font. They carry no behaviour.
#pragma once

#include "platform/forms/ButtonPlus.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/Form.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/Label.h"
#include "platform/forms/OptionButton.h"
#include "platform/forms/PictureBox.h"
#include "platform/forms/TabStrip.h"
#include "platform/forms/TextBox.h"

namespace quarv {

class ConnectionDetailsControls {
  public:
    explicit ConnectionDetailsControls(forms::Form& form);

    forms::TabStrip* Tabs;
    forms::FramePlus* ConnectionFrame;
    forms::Label* Label1;
    forms::ComboBox* Servername;
    forms::Label* Label2;
    forms::ComboBox* DatabaseList;
    forms::ButtonPlus* CreateDatabase;
    forms::OptionButton* UseWinAccount;
    forms::OptionButton* UseSQLAccount;
    forms::FramePlus* SQLAccountFrame;
    forms::Label* UsernameLabel;
    forms::TextBox* Username;
    forms::Label* PaswordLabel;
    forms::TextBox* Password;
    forms::ButtonPlus* Test;
    forms::FramePlus* PleaseWaitFrame;
    forms::PictureBox* Image1;
    forms::Label* Label3;
    forms::ButtonPlus* Okay;
    forms::ButtonPlus* Cancel;

  private:
    void Caption();
    double ScaleFor(const QFont& font) const;
    int InScale(int pixels) const;
    void Put(forms::Control& control, int left, int top, int width, int height) const;
    void Place();
    void PlaceAccount();
    void PlacePleaseWait();

    double scale_ = 1;  // what the layout is multiplied by, at least 1
};

}  // namespace quarv
