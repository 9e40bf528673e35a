// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl run as a process: its output, its exit status, and the files it leaves.
#include "testsupport.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel::test;

namespace {

QStringList lines(const QByteArray& out) {
    QStringList l = QString::fromUtf8(out).split(QLatin1Char('\n'));
    if (!l.isEmpty() && l.last().isEmpty())
        l.removeLast();
    return l;
}

QStringList withDir(const QString& dir, QStringList args) {
    args.prepend(dir);
    args.prepend(QStringLiteral("--data-dir"));
    return args;
}

} // namespace

class TestKestrelctl : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void profilesListsEveryProfile();
    void show_data();
    void show();
    void readingCreatesNothing_data();
    void readingCreatesNothing();
    void setChannel_data();
    void setChannel();
    void setSearchOnNamedProfile();
    void setWritesOnlyWhatChanged();
    void usageErrors_data();
    void usageErrors();
    void writeFailureExits2();

private:
    QTemporaryDir m_populated; // every profile saved once
};

void TestKestrelctl::initTestCase() {
    QVERIFY(QFileInfo(qEnvironmentVariable("KESTRELCTL")).isExecutable());
    writeFile(m_populated.filePath(QStringLiteral("Profiles.ini")),
              "[Profiles]\nProfile04=Air Band\n");
    const auto r = runKestrelctl(
        withDir(m_populated.path(), {QStringLiteral("set"), QStringLiteral("--search"),
                                     QStringLiteral("1"), QStringLiteral("25,28,Low")}));
    QCOMPARE(r.exitCode, 0);
}

void TestKestrelctl::profilesListsEveryProfile() {
    const auto r = runKestrelctl(withDir(m_populated.path(), {QStringLiteral("profiles")}));
    QCOMPARE(r.exitCode, 0);
    const QStringList l = lines(r.out);
    QCOMPARE(l.size(), 10);
    QCOMPARE(l[0], QStringLiteral("0\tMain\tSrchBank00\tBank01\tBank02\tBank03\tBank04\tBank05\t"
                                  "Bank06\tBank07\tBank08\tBank09\tBank10"));
    QCOMPARE(l[4].section(QLatin1Char('\t'), 0, 3),
             QStringLiteral("4\tAir Band\tSrchBank04\tBank41"));
    QCOMPARE(l[9].section(QLatin1Char('\t'), 12), QStringLiteral("Bank100"));
}

void TestKestrelctl::show_data() {
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("line");
    QTest::newRow("bank 1") << QStringList{"--bank", "1"} << 20 << 0
                            << "001,40.500000,Chan #001,False,False,False";
    QTest::newRow("bank 10 of profile 3") << QStringList{"--profile", "3", "--bank", "10"} << 20
                                          << 19 << "200,000.000000,Chan #200,False,False,True";
    QTest::newRow("by name") << QStringList{"--profile", "air band", "--bank", "2"} << 20 << 0
                             << "021,151.625000,Chan #021,False,False,False";
    QTest::newRow("search") << QStringList{"--search"} << 10 << 0 << "01,25.000000,28.000000,Low";
    QTest::newRow("search of profile 1") << QStringList{"--search", "--profile", "1"} << 10 << 9
                                         << "10,806.000000,956.000000,Search #10";
    QTest::newRow("all") << QStringList{"--all"} << 200 << 160
                         << "161,000.000000,Chan #161,False,False,True";
}

void TestKestrelctl::show() {
    QFETCH(QStringList, args);
    QFETCH(int, count);
    QFETCH(int, row);
    QFETCH(QString, line);
    args.prepend(QStringLiteral("show"));
    const auto r = runKestrelctl(withDir(m_populated.path(), args));
    QCOMPARE(r.exitCode, 0);
    const QStringList l = lines(r.out);
    QCOMPARE(l.size(), count);
    QCOMPARE(l[row], line);
    QVERIFY(r.err.isEmpty());
}

void TestKestrelctl::readingCreatesNothing_data() {
    QTest::addColumn<QStringList>("args");
    QTest::newRow("profiles") << QStringList{"profiles"};
    QTest::newRow("show all") << QStringList{"show", "--all", "--profile", "9"};
    QTest::newRow("show search") << QStringList{"show", "--search"};
}

void TestKestrelctl::readingCreatesNothing() {
    QFETCH(QStringList, args);
    // On a folder with files (and with Main.ini naming no bank: banks marked changed) ...
    const auto before = snapshotTree(m_populated.path());
    QCOMPARE(runKestrelctl(withDir(m_populated.path(), args)).exitCode, 0);
    QCOMPARE(snapshotTree(m_populated.path()), before);
    // ... and on a folder that does not exist yet.
    QTemporaryDir dir;
    const QString missing = dir.filePath(QStringLiteral("new"));
    QCOMPARE(runKestrelctl(withDir(missing, args)).exitCode, 0);
    QVERIFY(!QFileInfo::exists(missing));
}

void TestKestrelctl::setChannel_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << "146.52,Fire Dispatch,True,False,False"
                           << "036,146.520000,Fire Dispatch,True,False,False";
    QTest::newRow("malformed takes the factory line")
        << "146.52,Fire, East,False,False,False"
        << "036,154.295000,Chan #036,False,False,False";
    QTest::newRow("out of band empties") << "999,Far,False,False,True"
                                         << "036,000.000000,Far,False,False,True";
}

void TestKestrelctl::setChannel() {
    QFETCH(QString, line);
    QFETCH(QString, shown);
    QTemporaryDir dir;
    const QString data = dir.filePath(QStringLiteral("fresh"));
    auto r = runKestrelctl(withDir(data, {"set", "--bank", "2", "--slot", "16", line}));
    QCOMPARE(r.exitCode, 0);
    r = runKestrelctl(withDir(data, {"show", "--bank", "2"}));
    QCOMPARE(lines(r.out)[15], shown);
    QVERIFY(readFile(data + QStringLiteral("/Banks/Bank02.BKE"))
                .contains("Channel16=" + shown.mid(4).toUtf8() + "\n"));
    // Profile 0 was changed: its settings file names its banks and search file.
    const QByteArray main = readFile(data + QStringLiteral("/Main.ini"));
    QVERIFY(main.contains("Bank02=Bank02\n") && main.contains("SrchName=SrchBank00\n"));
}

void TestKestrelctl::setSearchOnNamedProfile() {
    QTemporaryDir dir;
    writeFile(dir.filePath(QStringLiteral("Profiles.ini")), "[Profiles]\nProfile02=Marine\n");
    auto r = runKestrelctl(
        withDir(dir.path(), {"set", "--profile", "Marine", "--search", "3", "156,158,Marine"}));
    QCOMPARE(r.exitCode, 0);
    QVERIFY(readFile(dir.filePath(QStringLiteral("Banks/SrchBank02.SKE")))
                .contains("Search03=156.000000,158.000000,Marine\n"));
    r = runKestrelctl(withDir(dir.path(), {"show", "--search", "--profile", "2"}));
    QCOMPARE(lines(r.out)[2], QStringLiteral("03,156.000000,158.000000,Marine"));
}

void TestKestrelctl::setWritesOnlyWhatChanged() {
    QTemporaryDir dir;
    const QString data = dir.path();
    QCOMPARE(runKestrelctl(withDir(data, {"set", "--bank", "1", "--slot", "1",
                                          "40.5,A,False,"
                                          "False,False"}))
                 .exitCode,
             0);
    const auto before = snapshotTree(data);
    QCOMPARE(runKestrelctl(withDir(data, {"set", "--profile", "6", "--bank", "3", "--slot", "2",
                                          "121.5,Guard,True,False,False"}))
                 .exitCode,
             0);
    const auto after = snapshotTree(data);
    QStringList changed;
    for (auto it = after.begin(); it != after.end(); ++it)
        if (before.value(it.key()) != it.value())
            changed << it.key();
    QCOMPARE(changed, QStringList{QStringLiteral("Banks/Bank63.BKE")});
}

void TestKestrelctl::usageErrors_data() {
    QTest::addColumn<QStringList>("args");
    QTest::newRow("no command") << QStringList{};
    QTest::newRow("unknown command") << QStringList{"frobnicate"};
    QTest::newRow("show without target") << QStringList{"show"};
    QTest::newRow("show two targets") << QStringList{"show", "--bank", "1", "--search"};
    QTest::newRow("bank 11") << QStringList{"show", "--bank", "11"};
    QTest::newRow("unknown option") << QStringList{"show", "--bank", "1", "--colour"};
    QTest::newRow("unknown profile") << QStringList{"show", "--profile", "Nope", "--bank", "1"};
    QTest::newRow("profile 10") << QStringList{"set", "--profile", "10", "--search", "1", "1,2,x"};
    QTest::newRow("set without line") << QStringList{"set", "--search", "1"};
    QTest::newRow("set bank without slot") << QStringList{"set", "--bank", "1", "40,x,F,F,F"};
    QTest::newRow("slot 21") << QStringList{"set", "--bank", "1", "--slot", "21", "40,x,F,F,F"};
    QTest::newRow("search 0") << QStringList{"set", "--search", "0", "1,2,x"};
}

void TestKestrelctl::usageErrors() {
    QFETCH(QStringList, args);
    QTemporaryDir dir;
    const QString missing = dir.filePath(QStringLiteral("new"));
    auto r = runKestrelctl(withDir(missing, args));
    QCOMPARE(r.exitCode, 1);
    QVERIFY(!r.err.isEmpty());
    QVERIFY(r.out.isEmpty());
    QVERIFY(!QFileInfo::exists(missing));
    const auto before = snapshotTree(m_populated.path());
    QCOMPARE(runKestrelctl(withDir(m_populated.path(), args)).exitCode, 1);
    QCOMPARE(snapshotTree(m_populated.path()), before);
}

void TestKestrelctl::writeFailureExits2() {
    QTemporaryDir dir;
    writeFile(dir.filePath(QStringLiteral("file")), "keep");
    const QString data = dir.filePath(QStringLiteral("file/data"));
    const auto r = runKestrelctl(withDir(data, {"set", "--search", "1", "25,28,x"}));
    QCOMPARE(r.exitCode, 2);
    QVERIFY(r.err.contains("could not write"));
    QCOMPARE(readFile(dir.filePath(QStringLiteral("file"))), QByteArray("keep"));
}

QTEST_GUILESS_MAIN(TestKestrelctl)
#include "tst_kestrelctl.moc"
