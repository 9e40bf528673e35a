// SPDX-License-Identifier: GPL-3.0-or-later
// CHIRP's generic CSV in and out: a 25-row file imported into a bank, the export of a bank
// compared with its golden file, the export read back, placement by Location across banks, bad
// rows leaving the profile as it was, and the command line's options.
#include "core/files.h"
#include "core/profiles.h"
#include "organize/chirpcsv.h"
#include "organize/csvexport.h"
#include "testsupport.h"

#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {

struct Data {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Yes};
    AppContext ctx{dir.path(), &prompts};
    Data() {
        Load_Profiles(ctx);
        MakeBanksDir(ctx);
        // As if just saved: the import alone marks what it changed.
        for (BankRec& bank : ctx.cur().Banks)
            bank.Changed = false;
        ctx.cur().Changed = false;
    }
    QString file(const QByteArray& bytes) {
        writeFile(dir.filePath(u"in.csv"_s), bytes);
        return dir.filePath(u"in.csv"_s);
    }
    std::optional<ChirpReport> import(const QString& path, int bank,
                                      ChirpPlacement how = ChirpPlacement::ShownBank) {
        ctx.CurBank = quint8(bank);
        return ImportChirp(ctx, path, how);
    }
};

using Banks = decltype(ProfileRec::Banks);
// Whether every bank holds the same channels with the same Changed flag.
bool same(const Banks& a, const Banks& b) {
    for (int i = 1; i <= BankCount; ++i)
        if (a[i].Chans != b[i].Chans || a[i].Changed != b[i].Changed)
            return false;
    return true;
}

const QString kRadio = u"chirp/radio.csv"_s;
const QByteArray kHeader = "Location,Name,Frequency,Skip,Comment\n";

} // namespace

class TestChirp : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void importIntoBank_data();
    void importIntoBank();
    void exportMatchesGoldenAndReadsBack();
    void byLocationAcrossBanks();
    void badRowImportsNothing_data();
    void badRowImportsNothing();
    void commandLine();
};

void TestChirp::importIntoBank_data() {
    QTest::addColumn<int>("slot");
    QTest::addColumn<double>("hz");
    QTest::addColumn<QString>("desc");
    QTest::addColumn<bool>("lockout");
    QTest::addColumn<bool>("priority");
    QTest::newRow("Skip P") << 2 << 121.5e6 << u"Guard"_s << false << true;
    QTest::newRow("comma in quotes") << 3 << 154.43e6 << u"Fire, East"_s << false << false;
    QTest::newRow("comment appended")
        << 4 << 156.8e6 << u"Marine 16 - Distress"_s << false << false;
    QTest::newRow("Skip S") << 5 << 162.55e6 << u"NOAA 1"_s << true << false;
    QTest::newRow("out-of-band row takes no slot")
        << 6 << 146.52e6 << u"2m Call"_s << false << false;
    QTest::newRow("quoted comment") << 7 << 146.94e6 << u"Repeater - Club, Tue"_s << false << false;
    QTest::newRow("comment that does not fit is left out")
        << 8 << 155.475e6 << u"Long name "_s + QString(186, u'x') << false << false;
    QTest::newRow("four decimals") << 9 << 462.5625e6 << u"FRS 1"_s << false << false;
    QTest::newRow("last slot") << 20 << 52.525e6 << u"Ham 6m"_s << false << false;
}

void TestChirp::importIntoBank() {
    QFETCH(int, slot);
    QFETCH(double, hz);
    QFETCH(QString, desc);
    QFETCH(bool, lockout);
    QFETCH(bool, priority);
    Data d;
    const std::optional<ChirpReport> report = d.import(dataPath(kRadio), 3);
    QVERIFY(report);
    QCOMPARE(report->text(), u"20 imported, 1 skipped (out of band), 4 left over (bank full)"_s);
    const ChannelRec& ch = d.ctx.cur().Banks[3].Chans[slot];
    QCOMPARE(qRound64(ch.Freq), qRound64(hz));
    QCOMPARE(ch.Desc, desc);
    QCOMPARE(ch.Lockout, lockout);
    QCOMPARE(ch.Priority, priority);
    QVERIFY(!ch.Delay);
    QVERIFY(d.ctx.cur().Banks[3].Changed && d.ctx.cur().Changed);
    QVERIFY(!d.ctx.cur().Banks[2].Changed && !d.ctx.cur().Banks[4].Changed);
    QCOMPARE(d.prompts.messages().value(0).text, u"OverWrite *ALL* Data in the Current Bank?"_s);
}

void TestChirp::exportMatchesGoldenAndReadsBack() {
    Data d;
    QVERIFY(d.import(dataPath(kRadio), 3));
    BankRec& bank = d.ctx.cur().Banks[3];
    bank.Chans[6].Freq = 0; // empty channels are left out
    bank.Chans[11].Freq = 0;
    bank.Chans[9].Lockout = true; // locked out and priority: "S"
    bank.Chans[9].Priority = true;
    const QByteArray out = ChirpCsv(bank, 3);
    const QString golden = dataPath(u"chirp/bank3-export.csv"_s);
    if (qEnvironmentVariableIsSet("KESTREL_WRITE_GOLDEN")) // to regenerate, then review the diff
        writeFile(golden, out);
    QCOMPARE(out, readFile(golden));

    // In file order into another bank: the channels that hold a frequency, in their order.
    const QString path = d.dir.filePath(u"out.csv"_s);
    QVERIFY(SaveCsvFile(d.ctx, out, path));
    const BankRec before = d.ctx.cur().Banks[7];
    QCOMPARE(d.import(path, 7)->text(),
             u"18 imported, 0 skipped (out of band), 0 left over (bank full)"_s);
    const auto& back = d.ctx.cur().Banks[7].Chans;
    for (int from = 1, to = 1; from <= ChansPerBank; ++from) {
        if (bank.Chans[from].Freq == 0)
            continue;
        QCOMPARE(back[to].Freq, bank.Chans[from].Freq);
        QCOMPARE(back[to].Desc, bank.Chans[from].Desc);
        QCOMPARE(back[to].Lockout, bank.Chans[from].Lockout);
        QCOMPARE(back[to].Priority, bank.Chans[from].Priority && !bank.Chans[from].Lockout);
        ++to;
    }
    QCOMPARE(back[19], before.Chans[19]); // rows beyond the file keep their channels

    // By Location into a new folder: every channel back in its place in bank 3.
    bank.Chans[9].Priority = false;
    Data e;
    for (int c : {6, 11})
        e.ctx.cur().Banks[3].Chans[c] = bank.Chans[c];
    QVERIFY(e.import(path, 1, ChirpPlacement::ByLocation));
    QCOMPARE(e.ctx.cur().Banks[3].Chans, bank.Chans);
}

void TestChirp::byLocationAcrossBanks() {
    Data d;
    const auto before = d.ctx.cur().Banks;
    const std::optional<ChirpReport> report = d.import(
        d.file(kHeader + "0,First,146.52,,\n19,End of 1,151.625,S,\n20,Start of 2,"
                         "155.0,P,x\n199,Last,460.0,,\n200,Beyond,460.0,,\n7,Low,10.0,,\n"),
        5, ChirpPlacement::ByLocation);
    QVERIFY(report);
    QCOMPARE(report->text(), u"4 imported, 1 skipped (out of band), 1 left over (bank full)"_s);
    const auto& banks = d.ctx.cur().Banks;
    QCOMPARE(banks[1].Chans[1].Desc, u"First"_s);
    QCOMPARE(banks[1].Chans[20].Desc, u"End of 1"_s);
    QVERIFY(banks[1].Chans[20].Lockout);
    QCOMPARE(banks[2].Chans[1].Desc, u"Start of 2 - x"_s);
    QVERIFY(banks[2].Chans[1].Priority);
    QCOMPARE(banks[10].Chans[20].Freq, 460e6);
    QCOMPARE(banks[1].Chans[8], before[1].Chans[8]); // the out-of-band row changes nothing
    QCOMPARE(banks[5].Chans, before[5].Chans);       // the shown bank plays no part
    QVERIFY(banks[1].Changed && banks[2].Changed && banks[10].Changed && !banks[5].Changed);
}

void TestChirp::badRowImportsNothing_data() {
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<int>("placement");
    QTest::addColumn<QString>("why");
    QTest::newRow("frequency not a number") << QByteArray("0,A,146.52,,\n1,B,abc,,\n") << 0
                                            << "line 3: the frequency \"abc\" is not a number";
    QTest::newRow("open quote") << QByteArray("0,A,146.52,,\n1,\"B,146.52,,\n") << 0
                                << "line 3: a quote is not closed";
    QTest::newRow("long name") << QByteArray("0,A,146.52,,\n1," + QByteArray(201, 'n') +
                                             ",146.52,,\n")
                               << 0 << "line 3: a description holds at most 200";
    QTest::newRow("location twice")
        << QByteArray("4,A,146.52,,\n4,B,146.52,,\n") << 1 << "line 3: Location 4 is given twice";
    QTest::newRow("location not a number") << QByteArray("0,A,146.52,,\n-1,B,146.52,,\n") << 1
                                           << "line 3: the Location is not a number from 0";
    QTest::newRow("not CHIRP") << QByteArray() << 0 << "does not begin with CHIRP's header";
}

void TestChirp::badRowImportsNothing() {
    QFETCH(QByteArray, rows);
    QFETCH(int, placement);
    QFETCH(QString, why);
    Data d;
    const auto before = d.ctx.cur().Banks;
    const QString path =
        d.file(rows.isEmpty() ? QByteArray("Name,Frequency\nA,146.52\n") : kHeader + rows);
    QVERIFY(!d.import(path, 2, ChirpPlacement(placement)));
    QVERIFY(same(d.ctx.cur().Banks, before));
    QVERIFY(!d.ctx.cur().Changed);
    QCOMPARE(d.ctx.errors.reportCount(), 1);
    QVERIFY2(d.prompts.messages().last().text.contains(why),
             qPrintable(d.prompts.messages().last().text));
}

void TestChirp::commandLine() {
    QTemporaryDir dir;
    const auto run = [&](const QStringList& args) {
        return runKestrelctl(QStringList{u"--data-dir"_s, dir.path()} + args);
    };
    ProcessResult r = run({u"import-csv"_s, u"--bank-from-location"_s, dataPath(kRadio)});
    QCOMPARE(r.exitCode, 0);
    QVERIFY2(r.err.contains("24 imported, 1 skipped (out of band), 0 left over (bank full)"),
             r.err.constData());
    // Location 20 is channel 21, slot 1 of bank 2; the command saved it.
    r = run({u"export-csv"_s, u"--format"_s, u"chirp"_s, u"--bank"_s, u"2"_s});
    QCOMPARE(r.exitCode, 0);
    QVERIFY2(r.out.contains("\n20,Ham 6m,52.525000,,0.000000,,88.5,88.5,023,NN,FM,5.00,,,,,,\n"),
             r.out.constData());

    // What the options do not fit is refused before any file is touched.
    const QMap<QString, QByteArray> saved = snapshotTree(dir.path());
    const QString plain = dir.filePath(u"plain.csv"_s);
    writeFile(plain, "Name,Frequency\nA,146.52\n");
    for (const QStringList& args :
         {QStringList{u"import-csv"_s, u"--bank-from-location"_s, plain},
          {u"import-csv"_s, u"--bank-from-location"_s, u"--bank"_s, u"1"_s, dataPath(kRadio)},
          {u"import-csv"_s, u"--search"_s, dataPath(kRadio)},
          {u"export-csv"_s, u"--format"_s, u"chirp"_s, u"--search"_s},
          {u"export-csv"_s, u"--format"_s, u"other"_s, u"--bank"_s, u"1"_s}}) {
        r = run(args);
        QVERIFY2(r.exitCode == 1 && !r.err.isEmpty(), qPrintable(args.join(u' ')));
    }
    QFile::remove(plain);
    QVERIFY(changedFiles(saved, snapshotTree(dir.path())).isEmpty());
}

QTEST_MAIN(TestChirp)
#include "tst_chirp.moc"
