// SPDX-License-Identifier: GPL-3.0-or-later
// The link in the main window: set-up at load, the Scanner menu's uploads with their progress
// display, the time-out message, and the check marks of the link's windows.
#include "testsupport.h"

#include "link/frmcomset.h"
#include "link/frmdebug.h"
#include "link/frmerrs.h"
#include "link/frmselcable.h"
#include "link/kestrelcomm.h"
#include "link/scannersim.h"
#include "mainwin/mainform.h"

#include "core/files.h"
#include "core/profiles.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
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
        form->show();
    }
    QAction* item(const char* name) { return form->menuItem(QString::fromLatin1(name)); }
};

ScannerSimulator::Options fast(int stopAfter = -1) {
    ScannerSimulator::Options o;
    o.wireScale = 0;
    o.stopAfter = stopAfter;
    return o;
}

} // namespace

class TestMainFormLink : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void setUpAtLoad() {
        Rig rig(fast());
        QVERIFY(rig.link);
        QCOMPARE(rig.link->CommPort(), 4);
        QCOMPARE(rig.link->CableType(), 3);
        QCOMPARE(rig.link->CommStatus(), 1);
        QVERIFY(!rig.link->InDebug());
        QVERIFY(rig.prompts.messages().isEmpty());
        for (const char* name :
             {"UploadAllBanksMenuItem", "UploadCurrBankMenuItem", "UploadSrchBankMenuItem",
              "CableTypeMenuItem", "ComPortMenuItem", "DisplayErrorsMenuItem"})
            QVERIFY2(rig.item(name)->isEnabled(), name);
        QVERIFY(!rig.form->SndBankTxt()->isVisible());
        // The trace item is there once the user reveals it.
        QVERIFY(!rig.item("DebugCommMenuItem")->isVisible());
        QTest::mouseDClick(rig.form->captionLabel(0), Qt::LeftButton);
        QVERIFY(rig.item("DebugCommMenuItem")->isVisible());
        QVERIFY(rig.item("DebugCommMenuItem")->isEnabled());
    }

    void uploads_data() {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("last");
        QTest::addColumn<int>("frames");
        QTest::newRow("current bank") << "UploadCurrBankMenuItem"
                                      << "Sending Chan:"
                                      << "41"
                                      << "60" << 22;
        QTest::newRow("search") << "UploadSrchBankMenuItem"
                                << "Sending Srch:"
                                << "1"
                                << "10" << 12;
        QTest::newRow("all banks") << "UploadAllBanksMenuItem"
                                   << "Sending Chan:"
                                   << "1"
                                   << "200" << 202;
    }
    void uploads() {
        QFETCH(QString, item);
        QFETCH(QString, caption);
        QFETCH(QString, first);
        QFETCH(QString, last);
        QFETCH(int, frames);
        Rig rig(fast());
        rig.link->setTimeScale(0.005);
        rig.form->BankTab()->setCurrentIndex(2);
        QCOMPARE(int(rig.ctx->CurBank), 3);
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
        rig.form->menuItem(item)->trigger();
        QVERIFY(!rig.link->busy());
        QCOMPARE(secondTries, 1);
        QVERIFY(captionSeen);
        QCOMPARE(shown.first(), first);
        QCOMPARE(shown.last(), last);
        QCOMPARE(rig.sim.model().framesReceived(), frames);
        QVERIFY(!rig.form->SndBankTxt()->isVisible());
        QVERIFY(!rig.form->captionLabel(1)->isVisible());
        QVERIFY(rig.item("UploadAllBanksMenuItem")->isEnabled());
        QVERIFY(rig.prompts.messages().isEmpty());
    }

    void timeOutMessage() {
        Rig rig(fast(0));
        rig.link->setTimeScale(0.01);
        rig.item("UploadSrchBankMenuItem")->trigger();
        QCOMPARE(rig.prompts.messages().size(), 1);
        const ScriptedPrompts::Message& m = rig.prompts.messages().first();
        QCOMPARE(m.text, QStringLiteral("Scanner Timed Out while Receiving!\nPlease Check "
                                        "Connections to Scanner and Try Again"));
        QCOMPARE(m.icon, Icon::Information);
        QVERIFY(!rig.link->ComPortOpen());
        QVERIFY(!rig.form->SndBankTxt()->isVisible());
        QVERIFY(!rig.form->captionLabel(1)->isVisible());
        QCOMPARE(rig.sim.model().framesReceived(), 1);
    }

    void windowCheckMarks_data() {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("window");
        QTest::newRow("cable") << "CableTypeMenuItem"
                               << "FrmSelCable";
        QTest::newRow("debug") << "DebugCommMenuItem"
                               << "FrmDebug";
        QTest::newRow("errors") << "DisplayErrorsMenuItem"
                                << "FrmErrs";
    }
    void windowCheckMarks() {
        QFETCH(QString, item);
        QFETCH(QString, window);
        Rig rig(fast());
        QTest::mouseDClick(rig.form->captionLabel(0), Qt::LeftButton);
        QAction* a = rig.form->menuItem(item);
        QVERIFY(a->isCheckable());
        QVERIFY(a->isEnabled());
        a->trigger();
        QVERIFY(a->isChecked());
        QWidget* w = rig.form->findChild<QWidget*>(window);
        QVERIFY(w && w->isVisible());
        if (window == QLatin1String("FrmDebug"))
            QVERIFY(rig.link->InDebug());
        // Closing the window by its frame removes the mark.
        w->close();
        QVERIFY(!a->isChecked());
        QVERIFY(!rig.link->InDebug());
        // The menu opens it again, and removing the mark closes it.
        a->trigger();
        QPointer<QWidget> again = rig.form->findChild<QWidget*>(window);
        QVERIFY(again && again->isVisible());
        a->trigger();
        QVERIFY(!a->isChecked());
        QTRY_VERIFY(!again || !again->isVisible());
    }

    void traceReachesTheDebugWindow() {
        Rig rig(fast());
        rig.link->setTimeScale(0.01);
        QTest::mouseDClick(rig.form->captionLabel(0), Qt::LeftButton);
        rig.item("DebugCommMenuItem")->trigger();
        rig.item("UploadSrchBankMenuItem")->trigger();
        auto* w = rig.form->findChild<FrmDebug*>(QStringLiteral("FrmDebug"));
        QVERIFY(w);
        QCOMPARE(w->LogWnd(0)->count(), 12);
        QCOMPARE(w->LogWnd(1)->count(), 12);
    }

    void portWindowAccepted_data() {
        QTest::addColumn<bool>("accept");
        QTest::newRow("accepted") << true;
        QTest::newRow("cancelled") << false;
    }
    void portWindowAccepted() {
        QFETCH(bool, accept);
        Rig rig(fast());
        ScannerSimulator other(fast());
        QVERIFY(other.start());
        rig.ctx->settings.PortOverrides.insert(5, other.devicePath());
        rig.link->setPortMap(PortMap(rig.ctx->settings.PortOverrides));
        rig.link->setTimeScale(0.01);
        QTimer::singleShot(0, this, [&] {
            auto* w = qobject_cast<FrmComSet*>(QApplication::activeModalWidget());
            QVERIFY(w);
            QRadioButton* com5 = nullptr;
            for (int i = 0; i < FrmComSet::kButtons; ++i)
                if (w->ComPortOpt(i)->text() == QLatin1String("COM5"))
                    com5 = w->ComPortOpt(i);
            QVERIFY(com5 && com5->isEnabled());
            QTest::mouseClick(com5, Qt::LeftButton);
            QTest::mouseClick(accept ? w->CmdAccept() : w->CmdCancel(), Qt::LeftButton);
        });
        rig.item("ComPortMenuItem")->trigger();
        QCOMPARE(rig.ctx->settings.CommPort, accept ? 5 : 4);
        QCOMPARE(rig.link->CommPort(), accept ? 5 : 4);
        QCOMPARE(rig.ctx->Profiles[0].Changed, accept);
        QVERIFY(rig.prompts.messages().isEmpty());
    }
};

QTEST_MAIN(TestMainFormLink)
#include "tst_mainform_link.moc"
