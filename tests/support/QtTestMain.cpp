// The main of test programs that need the application object: offscreen, and failing on every
// warning of Qt's that a test did not allow.
#include <gtest/gtest.h>

#include "platform/forms/Application.h"
#include "support/QtWarnings.h"

namespace {

class WarningListener : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override {
        for (const QString& warning : quarv::test::TakeUnexpectedQtWarnings())
            ADD_FAILURE() << "unexpected Qt warning: " << warning.toStdString();
    }
};

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    quarv::test::CatchQtWarnings();
    testing::InitGoogleTest(&argc, argv);
    quarv::forms::Application application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    testing::UnitTest::GetInstance()->listeners().Append(new WarningListener);
    return RUN_ALL_TESTS();
}
