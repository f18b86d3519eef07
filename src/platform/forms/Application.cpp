#include "platform/forms/Application.h"

#include <QKeyEvent>
#include <QPointer>
#include <QWidget>
#include <cstdio>
#include <exception>

#include "base/Error.h"
#include "platform/forms/Form.h"

namespace quarv::forms {

namespace {

// One line whatever the server wrote: a log reader and a terminal must not be misled.
QByteArray OneLine(QString text) {
    for (QChar& c : text)
        if (c.category() == QChar::Other_Control) c = u' ';
    return text.toUtf8();
}

void WriteLine(const QString& text) {
    const QByteArray line = OneLine(text) + '\n';
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stderr);
    std::fflush(stderr);
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName(QStringLiteral("quarv"));
    setApplicationVersion(QStringLiteral(QUARV_VERSION));
    setDesktopFileName(QStringLiteral("quarv"));
}

QString Application::Title() {
    return QStringLiteral("Quarv");
}

void Application::ReportError() noexcept {
    try {
        try {
            throw;
        } catch (const Error& error) {
            WriteLine(QStringLiteral("%1: ").arg(error.Number()) + error.Description());
        } catch (const std::exception& error) {
            WriteLine(QString::fromUtf8(error.what()));
        } catch (...) {
            WriteLine(QStringLiteral("unknown exception"));
        }
    } catch (...) {
        std::fputs("error while reporting an error\n", stderr);
    }
}

void Application::DoEvents() {
    processEvents(QEventLoop::ExcludeUserInputEvents);
    // What was just shown may still wait for its paint request.
    const auto windows = topLevelWidgets();
    for (QWidget* window : windows)
        if (window->isVisible()) window->repaint();
    processEvents(QEventLoop::ExcludeUserInputEvents);
}

// A key comes here once, on its way to the widget with the keyboard; an event filter would see it
// again at each of that widget's containers.
bool Application::PreviewedKeyUp(QObject& receiver, const QEvent& event) {
    if (event.type() != QEvent::KeyRelease || !receiver.isWidgetType()) return false;
    auto* form = qobject_cast<Form*>(static_cast<QWidget&>(receiver).window());
    return form && form->TakesKeyUp(static_cast<const QKeyEvent&>(event));
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        const QPointer<QObject> alive(receiver);
        if (PreviewedKeyUp(*receiver, *event) || !alive) return true;
        return QApplication::notify(receiver, event);
    } catch (...) {
        ReportError();
        return false;
    }
}

}  // namespace quarv::forms
