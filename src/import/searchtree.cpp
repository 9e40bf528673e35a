// SPDX-License-Identifier: GPL-3.0-or-later
#include "searchtree.h"

#include "core/freq.h"

#include <cmath>

namespace kestrel::searchtree {

using namespace importtree;

QString UnitLetter(int rangeUnit) {
    return rangeUnit == 1   ? QStringLiteral("n")
           : rangeUnit == 2 ? QStringLiteral("k")
                            : QStringLiteral("m");
}

double CoordValue(const QString& text) {
    return text.trimmed().isEmpty() ? 0.0 : text.trimmed().toDouble();
}

namespace {

// The mode column: " -- " without a mode; a mode the table lacks is shown as the service sent it.
QString modeColumn(const QList<TypMode>& modes, const QString& mode) {
    if (mode.trimmed().isEmpty())
        return QStringLiteral(" -- ");
    bool ok = false;
    const double m = mode.trimmed().toDouble(&ok);
    const qint64 n = ok ? std::llround(m) : 0;
    if (n >= 1 && n <= modes.size())
        return SpcStr(modes[n - 1].modeName, 4);
    return SpcStr(mode, 4);
}

// The frequency, read as megahertz, in the files' form right-aligned in 11 characters.
QString freqColumn(double out) {
    return RSpcStr(FreqToString(FreqToHertz(out)), 11);
}

QString coord(double v) {
    return QString::number(v, 'f', 6);
}

} // namespace

QString SearchFreqText(const TypSearchFreq& f, const QList<TypMode>& modes) {
    const QString tag =
        f.tags.isEmpty() ? QStringLiteral("NoTags") : SpcStr(f.tags.last().tagDescr, 12);
    return freqColumn(f.out) + u' ' + modeColumn(modes, f.mode) + QStringLiteral(" Class: ") +
           SpcStr(f.class_, 4) + QStringLiteral(" CT: ") + SpcCT(f.tone, 8) +
           QStringLiteral(" FCC:") + SpcStr(f.callsign, 7) + u' ' + tag + QStringLiteral(" [") +
           SpcStr(f.alpha, 12) + QStringLiteral("] ") + f.descr;
}

QString TagFreqText(const TypFreq& f, const QList<TypMode>& modes) {
    return freqColumn(f.out) + u' ' + modeColumn(modes, f.mode) + QStringLiteral(" Class: ") +
           SpcStr(f.class_, 4) + QStringLiteral(" CT: ") + SpcCT(f.tone, 8) +
           QStringLiteral(" FCC:") + SpcStr(f.callsign, 7) + QStringLiteral(" a:") +
           SpcStr(f.alpha, 12) + u' ' + f.descr;
}

QString CallSignText(const TypProxCallsign& c) {
    const double dist = std::round(c.distance * 1000.0) / 1000.0;
    return SpcStr(c.callsign, 8) + QStringLiteral("  ") + SpcStr(QString::number(dist), 5) +
           QStringLiteral("  Lat: ") + coord(c.lat) + QStringLiteral("  Lon:") + coord(c.lon) +
           QStringLiteral("  ") + c.licensee;
}

template <class T, class F>
static QList<TreeNode> resultNodes(const QString& top, const QList<T>& results, F text) {
    TreeNode root{NodeKey(1), top, {}};
    for (int i = 0; i < results.size(); ++i)
        root.children.append({NodeKey(1, i + 1), text(results[i]), {}});
    return {root};
}

QList<TreeNode> SearchFreqNodes(const QString& area, const QList<TypSearchFreq>& results,
                                const QList<TypMode>& modes) {
    return resultNodes(QStringLiteral("Search Frequency Results for ") + area, results,
                       [&](const TypSearchFreq& f) { return SearchFreqText(f, modes); });
}

QList<TreeNode> TagFreqNodes(const QString& area, const QList<TypFreq>& results,
                             const QList<TypMode>& modes) {
    return resultNodes(QStringLiteral("Search Tag Frequency Results for ") + area, results,
                       [&](const TypFreq& f) { return TagFreqText(f, modes); });
}

QList<TreeNode> CallSignNodes(const QList<TypProxCallsign>& list) {
    return resultNodes(QStringLiteral("Search Call Signs In Area"), list, CallSignText);
}

QList<TreeNode> CallSignDetailNodes(ErrorReporter& errors, const TypFccCallsign& c,
                                    const QList<TypRadioService>& codes) {
    TreeNode top{NodeKey(1),
                 c.callsign + QStringLiteral("  ") + c.licensee + QStringLiteral("  Status: ") +
                     c.status + QStringLiteral("  Granted: ") + c.grantDate +
                     QStringLiteral("  Service: ") + CvrtRadSvcCode(errors, codes, c.radioService),
                 {}};
    if (!c.notes.isEmpty())
        top.children.append({NodeKey(1, 1), QStringLiteral("Notes: ") + c.notes, {}});
    const int base = top.children.size();
    TreeNode freqs{NodeKey(1, base + 1), QStringLiteral("Frequencies"), {}};
    for (int i = 0; i < c.frequencies.size(); ++i) {
        const TypFccFreq& f = c.frequencies[i];
        freqs.children.append({NodeKey(1, base + 1, i + 1),
                               QString::number(FreqToHertz(f.frequency) / 1e6, 'f', 5) +
                                   QStringLiteral("  Emission:") + f.emission +
                                   QStringLiteral("  Power:") + QString::number(f.power) +
                                   QStringLiteral("  Mobiles:") + QString::number(f.mobiles) +
                                   QStringLiteral("  Pagers:") + QString::number(f.pagers) +
                                   QStringLiteral("  Loc:") + QString::number(f.locationNumber),
                               {}});
    }
    TreeNode locs{NodeKey(1, base + 2), QStringLiteral("Locations"), {}};
    for (int i = 0; i < c.locations.size(); ++i) {
        const TypFccLocation& l = c.locations[i];
        locs.children.append({NodeKey(1, base + 2, i + 1),
                              QStringLiteral("ST:") + l.State + QStringLiteral(" City:") + l.city +
                                  QStringLiteral(" Lat:") + coord(l.lat) + QStringLiteral(" Lon:") +
                                  coord(l.lon) + QStringLiteral("  Typ:") + l.type +
                                  QStringLiteral("  El:") + QString::number(l.elevation) +
                                  QStringLiteral("  S-Ht:") + QString::number(l.structureHeight) +
                                  QStringLiteral("  A-Ht:") + QString::number(l.antennaHeight) +
                                  QStringLiteral("  Tid:") + QString::number(l.towerId) +
                                  QStringLiteral("  Ad:") + l.address,
                              {}});
    }
    top.children.append(freqs);
    top.children.append(locs);
    return {top};
}

QList<TreeNode> SysIdNodes(ErrorReporter& errors, const QList<TypTrsSummary>& systems,
                           const QList<TypTrsType>& types, const QList<TypTrsFlavor>& flavors,
                           const QList<TypTrsVoice>& voices) {
    TreeNode top{NodeKey(1), QStringLiteral("System Id Details"), {}};
    for (int i = 0; i < systems.size(); ++i) {
        const TypTrsSummary& t = systems[i];
        const QStringList texts{
            QStringLiteral("Name:  ") + t.sName,
            QStringLiteral("Type:  ") + CvrtSiteType(errors, types, t.sType),
            QStringLiteral("Voice: ") + CvrtSiteVoice(errors, voices, t.sType, t.sVoice),
            QStringLiteral("Flavor:") + CvrtSiteFlavor(errors, flavors, t.sType, t.sFlavor),
            QStringLiteral("City:  ") + t.sCity,
            QStringLiteral("Date:  ") + t.lastUpdated};
        TreeNode sys{
            NodeKey(1, i + 1), QString::number(t.sid) + QStringLiteral("  ") + t.sName, {}};
        for (int d = 0; d < texts.size(); ++d)
            sys.children.append({NodeKey(1, i + 1, d + 1), texts[d], {}});
        top.children.append(sys);
    }
    return {top};
}

} // namespace kestrel::searchtree
