// SPDX-License-Identifier: GPL-3.0-or-later
// CSV import rules over real files, CSV export, and the round trip between them.
#include "organize/csvexport.h"
#include "organize/csvimport.h"

#include "core/files.h"
#include "core/freq.h"
#include "core/memory.h"
#include "core/profiles.h"
#include "testsupport.h"

#include <QTest>

using namespace kestrel;
using kestrel::test::readFile;
using kestrel::test::writeFile;

namespace {

struct Fixture {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Yes};
    AppContext ctx{dir.path(), &prompts};
    Fixture() {
        Load_Profiles(ctx);
        for (int p = 0; p < ProfileCount; ++p) {
            ctx.Profiles[p].Changed = false;
            for (int b = 1; b <= BankCount; ++b)
                ctx.Profiles[p].Banks[b].Changed = false;
        }
    }
    QString csv(const QByteArray& bytes, const QString& name = QStringLiteral("in.csv")) {
        const QString path = dir.filePath(name);
        writeFile(path, bytes);
        return path;
    }
};

QByteArray dataLines(int n) {
    QByteArray out = "Name,Freq\n";
    for (int i = 1; i <= n; ++i)
        out += "Line " + QByteArray::number(i) + "," + QByteArray::number(100 + i) + ".000000\n";
    return out;
}

ChannelRec channel(double hz, const QString& desc, bool delay, bool lockout, bool priority) {
    ChannelRec c;
    c.Freq = hz;
    c.Desc = desc;
    c.Delay = delay;
    c.Lockout = lockout;
    c.Priority = priority;
    return c;
}

} // namespace

class TestCsv : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void lines_data();
    void lines();
    void columnCount_data();
    void columnCount();
    void frequency_data();
    void frequency();
    void showLine();
    void nextLineAndEnd();

    void bankDefaults();
    void bankColumns();
    void bankAnswerNo();
    void bankAtMost20Lines();
    void bankShortLineStopsThere();
    void bankFileEncodings_data();
    void bankFileEncodings();
    void searchImport();
    void searchShortLineKeepsTmpFile();

    void exportBank();
    void exportSearch();
    void roundTripBank_data();
    void roundTripBank();
    void roundTripSearch();
};

void TestCsv::lines_data() {
    QTest::addColumn<QByteArray>("bytes");
    const QStringList expected = {"Name,Freq", "Fire,146.520000", "", "EMS,155.340000"};
    QTest::newRow("LF") << QByteArray("Name,Freq\nFire,146.520000\n\nEMS,155.340000\n");
    QTest::newRow("CRLF") << QByteArray("Name,Freq\r\nFire,146.520000\r\n\r\nEMS,155.340000\r\n");
    QTest::newRow("BOM and CRLF") << QByteArray(
        "\xEF\xBB\xBFName,Freq\r\nFire,146.520000\r\n\r\nEMS,155.340000\r\n");
    QTest::newRow("CR") << QByteArray("Name,Freq\rFire,146.520000\r\rEMS,155.340000\r");
    QTest::newRow("no last line end") << QByteArray("Name,Freq\nFire,146.520000\n\nEMS,155.340000");
}

void TestCsv::lines() {
    QFETCH(QByteArray, bytes);
    QCOMPARE(CsvLines(bytes), (QStringList{"Name,Freq", "Fire,146.520000", "", "EMS,155.340000"}));
}

void TestCsv::columnCount_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("count");
    QTest::newRow("two and a trailing comma") << "Name,Frequency," << 2;
    QTest::newRow("three") << "a,b,c" << 3;
    QTest::newRow("empty middle field counts") << "a,,c" << 3;
    QTest::newRow("two trailing commas") << "a,," << 2;
    QTest::newRow("empty line") << "" << 0;
    QTest::newRow("one") << "Description" << 1;
    QTest::newRow("forty fields") << QStringLiteral("x,").repeated(39) + "x" << 30;
}

void TestCsv::columnCount() {
    QFETCH(QString, line);
    QFETCH(int, count);
    QCOMPARE(CsvColumnCount(line), count);
}

void TestCsv::frequency_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("hz");
    QTest::newRow("six decimals") << "146.520000" << 146520000.0;
    QTest::newRow("below 100 MHz") << "40.500000" << 40500000.0;
    QTest::newRow("odd step") << "851.012500" << 851012500.0;
    QTest::newRow("two decimals clamp low") << "146.52" << 25000000.0;
    QTest::newRow("above the band") << "999.000000" << 956000000.0;
    QTest::newRow("empty") << "" << 25000000.0;
    QTest::newRow("band edges") << "956.000000" << 956000000.0;
    QTest::newRow("every point removed") << "1.4.6.5.2.0.0.0.0" << 146520000.0;
    QTest::newRow("four decimals, four digits") << "0460.0250" << 25000000.0;
    QTest::newRow("whole hertz") << "162550000" << 162550000.0;
    QTest::newRow("not a number") << "abc" << 25000000.0;
    QTest::newRow("blank around") << " 146.520000 " << 146520000.0;
}

void TestCsv::frequency() {
    QFETCH(QString, text);
    QFETCH(double, hz);
    QCOMPARE(CsvFrequency(text), hz);
}

void TestCsv::showLine() {
    std::array<QString, kCsvTextBoxes> boxes;
    boxes.fill(QStringLiteral("old"));
    CsvShowLine(QStringLiteral("Fire,146.520000,True"), boxes);
    QCOMPARE(QStringList(boxes.begin(), boxes.end()),
             (QStringList{"Fire", "146.520000", "True", "", "", "", "", "", ""}));
    // Eleven fields: the nine boxes are filled, then the line fails.
    QVERIFY_THROWS_EXCEPTION(KestrelError,
                             CsvShowLine(QStringLiteral("1,2,3,4,5,6,7,8,9,10,11"), boxes));
    QCOMPARE(boxes[8], QStringLiteral("9"));
}

void TestCsv::nextLineAndEnd() {
    Fixture f;
    CsvImport imp(f.ctx);
    QVERIFY(!imp.open(f.dir.filePath(QStringLiteral("missing.csv"))));
    QVERIFY(imp.open(f.csv("A,B,\nx,1\ny,2\n")));
    QCOMPARE(imp.columnCount(), 2);
    QCOMPARE(imp.nextLine(), QStringLiteral("A,B,"));
    QCOMPARE(imp.nextLine(), QStringLiteral("x,1"));
    QCOMPARE(imp.nextLine(), QStringLiteral("y,2"));
    try {
        imp.nextLine();
        QFAIL("no error past the last line");
    } catch (const KestrelError& e) {
        QCOMPARE(e.number(), 62);
    }
}

void TestCsv::bankDefaults() {
    Fixture f;
    f.ctx.CurBank = 4;
    const BankRec before = f.ctx.cur().Banks[4];
    CsvImport imp(f.ctx);
    QVERIFY(imp.open(f.csv("Name,Freq,\nFire,146.520000\nEMS,155.340000\nTow,157.000000\n")));
    QCOMPARE(imp.importToBank({0, 0, 0, 0, 0}), 3);
    QCOMPARE(f.prompts.messages().size(), 1);
    QCOMPARE(f.prompts.messages()[0].text,
             QStringLiteral("OverWrite *ALL* Data in the Current Bank?"));
    QCOMPARE(f.prompts.messages()[0].buttons, Buttons::YesNo);
    QCOMPARE(f.prompts.messages()[0].icon, Icon::Question);
    const BankRec& bank = f.ctx.cur().Banks[4];
    for (int c = 1; c <= 3; ++c)
        QCOMPARE(bank.Chans[c], channel(102100000, "UnKnown", false, false, false));
    for (int c = 4; c <= ChansPerBank; ++c)
        QCOMPARE(bank.Chans[c], before.Chans[c]);
    QVERIFY(bank.Changed);
    QVERIFY(f.ctx.cur().Changed);
    QVERIFY(!f.ctx.cur().Banks[3].Changed);
}

void TestCsv::bankColumns() {
    Fixture f;
    f.ctx.CurBank = 2;
    CsvImport imp(f.ctx);
    QVERIFY(imp.open(f.csv("Freq,Name,Flags,Lock\n"
                           "146.520000,Fire Dispatch,True,False\n"
                           "40.500000,Air,T,1\n"
                           "999.000000,Too high,yes,True\n")));
    // Description from column 2, frequency from 1, delay from 3, lock-out from 4, priority
    // from 3 as well.
    QCOMPARE(imp.importToBank({2, 1, 3, 4, 3}), 3);
    const BankRec& bank = f.ctx.cur().Banks[2];
    QCOMPARE(bank.Chans[1], channel(146520000, "Fire Dispatch", true, false, true));
    QCOMPARE(bank.Chans[2], channel(40500000, "Air", true, true, true));
    QCOMPARE(bank.Chans[3], channel(956000000, "Too high", false, true, false));
}

void TestCsv::bankAnswerNo() {
    Fixture f;
    f.ctx.CurBank = 1;
    const BankRec before = f.ctx.cur().Banks[1];
    f.prompts.queueAnswer(Answer::No);
    CsvImport imp(f.ctx);
    QVERIFY(imp.open(f.csv(dataLines(3))));
    QCOMPARE(imp.importToBank({1, 2, 0, 0, 0}), -1);
    for (int c = 1; c <= ChansPerBank; ++c)
        QCOMPARE(f.ctx.cur().Banks[1].Chans[c], before.Chans[c]);
    QVERIFY(!f.ctx.cur().Banks[1].Changed);
    QVERIFY(!f.ctx.cur().Changed);
}

void TestCsv::bankAtMost20Lines() {
    Fixture f;
    f.ctx.CurBank = 10;
    CsvImport imp(f.ctx);
    QVERIFY(imp.open(f.csv(dataLines(25))));
    QCOMPARE(imp.importToBank({1, 2, 0, 0, 0}), 20);
    const BankRec& bank = f.ctx.cur().Banks[10];
    for (int c = 1; c <= ChansPerBank; ++c) {
        QCOMPARE(bank.Chans[c].Desc, QStringLiteral("Line %1").arg(c));
        QCOMPARE(bank.Chans[c].Freq, (100.0 + c) * 1e6);
    }
}

void TestCsv::bankShortLineStopsThere() {
    Fixture f;
    f.ctx.CurBank = 1;
    const BankRec before = f.ctx.cur().Banks[1];
    CsvImport imp(f.ctx);
    QVERIFY(imp.open(f.csv("Name,Freq,Delay\n"
                           "Fire,146.520000,True\n"
                           "EMS,155.340000\n"
                           "Tow,157.000000,True\n")));
    QCOMPARE(imp.importToBank({1, 2, 3, 0, 0}), 1);
    QCOMPARE(f.ctx.errors.reportCount(), 1);
    QCOMPARE(f.ctx.errors.currentLabel(), QStringLiteral("FrmCsvImport -> BankBtn"));
    const BankRec& bank = f.ctx.cur().Banks[1];
    QCOMPARE(bank.Chans[1], channel(146520000, "Fire", true, false, false));
    // The second line set its description and frequency before its missing third column.
    QCOMPARE(bank.Chans[2].Desc, QStringLiteral("EMS"));
    QCOMPARE(bank.Chans[2].Freq, 155340000.0);
    QCOMPARE(bank.Chans[2].Lockout, before.Chans[2].Lockout);
    QCOMPARE(bank.Chans[3], before.Chans[3]);
    QVERIFY(bank.Changed);
    QVERIFY(QFile::exists(f.dir.filePath(QStringLiteral("Error.log"))));
}

void TestCsv::bankFileEncodings_data() {
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray lf = "Beschreibung,Frequenz\nFeuerwehr S\xC3\xBC"
                          "d,146.520000\nZoll,"
                          "163.200000\n";
    QTest::newRow("UTF-8, LF") << lf;
    QByteArray crlf = lf;
    crlf.replace("\n", "\r\n");
    QTest::newRow("UTF-8, CRLF") << crlf;
    QTest::newRow("BOM, CRLF") << QByteArray("\xEF\xBB\xBF") + crlf;
    QByteArray ansi = crlf;
    ansi.replace("\xC3\xBC", "\xFC");
    QTest::newRow("Windows-1252, CRLF") << ansi;
}

void TestCsv::bankFileEncodings() {
    QFETCH(QByteArray, bytes);
    Fixture f;
    f.ctx.CurBank = 3;
    CsvImport imp(f.ctx);
    QVERIFY(imp.open(f.csv(bytes)));
    QCOMPARE(imp.columnCount(), 2);
    QCOMPARE(imp.nextLine(), QStringLiteral("Beschreibung,Frequenz"));
    QCOMPARE(imp.importToBank({1, 2, 0, 0, 0}), 2);
    QCOMPARE(f.ctx.cur().Banks[3].Chans[1],
             channel(146520000, QStringLiteral("Feuerwehr Süd"), false, false, false));
    QCOMPARE(f.ctx.cur().Banks[3].Chans[2], channel(163200000, "Zoll", false, false, false));
}

void TestCsv::searchImport() {
    Fixture f;
    CsvImport imp(f.ctx);
    QByteArray file = "Low,High,Name\n";
    for (int i = 1; i <= 12; ++i)
        file += QByteArray::number(400 + i) + ".000000," + QByteArray::number(410 + i) +
                ".500000,Range " + QByteArray::number(i) + "\n";
    QVERIFY(imp.open(f.csv(file)));
    QCOMPARE(imp.importToSearch({3, 1, 2}), 10);
    QVERIFY(f.prompts.messages().isEmpty());
    for (int i = 1; i <= SearchCount; ++i) {
        const SearchRec& r = f.ctx.cur().Searches[i];
        QCOMPARE(r.Desc, QStringLiteral("Range %1").arg(i));
        QCOMPARE(r.Lower, (400.0 + i) * 1e6);
        QCOMPARE(r.Upper, (410.5 + i) * 1e6);
    }
    QVERIFY(f.ctx.cur().Changed);
    QByteArray tmp = "[SrchInfo]\r\n";
    for (int i = 1; i <= 10; ++i)
        tmp += "Search" + Num2(i).toLatin1() + "=\r\n";
    QCOMPARE(readFile(f.dir.filePath(QStringLiteral("Banks/SeachBankTmp.SKE"))), tmp);

    // Defaults for every field.
    Fixture g;
    CsvImport imp2(g.ctx);
    QVERIFY(imp2.open(g.csv("x\n1\n2\n")));
    QCOMPARE(imp2.importToSearch({0, 0, 0}), 2);
    QCOMPARE(g.ctx.cur().Searches[2].Desc, QStringLiteral("UnKnown"));
    QCOMPARE(g.ctx.cur().Searches[2].Lower, 25e6);
    QCOMPARE(g.ctx.cur().Searches[2].Upper, 956e6);
    QCOMPARE(g.ctx.cur().Searches[3].Desc, QStringLiteral("Search #3"));
}

void TestCsv::searchShortLineKeepsTmpFile() {
    Fixture f;
    const SearchRec third = f.ctx.cur().Searches[3];
    CsvImport imp(f.ctx);
    QVERIFY(imp.open(f.csv("a,b,c\nOne,25.000000,30.000000\nTwo,40.000000,50.000000\nThree\n")));
    QCOMPARE(imp.importToSearch({1, 2, 3}), 2);
    QCOMPARE(f.ctx.errors.currentLabel(), QStringLiteral("FrmCsvImport -> SearchBtn"));
    QCOMPARE(f.ctx.cur().Searches[2].Desc, QStringLiteral("Two"));
    QCOMPARE(f.ctx.cur().Searches[3].Desc, QStringLiteral("Three"));
    QCOMPARE(f.ctx.cur().Searches[3].Lower, third.Lower);
    QVERIFY(!f.ctx.cur().Changed);
    QCOMPARE(readFile(f.dir.filePath(QStringLiteral("Banks/SeachBankTmp.SKE"))),
             QByteArray("[SrchInfo]\r\nSearch01=\r\nSearch02=\r\n"));
}

void TestCsv::exportBank() {
    BankRec bank;
    bank.Chans[1] = channel(146520000, "Fire Dispatch", true, false, true);
    bank.Chans[2] = channel(851012500, "Trunk, North", false, true, false);
    bank.Chans[3] = channel(40500000, "", false, false, false);
    const QStringList lines = QString::fromUtf8(BankCsv(bank)).split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 22); // header, 20 channels, the empty text after the last line end
    QCOMPARE(lines[0], QStringLiteral("Description,Frequency,Delay,Lock-Out,Priority"));
    QCOMPARE(lines[1], QStringLiteral("Fire Dispatch,146.520000,True,False,True"));
    QCOMPARE(lines[2], QStringLiteral("Trunk; North,851.012500,False,True,False"));
    QCOMPARE(lines[3], QStringLiteral(",40.500000,False,False,False"));
    QCOMPARE(lines[20], QStringLiteral(",000.000000,False,False,False"));
    QCOMPARE(lines[21], QString());
}

void TestCsv::exportSearch() {
    Fixture f;
    const QStringList lines = QString::fromUtf8(SearchCsv(f.ctx.cur())).split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 12);
    QCOMPARE(lines[0], QStringLiteral("Description,Lower Frequency,Upper Frequency"));
    QCOMPARE(lines[1], QStringLiteral("Search #1,25.000000,27.995000"));
    QCOMPARE(lines[7], QStringLiteral("Search #7,406.000000,419.993750"));
    QCOMPARE(lines[10], QStringLiteral("Search #10,806.000000,956.000000"));
}

void TestCsv::roundTripBank_data() {
    QTest::addColumn<int>("from");
    QTest::addColumn<bool>("custom");
    QTest::newRow("factory bank 1") << 1 << false;
    QTest::newRow("factory bank 8, half empty") << 8 << false;
    QTest::newRow("edited bank 5") << 5 << true;
}

void TestCsv::roundTripBank() {
    QFETCH(int, from);
    QFETCH(bool, custom);
    Fixture f;
    ProfileRec& p = f.ctx.cur();
    if (custom) {
        p.Banks[from].Chans[1] = channel(25000000, "Lowest", true, true, true);
        p.Banks[from].Chans[2] = channel(956000000, "Highest", false, false, true);
        p.Banks[from].Chans[3] = channel(462562500, "FRS 1 Süd", true, false, false);
        p.Banks[from].Chans[4] = channel(0, "Empty but named", false, true, false);
        p.Banks[from].Chans[5] = channel(155340000, "", false, false, false);
    }
    const QString path = f.dir.filePath(QStringLiteral("out.csv"));
    QVERIFY(SaveCsvFile(f.ctx, BankCsv(p.Banks[from]), path));

    f.ctx.CurBank = quint8(from == 10 ? 9 : 10);
    CsvImport imp(f.ctx);
    QVERIFY(imp.open(path));
    QCOMPARE(imp.columnCount(), 5);
    QCOMPARE(imp.importToBank({1, 2, 3, 4, 5}), 20);
    QCOMPARE(f.ctx.errors.reportCount(), 0);
    for (int c = 1; c <= ChansPerBank; ++c) {
        ChannelRec expected = p.Banks[from].Chans[c];
        // Read from its file, 131.4500 MHz is 131449999.99999999 Hz; the CSV carries whole hertz.
        expected.Freq = double(qRound64(expected.Freq));
        if (expected.Freq == 0)
            expected.Freq = kBandLowHz; // the import's own rule for an empty frequency
        QCOMPARE(p.Banks[f.ctx.CurBank].Chans[c], expected);
    }
}

void TestCsv::roundTripSearch() {
    Fixture f;
    ProfileRec& p = f.ctx.cur();
    p.Searches[2].Lower = 0;
    p.Searches[2].Upper = 0;
    const std::array<SearchRec, SearchCount + 1> before = p.Searches;
    const QString path = f.dir.filePath(QStringLiteral("limits.csv"));
    QVERIFY(SaveCsvFile(f.ctx, SearchCsv(p), path));
    for (int i = 1; i <= SearchCount; ++i)
        Set_Search(f.ctx, qint16(i), f.ctx.DefSearch[0]);
    CsvImport imp(f.ctx);
    QVERIFY(imp.open(path));
    QCOMPARE(imp.importToSearch({1, 2, 3}), 10);
    for (int i = 1; i <= SearchCount; ++i) {
        SearchRec expected = before[i];
        expected.Lower = double(qRound64(expected.Lower));
        expected.Upper = double(qRound64(expected.Upper));
        if (expected.Lower == 0)
            expected.Lower = kBandLowHz;
        if (expected.Upper == 0)
            expected.Upper = kBandLowHz;
        QCOMPARE(p.Searches[i], expected);
    }
}

QTEST_GUILESS_MAIN(TestCsv)
#include "tst_csv.moc"
