// The main() of every test program with widgets: they run offscreen, and a Qt warning fails the
// test in which it comes up.
#include <gtest/gtest.h>

#include <QStringList>

#include "platform/forms/Application.h"

namespace {

QStringList warnings;

void KeepWarning(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtDebugMsg || type == QtInfoMsg) return;
    // The runtime folder is the machine's affair, and an offscreen window can be neither raised nor
    // told its size hints.
    for (const char16_t* expected : {u"XDG_RUNTIME_DIR", u"This plugin does not support"})
        if (message.contains(QStringView(expected))) return;
    warnings.append(message);
}

class FailOnWarning : public testing::EmptyTestEventListener {
  public:
    void OnTestEnd(const testing::TestInfo&) override {
        for (const QString& warning : std::as_const(warnings))
            ADD_FAILURE() << "unexpected warning: " << warning.toStdString();
        warnings.clear();
    }
};

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    qInstallMessageHandler(KeepWarning);
    quarv::forms::Application application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    testing::UnitTest::GetInstance()->listeners().Append(new FailOnWarning);
    return RUN_ALL_TESTS();
}
