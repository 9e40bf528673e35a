// SPDX-License-Identifier: GPL-3.0-or-later
// Undo and redo over the libraries: from a seeded random memory image, random changes of every
// kind the libraries make, each one step; undoing them all gives back the first image record by
// record, Changed flags included, and redoing them all the last. KESTREL_SEED=n repeats a run.
#include "core/files.h"
#include "core/memory.h"
#include "core/profiles.h"
#include "history/history.h"
#include "imagelines.h"
#include "mainwin/filecommands.h"
#include "organize/chirpcsv.h"
#include "organize/chnlorganizer.h"
#include "organize/csvimport.h"
#include "testsupport.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;
using namespace Qt::StringLiterals;

namespace {

class Run {
public:
    explicit Run(quint32 seed) : m_rng(seed), m_ctx(m_dir.path(), &m_prompts) {
        // Files the File menu's loads and the imports read, written before the history starts.
        MakeBanksDir(m_ctx);
        randomize();
        Save_BankInfo(m_ctx, 1, 1, m_ctx.bankPath(u"Loadable"_s));
        Save_SearchInfo(m_ctx, 1, m_ctx.searchPath(u"Loadable"_s));
        Save_Settings(m_ctx, 2, m_ctx.settingsPath(u"Other"_s));
        QByteArray csv;
        for (int i = 1; i <= 21; ++i)
            csv += "Csv " + QByteArray::number(i) + ",1" + QByteArray::number(40 + i) + ".5,True\n";
        kestrel::test::writeFile(m_dir.filePath(u"in.csv"_s), csv);
        randomize();
    }
    AppContext& ctx() { return m_ctx; }
    QUndoStack& stack() { return HistoryOf(m_ctx).stack(); }

    // One random change of one of the kinds the program makes.
    void change() {
        const qint16 p = qint16(pick(ProfileCount));
        const int b = 1 + pick(BankCount);
        const int slot = 1 + pick(ChansPerBank);
        ProfileRec& profile = m_ctx.Profiles[p];
        ShownNames shown;
        CsvImport csv(m_ctx);
        ChannelOrganizer org(m_ctx);
        switch (pick(12)) {
        case 0: // the list pop-up menu
            ClearChannels(m_ctx, p, {1 + pick(ChannelCount), 1 + pick(ChannelCount)}, pick(2));
            break;
        case 1:
            ClearSearches(m_ctx, p, {1 + pick(SearchCount), 1 + pick(SearchCount)}, pick(2));
            break;
        case 2:
            ApplyEditCommand(m_ctx, p, b, EditCommand(pick(6)));
            break;
        case 3:
            LoadBankFrom(m_ctx, p, b, m_ctx.bankPath(u"Loadable"_s));
            break;
        case 4:
            LoadSearchFrom(m_ctx, p, shown, m_ctx.searchPath(u"Loadable"_s));
            break;
        case 5:
            if (p != 0)
                LoadProfileFrom(m_ctx, p, shown, m_ctx.settingsPath(u"Other"_s));
            break;
        case 6:
            QVERIFY(csv.open(m_dir.filePath(u"in.csv"_s)));
            pick(2) ? csv.importToBank(p, b, {1, 2, 3, 0, 3}) : csv.importToSearch(p, {1, 2, 2});
            break;
        case 7:
            ImportChirp(m_ctx, p, b, kestrel::test::dataPath(u"chirp/radio.csv"_s),
                        pick(2) ? ChirpPlacement::ByLocation : ChirpPlacement::ShownBank);
            break;
        case 8: // the channel organizer: a drop and a sort, saved
            org.load(p);
            org.selectBank(ChannelOrganizer::Source, b);
            org.selectBank(ChannelOrganizer::Destination, 1 + pick(BankCount));
            org.dropOnDestination(u"XFR,%1"_s.arg(ChannelNumber(b, slot), 3, 10, QChar(u'0')),
                                  1 + pick(ChansPerBank));
            org.sort(ChannelOrganizer::Source, ChannelSortKey(pick(2)));
            org.saveCurrent();
            break;
        case 9: { // several library calls as one command
            ChangeStep outer(m_ctx, u"Several"_s, p, quint8(b));
            ClearChannels(m_ctx, p, {ChannelNumber(b, slot)}, false);
            ApplyEditCommand(m_ctx, p, b, EditCommand::SetDefaultLimits);
            break;
        }
        default: { // an import and the verify window's edits, one step
            const int id = HistoryOf(m_ctx).newMergeId();
            for (int i = 0; i < 3; ++i) {
                ChangeStep step(m_ctx, u"Web Import"_s, p, quint8(b), id);
                profile.Banks[b].Chans[1 + pick(ChansPerBank)].Desc = u"W%1"_s.arg(pick(50));
                profile.Banks[b].Changed = true;
            }
        }
        }
    }

private:
    int pick(int n) { return int(m_rng.bounded(n)); }
    ChannelRec randomChannel() {
        return {pick(4) ? 25e6 + pick(931000) * 1000.0 : 0, u"D%1"_s.arg(pick(100)), bool(pick(2)),
                bool(pick(2)), bool(pick(2))};
    }
    SearchRec randomSearch() {
        const double lower = 25e6 + pick(400000) * 1000.0;
        return {lower, lower + pick(500000) * 1000.0, u"S%1"_s.arg(pick(100))};
    }
    void randomize() {
        for (int p = 0; p < ProfileCount; ++p) {
            ProfileRec& profile = m_ctx.Profiles[p];
            profile.Changed = pick(2);
            profile.SrchName = u"Srch%1"_s.arg(p);
            for (int s = 1; s <= SearchCount; ++s)
                profile.Searches[s] = randomSearch();
            for (int b = 1; b <= BankCount; ++b) {
                profile.Banks[b].FileName = u"Bank%1_%2"_s.arg(p).arg(b);
                profile.Banks[b].Changed = pick(2);
                for (int c = 1; c <= ChansPerBank; ++c)
                    profile.Banks[b].Chans[c] = randomChannel();
            }
        }
    }

    QRandomGenerator m_rng;
    QTemporaryDir m_dir;
    ScriptedPrompts m_prompts{Answer::Yes};
    AppContext m_ctx;
};

} // namespace

class TestHistory : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void undoAllRedoAll() {
        bool given = false;
        quint32 seed = qEnvironmentVariable("KESTREL_SEED").toUInt(&given);
        if (!given)
            seed = QRandomGenerator::global()->generate();
        qInfo("KESTREL_SEED=%u", seed);
        Run run(seed);
        const QStringList start = imageLines(run.ctx().Profiles);
        for (int i = 0; i < 1000; ++i) {
            const int before = run.stack().count();
            run.change();
            // One change is at most one step, however many records it touched.
            QVERIFY(run.stack().count() <= before + 1);
            if (i % 100 == 99) { // a few undone and redone on the way: the same image again
                const QStringList here = imageLines(run.ctx().Profiles);
                run.stack().setIndex(run.stack().index() - 10);
                run.stack().setIndex(run.stack().count());
                QCOMPARE(imageLines(run.ctx().Profiles), here);
            }
        }
        QVERIFY2(run.stack().count() > 500, "few changes changed anything");
        QCOMPARE(run.ctx().errors.reportCount(), 0);
        const QStringList end = imageLines(run.ctx().Profiles);
        run.stack().setIndex(0);
        QCOMPARE(imageLines(run.ctx().Profiles), start);
        run.stack().setIndex(run.stack().count());
        QCOMPARE(imageLines(run.ctx().Profiles), end);
    }

    // A save between a change and its undo: the files hold the change, so the records stay
    // Changed and closing writes them again.
    void undoAfterSaveKeepsChanged_data() {
        QTest::addColumn<bool>("search");
        QTest::newRow("bank") << false;
        QTest::newRow("search ranges") << true;
    }
    void undoAfterSaveKeepsChanged() {
        QFETCH(bool, search);
        QTemporaryDir dir;
        AppContext ctx(dir.path());
        MakeBanksDir(ctx);
        Load_Profiles(ctx);
        Save_Profiles(ctx); // nothing Changed from here
        ProfileRec& profile = ctx.Profiles[1];
        const ProfileRec first = profile;
        {
            ChangeStep step(ctx, u"Edit"_s, 1, 2);
            Set_Channel(ctx, 1, 2, 3, u"146.52,Fire,False,False,False"_s);
            Set_Search(ctx, 1, 4, u"30,40,Low"_s);
            profile.Banks[2].Changed = profile.Changed = true;
        }
        if (search)
            Save_SearchInfo(ctx, 1, ctx.searchPath(profile.SrchName));
        else
            Save_Profiles(ctx);
        HistoryOf(ctx).stack().undo();
        QCOMPARE(profile.Banks[2].Chans[3], first.Banks[2].Chans[3]);
        QCOMPARE(profile.Searches[4], first.Searches[4]);
        QVERIFY(profile.Changed && profile.Banks[2].Changed);
        QVERIFY(!first.Changed && !first.Banks[2].Changed);
    }
};

QTEST_GUILESS_MAIN(TestHistory)
#include "tst_history.moc"
