// SPDX-License-Identifier: GPL-3.0-or-later
// Undo and redo over the libraries: from a seeded random memory image, random changes of every
// kind, each one step; undoing them all gives back the first image record by record, Changed
// flags included, and redoing them all the last. KESTREL_SEED=n repeats a run.
#include "core/files.h"
#include "core/memory.h"
#include "core/profiles.h"
#include "history/history.h"
#include "mainwin/editrules.h"
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

// Every record of the image that differs, named.
QStringList differences(const MemoryImage& a, const MemoryImage& b) {
    QStringList out;
    for (int p = 0; p <= ProfileCount; ++p) {
        const ProfileRec& x = a[p];
        const ProfileRec& y = b[p];
        const QString at = u"profile %1"_s.arg(p);
        if (x.Name != y.Name || x.SrchName != y.SrchName || x.Changed != y.Changed)
            out << at + u" names/flag: %1 %2 %3 / %4 %5 %6"_s.arg(x.Name, x.SrchName)
                            .arg(x.Changed)
                            .arg(y.Name, y.SrchName)
                            .arg(y.Changed);
        for (int s = 1; s <= SearchCount; ++s)
            if (!(x.Searches[s] == y.Searches[s]))
                out << at + u" search %1: %2 / %3"_s.arg(s).arg(SearchLine(x.Searches[s]),
                                                                SearchLine(y.Searches[s]));
        for (int k = 1; k <= BankCount; ++k) {
            const BankRec& u = x.Banks[k];
            const BankRec& v = y.Banks[k];
            if (u.FileName != v.FileName || u.ImportName != v.ImportName ||
                u.ImportCount != v.ImportCount || u.Revision != v.Revision ||
                u.Changed != v.Changed)
                out << at + u" bank %1 head: %2 %3 / %4 %5"_s.arg(k)
                                .arg(u.FileName)
                                .arg(u.Changed)
                                .arg(v.FileName)
                                .arg(v.Changed);
            for (int c = 1; c <= ChansPerBank; ++c)
                if (!(u.Chans[c] == v.Chans[c]))
                    out << at + u" bank %1 slot %2: %3 / %4"_s.arg(k).arg(c).arg(
                                    ChannelLine(u.Chans[c]), ChannelLine(v.Chans[c]));
        }
    }
    return out;
}

class Run {
public:
    explicit Run(quint32 seed) : m_rng(seed), m_ctx(m_dir.path(), &m_prompts) {
        MakeBanksDir(m_ctx);
        // Files the File menu's loads and the imports read, written before the history starts.
        randomize();
        Save_BankInfo(m_ctx, 1, 1, m_ctx.bankPath(u"Loadable"_s));
        Save_SearchInfo(m_ctx, 1, m_ctx.searchPath(u"Loadable"_s));
        m_ctx.Profiles[2].Changed = true;
        Save_Settings(m_ctx, 2, m_ctx.settingsPath(u"Other"_s));
        QByteArray csv;
        for (int i = 1; i <= 20; ++i)
            csv += "Csv " + QByteArray::number(i) + ",1" + QByteArray::number(40 + i) +
                   ".5,True,False,True\r\n";
        kestrel::test::writeFile(m_dir.filePath(u"in.csv"_s), csv);
        randomize();
        m_ctx.flagEpoch = 0;
    }

    AppContext& ctx() { return m_ctx; }
    QUndoStack& stack() { return HistoryOf(m_ctx).stack(); }

    // One random change of one of the kinds the program makes.
    void change() {
        const qint16 p = qint16(pick(ProfileCount));
        const int b = 1 + pick(BankCount);
        const int slot = 1 + pick(ChansPerBank);
        ProfileRec& profile = m_ctx.Profiles[p];
        switch (pick(16)) {
        case 0: { // in-place edit of a channel
            ChangeStep step(m_ctx, u"Edit"_s, p, quint8(b));
            Set_Channel(m_ctx, p, qint16(b), quint8(slot), ChannelLine(randomChannel()));
            profile.Banks[b].Changed = profile.Changed = true;
            break;
        }
        case 1: {
            ChangeStep step(m_ctx, u"Edit"_s, p, SearchTab);
            Set_Search(m_ctx, p, qint16(1 + pick(SearchCount)), SearchLine(randomSearch()));
            profile.Changed = true;
            break;
        }
        case 2: { // a flag double-clicked
            ChangeStep step(m_ctx, u"Toggle"_s, p, quint8(b));
            if (ToggleChannelFlag(profile.Banks[b].Chans[slot], 3 + pick(3)))
                profile.Banks[b].Changed = profile.Changed = true;
            break;
        }
        case 3: {
            QList<int> numbers;
            for (int i = 0, n = 1 + pick(30); i < n; ++i)
                numbers << 1 + pick(ChannelCount);
            ClearChannels(m_ctx, p, numbers, pick(2));
            break;
        }
        case 4:
            ClearSearches(m_ctx, p, {1 + pick(SearchCount), 1 + pick(SearchCount)}, pick(2));
            break;
        case 5:
            ApplyEditCommand(m_ctx, p, b, EditCommand(pick(6)));
            break;
        case 6: { // a rename of the profile or a bank file
            ChangeStep step(m_ctx, u"Rename"_s, p, quint8(b));
            if (pick(2))
                profile.Name = u"P%1"_s.arg(pick(1000));
            else
                profile.Banks[b].FileName = u"B%1"_s.arg(pick(1000));
            profile.Changed = m_ctx.Profiles[0].Changed = true;
            break;
        }
        case 7:
            LoadBankFrom(m_ctx, p, b, m_ctx.bankPath(u"Loadable"_s));
            break;
        case 8: {
            ShownNames shown;
            LoadSearchFrom(m_ctx, p, shown, m_ctx.searchPath(u"Loadable"_s));
            break;
        }
        case 9: {
            ShownNames shown;
            if (p != 0)
                LoadProfileFrom(m_ctx, p, shown, m_ctx.settingsPath(u"Other"_s));
            break;
        }
        case 10:
        case 11: {
            CsvImport import(m_ctx);
            QVERIFY(import.open(m_dir.filePath(u"in.csv"_s)));
            if (pick(2))
                import.importToBank(p, b, {1, 2, 3, 4, 5});
            else
                import.importToSearch(p, {1, 2, 2});
            break;
        }
        case 12:
            ImportChirp(m_ctx, p, b, kestrel::test::dataPath(u"chirp/radio.csv"_s),
                        pick(2) ? ChirpPlacement::ByLocation : ChirpPlacement::ShownBank);
            break;
        case 13: { // the channel organizer: drops and a sort, saved
            ChannelOrganizer org(m_ctx);
            org.load(p);
            org.selectBank(ChannelOrganizer::Source, b);
            org.selectBank(ChannelOrganizer::Destination, 1 + pick(BankCount));
            org.dropOnDestination(u"XFR,%1"_s.arg(ChannelNumber(b, slot), 3, 10, QChar(u'0')),
                                  1 + pick(ChansPerBank));
            org.sort(ChannelOrganizer::Source, ChannelSortKey(pick(2)));
            org.saveCurrent();
            break;
        }
        case 14: { // several library calls as one command
            ChangeStep outer(m_ctx, u"Several"_s, p, quint8(b));
            ClearChannels(m_ctx, p, {ChannelNumber(b, slot)}, false);
            ApplyEditCommand(m_ctx, p, b, EditCommand::SetDefaultLimits);
            break;
        }
        case 15: { // an import and the verify window's edits, one step
            const int id = HistoryOf(m_ctx).newMergeId();
            for (int i = 0; i < 3; ++i) {
                ChangeStep step(m_ctx, u"Web Import"_s, p, quint8(b), id);
                profile.Banks[b].Chans[1 + pick(ChansPerBank)].Desc = u"W%1"_s.arg(pick(50));
                profile.Banks[b].Changed = true;
            }
            break;
        }
        }
    }

private:
    int pick(int n) { return int(m_rng.bounded(n)); }
    ChannelRec randomChannel() {
        ChannelRec ch;
        ch.Freq = pick(4) ? 25e6 + pick(931000) * 1000.0 : 0;
        ch.Desc = u"D%1"_s.arg(pick(100));
        ch.Delay = pick(2);
        ch.Lockout = pick(2);
        ch.Priority = pick(2);
        return ch;
    }
    SearchRec randomSearch() {
        SearchRec s;
        s.Lower = 25e6 + pick(400000) * 1000.0;
        s.Upper = s.Lower + pick(500000) * 1000.0;
        s.Desc = u"S%1"_s.arg(pick(100));
        return s;
    }
    void randomize() {
        for (int p = 0; p < ProfileCount; ++p) {
            ProfileRec& profile = m_ctx.Profiles[p];
            profile.Name = p == 0 ? u"Main"_s : u"Profile%1"_s.arg(p);
            profile.SrchName = u"Srch%1"_s.arg(p);
            profile.Changed = pick(2);
            for (int s = 1; s <= SearchCount; ++s)
                profile.Searches[s] = randomSearch();
            for (int b = 1; b <= BankCount; ++b) {
                BankRec& bank = profile.Banks[b];
                bank.FileName = u"Bank%1_%2"_s.arg(p).arg(b);
                bank.Changed = pick(2);
                for (int c = 1; c <= ChansPerBank; ++c)
                    bank.Chans[c] = randomChannel();
            }
        }
    }

    QRandomGenerator m_rng;
    QTemporaryDir m_dir;
    ScriptedPrompts m_prompts{Answer::Yes};
    AppContext m_ctx;
};

quint32 seedOfRun() {
    bool ok = false;
    const quint32 seed = qEnvironmentVariable("KESTREL_SEED").toUInt(&ok);
    return ok ? seed : QRandomGenerator::global()->generate();
}

} // namespace

class TestHistory : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void undoAllRedoAll() {
        const quint32 seed = seedOfRun();
        const QByteArray where = "KESTREL_SEED=" + QByteArray::number(seed) + ": ";
        Run run(seed);
        const MemoryImage start = run.ctx().Profiles;
        for (int i = 0; i < 1000; ++i) {
            const int before = run.stack().count();
            run.change();
            // One change is at most one step, however many records it touched.
            QVERIFY2(run.stack().count() <= before + 1, where + "change " + QByteArray::number(i));
            if (i % 100 == 99) { // undo and redo a few on the way: the same image again
                const MemoryImage here = run.ctx().Profiles;
                for (int k = 0; k < 10; ++k)
                    run.stack().undo();
                for (int k = 0; k < 10; ++k)
                    run.stack().redo();
                const QStringList diff = differences(here, run.ctx().Profiles);
                QVERIFY2(diff.isEmpty(), where + diff.join(u'\n').toUtf8());
            }
        }
        QVERIFY2(run.stack().count() > 500, where + "too few changes changed anything");
        QCOMPARE(run.ctx().errors.reportCount(), 0);
        const MemoryImage end = run.ctx().Profiles;
        run.stack().setIndex(0);
        QStringList diff = differences(start, run.ctx().Profiles);
        QVERIFY2(diff.isEmpty(), where + "undone: " + diff.join(u'\n').toUtf8());
        run.stack().setIndex(run.stack().count());
        diff = differences(end, run.ctx().Profiles);
        QVERIFY2(diff.isEmpty(), where + "redone: " + diff.join(u'\n').toUtf8());
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
            profile.Banks[2].Changed = profile.Changed = true;
        }
        {
            ChangeStep step(ctx, u"Edit"_s, 1, SearchTab);
            Set_Search(ctx, 1, 4, u"30,40,Low"_s);
            profile.Changed = true;
        }
        if (search)
            Save_SearchInfo(ctx, 1, ctx.searchPath(profile.SrchName));
        else
            Save_Profiles(ctx);
        HistoryOf(ctx).stack().setIndex(0);
        QCOMPARE(profile.Banks[2].Chans[3], first.Banks[2].Chans[3]);
        QCOMPARE(profile.Searches[4], first.Searches[4]);
        QVERIFY(profile.Changed && profile.Banks[2].Changed);
        QVERIFY(!first.Changed && !first.Banks[2].Changed);
    }
};

QTEST_GUILESS_MAIN(TestHistory)
#include "tst_history.moc"
