// SPDX-License-Identifier: GPL-3.0-or-later
// The real dialogs behind the prompts seam: what they show and what they report back.
#include "mainwin/guiprompts.h"
#include "testsupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>

using namespace kestrel;

// Runs `act` on the modal dialog once it is shown.
static void whenModal(std::function<void(QWidget*)> act) {
    auto* timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
        if (QWidget* w = QApplication::activeModalWidget()) {
            timer->deleteLater();
            timer->stop();
            act(w);
        }
    });
    timer->start();
}

class TestGuiPrompts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void realDialogs() {
        GuiPrompts prompts;
        QString seen;
        whenModal([&](QWidget* w) {
            auto* box = qobject_cast<QMessageBox*>(w);
            seen = box->windowTitle() + '|' + box->text() + '|' + QString::number(box->icon());
            box->button(QMessageBox::No)->click();
        });
        QCOMPARE(prompts.message(QStringLiteral("Are You SURE?"), QStringLiteral("Kestrel Manager"),
                                 Icon::Exclamation, Buttons::YesNo),
                 Answer::No);
        QCOMPARE(seen,
                 QStringLiteral("Kestrel Manager|Are You SURE?|%1").arg(QMessageBox::Warning));

        QTemporaryDir dir;
        kestrel::test::writeFile(dir.filePath(QStringLiteral("Air.BKE")), "[BankInfo]\n");
        const FileDialogOptions open{QStringLiteral("Load Bank"), dir.path() + QLatin1Char('/'),
                                     QStringLiteral("*.BKE"), QStringLiteral("BKE"),
                                     QStringLiteral("*.BKE")};
        whenModal([&](QWidget* w) {
            auto* dialog = qobject_cast<QFileDialog*>(w);
            seen = dialog->windowTitle() + '|' + dialog->directory().absolutePath() + '|' +
                   dialog->nameFilters().join(',');
            dialog->selectFile(QStringLiteral("Air.BKE"));
            QMetaObject::invokeMethod(dialog, "accept");
        });
        QCOMPARE(prompts.openFile(open), std::optional(dir.filePath(QStringLiteral("Air.BKE"))));
        QCOMPARE(seen, QStringLiteral("Load Bank|%1|*.BKE").arg(QDir(dir.path()).absolutePath()));
        whenModal([](QWidget* w) { qobject_cast<QDialog*>(w)->reject(); });
        QVERIFY(!prompts.openFile(open).has_value());
    }
};

QTEST_MAIN(TestGuiPrompts)
#include "test_guiprompts.moc"
