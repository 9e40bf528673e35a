// SPDX-License-Identifier: GPL-3.0-or-later
#include "importtree.h"

#include "core/freq.h"
#include "webservice/rrclient.h"
#include "webservice/rrdescription.h"

#include <cmath>

namespace kestrel::importtree {

QString SpcStr(const QString& text, int width) {
    return text.size() >= width ? text : text + QString(width - text.size(), u' ');
}

QString RSpcStr(const QString& text, int width) {
    return text.size() >= width ? text : QString(width - text.size(), u' ') + text;
}

QString SpcCT(const QString& tone, int width) {
    return tone == u"CSQ" || tone == u"NA" ? SpcStr(tone, width) : RSpcStr(tone, width);
}

QString CenterTag(const QString& tag) {
    if (tag.size() >= 12)
        return tag;
    // Halves go to the even neighbour, so a 5-character tag gets 4 blanks a side (13 in all).
    const int n = int(std::nearbyint((12 - tag.size()) / 2.0));
    QString out = QString(n, u' ') + tag + QString(n, u' ');
    if (out.size() < 12)
        out += u' ';
    return out;
}

QString NodeKey(int c, int s, int d) {
    QString key = u'c' + QString::number(c);
    if (s > 0)
        key += u's' + QString::number(s);
    if (d > 0)
        key += u'd' + QString::number(d);
    return key;
}

KeyParts SplitKey(const QString& key) {
    qint16 c = 0, s = 0, d = 0;
    BreakDownTV(key, c, s, d);
    return {c, s, d};
}

// ---- conventional ---------------------------------------------------------------------------

ConvTree ConvTreeFromCats(const QList<TypCat>& cats) {
    ConvTree tree;
    for (const TypCat& c : cats) {
        ConvCat cat{c.cName, {}};
        for (const TypSubcat& s : c.subcats)
            cat.subcats.append({s.scid, s.scName, {}, {}});
        tree.append(cat);
    }
    return tree;
}

bool FetchSubcatFreqs(RRClient& client, ErrorReporter& errors, ConvTree& tree) {
    const int reports = errors.reportCount();
    for (ConvCat& cat : tree)
        for (ConvSubcat& sub : cat.subcats) {
            sub.freqs.clear();
            if (errors.reportCount() == reports && client.getSubcatFreqs(sub.scid))
                sub.freqs = client.SubcatFreqs;
            sub.selected = QList<bool>(sub.freqs.size(), false);
        }
    return errors.reportCount() == reports;
}

QString ConvFreqText(const TypFreq& f, const QList<TypMode>& modes) {
    const QString two = QStringLiteral("  ");
    return RSpcStr(FreqToString(FreqToHertz(f.out)), 11) + two +
           SpcStr(ConvModeName(modes, f.mode), 4) + two + QStringLiteral("Class: ") +
           SpcStr(f.class_, 4) + two + QStringLiteral("CT: ") + SpcCT(f.tone, 8) + two +
           QStringLiteral("FCC:") + SpcStr(f.callsign, 7) + two + f.descr;
}

QList<TreeNode> ConvTreeNodes(const ConvTree& tree, const QList<TypMode>& modes) {
    QList<TreeNode> nodes;
    for (int i = 0; i < tree.size(); ++i) {
        TreeNode cat{NodeKey(i + 1), tree[i].cName, {}};
        for (int j = 0; j < tree[i].subcats.size(); ++j) {
            const ConvSubcat& sub = tree[i].subcats[j];
            TreeNode sn{NodeKey(i + 1, j + 1), sub.scName, {}};
            for (int k = 0; k < sub.freqs.size(); ++k)
                sn.children.append(
                    {NodeKey(i + 1, j + 1, k + 1), ConvFreqText(sub.freqs[k], modes), {}});
            cat.children.append(sn);
        }
        nodes.append(cat);
    }
    return nodes;
}

int CountSelected(const ConvTree& tree) {
    int n = 0;
    for (const ConvCat& c : tree)
        for (const ConvSubcat& s : c.subcats)
            n += int(s.selected.count(true));
    return n;
}

void ClearSelected(ConvTree& tree) {
    for (ConvCat& c : tree)
        for (ConvSubcat& s : c.subcats)
            s.selected.fill(false);
}

int ImportConvSelection(ErrorReporter& errors, BankRec& bank, const QList<TypMode>& modes,
                        const ConvTree& tree) {
    int n = 0;
    for (const ConvCat& c : tree)
        for (const ConvSubcat& s : c.subcats)
            for (int k = 0; k < s.freqs.size(); ++k)
                if (s.selected.value(k)) {
                    AddConvFreq(errors, bank, modes, c.cName, s.scName, s.freqs[k]);
                    ++n;
                }
    return n;
}

// ---- trunked --------------------------------------------------------------------------------

int TrsTree::talkgroupCount() const {
    int n = 0;
    for (const TypTgCat& c : tgCats)
        n += int(c.Talkgroups.size());
    return n;
}

bool IsTypeI(ErrorReporter& errors, const QList<TypTrsFlavor>& flavors, const TypTrsDetails& d) {
    return CvrtSiteFlavor(errors, flavors, d.sType, d.sFlavor) == u"Type I";
}

QString SiteText(const TypSite& site, int position) {
    QStringList parts{QStringLiteral("Site #: ") + Num2(position),
                      QStringLiteral("Channels: ") + Num2(int(site.siteFreqs.size())),
                      QStringLiteral("Lat:") + QString::number(site.lat),
                      QStringLiteral("Lon:") + QString::number(site.lon),
                      QStringLiteral("FCC: ") + SpcStr(site.siteLicenses.isEmpty()
                                                           ? QStringLiteral("?????")
                                                           : site.siteLicenses[0],
                                                       7)};
    if (!site.siteNeighbors.isEmpty())
        parts << QStringLiteral("Nbrs:") + site.siteNeighbors;
    if (!site.siteDescr.isEmpty())
        parts << QStringLiteral("Desc:") + site.siteDescr;
    if (!site.siteNotes.isEmpty())
        parts << QStringLiteral("Note:") + site.siteNotes;
    if (site.zoneNumber != 0 || !site.zoneDescr.isEmpty())
        parts << QStringLiteral("Zn:") + QString::number(site.zoneNumber) + QStringLiteral(" > ") +
                     site.zoneDescr;
    if (site.splinter)
        parts << QStringLiteral("S+");
    if (site.rebanded)
        parts << QStringLiteral("R+");
    return parts.join(QStringLiteral("  "));
}

QString SiteFreqText(const TypSiteFreq& f) {
    return QStringLiteral("LCN: ") + QString::number(f.lcn) + QStringLiteral("  Frequency: ") +
           RSpcStr(FreqToString(FreqToHertz(f.freq)), 11) + QStringLiteral("  ") + f.use;
}

QString TalkgroupText(const TypTalkgroup& tg, bool typeI) {
    const QString id = typeI ? tg.tgSubfleet : QString::number(tg.tgDec);
    const QString alpha = tg.tgAlpha.isEmpty() ? QStringLiteral("-Notknown-") : tg.tgAlpha;
    return QStringLiteral("ID: ") + RSpcStr(id, 5) + QStringLiteral("  [") + CenterTag(alpha) +
           QStringLiteral("]  ") + tg.tgDescr;
}

QList<TreeNode> TrsTreeNodes(const TrsTree& tree) {
    QList<TreeNode> nodes;
    if (!tree.sites.isEmpty()) {
        TreeNode top{
            NodeKey(1), QStringLiteral("Sites: ") + QString::number(tree.sites.size()), {}};
        for (int i = 0; i < tree.sites.size(); ++i) {
            TreeNode sn{NodeKey(1, i + 1), SiteText(tree.sites[i], i + 1), {}};
            const auto& freqs = tree.sites[i].siteFreqs;
            for (int k = 0; k < freqs.size(); ++k)
                sn.children.append({NodeKey(1, i + 1, k + 1), SiteFreqText(freqs[k]), {}});
            top.children.append(sn);
        }
        nodes.append(top);
    }
    if (!tree.tgCats.isEmpty()) {
        TreeNode top{NodeKey(2),
                     QStringLiteral("TalkGroups: ") + QString::number(tree.talkgroupCount()),
                     {}};
        for (int i = 0; i < tree.tgCats.size(); ++i) {
            TreeNode cn{NodeKey(2, i + 1), tree.tgCats[i].tgCname, {}};
            const auto& tgs = tree.tgCats[i].Talkgroups;
            for (int k = 0; k < tgs.size(); ++k)
                cn.children.append(
                    {NodeKey(2, i + 1, k + 1), TalkgroupText(tgs[k], tree.typeI), {}});
            top.children.append(cn);
        }
        nodes.append(top);
    }
    return nodes;
}

QString FleetMapText(const TypTrsDetails& d) {
    if (!d.fleetmap)
        return QStringLiteral(" - - - - - - - - ");
    return QStringList{d.b0, d.b1, d.b2, d.b3, d.b4, d.b5, d.b6, d.b7}.join(u'-');
}

bool SitesHaveBandplans(const QList<TypSite>& sites) {
    for (const TypSite& s : sites)
        if (!s.bandplan.isEmpty())
            return true;
    return false;
}

QList<QStringList> BandPlanRows(const TypTrsDetails& d, const QList<TypSite>& sites, int site) {
    const bool own = SitesHaveBandplans(sites);
    if (own && site < 0)
        return {{QStringLiteral("Click"), QStringLiteral("Site#"), QStringLiteral("To Fill")}};
    const QList<TypBandplan>& plan = own && site < sites.size() && !sites[site].bandplan.isEmpty()
                                         ? sites[site].bandplan
                                         : d.bandplan;
    QList<QStringList> rows;
    for (const TypBandplan& b : plan)
        rows.append({b.base, b.offset, b.spacing});
    return rows;
}

int CountSiteSelected(const TrsTree& tree) {
    int n = 0;
    for (const auto& s : tree.siteFreqSel)
        n += int(s.count(true));
    return n;
}

int CountTgSelected(const TrsTree& tree) {
    int n = 0;
    for (const auto& s : tree.tgSel)
        n += int(s.count(true));
    return n;
}

int ImportSiteSelection(ErrorReporter& errors, BankRec& bank, const TrsTree& tree) {
    int n = 0;
    for (int i = 0; i < tree.sites.size(); ++i)
        for (int k = 0; k < tree.sites[i].siteFreqs.size(); ++k)
            if (tree.siteFreqSel.value(i).value(k)) {
                AddSiteFreq(errors, bank, tree.sites[i].siteFreqs[k]);
                ++n;
            }
    return n;
}

int CompareTalkgroups(ErrorReporter& errors, GroupIdList& list, const TrsTree& tree) {
    list.Clear();
    for (int i = 0; i < tree.tgCats.size(); ++i)
        for (int k = 0; k < tree.tgCats[i].Talkgroups.size(); ++k)
            if (tree.tgSel.value(i).value(k)) {
                const TypTalkgroup& tg = tree.tgCats[i].Talkgroups[k];
                RR_AddGroupID(errors, list, tg.tgDec,
                              TalkgroupDesc(tree.tgCats[i].tgCname, tg.tgDescr), tg.tgAlpha,
                              tg.tags.isEmpty() ? QString() : tg.tags[0].tagDescr, tg.tgMode,
                              tg.tgId);
            }
    return list.GroupIdCnt();
}

} // namespace kestrel::importtree
