// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl import-csv and export-csv run as processes over real data folders.
#include "testsupport.h"

#include <QDir>
#include <QTest>

using namespace kestrel::test;

namespace {

ProcessResult ctl(const QTemporaryDir& dir, const QStringList& args) {
    return runKestrelctl(QStringList{QStringLiteral("--data-dir"), dir.path()} + args);
}

QStringList linesOf(const QByteArray& out) {
    QStringList lines = QString::fromUtf8(out).split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

} // namespace

class TestOrganizeCli : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void exportReadsOnly();
    void exportToFile();
    void roundTripIntoAnotherBank();
    void importDefaultsAndProfile();
    void importSearch();
    void shortLineFails();
    void usageErrors_data();
    void usageErrors();
};

void TestOrganizeCli::exportReadsOnly() {
    QTemporaryDir dir;
    const ProcessResult r = ctl(dir, {"export-csv", "--bank", "8"});
    QCOMPARE(r.exitCode, 0);
    const QStringList lines = linesOf(r.out);
    QCOMPARE(lines.size(), 21);
    QCOMPARE(lines[0], QStringLiteral("Description,Frequency,Delay,Lock-Out,Priority"));
    QCOMPARE(lines[1], QStringLiteral("Chan #141,467.662500,False,False,False"));
    QCOMPARE(lines[20], QStringLiteral("Chan #160,000.000000,False,True,False"));
    QVERIFY(snapshotTree(dir.path()).isEmpty());

    const ProcessResult s = ctl(dir, {"export-csv", "--search"});
    QCOMPARE(s.exitCode, 0);
    QCOMPARE(linesOf(s.out).size(), 11);
    QCOMPARE(linesOf(s.out)[10], QStringLiteral("Search #10,806.000000,956.000000"));
}

void TestOrganizeCli::exportToFile() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bank3.csv"));
    const ProcessResult r = ctl(dir, {"export-csv", "--bank", "3", "-o", path});
    QCOMPARE(r.exitCode, 0);
    QVERIFY(r.out.isEmpty());
    QCOMPARE(readFile(path), ctl(dir, {"export-csv", "--bank", "3"}).out);

    const ProcessResult bad = ctl(
        dir, {"export-csv", "--bank", "3", "-o", dir.filePath(QStringLiteral("no/such/x.csv"))});
    QCOMPARE(bad.exitCode, 2);
    QVERIFY(bad.err.contains("could not write"));
}

void TestOrganizeCli::roundTripIntoAnotherBank() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bank8.csv"));
    QCOMPARE(ctl(dir, {"export-csv", "--bank", "8", "-o", path}).exitCode, 0);
    const ProcessResult imp =
        ctl(dir, {"import-csv", path, "--bank", "2", "--columns", "1,2,3,4,5"});
    QCOMPARE(imp.exitCode, 0);
    QVERIFY(QFile::exists(dir.filePath(QStringLiteral("Banks/Bank02.BKE"))));

    const QStringList source = linesOf(ctl(dir, {"export-csv", "--bank", "8"}).out);
    const QStringList copy = linesOf(ctl(dir, {"export-csv", "--bank", "2"}).out);
    QCOMPARE(copy.size(), source.size());
    for (qsizetype i = 0; i < source.size(); ++i) {
        QString expected = source[i];
        // Empty frequencies come back as 25 MHz, the import's rule for them.
        expected.replace(QStringLiteral(",000.000000,"), QStringLiteral(",25.000000,"));
        QCOMPARE(copy[i], expected);
    }
}

void TestOrganizeCli::importDefaultsAndProfile() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("in.csv"));
    writeFile(path, "\xEF\xBB\xBFName,Freq,\r\nFire,146.520000\r\nEMS,155.340000\r\n");
    const QByteArray mainBefore = ctl(dir, {"show", "--bank", "5"}).out;
    const ProcessResult r =
        ctl(dir, {"import-csv", path, "--profile", "3", "--bank", "5", "--columns", "0,2,0,0,0"});
    QCOMPARE(r.exitCode, 0);
    const QStringList shown = linesOf(ctl(dir, {"show", "--profile", "3", "--bank", "5"}).out);
    QCOMPARE(shown[0], QStringLiteral("081,146.520000,UnKnown,False,False,False"));
    QCOMPARE(shown[1], QStringLiteral("082,155.340000,UnKnown,False,False,False"));
    QCOMPARE(shown[2], QStringLiteral("083,460.050000,Chan #083,False,False,False"));
    // Profile 0 was not touched.
    QCOMPARE(ctl(dir, {"show", "--bank", "5"}).out, mainBefore);
}

void TestOrganizeCli::importSearch() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("limits.csv"));
    writeFile(path, "Low,High,Name\n118.000000,137.000000,Air\n144.000000,148.000000,Ham\n");
    const ProcessResult r = ctl(dir, {"import-csv", path, "--search", "--columns", "3,1,2"});
    QCOMPARE(r.exitCode, 0);
    const QStringList shown = linesOf(ctl(dir, {"show", "--search"}).out);
    QCOMPARE(shown[0], QStringLiteral("01,118.000000,137.000000,Air"));
    QCOMPARE(shown[1], QStringLiteral("02,144.000000,148.000000,Ham"));
    QCOMPARE(shown[2], QStringLiteral("03,29.700000,49.995000,Search #3"));
    QCOMPARE(readFile(dir.filePath(QStringLiteral("Banks/SeachBankTmp.SKE"))),
             QByteArray("[SrchInfo]\r\nSearch01=\r\nSearch02=\r\n"));
}

void TestOrganizeCli::shortLineFails() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("in.csv"));
    writeFile(path, "a,b\nOne,146.520000\nTwo\nThree,150.000000\n");
    const ProcessResult r = ctl(dir, {"import-csv", path, "--bank", "1", "--columns", "1,2,0,0,0"});
    QCOMPARE(r.exitCode, 2);
    QVERIFY(r.err.contains("FrmCsvImport -> BankBtn"));
    const QStringList shown = linesOf(ctl(dir, {"show", "--bank", "1"}).out);
    QCOMPARE(shown[0], QStringLiteral("001,146.520000,One,False,False,False"));
    QCOMPARE(shown[1], QStringLiteral("002,52.525000,Two,False,False,False"));
    QCOMPARE(shown[2], QStringLiteral("003,121.500000,Chan #003,False,False,False"));
}

void TestOrganizeCli::usageErrors_data() {
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QByteArray>("file");
    const QByteArray csv = "a,b\nx,146.520000\n";
    QTest::newRow("no file") << QStringList{"import-csv", "--bank", "1"} << csv;
    QTest::newRow("no target") << QStringList{"import-csv", "@"} << csv;
    QTest::newRow("bank and search")
        << QStringList{"import-csv", "@", "--bank", "1", "--search"} << csv;
    QTest::newRow("bank 11") << QStringList{"import-csv", "@", "--bank", "11"} << csv;
    QTest::newRow("too few columns")
        << QStringList{"import-csv", "@", "--bank", "1", "--columns", "1,2"} << csv;
    QTest::newRow("search with five")
        << QStringList{"import-csv", "@", "--search", "--columns", "1,2,0,0,0"} << csv;
    QTest::newRow("column 10") << QStringList{"import-csv", "@",         "--bank",
                                              "1",          "--columns", "10,0,0,0,0"}
                               << csv;
    QTest::newRow("beyond the file")
        << QStringList{"import-csv", "@", "--bank", "1", "--columns", "3,0,0,0,0"} << csv;
    QTest::newRow("missing file") << QStringList{"import-csv", "@missing", "--bank", "1"} << csv;
    QTest::newRow("ten columns") << QStringList{"import-csv", "@", "--bank", "1"}
                                 << QByteArray("1,2,3,4,5,6,7,8,9,10\n");
    QTest::newRow("export without target") << QStringList{"export-csv"} << csv;
    QTest::newRow("export extra argument") << QStringList{"export-csv", "--bank", "1", "x"} << csv;
}

void TestOrganizeCli::usageErrors() {
    QFETCH(QStringList, args);
    QFETCH(QByteArray, file);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("in.csv"));
    writeFile(path, file);
    for (QString& a : args) {
        if (a == QStringLiteral("@"))
            a = path;
        else if (a == QStringLiteral("@missing"))
            a = dir.filePath(QStringLiteral("missing.csv"));
    }
    const auto before = snapshotTree(dir.path());
    const ProcessResult r = ctl(dir, args);
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.contains("usage: kestrelctl"));
    QCOMPARE(snapshotTree(dir.path()), before);
}

QTEST_GUILESS_MAIN(TestOrganizeCli)
#include "tst_organize_cli.moc"
