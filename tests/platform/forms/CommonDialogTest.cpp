#include "platform/forms/CommonDialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "base/LateBinding.h"
#include "platform/forms/Form.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

class Dialogs : public testing::Test {
  protected:
    QTemporaryDir folder;
    Form form{u"F"_qs};
    CommonDialog files{&form, u"CommonDialog"_qs};

    static void SetUpTestSuite() {
        // Qt's dialog keeps its own memory; a test must not write into its user's.
        static const QTemporaryDir settings;
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    }
    void SetUp() override {
        for (const char16_t* name : {u"one.txt", u"two.png"}) {
            QFile file(PathOf(QString::fromUtf16(name)));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
        form.Show();
    }
    QString PathOf(const QString& name) const { return folder.path() + u'/' + name; }

    // Shows the dialog and lets `act` use it; it is cancelled where `act` leaves it open.
    template <typename Act>
    bool Show(Act act) {
        bool shown = false;
        QTimer::singleShot(0, &form, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            shown = true;
            act(*dialog);
            if (dialog->isVisible()) PressButton(*dialog, QDialogButtonBox::Cancel);
        });
        const bool chosen = files.ShowOpen();
        EXPECT_TRUE(shown);
        return chosen;
    }
    static void PressButton(QFileDialog& dialog, QDialogButtonBox::StandardButton which) {
        auto* buttons = dialog.findChild<QDialogButtonBox*>();
        QTest::mouseClick(buttons->button(which), Qt::LeftButton);
    }
    static QLineEdit* NameEdit(QFileDialog& dialog) {
        return dialog.findChild<QLineEdit*>(u"fileNameEdit"_qs);
    }
    static QComboBox* FilterList(QFileDialog& dialog) {
        return dialog.findChild<QComboBox*>(u"fileTypeCombo"_qs);
    }
    static void Type(QFileDialog& dialog, const QString& name) {
        NameEdit(dialog)->setText(name);
        PressButton(dialog, QDialogButtonBox::Open);
    }
};

TEST_F(Dialogs, IsNeverSeenOnItsForm) {
    files.SetVisible(true);
    QCoreApplication::processEvents();
    EXPECT_FALSE(files.isVisible());
    EXPECT_TRUE(files.Visible());
    EXPECT_EQ(files.TypeName(), u"CommonDialog"_qs);
}

TEST_F(Dialogs, AChosenFileIsGivenWithItsPath) {
    files.SetInitDir(folder.path());
    EXPECT_TRUE(Show([](QFileDialog& dialog) { Type(dialog, u"one.txt"_qs); }));
    EXPECT_EQ(files.FileName(), PathOf(u"one.txt"_qs));
}

TEST_F(Dialogs, CancellingKeepsWhatWas) {
    files.SetInitDir(folder.path());
    files.SetFileName(PathOf(u"one.txt"_qs));
    files.SetFilter(u"Text|*.txt|All files|*.*"_qs);
    EXPECT_FALSE(Show([](QFileDialog& dialog) {
        NameEdit(dialog)->setText(u"two.png"_qs);
        FilterList(dialog)->setCurrentIndex(1);
        PressButton(dialog, QDialogButtonBox::Cancel);
    }));
    EXPECT_EQ(files.FileName(), PathOf(u"one.txt"_qs));
    EXPECT_EQ(files.FilterIndex(), 1);
}

TEST_F(Dialogs, EscapeCancels) {
    EXPECT_FALSE(Show([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }));
    EXPECT_EQ(files.FileName(), u""_qs);
}

TEST_F(Dialogs, StartsInTheGivenFolder) {
    files.SetInitDir(folder.path());
    Show([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().path(), folder.path());
        EXPECT_TRUE(dialog.isModal());
        EXPECT_EQ(dialog.parentWidget(), &form);
    });
}

TEST_F(Dialogs, AFolderThatIsNotThereIsPassedOver) {
    const QString usual = QFileDialog().directory().path();
    for (const QString& missing :
         {PathOf(u"nowhere"_qs), PathOf(u"one.txt"_qs), u"C:\\Windows"_qs, QString()}) {
        files.SetInitDir(missing);
        Show([&](QFileDialog& dialog) { EXPECT_EQ(dialog.directory().path(), usual); });
    }
}

TEST_F(Dialogs, ShowsItsTitleLiterally) {
    Show([](QFileDialog& dialog) { EXPECT_EQ(dialog.windowTitle(), u"Open"_qs); });
    files.SetDialogTitle(u"Choose & <b>[*]</b>"_qs);
    Show(
        [](QFileDialog& dialog) { EXPECT_EQ(dialog.windowTitle(), u"Choose & <b>[*][*]</b>"_qs); });
}

TEST_F(Dialogs, OffersTheFilters) {
    files.SetFilter(u"Text (*.txt)|*.txt|All files|*.*"_qs);
    files.SetFilterIndex(2);
    Show([](QFileDialog& dialog) {
        EXPECT_EQ(dialog.nameFilters(), (QStringList{u"Text (*.txt)"_qs, u"All files (*)"_qs}));
        EXPECT_EQ(FilterList(dialog)->currentIndex(), 1);
        EXPECT_EQ(dialog.selectedNameFilter(), u"All files (*)"_qs);
    });
}

TEST_F(Dialogs, AFilterIndexOutsideTheListIsTheFirst) {
    files.SetFilter(u"Text|*.txt|All files|*.*"_qs);
    for (const int index : {0, 3, -1}) {
        files.SetFilterIndex(index);
        Show([](QFileDialog& dialog) { EXPECT_EQ(FilterList(dialog)->currentIndex(), 0); });
        EXPECT_EQ(files.FilterIndex(), index);
    }
}

TEST_F(Dialogs, AFilterWithoutAPipeShowsEveryFile) {
    files.SetInitDir(folder.path());
    files.SetFilter(u"Choose a picture"_qs);
    EXPECT_TRUE(Show([](QFileDialog& dialog) {
        EXPECT_EQ(dialog.nameFilters(), QStringList{u"Choose a picture (*)"_qs});
        Type(dialog, u"two.png"_qs);
    }));
    EXPECT_EQ(files.FileName(), PathOf(u"two.png"_qs));
}

TEST_F(Dialogs, TheFilterUsedIsRemembered) {
    files.SetInitDir(folder.path());
    files.SetFilter(u"Text|*.txt|Pictures|*.png"_qs);
    EXPECT_TRUE(Show([](QFileDialog& dialog) {
        FilterList(dialog)->setCurrentIndex(1);
        Type(dialog, u"two.png"_qs);
    }));
    EXPECT_EQ(files.FilterIndex(), 2);
}

TEST_F(Dialogs, StartsWithTheFileNameAndItsFolder) {
    files.SetFileName(PathOf(u"two.png"_qs));
    Show([&](QFileDialog& dialog) {
        EXPECT_EQ(NameEdit(dialog)->text(), u"two.png"_qs);
        EXPECT_EQ(dialog.directory().path(), folder.path());
    });
}

TEST_F(Dialogs, AFileNameOfNoFolderLeavesTheFolder) {
    files.SetInitDir(folder.path());
    for (const QString& name : {u"/nowhere/at/all/x.txt"_qs, u"x.txt"_qs}) {
        files.SetFileName(name);
        Show([&](QFileDialog& dialog) {
            EXPECT_EQ(NameEdit(dialog)->text(), u"x.txt"_qs);
            EXPECT_EQ(dialog.directory().path(), folder.path());
        });
    }
}

TEST_F(Dialogs, WithoutAContainerItStillAsks) {
    CommonDialog alone(nullptr, u"Alone"_qs);
    QTimer::singleShot(0, &form, [] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->reject();
    });
    EXPECT_FALSE(alone.ShowOpen());
}

TEST_F(Dialogs, MembersAreReachedByName) {
    SetByName(&files, u"InitDir"_qs, Value(folder.path()));
    SetByName(&files, u"DialogTitle"_qs, Value(u"Pick"_qs));
    SetByName(&files, u"Filter"_qs, Value(u"A|*"_qs));
    SetByName(&files, u"FilterIndex"_qs, Value(1));
    QTimer::singleShot(0, &form, [] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        Type(*dialog, u"one.txt"_qs);
    });
    EXPECT_TRUE(CallByName(&files, u"ShowOpen"_qs).ToBoolean());
    EXPECT_EQ(GetByName(&files, u"FileName"_qs).ToText(), PathOf(u"one.txt"_qs));
}

}  // namespace
}  // namespace quarv::forms
