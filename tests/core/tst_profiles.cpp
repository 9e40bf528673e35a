// SPDX-License-Identifier: GPL-3.0-or-later
// Profiles and the settings files: first start, the save rules with their Changed flags,
// settings limits, window placement, the service address, the registry.
#include "core/files.h"
#include "core/profiles.h"
#include "testsupport.h"

#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {
// A data folder as the first start leaves it, profile 0 saved too when asked.
void firstStart(const QString& dir, bool withMain) {
    AppContext ctx(dir);
    MakeBanksDir(ctx);
    Load_Profiles(ctx);
    ctx.Profiles[0].Changed = withMain;
    Save_Profiles(ctx);
}
} // namespace

class TestProfiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void firstStartMatchesGoldenThenWritesNothing() {
        QTemporaryDir dir;
        {
            AppContext ctx(dir.path());
            MakeBanksDir(ctx);
            Load_Profiles(ctx);
            QCOMPARE(ctx.Profiles[9].Name, u"Profile09"_s);
            QVERIFY(!ctx.Profiles[0].Changed && ctx.Profiles[1].Changed);
            QCOMPARE(snapshotTree(dir.path()).size(), 0); // loading writes nothing
            Save_Profiles(ctx);
            QCOMPARE(ctx.errors.reportCount(), 0);
        }
        const auto expected = snapshotTree(dataPath(u"first-start"_s));
        const auto actual = snapshotTree(dir.path());
        QCOMPARE(actual.keys(), expected.keys());
        QCOMPARE(changedFiles(expected, actual), QStringList());
        AppContext ctx(dir.path());
        Load_Profiles(ctx);
        for (int p = 0; p < ProfileCount; ++p)
            QVERIFY(!ctx.Profiles[p].Changed);
        Save_Profiles(ctx);
        QCOMPARE(snapshotTree(dir.path()), actual);
    }
    void saveWritesOnlyWhatChanged() {
        QTemporaryDir dir;
        firstStart(dir.path(), true);
        // Files in a form of their own: a rewrite would show as a change.
        writeFile(dir.filePath(u"Banks/Bank43.BKE"_s), "[ChnlInfo]\nChannel01 = 40.5,x\n");
        writeFile(dir.filePath(u"Banks/SrchBank04.SKE"_s), "[SrchInfo]\nSearch01 = 25,28,x\n");
        AppContext ctx(dir.path());
        Load_Profiles(ctx);
        const auto before = snapshotTree(dir.path());
        ctx.Profiles[4].Banks[2].Chans[3].Desc = u"Edited"_s;
        ctx.Profiles[4].Banks[2].Changed = ctx.Profiles[4].Changed = true;
        ctx.Profiles[5].Banks[1].Changed = true; // its profile is unchanged: not written
        Save_Profiles(ctx);
        // The search file of a saved profile is always written, a bank file only when changed.
        QCOMPARE(changedFiles(before, snapshotTree(dir.path())),
                 (QStringList{u"Banks/Bank42.BKE"_s, u"Banks/SrchBank04.SKE"_s}));
        QVERIFY(!ctx.Profiles[4].Changed && !ctx.Profiles[4].Banks[2].Changed);
        QVERIFY(ctx.Profiles[5].Banks[1].Changed);
    }
    void renamedBankSavedOnItsOwnKeepsItsName() {
        QTemporaryDir dir;
        firstStart(dir.path(), false);
        {
            AppContext ctx(dir.path());
            Load_Profiles(ctx);
            BankRec& bank = ctx.Profiles[4].Banks[2];
            bank.FileName = u"Renamed"_s;
            bank.Chans[1].Desc = u"Kept"_s;
            Save_BankInfo(ctx, 4, 2, ctx.bankPath(bank.FileName)); // clears its Changed
            ctx.Profiles[4].Changed = true;
            Save_Profiles(ctx);
        }
        AppContext ctx(dir.path());
        Load_Profiles(ctx);
        QCOMPARE(ctx.Profiles[4].Banks[2].FileName, u"Renamed"_s);
        QCOMPARE(ctx.Profiles[4].Banks[2].Chans[1].Desc, u"Kept"_s);
    }
    void namesAndSettingsFromFiles() {
        QTemporaryDir dir;
        writeFile(dir.filePath(u"Profiles.ini"_s), "[Profiles]\nProfile03=Air\n");
        writeFile(dir.filePath(u"Air.ini"_s),
                  "[Settings]\nSrchName=AirS\n[ScanBanks]\nBank01=A/B\n");
        writeFile(dir.filePath(u"Banks/A-B.BKE"_s), "[ChnlInfo]\nChannel01=118.1,Tower,F,F,F\n");
        writeFile(dir.filePath(u"Main.ini"_s),
                  "[settings]\ncommport=17\nKestrelCable=1\n"
                  "MainWindowPos=5000\n[RadioRef]\nDBaseProxyPrt=21\n");
        AppContext ctx(dir.path());
        Load_Profiles(ctx);
        const ProfileRec& air = ctx.Profiles[3];
        QVERIFY(air.Name == u"Air" && air.SrchName == u"AirS" && !air.Changed);
        QCOMPARE(air.Banks[1].FileName, u"A-B"_s);
        QCOMPARE(air.Banks[1].Chans[1].Desc, u"Tower"_s);
        QVERIFY(!air.Banks[1].Changed && air.Banks[3].Changed);
        QCOMPARE(air.Banks[3].Chans[1].Desc, u"Chan #041"_s); // factory of bank 3
        const ProgramSettings& s = ctx.settings;
        QVERIFY(s.CommPort == 16 && s.KestrelCable == 2 && s.DBaseProxyPrt == 80);
        QCOMPARE(s.pos(WindowId::Main), (WindowPos{200, 200}));
    }
    void programSettingsRoundTrip() {
        QTemporaryDir dir;
        {
            AppContext ctx(dir.path());
            Load_Profiles(ctx);
            ctx.settings.CommPort = 7;
            ctx.settings.DBaseLocUsr = u"http://127.0.0.1:8123/x/"_s;
            ctx.settings.DBaseVersion = 12;
            ctx.settings.DBaseIndex = 1;
            ctx.settings.pos(WindowId::CSV) = {300, 400};
            ctx.Profiles[0].Changed = true;
            Save_Profiles(ctx);
        }
        AppContext ctx(dir.path());
        Load_Profiles(ctx);
        QCOMPARE(int(ctx.settings.CommPort), 7);
        QCOMPARE(ctx.settings.pos(WindowId::CSV), (WindowPos{300, 400}));
        QCOMPARE(ctx.settings.ServiceAddress, u"http://127.0.0.1:8123/x/"_s);
        QVERIFY(!readFile(dir.filePath(u"Profile01.ini"_s)).contains("CommPort"));
    }
    void formPos_data() {
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("top");
        QTest::addColumn<int>("left");
        // Screen 20000 x 10000 twips, window 4000 x 6000: maxTop 6000, maxLeft 14000.
        QTest::newRow("missing") << "" << 200 << 200;
        QTest::newRow("three parts") << "1,2,3" << 200 << 200;
        QTest::newRow("stored") << "1000,2000" << 1000 << 2000;
        QTest::newRow("empty parts centre") << "," << 3000 << 7000;
        QTest::newRow("pulled inside") << "-50,99999" << 0 << 14000;
        QTest::newRow("half to even") << "2500.5,3.5" << 2500 << 4;
    }
    void formPos() {
        QFETCH(QString, value);
        QFETCH(int, top);
        QFETCH(int, left);
        QCOMPARE(Set_FormPos(value, QSize(20000, 10000), 4000, 6000), (WindowPos{top, left}));
    }
    void adjustToScreen() {
        const QSize screen(20000, 10000);
        QVERIFY(AdjFrmTop(10000, screen) == 10000 && AdjFrmTop(10001, screen) == 9800);
        QVERIFY(AdjFrmTop(-300, screen) == -300 && AdjFrmleft(25000, screen) == 19800);
    }
    void serviceAddress_data() {
        QTest::addColumn<int>("version");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("local"); // DBaseLocUsr
        QTest::addColumn<QString>("address");
        const QString pub = QString::fromLatin1(kPublicServiceHost);
        const QString std2 = DefaultLocalEndpoint(), typed = u"http://127.0.0.1:7000/l/"_s;
        QTest::newRow("v1 service") << 1 << 0 << typed << pub + "/soap/";
        QTest::newRow("v1 local") << 1 << 1 << std2 << "http://127.0.0.1:9000/soap/";
        QTest::newRow("v1 local typed") << 1 << 1 << typed << typed;
        QTest::newRow("v8 service") << 8 << 0 << typed << pub + "/soap2/";
        QTest::newRow("v8 local typed") << 8 << 1 << typed << typed;
        QTest::newRow("v9 user service") << 9 << 0 << typed << "https://example.test/svc/";
        QTest::newRow("v999 user local") << 999 << 1 << typed << typed;
    }
    void serviceAddress() {
        QFETCH(int, version);
        QFETCH(int, index);
        QFETCH(QString, local);
        QFETCH(QString, address);
        ProgramSettings s;
        s.DBaseVersion = qint16(version);
        s.DBaseIndex = qint16(index);
        s.DBaseEndUsr = u"https://example.test/svc/"_s;
        s.DBaseLocUsr = local;
        QCOMPARE(DeriveServiceAddress(s), address);
    }
    void registryValues() {
        // The test runs with a private XDG_CONFIG_HOME, so this is our own store.
        SaveRegistryValues({u"ann"_s, u"s3cret"_s, u"12345"_s});
        const RegistryValues v = LoadRegistryValues();
        QVERIFY(v.WebName == u"ann" && v.WebWord == u"s3cret" && v.ZipCode == u"12345");
    }
};

QTEST_GUILESS_MAIN(TestProfiles)
#include "tst_profiles.moc"
