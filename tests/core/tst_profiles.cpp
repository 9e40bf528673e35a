// SPDX-License-Identifier: GPL-3.0-or-later
// Profiles and the settings files: first start, the load and save sequences with their Changed
// flags, settings defaults and limits, window placement, the service address, the registry.
#include "core/files.h"
#include "core/profiles.h"
#include "testsupport.h"

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;
using kestrel::test::readFile;
using kestrel::test::snapshotTree;
using kestrel::test::writeFile;

class TestProfiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void firstStartThenSaveMatchesGolden();
    void secondStartWritesNothing();
    void settingsValues_data();
    void settingsValues();
    void bankNamesFromSettings();
    void saveWritesOnlyWhatChanged();
    void programSettingsRoundTrip();
    void formPos_data();
    void formPos();
    void adjFrm();
    void serviceAddress_data();
    void serviceAddress();
    void registryValues();
};

void TestProfiles::firstStartThenSaveMatchesGolden() {
    QTemporaryDir dir;
    AppContext ctx(dir.path());
    MakeBanksDir(ctx);
    Load_Profiles(ctx);
    QCOMPARE(ctx.Profiles[0].Name, QStringLiteral("Main"));
    QCOMPARE(ctx.Profiles[9].Name, QStringLiteral("Profile09"));
    QCOMPARE(ctx.Profiles[0].SrchName, QStringLiteral("SrchBank00"));
    QCOMPARE(ctx.Profiles[9].Banks[10].FileName, QStringLiteral("Bank100"));
    QVERIFY(!ctx.Profiles[0].Changed);
    for (int p = 1; p < ProfileCount; ++p)
        QVERIFY(ctx.Profiles[p].Changed);
    QCOMPARE(ctx.Profiles[0].Banks[1].Chans[1].Desc, QStringLiteral("Chan #001"));
    QCOMPARE(snapshotTree(dir.path()).size(), 0); // loading writes nothing
    Save_Profiles(ctx);
    QCOMPARE(ctx.errors.reportCount(), 0);

    const QString golden = test::dataPath(QStringLiteral("first-start"));
    const auto expected = snapshotTree(golden);
    const auto actual = snapshotTree(dir.path());
    QCOMPARE(actual.keys(), expected.keys());
    for (auto it = expected.begin(); it != expected.end(); ++it)
        QVERIFY2(actual[it.key()] == it.value(), qPrintable(it.key()));
    for (int p = 0; p < ProfileCount; ++p)
        QVERIFY(!ctx.Profiles[p].Changed);
}

void TestProfiles::secondStartWritesNothing() {
    QTemporaryDir dir;
    {
        AppContext ctx(dir.path());
        MakeBanksDir(ctx);
        Load_Profiles(ctx);
        Save_Profiles(ctx);
    }
    const auto before = snapshotTree(dir.path());
    AppContext ctx(dir.path());
    Load_Profiles(ctx);
    for (int p = 0; p < ProfileCount; ++p) {
        QVERIFY(!ctx.Profiles[p].Changed);
        for (int b = 1; b <= BankCount; ++b)
            QCOMPARE(ctx.Profiles[p].Banks[b].Changed, p == 0); // Main.ini names no bank yet
    }
    Save_Profiles(ctx);
    QCOMPARE(snapshotTree(dir.path()), before);
}

void TestProfiles::settingsValues_data() {
    QTest::addColumn<QByteArray>("mainIni");
    QTest::addColumn<int>("commPort");
    QTest::addColumn<int>("cable");
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("proxyPort");
    const int left = 1920 * 15 - windowInfo(WindowId::Main).designWidth;
    QTest::newRow("empty file") << QByteArray() << 1 << 2 << 200 << 200 << 8080;
    QTest::newRow("port 0") << QByteArray("[Settings]\nCommPort=0\n") << 1 << 2 << 200 << 200
                            << 8080;
    QTest::newRow("port 17") << QByteArray("[settings]\ncommport=17\n") << 16 << 2 << 200 << 200
                             << 8080;
    QTest::newRow("port abc") << QByteArray("[Settings]\nCommPort=abc\n") << 1 << 2 << 200 << 200
                              << 8080;
    QTest::newRow("cable 1") << QByteArray("[Settings]\nKestrelCable=1\n") << 1 << 2 << 200 << 200
                             << 8080;
    QTest::newRow("cable 3") << QByteArray("[Settings]\nKestrelCable=3\n") << 1 << 3 << 200 << 200
                             << 8080;
    QTest::newRow("position of one part")
        << QByteArray("[Settings]\nMainWindowPos=5000\n") << 1 << 2 << 200 << 200 << 8080;
    QTest::newRow("position pulled inside")
        << QByteArray("[Settings]\nMainWindowPos=-50,99999\n") << 1 << 2 << 0 << left << 8080;
    QTest::newRow("proxy port low")
        << QByteArray("[RadioRef]\nDBaseProxyPrt=21\n") << 1 << 2 << 200 << 200 << 80;
}

void TestProfiles::settingsValues() {
    QFETCH(QByteArray, mainIni);
    QFETCH(int, commPort);
    QFETCH(int, cable);
    QFETCH(int, top);
    QFETCH(int, left);
    QFETCH(int, proxyPort);
    QTemporaryDir dir;
    if (!mainIni.isNull())
        writeFile(dir.filePath(QStringLiteral("Main.ini")), mainIni);
    AppContext ctx(dir.path());
    Load_Profiles(ctx);
    const ProgramSettings& s = ctx.settings;
    QCOMPARE(int(s.CommPort), commPort);
    QCOMPARE(int(s.KestrelCable), cable);
    QCOMPARE(s.pos(WindowId::Main), (WindowPos{top, left}));
    QCOMPARE(int(s.DBaseProxyPrt), proxyPort);
}

void TestProfiles::bankNamesFromSettings() {
    QTemporaryDir dir;
    writeFile(dir.filePath(QStringLiteral("Profiles.ini")), "[Profiles]\nProfile03=Air\n");
    writeFile(dir.filePath(QStringLiteral("Air.ini")),
              "[Settings]\nSrchName=AirSearch\n[ScanBanks]\nBank01=A/B\nBank02=Tower\n");
    writeFile(dir.filePath(QStringLiteral("Banks/A-B.BKE")),
              "[ChnlInfo]\nChannel01=118.1,Tower,False,False,False\n");
    writeFile(dir.filePath(QStringLiteral("Banks/AirSearch.SKE")),
              "[SrchInfo]\nSearch01=118,137,Air\n");
    AppContext ctx(dir.path());
    Load_Profiles(ctx);
    const ProfileRec& air = ctx.Profiles[3];
    QCOMPARE(air.Name, QStringLiteral("Air"));
    QVERIFY(!air.Changed);
    QCOMPARE(air.SrchName, QStringLiteral("AirSearch"));
    QCOMPARE(air.Searches[1].Desc, QStringLiteral("Air"));
    QCOMPARE(air.Banks[1].FileName, QStringLiteral("A-B"));
    QCOMPARE(air.Banks[1].Chans[1].Desc, QStringLiteral("Tower"));
    QVERIFY(!air.Banks[1].Changed && !air.Banks[2].Changed);
    QCOMPARE(air.Banks[3].FileName, QStringLiteral("Bank33"));
    QVERIFY(air.Banks[3].Changed);
    QCOMPARE(air.Banks[3].Chans[1].Desc, QStringLiteral("Chan #041")); // factory of bank 3
    QCOMPARE(ctx.Profiles[2].Name, QStringLiteral("Profile02"));
    QVERIFY(ctx.Profiles[2].Changed);
}

void TestProfiles::saveWritesOnlyWhatChanged() {
    QTemporaryDir dir;
    {
        AppContext ctx(dir.path());
        MakeBanksDir(ctx);
        Load_Profiles(ctx);
        ctx.Profiles[0].Changed = true;
        Save_Profiles(ctx);
    }
    // Files in a form of their own: a rewrite would show as a change.
    writeFile(dir.filePath(QStringLiteral("Banks/Bank43.BKE")), "[ChnlInfo]\nChannel01 = 40.5,x\n");
    writeFile(dir.filePath(QStringLiteral("Banks/SrchBank04.SKE")),
              "[SrchInfo]\nSearch01 = 25,28,x\n");
    AppContext ctx(dir.path());
    Load_Profiles(ctx);
    const auto before = snapshotTree(dir.path());
    // An in-place edit in bank 2 of profile 4.
    ctx.CurProfile = 4;
    ctx.Profiles[4].Banks[2].Chans[3].Desc = QStringLiteral("Edited");
    ctx.Profiles[4].Banks[2].Changed = true;
    ctx.Profiles[4].Changed = true;
    // A changed bank of an unchanged profile is not written.
    ctx.Profiles[5].Banks[1].Chans[1].Desc = QStringLiteral("Lost until its profile changes");
    ctx.Profiles[5].Banks[1].Changed = true;
    Save_Profiles(ctx);
    const auto after = snapshotTree(dir.path());
    QStringList changed;
    for (auto it = after.begin(); it != after.end(); ++it)
        if (before.value(it.key()) != it.value())
            changed << it.key();
    // The search file of a saved profile is always written, a bank file only when changed.
    QCOMPARE(changed, (QStringList{QStringLiteral("Banks/Bank42.BKE"),
                                   QStringLiteral("Banks/SrchBank04.SKE")}));
    QCOMPARE(after.keys(), before.keys());
    QVERIFY(!ctx.Profiles[4].Changed && !ctx.Profiles[4].Banks[2].Changed);
    QVERIFY(ctx.Profiles[5].Banks[1].Changed);
}

void TestProfiles::programSettingsRoundTrip() {
    QTemporaryDir dir;
    {
        AppContext ctx(dir.path());
        MakeBanksDir(ctx);
        Load_Profiles(ctx);
        ProgramSettings& s = ctx.settings;
        s.CommPort = 7;
        s.KestrelCable = 3;
        s.DBaseVersion = 12;
        s.DBaseIndex = 1;
        s.DBaseLocUsr = QStringLiteral("http://127.0.0.1:8123/x/");
        s.DBaseProxyUse = true;
        s.pos(WindowId::CSV) = {300, 400};
        ctx.Profiles[0].Changed = true;
        Save_Profiles(ctx);
    }
    AppContext ctx(dir.path());
    Load_Profiles(ctx);
    const ProgramSettings& s = ctx.settings;
    QCOMPARE(int(s.CommPort), 7);
    QCOMPARE(int(s.KestrelCable), 3);
    QVERIFY(s.DBaseProxyUse);
    QCOMPARE(s.pos(WindowId::CSV), (WindowPos{300, 400}));
    QCOMPARE(s.ServiceAddress, QStringLiteral("http://127.0.0.1:8123/x/"));
    // Only profile 0 carries the program-wide part.
    QVERIFY(!readFile(dir.filePath(QStringLiteral("Profile01.ini"))).contains("CommPort"));
}

void TestProfiles::formPos_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("left");
    // Screen 20000 x 10000 twips, window 4000 high and 6000 wide: maxTop 6000, maxLeft 14000.
    QTest::newRow("missing") << "" << 200 << 200;
    QTest::newRow("one part") << "5000" << 200 << 200;
    QTest::newRow("three parts") << "1,2,3" << 200 << 200;
    QTest::newRow("stored") << "1000,2000" << 1000 << 2000;
    QTest::newRow("empty parts centre") << "," << 3000 << 7000;
    QTest::newRow("pulled inside") << "-50,99999" << 0 << 14000;
    QTest::newRow("half rounds to even") << "2500.5,3.5" << 2500 << 4;
}

void TestProfiles::formPos() {
    QFETCH(QString, value);
    QFETCH(int, top);
    QFETCH(int, left);
    QCOMPARE(Set_FormPos(value, QSize(20000, 10000), 4000, 6000), (WindowPos{top, left}));
}

void TestProfiles::adjFrm() {
    const QSize screen(20000, 10000);
    QCOMPARE(AdjFrmTop(10000, screen), 10000);
    QCOMPARE(AdjFrmTop(10001, screen), 9800);
    QCOMPARE(AdjFrmTop(-300, screen), -300);
    QCOMPARE(AdjFrmleft(20000, screen), 20000);
    QCOMPARE(AdjFrmleft(25000, screen), 19800);
}

void TestProfiles::serviceAddress_data() {
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("address");
    const QString pub = QString::fromLatin1(kPublicServiceHost);
    QTest::newRow("v1 service") << 1 << 0 << pub + "/soap/";
    QTest::newRow("v1 local") << 1 << 1 << "http://127.0.0.1:9000/soap/";
    QTest::newRow("v2 service") << 2 << 0 << pub + "/soap2/";
    QTest::newRow("v8 local") << 8 << 1 << "http://127.0.0.1:9000/soap2/";
    QTest::newRow("v9 user service") << 9 << 0 << "https://example.test/svc/";
    QTest::newRow("v999 user local") << 999 << 1 << "http://127.0.0.1:7000/l/";
}

void TestProfiles::serviceAddress() {
    QFETCH(int, version);
    QFETCH(int, index);
    QFETCH(QString, address);
    ProgramSettings s;
    s.DBaseVersion = qint16(version);
    s.DBaseIndex = qint16(index);
    s.DBaseEndUsr = QStringLiteral("https://example.test/svc/");
    s.DBaseLocUsr = QStringLiteral("http://127.0.0.1:7000/l/");
    QCOMPARE(DeriveServiceAddress(s), address);
}

void TestProfiles::registryValues() {
    // The test runs with a private XDG_CONFIG_HOME, so this is our own store.
    SaveRegistryValues({QStringLiteral("ann"), QStringLiteral("s3cret"), QStringLiteral("12345")});
    const RegistryValues v = LoadRegistryValues();
    QCOMPARE(v.WebName, QStringLiteral("ann"));
    QCOMPARE(v.WebWord, QStringLiteral("s3cret"));
    QCOMPARE(v.ZipCode, QStringLiteral("12345"));
    QSettings native(QSettings::NativeFormat, QSettings::UserScope, QString::fromLatin1(kPublisher),
                     QString::fromLatin1(kProgramKey));
    QVERIFY(native.fileName().startsWith(qEnvironmentVariable("XDG_CONFIG_HOME")));
    QCOMPARE(native.value(QStringLiteral("WebWord")).toString(), QStringLiteral("s3cret"));
}

QTEST_GUILESS_MAIN(TestProfiles)
#include "tst_profiles.moc"
