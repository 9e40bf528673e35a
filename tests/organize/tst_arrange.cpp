// SPDX-License-Identifier: GPL-3.0-or-later
// The drag payload, the drop rearrangements and the stable sorts of the organize windows.
#include "organize/arrange.h"

#include <QTest>

using namespace kestrel;

namespace {

// Letters A.. for positions 1..count, rearranged by an order.
QString lettersAfter(int count, const QList<int>& order) {
    QString s;
    for (int p : order)
        s += QChar(QLatin1Char('A').unicode() + p - 1);
    Q_ASSERT(order.size() == count);
    return s;
}

QList<int> ints(const QString& list) {
    QList<int> out;
    for (const QString& p : list.split(QLatin1Char(','), Qt::SkipEmptyParts))
        out.append(p.toInt());
    return out;
}

ChannelRec chan(double mhz, const QString& desc) {
    ChannelRec c;
    c.Freq = mhz * 1e6;
    c.Desc = desc;
    return c;
}

} // namespace

class TestArrange : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void payload_data();
    void payload();
    void positions_data();
    void positions();
    void bankDrops_data();
    void bankDrops();
    void destinationMoves_data();
    void destinationMoves();
    void destinationRefusesOverflow();
    void sortNames_data();
    void sortNames();
    void sortChannelsByFrequency();
    void sortChannelsByDescription();
};

void TestArrange::payload_data() {
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<QString>("text");
    QTest::newRow("two banks") << QStringList{"03", "04"} << "XFR,03,04";
    QTest::newRow("one channel") << QStringList{"21"} << "XFR,21";
    QTest::newRow("three channels") << QStringList{"41", "45", "60"} << "XFR,41,45,60";
}

void TestArrange::payload() {
    QFETCH(QStringList, rows);
    QFETCH(QString, text);
    QCOMPARE(XfrPayload(rows), text);
    const auto parsed = ParseXfrPayload(text);
    QVERIFY(parsed.has_value());
    QCOMPARE(*parsed, rows);
}

void TestArrange::positions_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("offset");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("expected");
    QTest::newRow("banks") << "XFR,03,04" << 0 << true << "3,4";
    QTest::newRow("channels of bank 4") << "XFR,61,62,80" << 60 << true << "1,2,20";
    QTest::newRow("plain text") << "hello world" << 0 << false << "";
    QTest::newRow("empty") << "" << 0 << false << "";
    QTest::newRow("prefix alone") << "XFR" << 0 << false << "";
    QTest::newRow("prefix and comma") << "XFR," << 0 << false << "";
    QTest::newRow("lower-case prefix") << "xfr,01" << 0 << false << "";
    QTest::newRow("prefix with blank") << "XFR ,01" << 0 << false << "";
    QTest::newRow("position 0") << "XFR,00" << 0 << false << "";
    QTest::newRow("position 11") << "XFR,11" << 0 << false << "";
    QTest::newRow("channel of another bank") << "XFR,21" << 60 << false << "";
    QTest::newRow("not a number") << "XFR,03,x" << 0 << false << "";
    QTest::newRow("twice") << "XFR,03,03" << 0 << false << "";
}

void TestArrange::positions() {
    QFETCH(QString, text);
    QFETCH(int, offset);
    QFETCH(bool, valid);
    QFETCH(QString, expected);
    const int count = offset ? ChansPerBank : BankCount;
    const auto got = XfrPositions(text, count, offset);
    QCOMPARE(got.has_value(), valid);
    if (valid)
        QCOMPARE(*got, ints(expected));
}

void TestArrange::bankDrops_data() {
    QTest::addColumn<QString>("dragged");
    QTest::addColumn<int>("target");
    QTest::addColumn<QString>("result"); // empty: no change
    QTest::newRow("05,06 onto 02") << "5,6" << 2 << "AEFBCDGHIJ";
    QTest::newRow("02,03 onto 06") << "2,3" << 6 << "ADEFBCGHIJ";
    QTest::newRow("10 onto 01") << "10" << 1 << "JABCDEFGHI";
    QTest::newRow("01 onto 10") << "1" << 10 << "BCDEFGHIJA";
    QTest::newRow("neighbour down") << "4" << 5 << "ABCEDFGHIJ";
    QTest::newRow("neighbour up") << "5" << 4 << "ABCEDFGHIJ";
    QTest::newRow("scattered up") << "6,9" << 3 << "ABFICDEGHJ";
    QTest::newRow("scattered down") << "2,4" << 8 << "ACEFGHBDIJ";
    QTest::newRow("onto a dragged row") << "5,6" << 6 << "";
    QTest::newRow("onto the first dragged row") << "5,6" << 5 << "";
    QTest::newRow("target outside") << "5" << 11 << "";
}

void TestArrange::bankDrops() {
    QFETCH(QString, dragged);
    QFETCH(int, target);
    QFETCH(QString, result);
    const auto order = ArrangeOrder(BankCount, ints(dragged), target);
    QCOMPARE(order.has_value(), !result.isEmpty());
    if (order)
        QCOMPARE(lettersAfter(BankCount, *order), result);
}

void TestArrange::destinationMoves_data() {
    QTest::addColumn<QString>("dragged");
    QTest::addColumn<int>("target");
    QTest::newRow("three onto slot 5") << "3,4,5" << 5;
    QTest::newRow("one onto slot 1") << "20" << 1;
    QTest::newRow("scattered onto slot 18") << "1,10,20" << 18;
    QTest::newRow("same slot as dragged") << "7" << 7;
}

void TestArrange::destinationMoves() {
    QFETCH(QString, dragged);
    QFETCH(int, target);
    const QList<int> moved = ints(dragged);
    BankChannels source{}, dest{};
    for (int c = 1; c <= ChansPerBank; ++c) {
        source[c] = chan(100 + c, QStringLiteral("S%1").arg(c));
        dest[c] = chan(200 + c, QStringLiteral("D%1").arg(c));
    }
    const BankChannels oldSource = source, oldDest = dest;
    QVERIFY(ArrangeDestination(source, dest, moved, target));
    const int n = int(moved.size());
    // Destination: its slots before the target, the moved channels, then its own pushed down.
    for (int c = 1; c < target; ++c)
        QCOMPARE(dest[c], oldDest[c]);
    for (int i = 0; i < n; ++i)
        QCOMPARE(dest[target + i], oldSource[moved[i]]);
    for (int c = target + n; c <= ChansPerBank; ++c)
        QCOMPARE(dest[c], oldDest[c - n]);
    // Source: the others closed up in their order, empty channels at the end.
    int slot = 1;
    for (int c = 1; c <= ChansPerBank; ++c)
        if (!moved.contains(c))
            QCOMPARE(source[slot++], oldSource[c]);
    for (; slot <= ChansPerBank; ++slot)
        QCOMPARE(source[slot], ChannelRec{});
}

void TestArrange::destinationRefusesOverflow() {
    BankChannels source{}, dest{};
    for (int c = 1; c <= ChansPerBank; ++c) {
        source[c] = chan(100 + c, QStringLiteral("S%1").arg(c));
        dest[c] = chan(200 + c, QStringLiteral("D%1").arg(c));
    }
    const BankChannels oldSource = source, oldDest = dest;
    QVERIFY(!ArrangeDestination(source, dest, {1, 2, 3}, 19));
    QVERIFY(source == oldSource);
    QVERIFY(dest == oldDest);
    QVERIFY(ArrangeDestination(source, dest, {1, 2, 3}, 18));
    QCOMPARE(dest[20].Desc, QStringLiteral("S3"));
}

void TestArrange::sortNames_data() {
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("sorted");
    QTest::newRow("case") << QStringList{"fire", "Fire", "air", "Air"}
                          << QStringList{"Air", "Fire", "air", "fire"};
    QTest::newRow("digits and letters")
        << QStringList{"b10", "B2", "b1", "_x", "9"} << QStringList{"9", "B2", "_x", "b1", "b10"};
    QTest::newRow("already sorted") << QStringList{"A", "B", "C"} << QStringList{"A", "B", "C"};
    QTest::newRow("empty name first")
        << QStringList{"Bank01", "", "Air"} << QStringList{"", "Air", "Bank01"};
    QTest::newRow("accents after ASCII")
        << QStringList{"Ärzte", "Zoll", "Amt"} << QStringList{"Amt", "Zoll", "Ärzte"};
}

void TestArrange::sortNames() {
    QFETCH(QStringList, names);
    QFETCH(QStringList, sorted);
    QCOMPARE(SortNames(names), sorted);
}

void TestArrange::sortChannelsByFrequency() {
    BankChannels chans{};
    const double mhz[ChansPerBank] = {462.5625, 0, 146.52, 40.5, 0,     146.52, 851.0125,
                                      25,       0, 956,    40.5, 154.1, 0,      0,
                                      0,        0, 0,      0,    0,     0};
    for (int c = 1; c <= ChansPerBank; ++c)
        chans[c] = chan(mhz[c - 1], QStringLiteral("#%1").arg(c));
    SortChannels(chans, ChannelSortKey::Frequency);
    // Empty channels first, in their old order; equal frequencies keep their order.
    const QStringList expected = {"#2",  "#5",  "#9",  "#13", "#14", "#15", "#16",
                                  "#17", "#18", "#19", "#20", "#8",  "#4",  "#11",
                                  "#3",  "#6",  "#12", "#1",  "#7",  "#10"};
    QStringList got;
    for (int c = 1; c <= ChansPerBank; ++c)
        got.append(chans[c].Desc);
    QCOMPARE(got, expected);
}

void TestArrange::sortChannelsByDescription() {
    BankChannels chans{};
    const QStringList descs = {"fire", "Police", "", "Fire", "police", "EMS", "Fire", "air"};
    for (int c = 1; c <= ChansPerBank; ++c)
        chans[c] = chan(100 + c, c <= descs.size() ? descs[c - 1] : QStringLiteral("~%1").arg(c));
    SortChannels(chans, ChannelSortKey::Description);
    QStringList got;
    QList<int> freqs;
    for (int c = 1; c <= 8; ++c) {
        got.append(chans[c].Desc);
        freqs.append(int(chans[c].Freq / 1e6));
    }
    QCOMPARE(got, (QStringList{"", "EMS", "Fire", "Fire", "Police", "air", "fire", "police"}));
    // The two "Fire" channels keep their order: slot 4 before slot 7.
    QCOMPARE(freqs.mid(2, 2), (QList<int>{104, 107}));
    // Character codes, not numbers: "~10" .. "~19", "~20", "~9".
    QCOMPARE(chans[9].Desc, QStringLiteral("~10"));
    QCOMPARE(chans[19].Desc, QStringLiteral("~20"));
    QCOMPARE(chans[20].Desc, QStringLiteral("~9"));
}

QTEST_GUILESS_MAIN(TestArrange)
#include "tst_arrange.moc"
