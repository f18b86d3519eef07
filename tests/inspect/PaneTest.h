// PaneTest: a pane of the inspectors on a form, 9000 by 6000 twips, with an open connection whose
// answers the test scripts. The pane's parts are found by name.
#pragma once

#include <gtest/gtest.h>

#include "db/SQLServerConnection.h"
#include "platform/ado/MemoryScript.h"
#include "platform/forms/Form.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/ListView.h"

namespace quarv {

template <typename Pane, typename DetailControl>
class PaneTest : public testing::Test {
  protected:
    PaneTest() {
        view_.Move(0, 0, 9000, 6000);
        db_.InitOpen(QStringLiteral("Provider=sqloledb;Data Source=srv;"));
    }

    template <typename Part>
    Part& PartNamed(const char* name) {
        return *view_.template findChild<Part*>(QLatin1String(name));
    }
    forms::FramePlus& BorderFrame() { return PartNamed<forms::FramePlus>("BorderFrame"); }
    DetailControl& Detail() { return PartNamed<DetailControl>("Detail"); }

    std::shared_ptr<ado::MemoryScript> script_ = std::make_shared<ado::MemoryScript>();
    SQLServerConnection db_{script_->Factory()};
    forms::Form form_{QStringLiteral("Form1")};
    Pane view_{&form_, QStringLiteral("Viewer")};
};

struct ShownColumn {
    QString text;
    double width;
    forms::ColumnAlignment alignment;

    bool operator==(const ShownColumn&) const = default;
};

inline std::vector<ShownColumn> ShownColumns(forms::ListView& list) {
    const auto& headers = list.ColumnHeaders();
    std::vector<ShownColumn> columns;
    for (int i = 1; i <= headers.Count(); ++i)
        columns.push_back({headers.Item(i).text, headers.Item(i).width, headers.Item(i).alignment});
    return columns;
}

}  // namespace quarv
