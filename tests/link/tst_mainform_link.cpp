// SPDX-License-Identifier: GPL-3.0-or-later
// The link in the main window: set-up at load, the Scanner menu's uploads with their progress
// display, the port window, and the time-out message.
#include "linktestutil.h"
#include "testsupport.h"

#include "link/frmcomset.h"
#include "link/kestrelcomm.h"
#include "link/scannersim.h"
#include "mainwin/mainform.h"

#include "core/files.h"
#include "core/profiles.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <memory>

using namespace kestrel;
using namespace kestrel::test;

namespace {

struct Rig {
    QTemporaryDir dir;
    ScannerSimulator sim;
    ScriptedPrompts prompts{Answer::Ok};
    std::unique_ptr<AppContext> ctx;
    std::unique_ptr<MainForm> form;
    KestrelComm* link = nullptr;

    explicit Rig(ScannerSimulator::Options opt) : sim(opt) {
        if (!sim.start())
            qFatal("no pseudo-terminal");
        writeFile(dir.filePath(QStringLiteral("Main.ini")),
                  "[Settings]\nCommPort=4\nKestrelCable=3\n[Ports]\nCOM4=" +
                      sim.devicePath().toUtf8() + "\n");
        ctx = std::make_unique<AppContext>(dir.path(), &prompts);
        MakeBanksDir(*ctx);
        Load_Profiles(*ctx);
        form = std::make_unique<MainForm>(*ctx);
        link = form->findChild<KestrelComm*>(QStringLiteral("KestrelComm"));
        // The link is set up once the window has been painted; its pauses shortened.
        link->setTimeScale(0.01);
        QSignalSpy setUp(form.get(), &MainForm::linkSetUpDone);
        form->show();
        if (!setUp.wait(10000))
            qFatal("the link was not set up");
    }
    QAction* item(const char* name) { return form->menuItem(QString::fromLatin1(name)); }
};

} // namespace

class TestMainFormLink : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void setUpAtLoad() {
        Rig rig(instantScanner());
        QCOMPARE(rig.link->CommPort(), 4);
        QCOMPARE(rig.link->CableType(), 3);
        QCOMPARE(rig.link->CommStatus(), 1);
        QVERIFY(!rig.link->InDebug());
        QVERIFY(rig.prompts.messages().isEmpty());
        // The upload and port items are used by the tests below.
        QVERIFY(rig.item("CableTypeMenuItem")->isEnabled());
        QVERIFY(rig.item("DisplayErrorsMenuItem")->isEnabled());
        QVERIFY(!rig.form->SndBankTxt()->isVisible());
        // The trace item is there once the user reveals it.
        QVERIFY(!rig.item("DebugCommMenuItem")->isVisible());
        QTest::mouseDClick(rig.form->captionLabel(0), Qt::LeftButton);
        QVERIFY(rig.item("DebugCommMenuItem")->isVisible());
        QVERIFY(rig.item("DebugCommMenuItem")->isEnabled());
    }

    // The window is painted before the link set-up asks about a port that is not there, and
    // the uploads wait for the set-up to end.
    void windowBeforeLink() {
        QTemporaryDir dir;
        writeFile(dir.filePath(QStringLiteral("Main.ini")),
                  "[Settings]\nCommPort=4\n[Ports]\nCOM4=" +
                      dir.filePath(QStringLiteral("none")).toUtf8() + "\n");
        ScriptedPrompts prompts{Answer::Ok};
        AppContext ctx(dir.path(), &prompts);
        Load_Profiles(ctx);
        MainForm form(ctx);
        QAction* upload = form.menuItem(QStringLiteral("UploadCurrBankMenuItem"));
        qsizetype messagesAtPaint = -1;
        bool uploadAtPaint = true;
        connect(&form, &MainForm::firstPainted, this, [&] {
            messagesAtPaint = prompts.messages().size();
            uploadAtPaint = upload->isEnabled();
        });
        QSignalSpy setUp(&form, &MainForm::linkSetUpDone);
        form.show();
        QVERIFY(setUp.wait(10000));
        QCOMPARE(messagesAtPaint, 0);
        QVERIFY(!uploadAtPaint);
        QCOMPARE(prompts.messages().size(), 1);
        QVERIFY(prompts.messages().first().text.startsWith(QStringLiteral("COM4: In Use!")));
        QVERIFY(upload->isEnabled());
    }

    // The current bank goes out with its progress shown; a second upload meanwhile is refused.
    void uploadCurrentBank() {
        const QString caption = QStringLiteral("Sending Chan:");
        Rig rig(instantScanner());
        rig.link->setTimeScale(0.005);
        rig.form->BankTab()->setCurrentIndex(2);
        QStringList shown;
        bool captionSeen = false;
        int secondTries = 0;
        auto look = [&] {
            // Read the display once the window has had the event, as the user would see it.
            QTimer::singleShot(0, rig.form.get(), [&] {
                shown << rig.form->SndBankTxt()->text();
                captionSeen = captionSeen || (rig.form->SndBankTxt()->isVisible() &&
                                              rig.form->captionLabel(1)->isVisible() &&
                                              rig.form->captionLabel(1)->text() == caption);
                if (shown.size() == 2) {
                    ++secondTries;
                    // A second upload, and a bank switch, while the first one runs.
                    rig.item("UploadAllBanksMenuItem")->trigger();
                    rig.item("UploadSrchBankMenuItem")->trigger();
                    rig.form->BankTab()->setCurrentIndex(5);
                }
            });
        };
        connect(rig.link, &KestrelComm::SendingChnl, this, look);
        connect(rig.link, &KestrelComm::SendingSrch, this, look);
        rig.item("UploadCurrBankMenuItem")->trigger();
        QVERIFY(!rig.link->busy());
        QCOMPARE(secondTries, 1);
        QVERIFY(captionSeen);
        QCOMPARE(shown.first(), QStringLiteral("41"));
        QCOMPARE(shown.last(), QStringLiteral("60"));
        QCOMPARE(rig.sim.model().framesReceived(), 22);
        QVERIFY(!rig.form->SndBankTxt()->isVisible());
        QVERIFY(!rig.form->captionLabel(1)->isVisible());
        QVERIFY(rig.item("UploadAllBanksMenuItem")->isEnabled());
        QVERIFY(rig.prompts.messages().isEmpty());
    }

    // The status bar counts the records sent; Cancel stops once the frame on its way has been
    // answered and closes the port. A whole upload ends with its count.
    void progressAndCancel() {
        Rig rig(instantScanner());
        rig.link->setTimeScale(0.005);
        auto* bar = rig.form->findChild<QProgressBar*>(QStringLiteral("UploadProgressBar"));
        auto* cancel = rig.form->findChild<QPushButton*>(QStringLiteral("UploadCancelBtn"));
        QStringList shown;
        int framesAtCancel = -1;
        connect(rig.link, &KestrelComm::uploadProgress, this, [&](int n) {
            if (bar->isVisible() && cancel->isVisible())
                shown << bar->text();
            if (n == 7 && framesAtCancel < 0) {
                framesAtCancel = rig.sim.model().framesReceived();
                cancel->click();
            }
        });
        rig.item("UploadAllBanksMenuItem")->trigger();
        QCOMPARE(shown.first(), QStringLiteral("1 of 200"));
        QCOMPARE(shown.last(), QStringLiteral("7 of 200"));
        QCOMPARE(rig.sim.model().framesReceived(), framesAtCancel + 1);
        QVERIFY(!rig.link->ComPortOpen());
        QVERIFY(!bar->isVisible() && !cancel->isVisible());
        QCOMPARE(rig.form->statusBar()->currentMessage(),
                 QStringLiteral("Upload cancelled: 7 of 200 channels sent"));
        QTest::qWait(50);
        QCOMPARE(rig.sim.model().framesReceived(), framesAtCancel + 1);

        shown.clear();
        rig.item("UploadSrchBankMenuItem")->trigger();
        QCOMPARE(shown.last(), QStringLiteral("10 of 10"));
        QCOMPARE(rig.form->statusBar()->currentMessage(),
                 QStringLiteral("Upload finished: 10 search ranges"));
        QVERIFY(rig.prompts.messages().isEmpty());
    }

    // The port window gives the chosen COM number another device; it is used at once and kept
    // in the settings. The scanner there never answers: the upload ends with the time-out message.
    void devicePathInPortWindow() {
        Rig rig(instantScanner());
        ScannerSimulator other(instantScanner(3, 0));
        QVERIFY(other.start());
        QString before;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            auto* w = qobject_cast<FrmComSet*>(QApplication::activeModalWidget());
            if (!w)
                return;
            timer.stop();
            before = w->DevicePathCbo()->currentText();
            w->DevicePathCbo()->setEditText(other.devicePath());
            w->CmdAccept()->click();
        });
        timer.start(10);
        rig.item("ComPortMenuItem")->trigger();
        QCOMPARE(before, rig.sim.devicePath());
        QCOMPARE(rig.ctx->settings.PortOverrides.value(4), other.devicePath());
        QCOMPARE(rig.link->currentDevice(), other.devicePath());
        rig.item("UploadSrchBankMenuItem")->trigger();
        QCOMPARE(other.model().framesReceived(), 1);
        QCOMPARE(rig.sim.model().framesReceived(), 0);
        QCOMPARE(rig.prompts.messages().size(), 1);
        const ScriptedPrompts::Message& m = rig.prompts.messages().first();
        QCOMPARE(m.text, QStringLiteral("Scanner Timed Out while Receiving!\nPlease Check "
                                        "Connections to Scanner and Try Again"));
        QCOMPARE(m.icon, Icon::Information);
        QVERIFY(!rig.link->ComPortOpen());
        QVERIFY(!rig.form->SndBankTxt()->isVisible());
        QVERIFY(!rig.form->captionLabel(1)->isVisible());
        QVERIFY(rig.form->close());
        QVERIFY(readFile(rig.dir.filePath(QStringLiteral("Main.ini")))
                    .contains("COM4=" + other.devicePath().toUtf8()));
    }
};

QTEST_MAIN(TestMainFormLink)
#include "tst_mainform_link.moc"
