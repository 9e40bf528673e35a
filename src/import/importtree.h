// SPDX-License-Identifier: GPL-3.0-or-later
// What the import window's tree shows, built from the query stores without any widget: the
// conventional and agency trees with their fetched frequencies and tick flags, the trunked
// system's sites and talk groups, the node texts and keys, the band plan rows, and the import of
// the ticked records into a bank. The window turns TreeNode lists into tree items.
#pragma once

#include "import/rrconvert.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace kestrel {

class RRClient;

namespace importtree {

// Text padding of the tree's columns.
QString SpcStr(const QString& text, int width);  // blanks appended up to width
QString RSpcStr(const QString& text, int width); // blanks put in front
QString SpcCT(const QString& tone, int width);   // "CSQ" and "NA" left, other tones right
// Centres an alpha tag in 12 characters; the side padding is (12 - length) / 2 rounded half to
// even, and one more blank is appended while the result is short.
QString CenterTag(const QString& tag);

// "c3", "c3s2", "c3s2d5" (1-based positions; 0 leaves the part out).
QString NodeKey(int c, int s = 0, int d = 0);
struct KeyParts {
    int c = 0, s = 0, d = 0;
};
KeyParts SplitKey(const QString& key); // missing parts give 0

struct TreeNode {
    QString key;
    QString text;
    QList<TreeNode> children;
};

// ---- conventional and agency frequencies ----------------------------------------------------

struct ConvSubcat {
    qint32 scid = 0;
    QString scName;
    QList<TypFreq> freqs;
    QList<bool> selected; // one per frequency
};
struct ConvCat {
    QString cName;
    QList<ConvSubcat> subcats;
};
using ConvTree = QList<ConvCat>;

// The categories with empty subcategories, ready to receive their frequencies.
ConvTree ConvTreeFromCats(const QList<TypCat>& cats);
// Asks the service for every subcategory's frequencies; a subcategory whose query gives nothing
// stays empty. Once a query has been reported as failed (the service is down or broken), the
// rest are not asked for and stay empty too, so a dead service costs one report, not one per
// subcategory. Returns false when a query failed so.
bool FetchSubcatFreqs(RRClient& client, ErrorReporter& errors, ConvTree& tree);
QString ConvFreqText(const TypFreq& f, const QList<TypMode>& modes);
QList<TreeNode> ConvTreeNodes(const ConvTree& tree, const QList<TypMode>& modes);
int CountSelected(const ConvTree& tree);
void ClearSelected(ConvTree& tree);
// Adds every ticked frequency in tree order to the bank; returns how many were handed over.
int ImportConvSelection(ErrorReporter& errors, BankRec& bank, const QList<TypMode>& modes,
                        const ConvTree& tree);

// ---- trunked systems ------------------------------------------------------------------------

struct TrsTree {
    QList<TypSite> sites;
    QList<QList<bool>> siteFreqSel; // per site, per frequency
    QList<TypTgCat> tgCats;         // with their talk groups
    QList<QList<bool>> tgSel;       // per category, per talk group
    bool typeI = false;             // ids shown as subfleets
    int talkgroupCount() const;
};

// The system counts as "Type I" when its own flavor is described so.
bool IsTypeI(ErrorReporter& errors, const QList<TypTrsFlavor>& flavors, const TypTrsDetails& d);
QString SiteText(const TypSite& site, int position);
QString SiteFreqText(const TypSiteFreq& f);
QString TalkgroupText(const TypTalkgroup& tg, bool typeI);
QList<TreeNode> TrsTreeNodes(const TrsTree& tree);
// The fleet map "b0-b1-...-b7", or " - - - - - - - - " when the system has none.
QString FleetMapText(const TypTrsDetails& d);
// True when any site carries a band plan of its own.
bool SitesHaveBandplans(const QList<TypSite>& sites);
// Rows of the band plan list (base, offset, step): the hint row when the sites carry their own
// plans and no site is chosen (site < 0); the site's plan when it has entries; else the
// system's.
QList<QStringList> BandPlanRows(const TypTrsDetails& d, const QList<TypSite>& sites, int site);
int CountSiteSelected(const TrsTree& tree);
int CountTgSelected(const TrsTree& tree);
// Adds the ticked frequencies of the sites to the bank; returns how many were handed over.
int ImportSiteSelection(ErrorReporter& errors, BankRec& bank, const TrsTree& tree);
// Rebuilds the talk-group list from the ticked talk groups; returns its count.
int CompareTalkgroups(ErrorReporter& errors, GroupIdList& list, const TrsTree& tree);

} // namespace importtree
} // namespace kestrel
