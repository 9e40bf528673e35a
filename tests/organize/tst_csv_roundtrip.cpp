// SPDX-License-Identifier: GPL-3.0-or-later
// Nothing lost in the organizing tools: the CSV reader's encodings and quotes, the export and
// import round trip, all-or-nothing imports, and Organize Banks over edits not yet saved.
#include "core/csvreader.h"
#include "core/files.h"
#include "core/freq.h"
#include "core/profiles.h"
#include "organize/bankorganizer.h"
#include "organize/csvexport.h"
#include "organize/csvimport.h"
#include "testsupport.h"

#include <QStringEncoder>
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
    }
    QString csv(const QByteArray& bytes) {
        writeFile(dir.filePath(u"in.csv"_s), bytes);
        return dir.filePath(u"in.csv"_s);
    }
};

QByteArray encoded(const QString& text, QStringConverter::Encoding e) {
    QStringEncoder enc(e, QStringConverter::Flag::WriteBom);
    return enc.encode(text);
}

} // namespace

class TestCsvRoundTrip : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void reader_data();
    void reader();
    void exportImportsBackUnchanged();
    void failingLastLineLeavesBank_data();
    void failingLastLineLeavesBank();
    void readingStopsAtUsableLines();
    void organizeBanksMovesUnsavedEdits();
};

void TestCsvRoundTrip::reader_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("lines"); // fields joined by "|"
    QTest::addColumn<QString>("error");
    const QString text = u"Name,Freq\r\n\"Tower, \"\"north\"\"\",151.625\rSüd,1\n"_s;
    const QStringList fields = {u"Name|Freq"_s, u"Tower, \"north\"|151.625"_s, u"Süd|1"_s};
    QTest::newRow("UTF-8 BOM") << encoded(text, QStringConverter::Utf8) << fields << "";
    QTest::newRow("UTF-16LE") << encoded(text, QStringConverter::Utf16LE) << fields << "";
    QTest::newRow("UTF-32BE") << encoded(text, QStringConverter::Utf32BE) << fields << "";
    QTest::newRow("Windows-1252") << QByteArray("a,S\xFC\x64\n") << QStringList{u"a|Süd"_s} << "";
    QTest::newRow("NUL bytes") << QByteArray("a,b\nc\0d\n", 8) << QStringList{u"a|b"_s}
                               << "line 2 holds binary data";
    QTest::newRow("UTF-16 without a mark") << encoded(u"a,b\n"_s, QStringConverter::Utf16LE).mid(2)
                                           << QStringList() << "line 1 holds binary data";
    QTest::newRow("quote not closed") << QByteArray("\"a,b\n") << QStringList() << "";
}

void TestCsvRoundTrip::reader() {
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

void TestCsvRoundTrip::exportImportsBackUnchanged() {
    Data d;
    BankRec& from = d.ctx.cur().Banks[4];
    from.Chans[1] = {151625000, u"Tower, \"north\""_s, true, false, true};
    from.Chans[2] = {462562500, u"  padded  "_s, false, true, false};
    from.Chans[3] = {0, u"Empty"_s, false, false, true};
    const QString path = d.dir.filePath(u"out.csv"_s);
    QVERIFY(SaveCsvFile(d.ctx, BankCsv(from), path));
    QVERIFY(readFile(path).contains("\"Tower, \"\"north\"\"\",151.625000"));
    CsvImport imp(d.ctx);
    QVERIFY(imp.open(path));
    const QList<int> named = imp.headerChoices(CsvMode::Bank);
    QCOMPARE(named, (QList<int>{1, 2, 3, 4, 5}));
    d.ctx.CurBank = 9;
    QCOMPARE(imp.importToBank(d.ctx.CurProfile, d.ctx.CurBank, named), 20);
    for (int c = 1; c <= ChansPerBank; ++c) {
        ChannelRec expected = from.Chans[c];
        expected.Freq = FreqToDouble(FreqToString(expected.Freq)); // as a file carries it
        QCOMPARE(d.ctx.cur().Banks[9].Chans[c], expected);
    }
}

void TestCsvRoundTrip::failingLastLineLeavesBank_data() {
    QTest::addColumn<QByteArray>("last");
    QTest::addColumn<QString>("why");
    QTest::newRow("missing column") << QByteArray("Lone") << "line 5: there is no column 2";
    QTest::newRow("long description") << QByteArray(201, 'x') + ",146.52"
                                      << "line 5: a description holds at most 200";
    QTest::newRow("open quote") << QByteArray("\"Open,146.52") << "line 5: a quote";
    QTest::newRow("binary") << QByteArray("x\0y,1", 5) << "line 5 holds binary data";
}

void TestCsvRoundTrip::failingLastLineLeavesBank() {
    QFETCH(QByteArray, last);
    QFETCH(QString, why);
    Data d;
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

void TestCsvRoundTrip::readingStopsAtUsableLines() {
    // Twenty usable lines, then megabytes the import must not read (they are not even text).
    QByteArray bytes = "Description,Frequency,Delay,Lock-Out,Priority\n";
    for (int i = 1; i <= 21; ++i)
        bytes += "C" + QByteArray::number(i) + ",151.625,False,False,False\n";
    bytes += QByteArray(4 * 1024 * 1024, '\0');
    Data d;
    CsvImport imp(d.ctx);
    QVERIFY(imp.open(d.csv(bytes)));
    d.ctx.CurBank = 1;
    QCOMPARE(imp.importToBank(d.ctx.CurProfile, d.ctx.CurBank, imp.headerChoices(CsvMode::Bank)),
             20);
    QCOMPARE(d.ctx.cur().Banks[1].Chans[20].Desc, u"C20"_s);
    QCOMPARE(d.ctx.cur().Banks[1].Chans[20].Freq, 151625000.0);
    QCOMPARE(d.ctx.errors.reportCount(), 0);
}

void TestCsvRoundTrip::organizeBanksMovesUnsavedEdits() {
    Data d; // a new folder: no bank has a file yet
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

QTEST_MAIN(TestCsvRoundTrip)
#include "tst_csv_roundtrip.moc"
