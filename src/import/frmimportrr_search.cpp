// SPDX-License-Identifier: GPL-3.0-or-later
// The import window's side of the advanced searches: running each search, showing its results
// in the tree, ticking frequency and tag results, and the search and feeds windows.
#include "frmimportrr.h"

#include "import/searchtree.h"
#include "webservice/rrclient.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

namespace kestrel {

using namespace importtree;
using namespace searchtree;

namespace {

struct SearchCursor {
    SearchCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~SearchCursor() { QApplication::restoreOverrideCursor(); }
    SearchCursor(const SearchCursor&) = delete;
    SearchCursor& operator=(const SearchCursor&) = delete;
};

} // namespace

void FrmImportRR::SearchFreqsMenuItem_Click() {
    Trap(m_ctx.errors, "FrmImportRR -> SearchFreqsMenuItem", [&] {
        QAction* item = menuItem(QStringLiteral("SearchFreqsMenuItem"));
        // The search around a point starts from the zip code's place.
        SearchSettings& s = m_ctx.component<SearchSettings>();
        s.LatText = m_lat->text();
        s.LonText = m_lon->text();
        if (m_search) {
            m_search->raise();
            item->setChecked(true);
            return;
        }
        m_search = new FrmSearchRR(m_ctx, *this, this);
        m_search->setAttribute(Qt::WA_DeleteOnClose);
        item->setChecked(true);
        m_search->show();
    });
}

void FrmImportRR::ShowAudioFeedsMenuItem_Click() {
    Trap(m_ctx.errors, "FrmImportRR -> ShowAudioFeedsMenuItem", [&] {
        QAction* item = menuItem(QStringLiteral("ShowAudioFeedsMenuItem"));
        if (m_client.Feeds.isEmpty()) {
            item->setChecked(false);
            return;
        }
        if (!m_feeds) {
            m_feeds = new FrmFeeds(m_ctx, this);
            m_feeds->setAttribute(Qt::WA_DeleteOnClose);
            connect(m_feeds.data(), &FrmFeeds::closed, this, [item] { item->setChecked(false); });
        }
        item->setChecked(true);
        m_feeds->show();
        m_feeds->raise();
    });
}

void FrmImportRR::beginSearch() {
    if (QAction* item = menuItem(QStringLiteral("SearchFreqsMenuItem")))
        item->setChecked(false);
    if (m_search)
        m_search->close();
    clearTree();
    m_treeTag = QStringLiteral("*");
}

void FrmImportRR::noResults() {
    m_ctx.prompts().message(kNoResults, windowTitle(), Icon::Information, Buttons::Ok);
}

void FrmImportRR::StartFreqSearch(const QString& freq, const QString& tone) {
    Trap(m_ctx.errors, "FrmImportRR -> StartFreqSearch", [&] {
        beginSearch();
        // The results are imported with the conventional Import button.
        Set_TvHeight(false);
        m_searchFreqs.clear();
        m_searchSel.clear();
        const SearchSettings& s = m_ctx.component<SearchSettings>();
        const double mhz = freq.toDouble();
        {
            SearchCursor busy;
            bool ok = false;
            if (s.SearchScope == 0) {
                ok = m_client.searchStateFreq(m_stid, mhz, tone);
                m_searchFreqs = ok ? m_client.StateFreqSearch : QList<TypSearchFreq>{};
            } else if (s.SearchScope == 1) {
                ok = m_client.searchCountyFreq(m_ctid, mhz, tone);
                m_searchFreqs = ok ? m_client.CountyFreqSearch : QList<TypSearchFreq>{};
            } else {
                ok = m_client.searchMetroFreq(s.mid, mhz, tone);
                m_searchFreqs = ok ? m_client.MetroFreqSearch : QList<TypSearchFreq>{};
            }
        }
        m_searchSel = QList<bool>(m_searchFreqs.size(), false);
        if (m_searchFreqs.isEmpty())
            noResults();
        else
            RRShwSrchFrqs();
    });
}

void FrmImportRR::RRShwSrchFrqs() {
    Trap(m_ctx.errors, "RRShwSrchFrqs", [&] {
        showTree(QStringLiteral("SearchFreqs"),
                 SearchFreqNodes(m_ctx.component<SearchSettings>().AreaName, m_searchFreqs,
                                 m_client.Modes));
    });
}

void FrmImportRR::StartFreqsByTag() {
    Trap(m_ctx.errors, "FrmImportRR -> StartFreqsByTag", [&] {
        beginSearch();
        Set_TvHeight(false);
        m_tagFreqs.clear();
        m_tagSel.clear();
        const SearchSettings& s = m_ctx.component<SearchSettings>();
        {
            SearchCursor busy;
            if (s.TagByCounty == 1) {
                if (m_client.getCountyFreqsByTag(m_ctid, s.tagId))
                    m_tagFreqs = m_client.CountyFreqsByTag;
            } else if (m_client.getAgencyFreqsByTag(m_aid, s.tagId)) {
                m_tagFreqs = m_client.AgencyFreqsByTag;
            }
        }
        m_tagSel = QList<bool>(m_tagFreqs.size(), false);
        if (m_tagFreqs.isEmpty())
            noResults();
        else
            RRShwTagFrqs();
    });
}

void FrmImportRR::RRShwTagFrqs() {
    Trap(m_ctx.errors, "RRShwTagFrqs", [&] {
        showTree(
            QStringLiteral("SearchTaqs"),
            TagFreqNodes(m_ctx.component<SearchSettings>().AreaName, m_tagFreqs, m_client.Modes));
    });
}

void FrmImportRR::StartFreqsByCallSign(const QString& lat, const QString& lon) {
    Trap(m_ctx.errors, "FrmImportRR -> StartFreqsByCallSign", [&] {
        beginSearch();
        const SearchSettings& s = m_ctx.component<SearchSettings>();
        bool found = false;
        {
            SearchCursor busy;
            found = m_client.fccGetProxCallsigns(CoordValue(lat), CoordValue(lon), s.SearchRange,
                                                 UnitLetter(s.RangeUnit));
        }
        if (found)
            RRShwCallSigns();
        else
            noResults();
    });
}

void FrmImportRR::RRShwCallSigns() {
    Trap(m_ctx.errors, "RRShwCallSigns",
         [&] { showTree(QStringLiteral("CallSigns"), CallSignNodes(m_client.ProxCallsigns)); });
}

void FrmImportRR::GetCallSignDetails(const QString& callSign) {
    Trap(m_ctx.errors, "FrmImportRR -> GetCallSignDetails", [&] {
        beginSearch();
        bool found = false;
        {
            SearchCursor busy;
            found = m_client.fccGetCallsign(callSign) && !m_client.FccCallsign.callsign.isEmpty();
        }
        if (found)
            RRShwCallSignDetails();
        else
            noResults();
    });
}

void FrmImportRR::RRShwCallSignDetails() {
    Trap(m_ctx.errors, "RRShwCallSignDetails", [&] {
        showTree(
            QStringLiteral("CallSignDetails"),
            CallSignDetailNodes(m_ctx.errors, m_client.FccCallsign, m_client.RadioServiceCodes));
        m_tv->expandAll();
    });
}

void FrmImportRR::GetSysIdDetails(const QString& sysId) {
    Trap(m_ctx.errors, "FrmImportRR -> GetSysIdDetails", [&] {
        beginSearch();
        bool found = false;
        {
            SearchCursor busy;
            found = m_client.getTrsBySysid(sysId);
        }
        if (found)
            RRShwSysIdDetails();
        else
            noResults();
    });
}

void FrmImportRR::RRShwSysIdDetails() {
    Trap(m_ctx.errors, "RRShwSysIdDetails", [&] {
        showTree(QStringLiteral("SysIdDetails"),
                 SysIdNodes(m_ctx.errors, m_client.TrsBySysid, m_client.TrsTypes,
                            m_client.TrsFlavors, m_client.TrsVoices));
        m_tv->expandAll();
    });
}

// Ticks in the frequency and tag result trees: a result records its flag, the top node ticks or
// unticks every result, and the top node follows the count to 1 and back to 0.
void FrmImportRR::searchNodeCheck(QTreeWidgetItem* item) {
    const bool tags = m_treeTag == u"SearchTaqs";
    QList<bool>& sel = tags ? m_tagSel : m_searchSel;
    int& count = tags ? m_tagSelCnt : m_searchSelCnt;
    const bool on = item->checkState(0) == Qt::Checked;
    const KeyParts k = SplitKey(item->data(0, KeyRole).toString());
    const int before = count;
    if (k.s == 0) {
        for (int i = 0; i < sel.size(); ++i) {
            sel[i] = on;
            setChecked(m_nodes.value(NodeKey(1, i + 1)), on);
        }
    } else if (k.s <= sel.size()) {
        sel[k.s - 1] = on;
    }
    count = int(sel.count(true));
    if (k.s > 0 && item->parent()) {
        if (on && before == 0 && count >= 1)
            setChecked(item->parent(), true);
        else if (!on && count == 0)
            setChecked(item->parent(), false);
    }
    showCounters();
}

} // namespace kestrel
