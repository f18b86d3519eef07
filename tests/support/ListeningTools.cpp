#include "support/ListeningTools.h"

#include <QGuiApplication>

// Qt exports the switch, but no public header declares it.
class QPlatformAccessibility {
  public:
    void setActive(bool active);
};

class QPlatformIntegration {
  public:
    QPlatformAccessibility* accessibility() const;
};

class QGuiApplicationPrivate {
  public:
    static QPlatformIntegration* platform_integration;
};

namespace quarv::test {

namespace {

struct Kept {
    QAccessible::Event event;
    QAccessible::Id id;
};

std::vector<Kept>& TheLog() {
    static std::vector<Kept> log;
    return log;
}

void Keep(QAccessibleEvent* event) {
    TheLog().push_back({event->type(), event->uniqueId()});
}

void Listen(bool on) {
    QGuiApplicationPrivate::platform_integration->accessibility()->setActive(on);
    if (QAccessible::isActive() != on) qFatal("assistive tools cannot be made to listen");
}

}  // namespace

ListeningTools::ListeningTools() : before_(QAccessible::installUpdateHandler(Keep)) {
    Forget();
    Listen(true);
}

ListeningTools::~ListeningTools() {
    Listen(false);
    QAccessible::installUpdateHandler(before_);
}

std::vector<QAccessible::Id> ListeningTools::Told(QAccessible::Event event) const {
    std::vector<QAccessible::Id> ids;
    for (const Kept& kept : TheLog())
        if (kept.event == event) ids.push_back(kept.id);
    return ids;
}

void ListeningTools::Forget() {
    TheLog().clear();
}

void ListeningTools::StopListening() {
    Listen(false);
}

}  // namespace quarv::test
