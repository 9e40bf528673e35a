// SPDX-License-Identifier: GPL-3.0-or-later
// CSV import rules over real files, the reader's encodings and quotes, CSV export, the round trip
// between them, all-or-nothing imports, and kestrelctl import-csv and export-csv run as processes.
#include "organize/csvexport.h"
#include "organize/csvimport.h"

#include "core/csvreader.h"
#include "core/files.h"
#include "core/freq.h"
#include "core/profiles.h"
#include "testsupport.h"

#include <QStringEncoder>
#include <QTest>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {

struct Fixture {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Yes};
    AppContext ctx{dir.path(), &prompts};
    ProfileRec& p = ctx.cur();
    Fixture() {
        Load_Profiles(ctx);
        MakeBanksDir(ctx);
        for (BankRec& bank : p.Banks)
            bank.Changed = false;
        p.Changed = false;
    }
    QString csv(const QByteArray& bytes) {
        writeFile(dir.filePath(u"in.csv"_s), bytes);
        return dir.filePath(u"in.csv"_s);
    }
};

// The data lines of an export, i.e. what an import left behind, in a readable form.
QStringList csvRows(const QByteArray& csv, int count) {
    return QString::fromUtf8(csv).split(u'\n').mid(1, count);
}

QByteArray numbered(const QByteArray& header, int n, const char* pattern) {
    QByteArray out = header;
    for (int i = 1; i <= n; ++i)
        out += QString::asprintf(pattern, i, 100 + i, 110 + i).toUtf8();
    return out;
}

QStringList numberedRows(int n, const char* pattern) {
    return QString::fromUtf8(numbered({}, n, pattern)).split(u'\n', Qt::SkipEmptyParts);
}

QByteArray encoded(const QString& text, QStringConverter::Encoding e) {
    QStringEncoder enc(e, QStringConverter::Flag::WriteBom);
    return enc.encode(text);
}

ProcessResult ctl(const QTemporaryDir& dir, const QStringList& args) {
    return runKestrelctlIn(dir.path(), args);
}

} // namespace

class TestCsv : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void columnCount_data() {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("count");
        QTest::newRow("empty middle field counts") << "a,,c" << 3;
        QTest::newRow("two trailing commas") << "a,," << 2;
        QTest::newRow("empty line") << "" << 0;
        QTest::newRow("forty fields") << u"x,"_s.repeated(39) + "x" << 30;
    }

    void columnCount() {
        QFETCH(QString, line);
        QTEST(CsvColumnCount(line), "count");
    }

    void importBank_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("columns"); // per field: Description, Frequency, Delay, ...
        QTest::addColumn<int>("answer");
        QTest::addColumn<int>("count");
        QTest::addColumn<QStringList>("rows"); // the slots after these keep their channels
        QTest::addColumn<QString>("error");
        const int yes = int(Answer::Yes);
        const QString unknown = u"UnKnown,102.100000,False,False,False"_s;
        QTest::newRow("defaults") << QByteArray(
                                         "Name,Freq,\nFire,146.520000\nEMS,155.340000\nTow,1\n")
                                  << "0,0,0,0,0" << yes << 3
                                  << QStringList{unknown, unknown, unknown} << "";
        QTest::newRow("columns in any order")
            << QByteArray("Freq,Name,Flags,Lock\n146.520000,Fire Dispatch,True,False\n"
                          "40.500000,Air,T,1\n999.000000,Too high,yes,True\n")
            << "2,1,3,4,3" << yes << 3
            << QStringList{"Fire Dispatch,146.520000,True,False,True",
                           "Air,40.500000,True,True,True", "Too high,000.000000,False,True,False"}
            << "";
        const QByteArray lines25 = numbered("Name,Freq\n", 25, "Line %d,%d.000000\n");
        QTest::newRow("answer No")
            << lines25 << "1,2,0,0,0" << int(Answer::No) << -1 << QStringList() << "";
        QTest::newRow("at most 20 lines")
            << lines25 << "1,2,0,0,0" << yes << 20
            << numberedRows(20, "Line %d,%d.000000,False,False,False\n") << "";
        QTest::newRow("a line break in quotes")
            << QByteArray("Name,Freq\n\"Tower,\r\nnorth\",146.520000\nB,155.340000\n")
            << "1,2,0,0,0" << yes << 2
            << QStringList{"Tower; north,146.520000,False,False,False",
                           "B,155.340000,False,False,False"}
            << "";
        QTest::newRow("a short line: nothing is imported")
            << QByteArray(
                   "Name,Freq,Delay\nFire,146.520000,True\nEMS,155.340000\nTow,157.000000,1\n")
            << "1,2,3,0,0" << yes << 0 << QStringList() << "FrmCsvImport -> BankBtn";
    }

    void importBank() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, columns);
        QFETCH(int, answer);
        QFETCH(int, count);
        QFETCH(QStringList, rows);
        QFETCH(QString, error);
        Fixture f;
        f.ctx.CurBank = 3;
        f.p.Banks[3].Chans.fill(ChannelRec{150e6, u"Old"_s, true, true, true});
        f.prompts.queueAnswer(Answer(answer));
        CsvImport imp(f.ctx);
        QVERIFY(imp.open(f.csv(bytes)));
        QCOMPARE(imp.importToBank(f.ctx.CurProfile, f.ctx.CurBank, ints(columns)), count);
        QCOMPARE(f.prompts.messages().size(), error.isEmpty() ? 1 : 2); // the question, the error
        QCOMPARE(f.prompts.messages()[0].text, u"Overwrite *ALL* Data in the Current Bank?"_s);
        QCOMPARE(f.prompts.messages()[0].buttons, Buttons::YesNo);
        QCOMPARE(f.prompts.messages()[0].icon, Icon::Question);
        while (rows.size() < ChansPerBank)
            rows.append(u"Old,150.000000,True,True,True"_s);
        QCOMPARE(csvRows(BankCsv(f.p.Banks[3]), ChansPerBank), rows);
        QCOMPARE(f.p.Banks[3].Changed, count > 0);
        QVERIFY(!f.p.Banks[2].Changed);
        QCOMPARE(f.ctx.errors.reportCount() ? f.ctx.errors.currentLabel() : QString(), error);
        if (error.isEmpty())
            QCOMPARE(f.p.Changed, count > 0);
    }

    void importSearch_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("columns");
        QTest::addColumn<int>("count");
        QTest::addColumn<QStringList>("rows"); // the ranges after these keep theirs
        QTest::newRow("at most 10 ranges")
            << numbered("Name,Low,High\n", 12, "Range %d,%d.000000,%d.500000\n") << "1,2,3" << 10
            << numberedRows(10, "Range %d,%d.000000,%d.500000\n");
        QTest::newRow("defaults") << QByteArray("x\n1\n2\n") << "0,0,0" << 2
                                  << QStringList{"UnKnown,25.000000,956.000000",
                                                 "UnKnown,25.000000,956.000000"};
    }

    void importSearch() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, columns);
        QFETCH(int, count);
        QFETCH(QStringList, rows);
        Fixture f;
        f.p.Searches.fill(SearchRec{150e6, 160e6, u"Old"_s});
        CsvImport imp(f.ctx);
        QVERIFY(imp.open(f.csv(bytes)));
        QCOMPARE(imp.importToSearch(f.ctx.CurProfile, ints(columns)), count);
        QVERIFY(f.prompts.messages().isEmpty()); // no question
        while (rows.size() < SearchCount)
            rows.append(u"Old,150.000000,160.000000"_s);
        QCOMPARE(csvRows(SearchCsv(f.p), SearchCount), rows);
        QVERIFY(f.p.Changed);
        QCOMPARE(f.ctx.errors.reportCount(), 0);
        QByteArray keys = "[SrchInfo]\r\n";
        for (int i = 1; i <= count; ++i)
            keys += "Search" + Num2(i).toLatin1() + "=\r\n";
        QCOMPARE(readFile(f.dir.filePath(u"Banks/SeachBankTmp.SKE"_s)), keys);
    }

    void roundTripBank_data() {
        QTest::addColumn<int>("from");
        QTest::addColumn<bool>("custom");
        QTest::newRow("factory bank 8, half empty") << 8 << false;
        QTest::newRow("edited bank 5") << 5 << true;
    }

    void roundTripBank() {
        QFETCH(int, from);
        QFETCH(bool, custom);
        Fixture f;
        auto& chans = f.p.Banks[from].Chans;
        if (custom) {
            chans[1] = ChannelRec{25000000, u"Lowest"_s, true, true, true};
            chans[2] = ChannelRec{956000000, u"Highest"_s, false, false, true};
            chans[3] = ChannelRec{462562500, u"FRS 1 Süd"_s, true, false, false};
            chans[4] = ChannelRec{0, u"Empty but named"_s, false, true, false};
            chans[5] = ChannelRec{155340000, QString()};
            chans[6] = ChannelRec{151625000, u"Tower, \"north\""_s, true, false, true};
            chans[7] = ChannelRec{462562500, u"  padded  "_s, false, true, false};
        }
        const QString path = f.dir.filePath(u"out.csv"_s);
        QVERIFY(SaveCsvFile(f.ctx, BankCsv(f.p.Banks[from]), path));
        f.ctx.CurBank = 10;
        CsvImport imp(f.ctx);
        QVERIFY(imp.open(path));
        QCOMPARE(imp.columnCount(), 5);
        QCOMPARE(imp.importToBank(f.ctx.CurProfile, f.ctx.CurBank, {1, 2, 3, 4, 5}), 20);
        QCOMPARE(f.ctx.errors.reportCount(), 0);
        for (int c = 1; c <= ChansPerBank; ++c) {
            ChannelRec expected = chans[c];
            expected.Freq = FreqToDouble(FreqToString(expected.Freq)); // as a file carries it
            expected.Desc.replace(u',', u';'); // the bank file cannot hold a comma
            QCOMPARE(f.p.Banks[10].Chans[c], expected);
        }
        // What was imported survives the bank file: nothing falls back to the factory line.
        const QString bankFile = f.dir.filePath(u"ten.BKE"_s);
        Save_BankInfo(f.ctx, 0, 10, bankFile);
        AppContext again(f.dir.path());
        Load_BankInfo(again, 0, 10, bankFile);
        QCOMPARE(again.Profiles[0].Banks[10].Chans, f.p.Banks[10].Chans);
        QVERIFY(again.loadProblems.isEmpty());
    }

    // The commands end to end: a bank exported to a file, then imported into another profile's
    // bank without --columns, so the columns come from the header the export wrote.
    void commandLine() {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"bank8.csv"_s);
        QCOMPARE(ctl(dir, {"export-csv", "--bank", "8", "-o", path}).exitCode, 0);
        const QByteArray mainBefore = ctl(dir, {"show", "--bank", "5"}).out;
        QCOMPARE(ctl(dir, {"import-csv", path, "--profile", "3", "--bank", "5"}).exitCode, 0);
        const auto rows = [&](const QStringList& args) {
            QStringList out;
            for (const QString& line : outputLines(ctl(dir, QStringList{"show"} + args).out))
                out.append(line.section(u',', 1)); // without the channel number
            return out;
        };
        QCOMPARE(rows({"--profile", "3", "--bank", "5"}), rows({"--bank", "8"}));
        QCOMPARE(ctl(dir, {"show", "--bank", "5"}).out, mainBefore); // profile 0 untouched
    }

    void reader_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines"); // "line number:" then fields joined by "|"
        QTest::addColumn<QString>("error");
        const QString text = u"Name,Freq\r\n\"Tower, \"\"north\"\"\",151.625\rSüd,1\n"_s;
        const QStringList fields = {u"1:Name|Freq"_s, u"2:Tower, \"north\"|151.625"_s,
                                    u"3:Süd|1"_s};
        QTest::newRow("UTF-8 BOM") << encoded(text, QStringConverter::Utf8) << fields << "";
        QTest::newRow("UTF-16LE") << encoded(text, QStringConverter::Utf16LE) << fields << "";
        QTest::newRow("UTF-32BE") << encoded(text, QStringConverter::Utf32BE) << fields << "";
        QTest::newRow("Windows-1252")
            << QByteArray("a,S\xFC\x64\n") << QStringList{u"1:a|Süd"_s} << "";
        QTest::newRow("NUL bytes") << QByteArray("a,b\nc\0d\n", 8) << QStringList{u"1:a|b"_s}
                                   << "line 2 holds binary data";
        QTest::newRow("quote not closed") << QByteArray("\"a,b\n") << QStringList() << "";
        // A line break inside quotes is the field's; the lines after it keep their numbers.
        QTest::newRow("line breaks in quotes")
            << QByteArray("\"a\r\n\"\"b,\"\"\n\",1\nc,\"\"\"\"\nd\0\n", 25)
            << QStringList{u"1:a\n\"b,\"\n|1"_s, u"4:c|\""_s} << "line 5 holds binary data";
        QTest::newRow("a quote open for too long")
            << QByteArray("x,\"a\n") + QByteArray("b\n").repeated(kCsvMaxLine / 2) << QStringList()
            << "the quoted field of line 1 is not closed within";
    }

    void reader() {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        QFETCH(QString, error);
        CsvReader reader;
        reader.setData(bytes);
        QStringList got;
        while (const std::optional<QString> line = reader.readLine()) {
            QStringList fields;
            if (SplitCsvFields(*line, fields))
                got.append(QString::number(reader.lineNumber()) + u':' + fields.join(u'|'));
        }
        QCOMPARE(got, lines);
        QVERIFY2(reader.error().contains(error) && error.isEmpty() == reader.error().isEmpty(),
                 qPrintable(reader.error()));
    }

    void failingLastLineLeavesBank_data() {
        QTest::addColumn<QByteArray>("last");
        QTest::addColumn<QString>("why");
        QTest::newRow("long description") << QByteArray(201, 'x') + ",146.52"
                                          << "line 5: a description holds at most 200";
        QTest::newRow("open quote") << QByteArray("\"Open,146.52") << "line 5: a quote";
        QTest::newRow("binary") << QByteArray("x\0y,1", 5) << "line 5 holds binary data";
    }

    void failingLastLineLeavesBank() {
        QFETCH(QByteArray, last);
        QFETCH(QString, why);
        Fixture d;
        d.ctx.CurBank = 2;
        const BankRec before = d.ctx.cur().Banks[2];
        CsvImport imp(d.ctx);
        QVERIFY(imp.open(d.csv("Name,Freq\nA,146.52\n\nB,151.625\n" + last + "\n")));
        QCOMPARE(imp.importToBank(d.ctx.CurProfile, d.ctx.CurBank, {1, 2, 0, 0, 0}), 0);
        QCOMPARE(d.ctx.cur().Banks[2].Chans, before.Chans);
        QCOMPARE(d.ctx.cur().Banks[2].Changed, before.Changed);
        QCOMPARE(d.ctx.errors.reportCount(), 1);
        QVERIFY2(d.prompts.messages().last().text.contains(why),
                 qPrintable(d.prompts.messages().last().text));
        const auto ranges = d.ctx.cur().Searches;
        QCOMPARE(imp.importToSearch(d.ctx.CurProfile, {1, 2, 2}), 0);
        QCOMPARE(d.ctx.cur().Searches, ranges);
        QVERIFY(!QFile::exists(d.ctx.banksDir() + u"/SeachBankTmp.SKE"_s));
    }

    void readingStopsAtUsableLines() {
        // Twenty usable lines, then megabytes the import must not read (they are not even text).
        QByteArray bytes = "Description,Frequency,Delay,Lock-Out,Priority\n";
        for (int i = 1; i <= 21; ++i)
            bytes += "C" + QByteArray::number(i) + ",151.625,False,False,False\n";
        bytes += QByteArray(4 * 1024 * 1024, '\0');
        Fixture d;
        CsvImport imp(d.ctx);
        QVERIFY(imp.open(d.csv(bytes)));
        d.ctx.CurBank = 1;
        QCOMPARE(
            imp.importToBank(d.ctx.CurProfile, d.ctx.CurBank, imp.headerChoices(CsvMode::Bank)),
            20);
        QCOMPARE(d.ctx.cur().Banks[1].Chans[20].Desc, u"C20"_s);
        QCOMPARE(d.ctx.cur().Banks[1].Chans[20].Freq, 151625000.0);
        QCOMPARE(d.ctx.errors.reportCount(), 0);
    }
};

QTEST_GUILESS_MAIN(TestCsv)
#include "tst_csv.moc"
