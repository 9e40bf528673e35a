// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr import: the import window's Import on the command line. Conventional
// frequencies of a county or an agency (all, or the named subcategories and frequencies), or
// the frequencies of one trunked site, go into a bank with the window's conversion, import
// name, import count and full-bank rule; the verify window's 60-character rule is checked
// before the profile is saved. The results of a frequency or tag search go in the same way.
#include "rrsearch.h"

#include "core/files.h"
#include "core/freq.h"
#include "core/profiles.h"
#include "import/importtree.h"
#include "import/searchtree.h"
#include "import/verifyrules.h"

#include <QDir>
#include <QSet>
#include <limits>

namespace kestrel::cli {

namespace {

using namespace importtree;

enum class Source { County, Agency, Site, SearchFreq, SearchTag };

struct Choice {
    Source source = Source::County;
    qint32 id = 0;   // ctid, aid or sid
    qint32 site = 0; // the site's number (Site)
    QList<qint32> subcats, fids;
    FreqSearch freqSearch;
    TagSearch tagSearch;
    QList<qint32> results; // 1-based positions of the results to import; none: all
};

qint32 idOption(const Args& args, const char* name) {
    return args.intValue(QString::fromLatin1(name), 1, std::numeric_limits<qint32>::max());
}

QList<qint32> idOptions(const Args& args, const char* name) {
    QList<qint32> ids;
    for (const QString& v : args.values(QString::fromLatin1(name))) {
        bool ok = false;
        const qint32 id = v.toInt(&ok);
        if (!ok || id < 1)
            throw UsageError(qPrintable(optionSpelling(QString::fromLatin1(name)) +
                                        QStringLiteral(" takes an id above 0, not ") + v));
        ids.append(id);
    }
    return ids;
}

Choice readChoice(const Args& args) {
    const bool byFreq = args.has(QStringLiteral("search-freq"));
    const bool byTag = args.has(QStringLiteral("search-tag"));
    if (byFreq || byTag) {
        if (byFreq && byTag)
            throw UsageError("give --search-freq or --search-tag, not both");
        for (const char* other : {"system", "site", "subcat", "fid"})
            if (args.has(QString::fromLatin1(other)))
                throw UsageError(qPrintable(optionSpelling(QString::fromLatin1(other)) +
                                            QStringLiteral(" does not go with a search")));
        Choice c;
        c.results = idOptions(args, "result");
        if (byFreq) {
            c.source = Source::SearchFreq;
            c.freqSearch = readFreqSearch(args, args.value(QStringLiteral("search-freq")));
        } else {
            if (args.has(QStringLiteral("state")) || args.has(QStringLiteral("metro")) ||
                args.has(QStringLiteral("tone")))
                throw UsageError("--search-tag goes with --county or --agency only");
            c.source = Source::SearchTag;
            c.tagSearch = readTagSearch(args, args.value(QStringLiteral("search-tag")));
        }
        return c;
    }
    for (const char* searchOnly : {"state", "metro", "tone", "result"})
        if (args.has(QString::fromLatin1(searchOnly)))
            throw UsageError(
                qPrintable(optionSpelling(QString::fromLatin1(searchOnly)) +
                           QStringLiteral(" goes with --search-freq or --search-tag")));
    const bool county = args.has(QStringLiteral("county"));
    const bool agency = args.has(QStringLiteral("agency"));
    const bool system = args.has(QStringLiteral("system"));
    if (int(county) + int(agency) + int(system) != 1)
        throw UsageError("give one of --county CTID, --agency AID or --system SID --site NUMBER");
    Choice c;
    c.subcats = idOptions(args, "subcat");
    c.fids = idOptions(args, "fid");
    if (system) {
        if (!c.subcats.isEmpty() || !c.fids.isEmpty())
            throw UsageError("--subcat and --fid go with --county or --agency");
        if (!args.has(QStringLiteral("site")))
            throw UsageError("--system needs --site NUMBER (see rr system)");
        c.source = Source::Site;
        c.id = idOption(args, "system");
        c.site = idOption(args, "site");
    } else {
        if (args.has(QStringLiteral("site")))
            throw UsageError("--site goes with --system");
        c.source = county ? Source::County : Source::Agency;
        c.id = idOption(args, county ? "county" : "agency");
    }
    return c;
}

// Ticks what the user named, as ticking nodes in the window's tree would: a subcategory ticks
// all its frequencies, a frequency itself; nothing named ticks everything. Returns the ticked
// frequencies' descriptions in tree order; an id the tree lacks is a usage error.
QStringList tick(ConvTree& tree, const Choice& c) {
    const bool all = c.subcats.isEmpty() && c.fids.isEmpty();
    QSet<qint32> seenSubcats, seenFids;
    QStringList ticked;
    for (ConvCat& cat : tree)
        for (ConvSubcat& sub : cat.subcats) {
            seenSubcats.insert(sub.scid);
            for (qsizetype k = 0; k < sub.freqs.size(); ++k) {
                const TypFreq& f = sub.freqs[k];
                seenFids.insert(f.fid);
                sub.selected[k] = all || c.subcats.contains(sub.scid) || c.fids.contains(f.fid);
                if (sub.selected[k])
                    ticked.append(ConvFreqDesc(cat.cName, sub.scName, f.descr));
            }
        }
    const QString where =
        c.source == Source::County ? QStringLiteral("county ") : QStringLiteral("agency ");
    for (qint32 id : c.subcats)
        if (!seenSubcats.contains(id))
            throw UsageError(qPrintable(where + QString::number(c.id) +
                                        QStringLiteral(" has no subcategory ") +
                                        QString::number(id)));
    for (qint32 id : c.fids)
        if (!seenFids.contains(id))
            throw UsageError(qPrintable(where + QString::number(c.id) +
                                        QStringLiteral(" has no frequency ") +
                                        QString::number(id)));
    return ticked;
}

// Conventional frequencies into the bank. Returns the descriptions handed over, in order; empty
// when the service failed (reported) or gave nothing.
QStringList importConventional(RRSession& rr, const Choice& c, BankRec& bank) {
    RRClient& client = rr.client();
    // The tree shows mode names: the mode table first, as the window loads it at login.
    if (!client.getMode(0) && !rr.failed())
        rr.fail(QStringLiteral("the service gave no mode table"));
    if (rr.failed())
        return {};
    QString name;
    QList<TypCat> cats;
    if (c.source == Source::County && client.getCountyInfo(c.id)) {
        name = ValidateFName(client.CountyInfo.countyName) + QStringLiteral("-Conventional");
        cats = client.CountyInfo.cats;
    } else if (c.source == Source::Agency && client.getAgencyInfo(c.id)) {
        name = ValidateFName(client.AgencyInfo.agencyName);
        cats = client.AgencyInfo.cats;
    } else {
        if (!rr.failed())
            rr.fail(QStringLiteral("the service knows no ") +
                    (c.source == Source::County ? QStringLiteral("county ")
                                                : QStringLiteral("agency ")) +
                    QString::number(c.id));
        return {};
    }
    ConvTree tree = ConvTreeFromCats(cats);
    FetchSubcatFreqs(client, tree, &rr.ctx().errors);
    if (rr.failed())
        return {};
    const QStringList ticked = tick(tree, c);
    if (ticked.isEmpty()) {
        rr.fail(QStringLiteral("no frequencies to import"));
        return {};
    }
    bank.ImportCount = 0;
    bank.ImportName = name;
    ImportConvSelection(rr.ctx().errors, bank, client.Modes, tree);
    return ticked;
}

// One trunked site's frequencies into the bank.
QStringList importSite(RRSession& rr, const Choice& c, BankRec& bank) {
    RRClient& client = rr.client();
    if (!client.getTrsDetails(c.id) || !client.getTrsSites(c.id)) {
        if (!rr.failed())
            rr.fail(QStringLiteral("the service knows no trunked system with sites: ") +
                    QString::number(c.id));
        return {};
    }
    TrsTree tree;
    tree.sites = client.TrsSites;
    QStringList ticked;
    QStringList numbers;
    for (const TypSite& site : tree.sites) {
        const bool chosen = site.siteNumber == c.site;
        numbers.append(QString::number(site.siteNumber));
        tree.siteFreqSel.append(QList<bool>(site.siteFreqs.size(), chosen));
        if (chosen)
            for (const TypSiteFreq& f : site.siteFreqs)
                ticked.append(SiteFreqDesc(f.lcn, f.use));
    }
    if (!numbers.contains(QString::number(c.site)))
        throw UsageError(qPrintable(QStringLiteral("system ") + QString::number(c.id) +
                                    QStringLiteral(" has no site ") + QString::number(c.site) +
                                    QStringLiteral(" (its sites: ") +
                                    numbers.join(QStringLiteral(", ")) + u')'));
    // The window names the bank after the system even when the site gives no channel.
    bank.ImportName = ValidateFName(client.TrsDetails.sName);
    if (ticked.isEmpty()) {
        rr.fail(QStringLiteral("site ") + QString::number(c.site) +
                QStringLiteral(" has no frequencies"));
        return {};
    }
    bank.ImportCount = 0;
    ImportSiteSelection(rr.ctx().errors, bank, tree);
    return ticked;
}

// The results of a search, all or the named ones, into the bank as "SearchFreqs" or
// "TagFreqs". A result whose mode the service's mode table cannot name stops the import there.
template <class T>
QStringList importResults(RRSession& rr, const Choice& c, const QList<T>& found,
                          const QString& name, BankRec& bank) {
    if (found.isEmpty()) {
        if (!rr.failed())
            rr.fail(searchtree::kNoResults);
        return {};
    }
    QList<bool> selected(found.size(), c.results.isEmpty());
    for (qint32 n : c.results) {
        if (n > found.size())
            throw UsageError(qPrintable(QStringLiteral("the search gave ") +
                                        QString::number(found.size()) +
                                        QStringLiteral(" results, not ") + QString::number(n)));
        selected[n - 1] = true;
    }
    QStringList ticked;
    for (qsizetype i = 0; i < found.size(); ++i)
        if (selected[i])
            ticked.append(SearchFreqDesc(found[i].alpha, found[i].descr));
    // A full bank refuses the channels beyond 20 (reported, like the conventional import); a
    // result the mode table cannot name stops the import and nothing is saved.
    bool complete = false;
    Trap(rr.ctx().errors, "RRImpBtn", [&] {
        searchtree::ImportSearchSelection(rr.ctx().errors, bank, rr.client().Modes, name, found,
                                          selected);
        complete = true;
    });
    return complete ? ticked : QStringList{};
}

QStringList importSearch(RRSession& rr, const Choice& c, BankRec& bank) {
    RRClient& client = rr.client();
    if (!client.getMode(0) && !rr.failed())
        rr.fail(QStringLiteral("the service gave no mode table"));
    if (rr.failed())
        return {};
    if (c.source == Source::SearchFreq)
        return importResults(rr, c, runFreqSearch(client, c.freqSearch),
                             QStringLiteral("SearchFreqs"), bank);
    return importResults(rr, c, runTagSearch(client, c.tagSearch), QStringLiteral("TagFreqs"),
                         bank);
}

int run(Env& env, const Args& args) {
    const int bankNo = args.intValue(QStringLiteral("bank"), 1, BankCount);
    const Choice choice = readChoice(args);
    RRSession rr(env, args);
    rr.load(true, true);
    AppContext& ctx = rr.ctx();
    ProfileRec& profile = ctx.Profiles[env.selectProfile(args)];
    ctx.CurBank = quint8(bankNo);
    if (!rr.connect())
        return rr.finish();

    // The import works on a copy: a refusal below leaves the memory image as it was.
    BankRec bank = profile.Banks[bankNo];
    const QStringList handed =
        choice.source == Source::Site ? importSite(rr, choice, bank)
        : choice.source == Source::SearchFreq || choice.source == Source::SearchTag
            ? importSearch(rr, choice, bank)
            : importConventional(rr, choice, bank);
    if (handed.isEmpty())
        return rr.finish();
    const int filled = ImportedSlots(bank);
    const QStringList dropped = handed.mid(filled);

    // The verify window's rule: no description beyond 60 characters is accepted.
    QList<int> tooLong;
    for (int slot = 1; slot <= filled; ++slot) {
        QString& desc = bank.Chans[size_t(slot)].Desc;
        if (desc.size() <= MaxDescLen)
            continue;
        if (args.has(QStringLiteral("cut")))
            desc = desc.left(MaxDescLen).trimmed();
        else
            tooLong.append(slot);
    }
    if (!tooLong.isEmpty()) {
        for (int slot : tooLong) {
            const QString& desc = bank.Chans[size_t(slot)].Desc;
            err(QStringLiteral("kestrelctl rr import: slot ") + QString::number(slot) +
                QStringLiteral(" description has ") + QString::number(desc.size()) +
                QStringLiteral(" characters (at most ") + QString::number(MaxDescLen) +
                QStringLiteral("): ") + desc);
        }
        err(QStringLiteral("kestrelctl rr import: nothing saved; --cut shortens the "
                           "descriptions to ") +
            QString::number(MaxDescLen) + QStringLiteral(" characters"));
        rr.finish();
        return kRRTooLong;
    }

    // Accepted, as the verify window's Finish accepts: the bank and its profile are saved.
    bank.Changed = true;
    profile.Banks[bankNo] = bank;
    profile.Changed = true;
    QDir().mkpath(ctx.appDir());
    MakeBanksDir(ctx);
    Save_Profiles(ctx);
    // The bank keeps its file name; the import name is what the bank records as its source.
    err(QStringLiteral("imported ") + QString::number(filled) +
        (filled == 1 ? QStringLiteral(" channel") : QStringLiteral(" channels")) +
        QStringLiteral(" into bank ") + QString::number(bankNo) + QStringLiteral(" from ") +
        bank.ImportName);
    if (!dropped.isEmpty())
        err(QString::number(filled) + QStringLiteral(" imported; ") +
            QString::number(dropped.size()) + QStringLiteral(" did not fit: ") +
            dropped.join(QStringLiteral(", ")));
    for (int slot = 1; slot <= filled; ++slot)
        out(QString::number(slot) + u'\t' + FreqToString(bank.Chans[size_t(slot)].Freq) + u'\t' +
            bank.Chans[size_t(slot)].Desc);
    const int status = rr.finish();
    return status == Ok && !dropped.isEmpty() ? kRRPartial : status;
}

const CommandRegistration
    reg({"rr",
         "import",
         "Import a county's or an agency's conventional frequencies (all, or the named "
         "subcategories and frequencies), one trunked site's frequencies, or the results of a "
         "search (--search-freq FREQ with --state, --county or --metro and --tone, as bank "
         "SearchFreqs; --search-tag TAGID with --county or --agency, as bank TagFreqs; all "
         "results, or those named with --result), into a bank, and save the profile. Prints the "
         "slots filled: slot, frequency, description",
         {kProfileOption,
          {"bank", "N", "The bank to fill from slot 1, 1-10"},
          {"county", "CTID",
           "Import from this county's conventional frequencies (with a search: search it)"},
          {"agency", "AID", "Import from this agency's frequencies (with --search-tag: search it)"},
          {"subcat", "SCID", "Only this subcategory (may be given more than once)"},
          {"fid", "FID", "Only this frequency (may be given more than once)"},
          {"system", "SID", "Import from this trunked system (with --site)"},
          {"site", "NUMBER", "The site's number, as rr system prints it"},
          {"search-freq", "FREQ", "Import the results of a frequency search (megahertz)"},
          {"search-tag", "TAGID", "Import the results of a tag search"},
          {"state", "STID", "--search-freq: search this state"},
          {"metro", "MID", "--search-freq: search this metro area"},
          {"tone", "TONE", "--search-freq: only this tone"},
          {"result", "N", "Only the Nth search result (may be given more than once)"},
          {"cut", nullptr, "Shorten descriptions longer than 60 characters instead of refusing"}},
         {},
         run,
         false,
         {{kRRTooLong, "a description is longer than 60 characters; nothing was saved"},
          {kRRPartial, "the bank was full: the channels that fitted were saved, the others are "
                       "named"}}});

} // namespace
} // namespace kestrel::cli
