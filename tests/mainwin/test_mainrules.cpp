// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's rules without a window: in-place edit rules, row texts, the File and Edit
// commands on the memory image and the files, and the service-band text.
#include "core/files.h"
#include "core/freq.h"
#include "core/memory.h"
#include "core/profiles.h"
#include "mainwin/editrules.h"
#include "mainwin/filecommands.h"
#include "mainwin/servicebands.h"
#include "testsupport.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

using namespace kestrel;
using kestrel::test::readFile;

class TestMainRules : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir = std::make_unique<QTemporaryDir>();
    std::unique_ptr<ScriptedPrompts> m_prompts;
    std::unique_ptr<AppContext> m_ctx;

    // A fresh data folder whose profiles have all been written once.
    AppContext& freshSaved() {
        m_ctx.reset();
        m_dir = std::make_unique<QTemporaryDir>();
        m_prompts = std::make_unique<ScriptedPrompts>();
        m_ctx = std::make_unique<AppContext>(m_dir->path(), m_prompts.get());
        MakeBanksDir(*m_ctx);
        Load_Profiles(*m_ctx);
        for (int p = 0; p < ProfileCount; ++p)
            m_ctx->Profiles[p].Changed = true;
        Save_Profiles(*m_ctx);
        return *m_ctx;
    }

    // The state of profile 0 as the next start will see it.
    std::unique_ptr<AppContext> reloaded() {
        auto ctx = std::make_unique<AppContext>(m_dir->path());
        Load_Profiles(*ctx);
        return ctx;
    }

private Q_SLOTS:
    void commitChannelFreq_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<double>("freq");
        QTest::addColumn<bool>("lockout");
        QTest::addColumn<bool>("delay");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<double>("wantFreq");
        QTest::addColumn<bool>("wantLockout");
        QTest::addColumn<bool>("wantDelay");
        QTest::newRow("locked-out channel gains a frequency")
            << "146.52" << 0.0 << true << false << "146.520000" << 146520000.0 << false << true;
        QTest::newRow("below the band empties and locks out")
            << "20" << 146520000.0 << false << true << "000.000000" << 0.0 << true << false;
        QTest::newRow("above the band")
            << "956.5" << 146520000.0 << false << false << "000.000000" << 0.0 << true << false;
        QTest::newRow("text that is no number")
            << "abc" << 40500000.0 << false << true << "000.000000" << 0.0 << true << false;
        QTest::newRow("scanned channel keeps its flags, delay off")
            << "462.5625" << 40500000.0 << false << false << "462.562500" << 462562500.0 << false
            << false;
        QTest::newRow("scanned channel keeps its flags, delay on")
            << " 25 " << 40500000.0 << false << true << "25.000000" << 25000000.0 << false << true;
        QTest::newRow("band edge")
            << "956" << 0.0 << true << false << "956.000000" << 956000000.0 << false << true;
    }
    void commitChannelFreq() {
        QFETCH(QString, typed);
        QFETCH(double, freq);
        QFETCH(bool, lockout);
        QFETCH(bool, delay);
        ChannelRec rec;
        rec.Freq = freq;
        rec.Lockout = lockout;
        rec.Delay = delay;
        rec.Priority = true;
        rec.Desc = QStringLiteral("Tower");
        const QString shown = CommitChannelFreq(rec, typed);
        QTEST(shown, "shown");
        QTEST(rec.Freq, "wantFreq");
        QTEST(rec.Lockout, "wantLockout");
        QTEST(rec.Delay, "wantDelay");
        QCOMPARE(rec.Priority, true);
        QCOMPARE(rec.Desc, QStringLiteral("Tower"));
    }

    void commitSearchFreq() {
        SearchRec rec{25000000.0, 27995000.0, QStringLiteral("Search #1"), 0};
        QCOMPARE(CommitSearchFreq(rec, ColUpper, QStringLiteral("30")),
                 QStringLiteral("30.000000"));
        QCOMPARE(rec.Upper, 30000000.0);
        QCOMPARE(rec.Lower, 25000000.0);
        QCOMPARE(CommitSearchFreq(rec, ColLower, QStringLiteral("1000")),
                 QStringLiteral("000.000000"));
        QCOMPARE(rec.Lower, 0.0);
        QCOMPARE(rec.Upper, 30000000.0);
    }

    void toggleChannelFlag_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<double>("freq");
        QTest::addColumn<bool>("delay");
        QTest::addColumn<bool>("priority");
        QTest::addColumn<bool>("lockout");
        QTest::addColumn<bool>("wantDelay");
        QTest::addColumn<bool>("wantPriority");
        QTest::addColumn<bool>("wantLockout");
        QTest::newRow("delay on") << int(ColDelay) << 146.52e6 << false << false << false << true
                                  << false << false;
        QTest::newRow("priority off")
            << int(ColPriority) << 146.52e6 << true << true << false << true << false << false;
        QTest::newRow("lock out a scanned channel drops delay")
            << int(ColLockout) << 146.52e6 << true << false << false << false << false << true;
        QTest::newRow("unlock a channel with frequency gains delay")
            << int(ColLockout) << 146.52e6 << false << true << true << true << true << false;
        QTest::newRow("unlock an empty channel keeps delay off")
            << int(ColLockout) << 0.0 << false << false << true << false << false << false;
        QTest::newRow("lock out an empty channel keeps delay on")
            << int(ColLockout) << 0.0 << true << false << false << true << false << true;
    }
    void toggleChannelFlag() {
        QFETCH(int, column);
        ChannelRec rec;
        QFETCH(double, freq);
        rec.Freq = freq;
        QFETCH(bool, delay);
        QFETCH(bool, priority);
        QFETCH(bool, lockout);
        rec.Delay = delay;
        rec.Priority = priority;
        rec.Lockout = lockout;
        QVERIFY(ToggleChannelFlag(rec, column));
        QTEST(rec.Delay, "wantDelay");
        QTEST(rec.Priority, "wantPriority");
        QTEST(rec.Lockout, "wantLockout");
    }

    void nonFlagColumnsDoNotToggle() {
        ChannelRec rec;
        rec.Freq = 146.52e6;
        const ChannelRec before = rec;
        for (int column : {int(ColChanNumber), int(ColFreq), int(ColDesc)}) {
            QVERIFY(!ToggleChannelFlag(rec, column));
            QVERIFY(rec == before);
        }
    }

    void rowTexts() {
        ChannelRec rec;
        rec.Freq = 146520000.0;
        rec.Desc = QStringLiteral(" Fire Dispatch ");
        rec.Delay = true;
        rec.Priority = false;
        rec.Lockout = true;
        QCOMPARE(ChannelRowTexts(7, rec),
                 QStringList({"007", "146.520000", " Fire Dispatch ", "True", "False", "True"}));
        QCOMPARE(ChannelRowTexts(200, ChannelRec{}),
                 QStringList({"200", "000.000000", "", "False", "False", "False"}));
        const SearchRec range{406000000.0, 419993750.0, QStringLiteral("Search #7"), 0};
        QCOMPARE(SearchRowTexts(7, range),
                 QStringList({"07", "406.000000", "419.993750", "Search #7"}));
        QCOMPARE(ChannelHeaders().size(), kChannelColumns);
        QCOMPARE(SearchHeaders().size(), kSearchColumns);
    }

    void storedCellText() {
        ChannelRec rec;
        rec.Freq = 40.5e6;
        rec.Desc = QStringLiteral("Chan #001");
        QCOMPARE(StoredCellText(rec, ColFreq), QStringLiteral("40.500000"));
        QCOMPARE(StoredCellText(rec, ColDesc), QStringLiteral("Chan #001"));
        const SearchRec range{25e6, 27.995e6, QStringLiteral("Search #1"), 0};
        QCOMPARE(StoredSearchCellText(range, ColLower), QStringLiteral("25.000000"));
        QCOMPARE(StoredSearchCellText(range, ColUpper), QStringLiteral("27.995000"));
        QCOMPARE(StoredSearchCellText(range, ColSrchDesc), QStringLiteral("Search #1"));
    }

    void usableBaseName_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("usable");
        QTest::newRow("plain") << "Fire Bank 2" << true;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("blanks") << "   " << false;
        QTest::newRow("dot") << "Air.Band" << false;
        QTest::newRow("slash") << "A/B" << false;
        QTest::newRow("backslash") << "A\\B" << false;
        QTest::newRow("comma") << "A,B" << false;
        QTest::newRow("colon") << "C:" << false;
    }
    void usableBaseName() {
        QFETCH(QString, name);
        QTEST(IsUsableBaseName(name), "usable");
    }

    void fileDialogSpecs_data() {
        QTest::addColumn<int>("command");
        QTest::addColumn<bool>("open");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("ext");
        QTest::addColumn<QString>("preset");
        QTest::newRow("load profile") << int(FileCommand::LoadProfile) << true << "Load Profile"
                                      << ""
                                      << "*.ini"
                                      << "ini"
                                      << "*.ini";
        QTest::newRow("save profile as")
            << int(FileCommand::SaveProfileAs) << false << "Save Profile As"
            << ""
            << "*.ini"
            << "ini"
            << "Profile03.ini";
        QTest::newRow("load bank") << int(FileCommand::LoadBank) << true << "Load Bank"
                                   << "Banks/"
                                   << "*.BKE"
                                   << "BKE"
                                   << "*.BKE";
        QTest::newRow("save bank as") << int(FileCommand::SaveBankAs) << false << "Save Bank As"
                                      << "Banks/"
                                      << "*.BKE"
                                      << "BKE"
                                      << "Untitled.BKE";
        QTest::newRow("load search") << int(FileCommand::LoadSearch) << true << "Load Search"
                                     << "Banks/"
                                     << "*.SKE"
                                     << "SKE"
                                     << "*.SKE";
        QTest::newRow("save search as")
            << int(FileCommand::SaveSearchAs) << false << "Save Search As"
            << "Banks/"
            << "*.SKE"
            << "SKE"
            << "*.SKE";
    }
    void fileDialogSpecs() {
        QFETCH(int, command);
        AppContext ctx(QStringLiteral("/data/kestrel"));
        ShownNames shown{QStringLiteral("Profile03"), ctx.settingsPath(QStringLiteral("Profile03")),
                         QStringLiteral("SrchBank03")};
        const FileDialogSpec spec = FileDialogFor(FileCommand(command), ctx, shown);
        QTEST(IsOpenDialog(FileCommand(command)), "open");
        QTEST(spec.title, "title");
        QFETCH(QString, folder);
        QCOMPARE(spec.startDir, QStringLiteral("/data/kestrel/") + folder);
        QTEST(spec.pattern, "pattern");
        QTEST(spec.defaultExt, "ext");
        QTEST(spec.presetName, "preset");
    }

    void loadBankTakesNameBeforeFirstDot() {
        AppContext& ctx = freshSaved();
        ctx.CurBank = 4;
        Save_BankInfo(ctx, 0, 1, ctx.bankPath(QStringLiteral("Air.Band")));
        LoadBankFrom(ctx, ctx.bankPath(QStringLiteral("Air.Band")));
        const BankRec& bank = ctx.Profiles[0].Banks[4];
        QCOMPARE(bank.FileName, QStringLiteral("Air"));
        QCOMPARE(bank.Chans[1].Freq, 40500000.0); // bank 1's contents, loaded into bank 4
        QVERIFY(bank.Changed);
        QVERIFY(ctx.Profiles[0].Changed);
    }

    void loadBankMarksProfileZero() {
        AppContext& ctx = freshSaved();
        ctx.CurProfile = 2;
        ctx.CurBank = 1;
        LoadBankFrom(ctx, ctx.bankPath(QStringLiteral("Bank05")));
        QVERIFY(ctx.Profiles[2].Changed);
        QVERIFY(ctx.Profiles[0].Changed);
        QCOMPARE(ctx.Profiles[2].Banks[1].FileName, QStringLiteral("Bank05"));
    }

    // Cleared search limits do persist: the profile's search file is rewritten with it.
    void clearedSearchLimitsAreWrittenAtClosing() {
        AppContext& ctx = freshSaved();
        ctx.CurBank = SearchTab;
        ApplyEditCommand(ctx, EditCommand::ClearSearchLimits);
        Save_Profiles(ctx);
        const auto next = reloaded();
        QCOMPARE(next->Profiles[0].Searches[3].Desc, QStringLiteral("Edit-Me"));
        QCOMPARE(next->Profiles[0].Searches[3].Lower, 0.0);
    }

    void factoryFillsTouchEveryBank() {
        AppContext& ctx = freshSaved();
        ctx.CurBank = 2;
        ApplyEditCommand(ctx, EditCommand::ClearAllBanks);
        for (int b = 1; b <= BankCount; ++b)
            QCOMPARE(ctx.Profiles[0].Banks[b].Chans[20].Desc, QStringLiteral("Edit-Me"));
        ApplyEditCommand(ctx, EditCommand::SetDefaultBank);
        QCOMPARE(ctx.Profiles[0].Banks[2].Chans[1].Desc, QStringLiteral("Chan #021"));
        QCOMPARE(ctx.Profiles[0].Banks[3].Chans[1].Desc, QStringLiteral("Edit-Me"));
        ApplyEditCommand(ctx, EditCommand::SetFactoryDefaults);
        QCOMPARE(ctx.Profiles[0].Banks[10].Chans[20].Desc, QStringLiteral("Chan #200"));
        for (int b = 1; b <= BankCount; ++b)
            QVERIFY(!ctx.Profiles[0].Banks[b].Changed);
    }

    void saveBankAsRenamesAndSavesAgainAtClosing() {
        AppContext& ctx = freshSaved();
        ctx.CurBank = 2;
        SaveBankAs(ctx, ctx.bankPath(QStringLiteral("Marine")));
        QCOMPARE(ctx.Profiles[0].Banks[2].FileName, QStringLiteral("Marine"));
        QVERIFY(ctx.Profiles[0].Banks[2].Changed);
        QVERIFY(File_Exists(ctx.bankPath(QStringLiteral("Marine"))));
        ctx.Profiles[0].Banks[2].Chans[2].Desc = QStringLiteral("Later edit");
        Save_Profiles(ctx);
        const auto next = reloaded();
        QCOMPARE(next->Profiles[0].Banks[2].FileName, QStringLiteral("Marine"));
        QCOMPARE(next->Profiles[0].Banks[2].Chans[2].Desc, QStringLiteral("Later edit"));
    }

    void saveProfileAsKeepsTheRecordName() {
        AppContext& ctx = freshSaved();
        ctx.CurProfile = 4;
        ShownNames shown = ShownNames::of(ctx);
        const QString chosen = m_dir->path() + QStringLiteral("/Weekend.ini");
        SaveProfileAs(ctx, shown, chosen);
        QCOMPARE(shown.profName, QStringLiteral("Weekend"));
        QCOMPARE(shown.profPath, chosen);
        QCOMPARE(ctx.Profiles[4].Name, QStringLiteral("Profile04"));
        QVERIFY(!ctx.Profiles[4].Changed); // written just now
        QVERIFY(readFile(chosen).contains("SrchName=SrchBank04"));
    }

    void loadProfileNamesTheProfile() {
        AppContext& ctx = freshSaved();
        ctx.CurProfile = 0;
        ShownNames shown = ShownNames::of(ctx);
        // Only changed banks are named in a saved settings file.
        for (int b = 1; b <= BankCount; ++b)
            ctx.Profiles[0].Banks[b].Changed = true;
        SaveProfileAs(ctx, shown, m_dir->path() + QStringLiteral("/Trip.ini"));
        ctx.CurProfile = 3;
        shown = ShownNames::of(ctx);
        LoadProfileFrom(ctx, shown, m_dir->path() + QStringLiteral("/Trip.ini"));
        QCOMPARE(ctx.Profiles[3].Name, QStringLiteral("Trip"));
        QCOMPARE(shown.profName, QStringLiteral("Trip"));
        QCOMPARE(ctx.Profiles[3].Banks[1].FileName, QStringLiteral("Bank01"));
        QCOMPARE(ctx.Profiles[3].SrchName, QStringLiteral("SrchBank00"));
        QVERIFY(ctx.Profiles[3].Changed);
        QVERIFY(ctx.Profiles[0].Changed);
        Save_Profiles(ctx);
        QCOMPARE(reloaded()->Profiles[3].Name, QStringLiteral("Trip"));
    }

    void loadProfileIntoMainKeepsItsName() {
        AppContext& ctx = freshSaved();
        ctx.CurProfile = 5;
        ShownNames shown = ShownNames::of(ctx);
        for (int b = 1; b <= BankCount; ++b)
            ctx.Profiles[5].Banks[b].Changed = true;
        SaveProfileAs(ctx, shown, m_dir->path() + QStringLiteral("/Other.ini"));
        ctx.CurProfile = 0;
        shown = ShownNames::of(ctx);
        LoadProfileFrom(ctx, shown, m_dir->path() + QStringLiteral("/Other.ini"));
        QCOMPARE(ctx.Profiles[0].Name, QStringLiteral("Main"));
        QCOMPARE(ctx.Profiles[0].Banks[1].FileName, QStringLiteral("Bank51"));
        Save_Profiles(ctx);
        QCOMPARE(reloaded()->Profiles[0].Banks[1].FileName, QStringLiteral("Bank51"));
    }

    // Loaded limits are written to the profile's own search file; the name stays the profile's.
    void loadSearchKeepsTheProfilesSearchFile() {
        AppContext& ctx = freshSaved();
        ctx.Profiles[1].Searches[2].Desc = QStringLiteral("Loaded");
        Save_SearchInfo(ctx, 1, ctx.searchPath(QStringLiteral("Elsewhere")));
        ShownNames shown = ShownNames::of(ctx);
        LoadSearchFrom(ctx, shown, ctx.searchPath(QStringLiteral("Elsewhere")));
        QCOMPARE(shown.srchName, QStringLiteral("Elsewhere"));
        QCOMPARE(ctx.Profiles[0].SrchName, QStringLiteral("SrchBank00"));
        QCOMPARE(ctx.Profiles[0].Searches[2].Desc, QStringLiteral("Loaded"));
        QVERIFY(ctx.Profiles[0].Changed);
        Save_Profiles(ctx);
        QVERIFY(readFile(ctx.searchPath(QStringLiteral("SrchBank00"))).contains("Loaded"));
    }

    void saveSearchAsRenamesTheProfilesSearchFile() {
        AppContext& ctx = freshSaved();
        ShownNames shown = ShownNames::of(ctx);
        SaveSearchAs(ctx, shown, ctx.searchPath(QStringLiteral("Coast")));
        QCOMPARE(ctx.Profiles[0].SrchName, QStringLiteral("Coast"));
        QCOMPARE(shown.srchName, QStringLiteral("Coast"));
        QVERIFY(File_Exists(ctx.searchPath(QStringLiteral("Coast"))));
        QVERIFY(ctx.Profiles[0].Changed);
        Save_Profiles(ctx);
        QCOMPARE(reloaded()->Profiles[0].SrchName, QStringLiteral("Coast"));
    }

    void clearSelectedEntries_data() {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("bank");
        QTest::addColumn<int>("slot");
        QTest::newRow("channel 20") << 20 << 1 << 20;
        QTest::newRow("channel 21") << 21 << 2 << 1;
        QTest::newRow("channel 200") << 200 << 10 << 20;
    }
    void clearSelectedEntries() {
        QFETCH(int, number);
        QFETCH(int, bank);
        QFETCH(int, slot);
        AppContext ctx(m_dir->path());
        for (int b = 1; b <= BankCount; ++b)
            FactoryBank(ctx, b);
        ctx.Profiles[0].Banks[bank].Chans[slot].Desc = QStringLiteral("Mine");
        ClearChannels(ctx, {number}, false);
        const ChannelRec& rec = ctx.Profiles[0].Banks[bank].Chans[slot];
        QCOMPARE(rec.Desc, QStringLiteral("Edit-Me"));
        QVERIFY(rec.Lockout);
        QCOMPARE(rec.Freq, 0.0);
        ClearChannels(ctx, {number}, true);
        QCOMPARE(rec.Desc, QStringLiteral("Chan #") + Num3(number));
        // Neighbours and flags stay as they were.
        QCOMPARE(ctx.Profiles[0].Banks[bank].Chans[slot == 1 ? 2 : 1].Desc.left(6),
                 QStringLiteral("Chan #"));
        QVERIFY(!ctx.Profiles[0].Changed);
        QVERIFY(!ctx.Profiles[0].Banks[bank].Changed);
    }

    void clearSelectedSearches() {
        AppContext ctx(m_dir->path());
        DefaultSearchLimits(ctx);
        ClearSearches(ctx, {2, 10}, false);
        QCOMPARE(ctx.Profiles[0].Searches[2].Desc, QStringLiteral("Edit-Me"));
        QCOMPARE(ctx.Profiles[0].Searches[10].Upper, 0.0);
        QCOMPARE(ctx.Profiles[0].Searches[3].Desc, QStringLiteral("Search #3"));
        ClearSearches(ctx, {10}, true);
        QCOMPARE(ctx.Profiles[0].Searches[10].Upper, 956000000.0);
        QVERIFY(!ctx.Profiles[0].Changed);
    }

    void serviceBandsLineUp_data() {
        QTest::addColumn<int>("list");
        QTest::newRow("air, marine, ham, weather") << 1;
        QTest::newRow("police and fire") << 2;
    }
    void serviceBandsLineUp() {
        QFETCH(int, list);
        const QStringList lines = ServiceBandLines(list);
        const QList<ServiceBand>& bands = ServiceBandList(list);
        QCOMPARE(lines.size(), bands.size() + 1);
        QVERIFY(lines.first().endsWith(QStringLiteral("Step")));
        const qsizetype stepEnd = lines.first().size();
        const QRegularExpression range(QStringLiteral("(\\d+\\.\\d{4})(?: - +(\\d+\\.\\d{4}))?"));
        qsizetype lowEnd = -1;
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const QString& line = lines[i];
            const ServiceBand& band = bands[i - 1];
            QVERIFY2(line.startsWith(QString::fromLatin1(band.label)), qPrintable(line));
            const QRegularExpressionMatch m = range.match(line);
            QVERIFY2(m.hasMatch(), qPrintable(line));
            QCOMPARE(m.captured(1).toDouble(), band.lowMHz);
            if (band.highMHz > 0)
                QCOMPARE(m.captured(2).toDouble(), band.highMHz);
            // Every lower limit ends in the same column, and so does every step.
            if (lowEnd < 0)
                lowEnd = m.capturedEnd(1);
            QCOMPARE(m.capturedEnd(1), lowEnd);
            if (band.stepKHz > 0) {
                QCOMPARE(line.size(), stepEnd);
                QCOMPARE(line.section(QLatin1Char(' '), -1).toDouble(), band.stepKHz);
            } else {
                QVERIFY(line.size() < stepEnd - 3);
            }
        }
    }

    void serviceBandHeadings() {
        QVERIFY(ServiceBandLines(2).first().startsWith(QStringLiteral("Police / Fire:")));
        const QStringList first = ServiceBandLines(1);
        for (const char* label : {"Air:", "Marine:", "Ham:", "WX:"})
            QCOMPARE(first
                         .filter(QRegularExpression(
                             QStringLiteral("^") +
                             QRegularExpression::escape(QString::fromLatin1(label))))
                         .size(),
                     1);
    }
};

QTEST_GUILESS_MAIN(TestMainRules)
#include "test_mainrules.moc"
