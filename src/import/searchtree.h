// SPDX-License-Identifier: GPL-3.0-or-later
// The advanced searches without any widget: the search settings the search window leaves for
// the import window, the node texts of the five result trees, and the import of ticked frequency
// and tag results into a bank. Shared by the import window and the command line.
#pragma once

#include "import/importtree.h"

#include <QPoint>

namespace kestrel {

// What the search window chose, kept for the whole run: `ctx.component<SearchSettings>()`.
class SearchSettings : public Component {
public:
    explicit SearchSettings(AppContext&) {}
    SearchSettings() = default;

    int SearchScope = 0; // 0 state, 1 county, 2 metro
    QString AreaName;    // shown in the result tree's top node
    qint32 mid = 0;      // the chosen metro area
    int TagByCounty = 1; // 1 county, 0 agency
    qint32 tagId = 0;
    int SearchRange = 1; // 1, 2 or 3
    int RangeUnit = 0;   // 0 statute miles, 1 nautical miles, 2 kilometres
    QString LatText;     // from the zip code lookup
    QString LonText;
    QPoint FeedsPos{-1, -1}; // where the feeds window was last closed
};

namespace searchtree {

using importtree::TreeNode;

inline const QString kNoResults = QStringLiteral("No Results Found in Search!!!");

// "m", "n" or "k" for RangeUnit 0, 1, 2.
QString UnitLetter(int rangeUnit);
// A latitude or longitude text as sent: empty is "0".
double CoordValue(const QString& text);

QString SearchFreqText(const TypSearchFreq& f, const QList<TypMode>& modes);
QString TagFreqText(const TypFreq& f, const QList<TypMode>& modes);
QString CallSignText(const TypProxCallsign& c);

// The trees, each under one top node "c1".
QList<TreeNode> SearchFreqNodes(const QString& area, const QList<TypSearchFreq>& results,
                                const QList<TypMode>& modes);
QList<TreeNode> TagFreqNodes(const QString& area, const QList<TypFreq>& results,
                             const QList<TypMode>& modes);
QList<TreeNode> CallSignNodes(const QList<TypProxCallsign>& list);
QList<TreeNode> CallSignDetailNodes(ErrorReporter& errors, const TypFccCallsign& c,
                                    const QList<TypRadioService>& codes);
QList<TreeNode> SysIdNodes(ErrorReporter& errors, const QList<TypTrsSummary>& systems,
                           const QList<TypTrsType>& types, const QList<TypTrsFlavor>& flavors,
                           const QList<TypTrsVoice>& voices);

// Adds the ticked results in order to the bank named `name` from slot 1. A result whose mode is
// not a number or lies outside the mode table throws before it is stored; the channels stored
// before it stay. Returns how many were handed over.
template <class T>
int ImportSearchSelection(ErrorReporter& errors, BankRec& bank, const QList<TypMode>& modes,
                          const QString& name, const QList<T>& results,
                          const QList<bool>& selected) {
    bank.ImportName = name;
    bank.ImportCount = 0;
    bank.Changed = true;
    int handed = 0;
    for (qsizetype i = 0; i < results.size() && i < selected.size(); ++i)
        if (selected[i]) {
            AddSearchFreq(errors, bank, modes, results[i]);
            ++handed;
        }
    return handed;
}

} // namespace searchtree
} // namespace kestrel
