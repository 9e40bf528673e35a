// SPDX-License-Identifier: GPL-3.0-or-later
// CHIRP's generic CSV in and out, through the windows offscreen, the library and kestrelctl: a
// 25-row file imported into the shown bank, the export of a bank against its golden file and
// read back by Location, bad rows importing nothing, the command line's options.
#include "organize/chirpcsv.h"
#include "organize/csvexport.h"
#include "organize/frmcsvimport.h"

#include "letterbanks.h"
#include "link/kestrelcomm.h"
#include "mainwin/mainform.h"
#include "testsupport.h"

#include <QAction>
#include <QCheckBox>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QTableWidget>
#include <QTest>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {

// The expected bytes of a golden file; KESTREL_WRITE_GOLDEN=1 writes them anew (review the diff).
QByteArray golden(const QString& name, const QByteArray& made) {
    const QString path = dataPath(u"chirp/"_s + name);
    if (qEnvironmentVariableIsSet("KESTREL_WRITE_GOLDEN"))
        writeFile(path, made);
    return readFile(path);
}

QString report(int imported, int outOfBand, int leftOver) {
    return u"%1 imported, %2 skipped (out of band), %3 left over (bank full)"_s.arg(imported)
        .arg(outOfBand)
        .arg(leftOver);
}

const QString kRadio = dataPath(u"chirp/radio.csv"_s);

} // namespace

class TestChirp : public QObject {
    Q_OBJECT
private Q_SLOTS:

    void windowsImportExportAndBack() {
        LetterBanks d;
        MainForm form{d.ctx};
        form.findChild<KestrelComm*>()->setTimeScale(0.01);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        form.BankTab()->setCurrentIndex(2); // bank 3
        form.menuItem(u"CsvImportMenuItem"_s)->trigger();
        auto* w = form.findChild<FrmCsvImport*>();
        const auto load = [&](const QString& path) {
            d.prompts.queueFile(path);
            QTest::mouseClick(w->BankBtn(0), Qt::LeftButton);
        };
        load(kRadio); // no columns to choose
        QVERIFY(w->isChirp() && w->LocationChk()->isEnabled() && !w->CboList1(0)->isEnabled());
        QTest::mouseClick(w->BankBtn(2), Qt::LeftButton);
        QCOMPARE(d.prompts.messages().value(1).text, report(20, 1, 4));
        BankRec& bank = d.ctx.cur().Banks[3];
        QCOMPARE(BankCsv(bank), golden(u"radio-bank3.csv"_s, BankCsv(bank)));
        QCOMPARE(form.ChnlsLv()->item(2, 2)->text(),
                 u"Fire; East"_s); // the bank file splits at ","

        // Exported as CHIRP's kind of file, with two channels emptied: they are left out.
        bank.Chans[6].Freq = bank.Chans[11].Freq = 0;
        bank.Chans[9].Lockout = bank.Chans[9].Priority = true; // "S" wins
        const QString out = d.dir.filePath(u"out.csv"_s);
        d.prompts.queueFile(out);
        d.prompts.queueFilter(QString::fromLatin1(kChirpExportFilter));
        form.menuItem(u"CsvExportMenuItem"_s)->trigger();
        QCOMPARE(readFile(out), golden(u"bank3-export.csv"_s, readFile(out)));

        // Read back with the check box into an emptied bank: each channel in its place again.
        bank.Chans[9].Priority = false;
        BankRec expected = bank;
        bank.Chans.fill(ChannelRec{});
        expected.Chans[6] = expected.Chans[11] = ChannelRec{};
        load(out);
        QTest::mouseClick(w->LocationChk(), Qt::LeftButton);
        QTest::mouseClick(w->BankBtn(2), Qt::LeftButton);
        QCOMPARE(d.prompts.messages().value(3).text, report(18, 0, 0));
        QCOMPARE(bank.Chans, expected.Chans);

        // The first kind of file, unless another is chosen; an ordinary file has columns again.
        d.prompts.queueFile(out);
        form.menuItem(u"CsvExportMenuItem"_s)->trigger();
        QVERIFY(readFile(out).startsWith(kCsvBankHeader));
        load(out);
        QVERIFY(!w->isChirp() && !w->LocationChk()->isEnabled() && w->CboList1(0)->isEnabled());
        QCOMPARE(d.ctx.errors.reportCount(), 0);
    }

    void badRowImportsNothing_data() {
        QTest::addColumn<QByteArray>("rows");
        QTest::addColumn<QString>("why");
        QTest::newRow("frequency") << QByteArray("0,A,146.52\n1,B,abc\n")
                                   << "line 3: the frequency \"abc\" is not a number";
        QTest::newRow("location twice")
            << QByteArray("4,A,146.52\n4,B,146.52\n") << "line 3: Location 4 is given twice";
        QTest::newRow("open quote")
            << QByteArray("0,A,146.52\n1,\"B,146.52\n") << "line 3: a quote is not closed";
    }

    void badRowImportsNothing() {
        QFETCH(QByteArray, rows);
        QFETCH(QString, why);
        LetterBanks d;
        const ProfileRec before = d.ctx.cur();
        writeFile(d.dir.filePath(u"in.csv"_s), "Location,Name,Frequency\n" + rows);
        QVERIFY(!ImportChirp(d.ctx, d.ctx.CurProfile, d.ctx.CurBank, d.dir.filePath(u"in.csv"_s),
                             ChirpPlacement::ByLocation));
        for (int b = 1; b <= BankCount; ++b)
            QCOMPARE(d.ctx.cur().Banks[b].Chans, before.Banks[b].Chans);
        QVERIFY(!d.ctx.cur().Changed);
        QVERIFY2(d.prompts.messages().last().text.contains(why),
                 qPrintable(d.prompts.messages().last().text));
    }

    void commandLine() {
        QTemporaryDir dir;
        const auto run = [&](const QStringList& args) {
            return runKestrelctl(QStringList{u"--data-dir"_s, dir.path()} + args);
        };
        ProcessResult r = run({u"import-csv"_s, u"--bank-from-location"_s, kRadio});
        QCOMPARE(r.exitCode, 0);
        QVERIFY2(r.err.contains(report(24, 1, 0).toUtf8()), r.err.constData());
        // Saved across banks: Location 20 is channel 21, slot 1 of bank 2.
        r = run({u"export-csv"_s, u"--format"_s, u"chirp"_s, u"--bank"_s, u"2"_s});
        QVERIFY(
            r.out.contains("\n20,Ham 6m,52.525000,,0.000000,,88.5,88.5,023,NN,FM,5.00,,,,,,\n"));

        const QMap<QString, QByteArray> saved = snapshotTree(dir.path());
        for (const QStringList& args :
             {QStringList{u"import-csv"_s, u"--bank-from-location"_s,
                          dataPath(u"bank-roundtrip.BKE"_s)},
              {u"import-csv"_s, u"--search"_s, kRadio},
              {u"export-csv"_s, u"--format"_s, u"chirp"_s, u"--search"_s}})
            QCOMPARE(run(args).exitCode, 1);
        QVERIFY(changedFiles(saved, snapshotTree(dir.path())).isEmpty());
    }
};

QTEST_MAIN(TestChirp)
#include "tst_chirp.moc"
