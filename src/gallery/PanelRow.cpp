#include "gallery/PanelRow.h"

#include "controls/PlaceInPixels.h"
#include "controls/RaisedPanel.h"
#include "platform/forms/Label.h"

namespace quarv::gallery {

namespace {

// Pixels.
constexpr int PanelWidth = 114;
constexpr int PanelHeight = 56;
constexpr int Step = 130;

struct Shown {
    qint32 style, edges;
};

constexpr Shown Panels[] = {
    {0, drawing::BF_RECT},
    {1, drawing::BF_RECT},
    {2, drawing::BF_RECT},
    {3, drawing::BF_RECT},
    {0, drawing::BF_RECT & ~drawing::BF_TOP},
    {1, drawing::BF_LEFT | drawing::BF_TOP},
    {2, drawing::BF_LEFT | drawing::BF_RIGHT},
    {3, drawing::BF_BOTTOM},
};

constexpr const char16_t* StyleNames[] = {u"Raised", u"Sunken", u"Etched", u"Bump"};

void Tell(const RaisedPanel& panel, forms::Label& label) {
    label.SetCaption(QStringLiteral("%1, %2").arg(QString::fromUtf16(StyleNames[panel.Style()]),
                                                  QString::number(panel.Edges())));
}

}  // namespace

PanelRow::PanelRow(QWidget* container, const QString& name) : forms::UserControl(container, name) {
    int index = 0;
    for (const Shown& shown : Panels) AddPanel(index++, shown.style, shown.edges);
}

void PanelRow::AddPanel(int index, qint32 style, qint32 edges) {
    auto* panel = new RaisedPanel(this, QStringLiteral("Panel%1").arg(index + 1));
    PlaceInPixels(*panel, index * Step, 0, PanelWidth, PanelHeight);
    panel->SetStyle(style);
    panel->SetEdges(edges);
    auto* label = new forms::Label(panel, QStringLiteral("Values"));
    label->SetAlignment(2);
    label->SetWordWrap(false);
    PlaceInPixels(*label, 0, 0, 90, 18);
    panel->CentreContainedHorizontally();
    panel->CentreContainedVertically();
    Tell(*panel, *label);
    connect(panel, &RaisedPanel::Click, panel, [panel, label] {
        panel->SetStyle((panel->Style() + 1) % 4);
        Tell(*panel, *label);
    });
}

}  // namespace quarv::gallery
