// SPDX-License-Identifier: GPL-3.0-or-later
// The port, cable and trace windows, driven offscreen.
#include "linktestutil.h"
#include "testsupport.h"

#include "link/frmcomset.h"
#include "link/frmdebug.h"
#include "link/frmselcable.h"
#include "link/kestrelcomm.h"
#include "link/scannersim.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {

struct Env {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Ok};
    AppContext ctx{dir.path(), &prompts};
};

QString dev(int n) {
    return u"/dev/kestrel-test-%1"_s.arg(n);
}

// A link whose COM1..COM3 are the given devices and whose probe answers from a table.
std::unique_ptr<KestrelComm> tableLink(AppContext& ctx, QMap<QString, PortFailure> table) {
    for (int n = 1; n <= 3; ++n)
        ctx.settings.PortOverrides.insert(n, dev(n));
    return std::make_unique<KestrelComm>(ctx, nullptr, nullptr,
                                         std::make_unique<TablePortProbe>(std::move(table)));
}

QStringList captions(const FrmComSet& w) {
    QStringList c;
    for (int i = 0; i < FrmComSet::kButtons; ++i)
        c << w.ComPortOpt(i)->text();
    return c;
}

} // namespace

class TestLinkWindows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void portListing_data() {
        QTest::addColumn<int>("stored");
        QTest::addColumn<QStringList>("free");
        QTest::addColumn<QStringList>("listed");
        QTest::addColumn<QList<bool>>("enabled");
        QTest::addColumn<int>("checked");
        QTest::newRow("stored port held")
            << 2 << QStringList{"1", "3"} << QStringList{"COM1", "COM2", "COM3"}
            << QList<bool>{true, false, true} << 1;
        QTest::newRow("stored port missing, nothing free")
            << 16 << QStringList{} << QStringList{"COM16"} << QList<bool>{false} << 0;
    }
    void portListing() {
        QFETCH(int, stored);
        QFETCH(QStringList, free);
        QFETCH(QStringList, listed);
        QFETCH(QList<bool>, enabled);
        QFETCH(int, checked);
        Env env;
        env.ctx.settings.CommPort = qint16(stored);
        QMap<QString, PortFailure> table;
        for (int n = 1; n <= 3; ++n)
            table.insert(dev(n),
                         free.contains(QString::number(n)) ? PortFailure::Ok : PortFailure::Busy);
        auto link = tableLink(env.ctx, table);
        FrmComSet w(env.ctx, *link);
        w.show();
        const QStringList c = captions(w);
        QCOMPARE(c.mid(0, listed.size()), listed);
        QCOMPARE(c.mid(listed.size()),
                 QStringList(FrmComSet::kButtons - listed.size(), u"Not Used"_s));
        for (int i = 0; i < FrmComSet::kButtons; ++i) {
            QCOMPARE(w.ComPortOpt(i)->isEnabled(), i < enabled.size() && enabled[i]);
            QCOMPARE(w.ComPortOpt(i)->isChecked(), i == checked);
        }
        QVERIFY(w.CmdAccept()->isEnabled());
        QVERIFY(!w.CmdCancel()->isEnabled());
    }

    void cableChoice_data() {
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("click");
        QTest::addColumn<QString>("end"); // "accept", "cancel", "frame"
        QTest::addColumn<int>("result");
        QTest::newRow("two to three") << 2 << 1 << "accept" << 3;
        QTest::newRow("cancelled") << 2 << 1 << "cancel" << 2;
        QTest::newRow("closed by frame") << 3 << 0 << "frame" << 3;
    }
    void cableChoice() {
        QFETCH(int, stored);
        QFETCH(int, click);
        QFETCH(QString, end);
        QFETCH(int, result);
        Env env;
        env.ctx.settings.KestrelCable = qint16(stored);
        KestrelComm link(env.ctx);
        link.setCableType(stored);
        auto* w = new FrmSelCable(env.ctx, link);
        QSignalSpy closed(w, &FrmSelCable::closed);
        w->show();
        QVERIFY(w->CableOpt(stored == 2 ? 0 : 1)->isChecked());
        QTest::mouseClick(w->CableOpt(click), Qt::LeftButton);
        if (end == QLatin1String("accept"))
            QTest::mouseClick(w->CmdAccept(), Qt::LeftButton);
        else if (end == QLatin1String("cancel"))
            QTest::mouseClick(w->CmdCancel(), Qt::LeftButton);
        else
            w->close();
        QCOMPARE(closed.count(), 1);
        QCOMPARE(env.ctx.settings.KestrelCable, result);
        QCOMPARE(link.CableType(), result);
        QCOMPARE(env.ctx.Profiles[0].Changed, result != stored);
    }

    void traceWindow() {
        Env env;
        ScannerSimulator sim(instantScanner());
        QVERIFY(sim.start());
        KestrelComm link(env.ctx);
        link.setDevice(sim.devicePath());
        link.setTimeScale(0.01);
        link.setInDebug(true);
        auto* w = new FrmDebug(env.ctx, link);
        connect(&link, &KestrelComm::DebugInfo, w, &FrmDebug::SetDebugInfo);
        QSignalSpy closed(w, &FrmDebug::closed);
        w->show();

        w->Check1()->click();
        QVERIFY(link.debugLog().isOpen());
        link.SendSearch();
        QCOMPARE(w->LogWnd(0)->count(), 12);
        QCOMPARE(w->LogWnd(1)->count(), 12);
        // The lists follow the traffic.
        QCOMPARE(w->LogWnd(0)->currentRow(), 11);
        QVERIFY(w->LogWnd(0)->currentItem()->text().startsWith(u">> 81040200"_s));

        w->close();
        QCOMPARE(closed.count(), 1);
        QVERIFY(!link.InDebug());
        QVERIFY(!link.debugLog().isOpen());
        const QList<QByteArray> lines =
            readFile(QDir(env.ctx.appDir()).filePath(u"Debug.log"_s)).split('\n');
        QCOMPARE(lines[0], QByteArray("[Debug]\r"));
        QCOMPARE(lines.size(), 1 + 24 + 1);
    }
};

QTEST_MAIN(TestLinkWindows)
#include "tst_linkwindows.moc"
