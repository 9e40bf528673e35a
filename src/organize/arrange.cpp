// SPDX-License-Identifier: GPL-3.0-or-later
#include "arrange.h"

#include <QSet>

namespace kestrel {

namespace {
const QString kPrefix = QStringLiteral("XFR");
}

QString XfrPayload(const QStringList& rowTexts) {
    return kPrefix + QLatin1Char(',') + rowTexts.join(QLatin1Char(','));
}

std::optional<QStringList> ParseXfrPayload(const QString& text) {
    if (text.isEmpty())
        return std::nullopt;
    QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() < 2 || parts.first() != kPrefix)
        return std::nullopt;
    parts.removeFirst();
    return parts;
}

std::optional<QList<int>> XfrPositions(const QString& text, int count, int offset) {
    const std::optional<QStringList> parts = ParseXfrPayload(text);
    if (!parts)
        return std::nullopt;
    QList<int> positions;
    QSet<int> seen;
    for (const QString& part : *parts) {
        bool ok = false;
        const int n = part.trimmed().toInt(&ok) - offset;
        if (!ok || n < 1 || n > count || seen.contains(n))
            return std::nullopt;
        seen.insert(n);
        positions.append(n);
    }
    return positions;
}

bool InBounds(int target, const QList<int>& dragged) {
    return !dragged.contains(target);
}

std::optional<QList<int>> ArrangeOrder(int count, const QList<int>& dragged, int target) {
    if (dragged.isEmpty() || target < 1 || target > count || !InBounds(target, dragged))
        return std::nullopt;
    for (int p : dragged)
        if (p < 1 || p > count || dragged.count(p) != 1)
            return std::nullopt;
    const int first = dragged.first();
    if (target == first)
        return std::nullopt;
    QList<int> order;
    for (int p = 1; p <= count; ++p)
        if (!dragged.contains(p))
            order.append(p);
    // Above the first dragged row the block goes before the target, below it after the target.
    qsizetype at = order.indexOf(target) + (target > first ? 1 : 0);
    for (int p : dragged)
        order.insert(at++, p);
    QList<int> same;
    for (int p = 1; p <= count; ++p)
        same.append(p);
    if (order == same)
        return std::nullopt;
    return order;
}

bool ArrangeDestination(BankChannels& source, BankChannels& dest, const QList<int>& dragged,
                        int target) {
    const qsizetype n = dragged.size();
    if (n == 0 || target < 1 || target + n - 1 > ChansPerBank)
        return false;
    for (int p : dragged)
        if (p < 1 || p > ChansPerBank || dragged.count(p) != 1)
            return false;
    BankChannels newDest = dest;
    int slot = target;
    for (int p : dragged)
        newDest[slot++] = source[p];
    for (int old = target; slot <= ChansPerBank; ++old)
        newDest[slot++] = dest[old];
    BankChannels newSource{};
    slot = 1;
    for (int p = 1; p <= ChansPerBank; ++p)
        if (!dragged.contains(p))
            newSource[slot++] = source[p];
    for (; slot <= ChansPerBank; ++slot)
        newSource[slot] = ChannelRec{};
    source = newSource;
    dest = newDest;
    return true;
}

bool CodeLess(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseSensitive) < 0;
}

QStringList SortNames(const QStringList& names) {
    const QList<int> order = InsertionSortOrder(names, CodeLess);
    QStringList sorted;
    for (int i : order)
        sorted.append(names[i]);
    return sorted;
}

void SortChannels(BankChannels& chans, ChannelSortKey key) {
    const QList<ChannelRec> items(chans.begin() + 1, chans.end());
    const QList<int> order =
        key == ChannelSortKey::Frequency
            ? InsertionSortOrder(
                  items, [](const ChannelRec& a, const ChannelRec& b) { return a.Freq < b.Freq; })
            : InsertionSortOrder(items, [](const ChannelRec& a, const ChannelRec& b) {
                  return CodeLess(a.Desc, b.Desc);
              });
    for (qsizetype i = 0; i < order.size(); ++i)
        chans[i + 1] = items[order[i]];
}

} // namespace kestrel
