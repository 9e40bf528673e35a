// SPDX-License-Identifier: GPL-3.0-or-later
// CSV import rules over real files, the reader's encodings and quotes, CSV export, the round trip
// between them, all-or-nothing imports, Organize Banks over edits not yet saved, and kestrelctl
// import-csv and export-csv run as processes.
#include "organize/csvexport.h"
#include "organize/csvimport.h"

#include "core/csvreader.h"
#include "core/files.h"
#include "core/freq.h"
#include "core/profiles.h"
#include "organize/bankorganizer.h"
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
    // `fresh`: as loaded from a new folder, every bank still to be written.
    explicit Fixture(bool fresh = false) {
        Load_Profiles(ctx);
        MakeBanksDir(ctx);
        for (BankRec& bank : p.Banks)
            bank.Changed = bank.Changed && fresh;
        p.Changed = p.Changed && fresh;
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
        QTest::newRow("two and a trailing comma") << "Name,Frequency," << 2;
        QTest::newRow("empty middle field counts") << "a,,c" << 3;
        QTest::newRow("two trailing commas") << "a,," << 2;
        QTest::newRow("empty line") << "" << 0;
        QTest::newRow("forty fields") << u"x,"_s.repeated(39) + "x" << 30;
    }

    void columnCount() {
        QFETCH(QString, line);
        QTEST(CsvColumnCount(line), "count");
    }

    void frequency_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("hz");
        QTest::newRow("six decimals") << "146.520000" << 146520000.0;
        QTest::newRow("two decimals") << "146.52" << 146520000.0;
        QTest::newRow("above the band") << "999.000000" << 0.0;
        QTest::newRow("empty") << "" << 0.0;
        QTest::newRow("reading stops at a second point") << "1.4.6.5.2.0.0.0.0" << 0.0;
        QTest::newRow("four decimals, four digits") << "0460.0250" << 460025000.0;
        QTest::newRow("three decimals") << "151.625" << 151625000.0;
        QTest::newRow("not a number") << "abc" << 0.0;
        QTest::newRow("blank around") << " 146.520000 " << 146520000.0;
    }

    void frequency() {
        QFETCH(QString, text);
        QTEST(CsvFrequency(text), "hz");
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
        QTest::newRow("a short line: nothing is imported")
            << QByteArray(
                   "Name,Freq,Delay\nFire,146.520000,True\nEMS,155.340000\nTow,157.000000,1\n")
            << "1,2,3,0,0" << yes << 0 << QStringList() << "FrmCsvImport -> BankBtn";
        const QByteArray lf = "Beschreibung,Frequenz\nFeuerwehr S\xC3\xBC"
                              "d,146.520000\nZoll,163.200000\n";
        QByteArray crlf = lf;
        crlf.replace("\n", "\r\n");
        QByteArray ansi = crlf;
        ansi.replace("\xC3\xBC", "\xFC");
        const QStringList german = {"Feuerwehr Süd,146.520000,False,False,False",
                                    "Zoll,163.200000,False,False,False"};
        QTest::newRow("CR") << QByteArray(lf).replace('\n', '\r') << "1,2,0,0,0" << yes << 2
                            << german << "";
        QTest::newRow("BOM, CRLF")
            << "\xEF\xBB\xBF" + crlf << "1,2,0,0,0" << yes << 2 << german << "";
        QTest::newRow("Windows-1252, CRLF") << ansi << "1,2,0,0,0" << yes << 2 << german << "";
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
        QCOMPARE(f.prompts.messages()[0].text, u"OverWrite *ALL* Data in the Current Bank?"_s);
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
        QTest::addColumn<QString>("error");
        QTest::newRow("at most 10 ranges")
            << numbered("Name,Low,High\n", 12, "Range %d,%d.000000,%d.500000\n") << "1,2,3" << 10
            << numberedRows(10, "Range %d,%d.000000,%d.500000\n") << "";
        QTest::newRow("defaults") << QByteArray("x\n1\n2\n") << "0,0,0" << 2
                                  << QStringList{"UnKnown,25.000000,956.000000",
                                                 "UnKnown,25.000000,956.000000"}
                                  << "";
        QTest::newRow("a short line: nothing is imported")
            << QByteArray("a,b,c\nOne,25.000000,30.000000\nTwo,40.000000,50.000000\nThree\n")
            << "1,2,3" << 0 << QStringList() << "FrmCsvImport -> SearchBtn";
    }

    void importSearch() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, columns);
        QFETCH(int, count);
        QFETCH(QStringList, rows);
        QFETCH(QString, error);
        Fixture f;
        f.p.Searches.fill(SearchRec{150e6, 160e6, u"Old"_s});
        CsvImport imp(f.ctx);
        QVERIFY(imp.open(f.csv(bytes)));
        QCOMPARE(imp.importToSearch(f.ctx.CurProfile, ints(columns)), count);
        QCOMPARE(f.prompts.messages().size(), error.isEmpty() ? 0 : 1); // no question
        while (rows.size() < SearchCount)
            rows.append(u"Old,150.000000,160.000000"_s);
        QCOMPARE(csvRows(SearchCsv(f.p), SearchCount), rows);
        QCOMPARE(f.p.Changed, error.isEmpty());
        QCOMPARE(f.ctx.errors.reportCount() ? f.ctx.errors.currentLabel() : QString(), error);
        QByteArray keys = "[SrchInfo]\r\n";
        for (int i = 1; i <= count; ++i)
            keys += "Search" + Num2(i).toLatin1() + "=\r\n";
        QCOMPARE(readFile(f.dir.filePath(u"Banks/SeachBankTmp.SKE"_s)),
                 error.isEmpty() ? keys : QByteArray());
    }

    void exportBank() {
        BankRec bank;
        bank.Chans[1] = ChannelRec{146520000, u"Fire Dispatch"_s, true, false, true};
        bank.Chans[2] = ChannelRec{851012500, u"Trunk, North"_s, false, true, false};
        bank.Chans[3] = ChannelRec{40500000, QString()};
        const QStringList lines = QString::fromUtf8(BankCsv(bank)).split(u'\n');
        QCOMPARE(lines.size(), 22); // header, 20 channels, the empty text after the last line end
        QCOMPARE(lines[0], u"Description,Frequency,Delay,Lock-Out,Priority"_s);
        QCOMPARE(lines[1], u"Fire Dispatch,146.520000,True,False,True"_s);
        QCOMPARE(lines[2], u"\"Trunk, North\",851.012500,False,True,False"_s);
        QCOMPARE(lines[3], u",40.500000,False,False,False"_s);
        QCOMPARE(lines[20], u",000.000000,False,False,False"_s);
        QCOMPARE(lines[21], QString());
    }

    void roundTripBank_data() {
        QTest::addColumn<int>("from");
        QTest::addColumn<bool>("custom");
        QTest::newRow("factory bank 1") << 1 << false;
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

    void cliExport() {
        QTemporaryDir dir;
        const ProcessResult r = ctl(dir, {"export-csv", "--bank", "8"});
        QCOMPARE(r.exitCode, 0);
        const QStringList lines = outputLines(r.out);
        QCOMPARE(lines.size(), 21);
        QCOMPARE(lines[1], u"Chan #141,467.662500,False,False,False"_s);
        QCOMPARE(lines[20], u"Chan #160,000.000000,False,True,False"_s);
        QVERIFY(snapshotTree(dir.path()).isEmpty()); // reading only
        const QString path = dir.filePath(u"bank8.csv"_s);
        const ProcessResult toFile = ctl(dir, {"export-csv", "--bank", "8", "-o", path});
        QCOMPARE(toFile.exitCode, 0);
        QVERIFY(toFile.out.isEmpty());
        QCOMPARE(readFile(path), r.out);
        QCOMPARE(outputLines(ctl(dir, {"export-csv", "--search"}).out).value(10),
                 u"Search #10,806.000000,956.000000"_s);
    }

    void cliImport() {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"in.csv"_s);
        writeFile(path, "\xEF\xBB\xBFName,Freq,\r\nFire,146.520000\r\nEMS,155.340000\r\n");
        const QByteArray mainBefore = ctl(dir, {"show", "--bank", "5"}).out;
        const ProcessResult r = ctl(
            dir, {"import-csv", path, "--profile", "3", "--bank", "5", "--columns", "0,2,0,0,0"});
        QCOMPARE(r.exitCode, 0);
        const QStringList shown =
            outputLines(ctl(dir, {"show", "--profile", "3", "--bank", "5"}).out);
        QCOMPARE(shown[0], u"081,146.520000,UnKnown,False,False,False"_s);
        QCOMPARE(shown[1], u"082,155.340000,UnKnown,False,False,False"_s);
        QCOMPARE(shown[2], u"083,460.050000,Chan #083,False,False,False"_s);
        QCOMPARE(ctl(dir, {"show", "--bank", "5"}).out, mainBefore); // profile 0 untouched
    }

    void cliUsageErrors_data() {
        QTest::addColumn<QStringList>("args"); // "@": the CSV file "a,b" / "x,146.520000"
        QTest::newRow("no target") << QStringList{"import-csv", "@"};
        QTest::newRow("bank 11") << QStringList{"import-csv", "@", "--bank", "11"};
        QTest::newRow("too few columns")
            << QStringList{"import-csv", "@", "--bank", "1", "--columns", "1,2"};
        QTest::newRow("beyond the file")
            << QStringList{"import-csv", "@", "--bank", "1", "--columns", "3,0,0,0,0"};
        QTest::newRow("export without target") << QStringList{"export-csv"};
    }

    void cliUsageErrors() {
        QFETCH(QStringList, args);
        QTemporaryDir dir;
        const QString path = dir.filePath(u"in.csv"_s);
        writeFile(path, "a,b\nx,146.520000\n");
        args.replaceInStrings(u"@"_s, path);
        const auto before = snapshotTree(dir.path());
        const ProcessResult r = ctl(dir, args);
        QCOMPARE(r.exitCode, 1);
        QVERIFY(r.err.contains("usage: kestrelctl"));
        QCOMPARE(snapshotTree(dir.path()), before);
    }

    void reader_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines"); // fields joined by "|"
        QTest::addColumn<QString>("error");
        const QString text = u"Name,Freq\r\n\"Tower, \"\"north\"\"\",151.625\rSüd,1\n"_s;
        const QStringList fields = {u"Name|Freq"_s, u"Tower, \"north\"|151.625"_s, u"Süd|1"_s};
        QTest::newRow("UTF-8 BOM") << encoded(text, QStringConverter::Utf8) << fields << "";
        QTest::newRow("UTF-16LE") << encoded(text, QStringConverter::Utf16LE) << fields << "";
        QTest::newRow("UTF-32BE") << encoded(text, QStringConverter::Utf32BE) << fields << "";
        QTest::newRow("Windows-1252")
            << QByteArray("a,S\xFC\x64\n") << QStringList{u"a|Süd"_s} << "";
        QTest::newRow("NUL bytes")
            << QByteArray("a,b\nc\0d\n", 8) << QStringList{u"a|b"_s} << "line 2 holds binary data";
        QTest::newRow("UTF-16 without a mark")
            << encoded(u"a,b\n"_s, QStringConverter::Utf16LE).mid(2) << QStringList()
            << "line 1 holds binary data";
        QTest::newRow("quote not closed") << QByteArray("\"a,b\n") << QStringList() << "";
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
                got.append(fields.join(u'|'));
        }
        QCOMPARE(got, lines);
        QVERIFY2(reader.error().contains(error) && error.isEmpty() == reader.error().isEmpty(),
                 qPrintable(reader.error()));
    }

    void failingLastLineLeavesBank_data() {
        QTest::addColumn<QByteArray>("last");
        QTest::addColumn<QString>("why");
        QTest::newRow("missing column") << QByteArray("Lone") << "line 5: there is no column 2";
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

    void organizeBanksMovesUnsavedEdits() {
        Fixture d(true); // a new folder: no bank has a file yet
        ProfileRec& p = d.ctx.cur();
        p.Banks[1].Chans[1].Desc = u"Edit in 1"_s;
        p.Banks[1].Changed = true;
        p.Banks[3].Chans[5].Desc = u"Edit in 3"_s;
        p.Banks[3].Changed = true;
        BankOrganizer org(d.ctx);
        org.load(d.ctx.CurProfile);
        QVERIFY(org.drop(u"XFR,03"_s, 1)); // Bank03 first
        QVERIFY(org.save());
        QCOMPARE(p.Banks[1].FileName, u"Bank03"_s);
        QCOMPARE(p.Banks[1].Chans[5].Desc, u"Edit in 3"_s);
        QCOMPARE(p.Banks[2].FileName, u"Bank01"_s);
        QCOMPARE(p.Banks[2].Chans[1].Desc, u"Edit in 1"_s);
        QCOMPARE(p.Banks[2].Chans[2].Desc, u"Chan #002"_s); // factory bank 1 moved whole
        // Saved at closing and read again, each name still holds its channels.
        Save_Profiles(d.ctx);
        AppContext again(d.dir.path());
        Load_Profiles(again);
        for (int b = 1; b <= BankCount; ++b)
            QCOMPARE(again.Profiles[0].Banks[b].Chans, p.Banks[b].Chans);
    }
};

QTEST_GUILESS_MAIN(TestCsv)
#include "tst_csv.moc"
