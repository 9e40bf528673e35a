// SPDX-License-Identifier: GPL-3.0-or-later
// The real dialogs behind the prompts seam: the message box shows the text, title, icon and
// buttons asked for and reports the button pressed; the file dialog opens as asked and returns
// the chosen path or nothing.
#include "mainwin/guiprompts.h"
#include "testsupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>

using namespace kestrel;

namespace {

// Runs `act` on the modal dialog once it is shown.
void whenModal(std::function<void(QWidget*)> act) {
    auto* timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
        if (QWidget* w = QApplication::activeModalWidget()) {
            timer->stop();
            timer->deleteLater();
            act(w);
        }
    });
    timer->start();
}

} // namespace

class TestGuiPrompts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void messageBox_data() {
        QTest::addColumn<int>("buttons");
        QTest::addColumn<int>("press");
        QTest::addColumn<int>("answer");
        QTest::newRow("yes") << int(Buttons::YesNo) << int(QMessageBox::Yes) << int(Answer::Yes);
        QTest::newRow("no") << int(Buttons::YesNo) << int(QMessageBox::No) << int(Answer::No);
        QTest::newRow("ok") << int(Buttons::Ok) << int(QMessageBox::Ok) << int(Answer::Ok);
        QTest::newRow("cancel") << int(Buttons::OkCancel) << int(QMessageBox::Cancel)
                                << int(Answer::Cancel);
    }
    void messageBox() {
        QFETCH(int, buttons);
        QFETCH(int, press);
        GuiPrompts prompts;
        QString seenText, seenTitle;
        QMessageBox::Icon seenIcon = QMessageBox::NoIcon;
        whenModal([&](QWidget* w) {
            auto* box = qobject_cast<QMessageBox*>(w);
            QVERIFY(box);
            seenText = box->text();
            seenTitle = box->windowTitle();
            seenIcon = box->icon();
            box->button(QMessageBox::StandardButton(press))->click();
        });
        const Answer a =
            prompts.message(QStringLiteral("Are You SURE?"), QStringLiteral("Kestrel Manager"),
                            Icon::Exclamation, Buttons(buttons));
        QTEST(int(a), "answer");
        QCOMPARE(seenText, QStringLiteral("Are You SURE?"));
        QCOMPARE(seenTitle, QStringLiteral("Kestrel Manager"));
        QCOMPARE(seenIcon, QMessageBox::Warning);
    }

    void fileDialogs() {
        QTemporaryDir dir;
        kestrel::test::writeFile(dir.filePath(QStringLiteral("Air.BKE")), "[BankInfo]\n");
        kestrel::test::writeFile(dir.filePath(QStringLiteral("notes.txt")), "x");
        GuiPrompts prompts;
        const FileDialogSpec open{QStringLiteral("Load Bank"), dir.path() + QLatin1Char('/'),
                                  QStringLiteral("*.BKE"), QStringLiteral("BKE"),
                                  QStringLiteral("*.BKE")};
        QString title, folder;
        QStringList filters;
        whenModal([&](QWidget* w) {
            auto* dialog = qobject_cast<QFileDialog*>(w);
            QVERIFY(dialog);
            title = dialog->windowTitle();
            folder = dialog->directory().absolutePath();
            filters = dialog->nameFilters();
            dialog->selectFile(QStringLiteral("Air.BKE"));
            QMetaObject::invokeMethod(dialog, "accept");
        });
        const std::optional<QString> chosen = prompts.openFile(open);
        QVERIFY(chosen.has_value());
        QCOMPARE(*chosen, dir.filePath(QStringLiteral("Air.BKE")));
        QCOMPARE(title, QStringLiteral("Load Bank"));
        QCOMPARE(folder, QDir(dir.path()).absolutePath());
        QCOMPARE(filters, QStringList{QStringLiteral("*.BKE")});

        // A save dialog proposes the preset name and adds the default extension.
        const FileDialogSpec save{QStringLiteral("Save Bank As"), dir.path() + QLatin1Char('/'),
                                  QStringLiteral("*.BKE"), QStringLiteral("BKE"),
                                  QStringLiteral("Untitled.BKE")};
        QString proposed;
        whenModal([&](QWidget* w) {
            auto* dialog = qobject_cast<QFileDialog*>(w);
            QVERIFY(dialog);
            auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            QVERIFY(name);
            proposed = name->text();
            name->setText(QStringLiteral("Marine"));
            QMetaObject::invokeMethod(dialog, "accept");
        });
        const std::optional<QString> saved = prompts.saveFile(save);
        QCOMPARE(proposed, QStringLiteral("Untitled.BKE"));
        QVERIFY(saved.has_value());
        QCOMPARE(*saved, dir.filePath(QStringLiteral("Marine.BKE")));

        whenModal([](QWidget* w) { qobject_cast<QDialog*>(w)->reject(); });
        QVERIFY(!prompts.openFile(open).has_value());
    }
};

QTEST_MAIN(TestGuiPrompts)
#include "test_guiprompts.moc"
