// SPDX-License-Identifier: GPL-3.0-or-later
// The drag payload, drop and sort rules of the organize windows, and the organizers that apply
// them to a profile loaded from real bank files.
#include "organize/arrange.h"
#include "organize/bankorganizer.h"
#include "organize/chnlorganizer.h"

#include "letterbanks.h"
#include "testsupport.h"

#include <QTest>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {

QString descs(const BankChannels& chans) {
    QStringList s;
    for (int c = 1; c <= ChansPerBank; ++c)
        s.append(chans[c].Desc);
    return s.join(u' ');
}

} // namespace

class TestArrange : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void positions_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("offset");
        QTest::addColumn<QString>("expected"); // empty: refused
        QTest::newRow("banks") << "XFR,03,04" << 0 << "3,4";
        QTest::newRow("channels of bank 4") << "XFR,61,62,80" << 60 << "1,2,20";
        QTest::newRow("prefix alone") << "XFR" << 0 << "";
        QTest::newRow("lower-case prefix") << "xfr,01" << 0 << "";
        QTest::newRow("position 11") << "XFR,11" << 0 << "";
        QTest::newRow("channel of another bank") << "XFR,21" << 60 << "";
        QTest::newRow("not a number") << "XFR,03,x" << 0 << "";
        QTest::newRow("twice") << "XFR,03,03" << 0 << "";
    }

    void positions() {
        QFETCH(QString, text);
        QFETCH(int, offset);
        QFETCH(QString, expected);
        const auto got = XfrPositions(text, offset ? ChansPerBank : BankCount, offset);
        QCOMPARE(got.has_value(), !expected.isEmpty());
        if (got) {
            QCOMPARE(*got, ints(expected));
            QCOMPARE(XfrPayload(ParseXfrPayload(text).value()), text);
        }
    }

    void bankDrops_data() {
        QTest::addColumn<QString>("dragged");
        QTest::addColumn<int>("target");
        QTest::addColumn<QString>("result"); // empty: no change
        QTest::newRow("10 onto 01") << "10" << 1 << "JABCDEFGHI";
        QTest::newRow("01 onto 10") << "1" << 10 << "BCDEFGHIJA";
        QTest::newRow("neighbour down") << "4" << 5 << "ABCEDFGHIJ";
        QTest::newRow("scattered up") << "6,9" << 3 << "ABFICDEGHJ";
        QTest::newRow("scattered down") << "2,4" << 8 << "ACEFGHBDIJ";
        QTest::newRow("onto a dragged row") << "5,6" << 6 << "";
        QTest::newRow("target outside") << "5" << 11 << "";
    }

    void bankDrops() {
        QFETCH(QString, dragged);
        QFETCH(int, target);
        QFETCH(QString, result);
        const auto order = ArrangeOrder(BankCount, ints(dragged), target);
        QCOMPARE(order.has_value(), !result.isEmpty());
        QString letters;
        for (int p : order.value_or(QList<int>{}))
            letters += QChar(u'A' + p - 1);
        QCOMPARE(letters, result);
    }

    void destination_data() {
        QTest::addColumn<QString>("dragged");
        QTest::addColumn<int>("target");
        QTest::addColumn<bool>("fits");
        QTest::newRow("one onto slot 1") << "20" << 1 << true;
        QTest::newRow("scattered onto slot 18") << "1,10,20" << 18 << true;
        QTest::newRow("same slot as dragged") << "7" << 7 << true;
        QTest::newRow("three onto slot 19") << "1,2,3" << 19 << false;
    }

    void destination() {
        QFETCH(QString, dragged);
        QFETCH(int, target);
        QFETCH(bool, fits);
        const QList<int> moved = ints(dragged);
        BankChannels source{}, dest{};
        for (int c = 1; c <= ChansPerBank; ++c) {
            source[c] = chan((100 + c) * 1e6, u"S%1"_s.arg(c));
            dest[c] = chan((200 + c) * 1e6, u"D%1"_s.arg(c));
        }
        const BankChannels oldSource = source, oldDest = dest;
        QCOMPARE(ArrangeDestination(source, dest, moved, target), fits);
        if (!fits) {
            QVERIFY(source == oldSource && dest == oldDest);
            return;
        }
        // Destination: its slots before the target, the moved channels, then its own pushed down.
        const int n = int(moved.size());
        for (int c = 1; c <= ChansPerBank; ++c)
            QCOMPARE(dest[c], c < target       ? oldDest[c]
                              : c < target + n ? oldSource[moved[c - target]]
                                               : oldDest[c - n]);
        // Source: the others closed up in their order, empty channels at the end.
        int slot = 1;
        for (int c = 1; c <= ChansPerBank; ++c)
            if (!moved.contains(c))
                QCOMPARE(source[slot++], oldSource[c]);
        for (; slot <= ChansPerBank; ++slot)
            QCOMPARE(source[slot], ChannelRec{});
    }

    void sortNames() {
        // Character codes: digits, upper case, "_", lower case, then accented letters.
        QCOMPARE(SortNames({"b10", "B2", "", "Ärzte", "b1", "_x", "9", "Air"}),
                 (QStringList{"", "9", "Air", "B2", "_x", "b1", "b10", "Ärzte"}));
    }

    void sortChannels_data() {
        QTest::addColumn<bool>("byFrequency");
        QTest::addColumn<QStringList>("keys"); // of slots 1..; the rest empty / "~<slot>"
        QTest::addColumn<QString>("order");    // the old slot of each new slot
        QTest::newRow("frequency: empty first, equal ones keep their order")
            << true << QStringList{"462.5625", "0",  "146.52", "40.5", "0",    "146.52",
                                   "851.0125", "25", "0",      "956",  "40.5", "154.1"}
            << "2,5,9,13,14,15,16,17,18,19,20,8,4,11,3,6,12,1,7,10";
        QTest::newRow("description: character codes, equal ones keep their order")
            << false << QStringList{"fire", "Police", "", "Fire", "police", "EMS", "Fire", "air"}
            << "3,6,4,7,2,8,1,5,10,11,12,13,14,15,16,17,18,19,20,9";
    }

    void sortChannels() {
        QFETCH(bool, byFrequency);
        QFETCH(QStringList, keys);
        QFETCH(QString, order);
        BankChannels chans{};
        for (int c = 1; c <= ChansPerBank; ++c) {
            const QString key = c <= keys.size() ? keys[c - 1] : QString();
            chans[c] = byFrequency
                           ? chan(key.toDouble() * 1e6, QString::number(c))
                           : chan((100 + c) * 1e6, c <= keys.size() ? key : u"~%1"_s.arg(c));
        }
        const BankChannels old = chans;
        SortChannels(chans, byFrequency ? ChannelSortKey::Frequency : ChannelSortKey::Description);
        const QList<int> slots = ints(order);
        for (int c = 1; c <= ChansPerBank; ++c)
            QCOMPARE(chans[c], old[slots[c - 1]]);
    }

    void bankOrganizer() {
        LetterBanks f;
        ProfileRec& p = f.ctx.cur();
        for (BankRec& bank : p.Banks)
            bank.Chans[2].Desc = u"edited"_s; // not saved to the bank files
        p.Banks[4].FileName.clear();
        p.Banks[4].Chans[1].Desc = u"only in memory"_s;
        BankOrganizer org(f.ctx);
        org.load(f.ctx.CurProfile);
        QVERIFY(!org.save());
        // A drop and the drop back: the names are as before, so there is nothing to save.
        QVERIFY(org.drop(u"XFR,03"_s, 5));
        QVERIFY(org.drop(u"XFR,05"_s, 3));
        QVERIFY(!org.save());
        QVERIFY(org.drop(u"XFR,04"_s, 1));
        QCOMPARE(org.names().join(u','), u",A,B,C,E,F,G,H,I,J"_s);
        QCOMPARE(p.Banks[2].FileName, u"B"_s); // nothing applied yet
        QVERIFY(org.save());
        QVERIFY(!org.changed());
        QVERIFY(p.Changed);
        QCOMPARE(f.ctx.errors.reportCount(), 0);
        // Every bank moves whole with its name, unsaved edits included, and the banks that kept
        // their place keep theirs.
        QCOMPARE(p.Banks[1].FileName, QString());
        QCOMPARE(p.Banks[1].Chans[1].Desc, u"only in memory"_s);
        QCOMPARE(p.Banks[3].Chans[1].Desc, u"B1"_s);
        QCOMPARE(p.Banks[3].Chans[2].Desc, u"edited"_s);
        QCOMPARE(p.Banks[4].Chans[3].Desc, u"C3"_s);
        QCOMPARE(p.Banks[5].FileName, u"E"_s);
        QCOMPARE(p.Banks[5].Chans[2].Desc, u"edited"_s);
        for (int b = 1; b <= BankCount; ++b)
            QCOMPARE(p.Banks[b].Changed, b <= 4);
    }

    void channelOrganizerSameBank() {
        LetterBanks f;
        ChannelOrganizer org(f.ctx);
        org.load(f.ctx.CurProfile);
        QVERIFY(org.selectBank(ChannelOrganizer::Source, 4));
        QVERIFY(org.selectBank(ChannelOrganizer::Destination, 4));
        QVERIFY(!org.dropOnDestination(u"XFR,62,63"_s, 3)); // onto a dragged row
        QVERIFY(!org.dropOnSource(u"XFR,21"_s, 3));         // not a row of bank 4
        QVERIFY(!org.dropOnDestination(u"146.52,Fire"_s, 3));
        QVERIFY(!org.anyChanged());
        QVERIFY(org.dropOnDestination(u"XFR,62,63"_s, 6));
        const QString expected = names("D1 D4-6 D2-3 D7-20");
        QCOMPARE(descs(org.channels(ChannelOrganizer::Source)), expected);
        QCOMPARE(descs(org.channels(ChannelOrganizer::Destination)), expected);
        QCOMPARE(descs(f.ctx.cur().Banks[4].Chans), names("D1-20")); // private until saved
        org.saveCurrent();
        QVERIFY(!org.anyChanged());
        QCOMPARE(descs(f.ctx.cur().Banks[4].Chans), expected);
        QVERIFY(f.ctx.cur().Banks[4].Changed);
        QVERIFY(!f.ctx.cur().Banks[1].Changed);
    }

    void switchingWithUnsavedChanges_data() {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("switched");
        QTest::addColumn<bool>("saved");
        QTest::newRow("Yes saves, then switches") << int(Answer::Yes) << true << true;
        QTest::newRow("No drops the changes") << int(Answer::No) << true << false;
        QTest::newRow("Cancel keeps bank and changes") << int(Answer::Cancel) << false << false;
    }

    void switchingWithUnsavedChanges() {
        QFETCH(int, answer);
        QFETCH(bool, switched);
        QFETCH(bool, saved);
        LetterBanks f;
        ChannelOrganizer org(f.ctx);
        org.load(f.ctx.CurProfile);
        QVERIFY(org.selectBank(ChannelOrganizer::Source, 2)); // no changes: no question
        QVERIFY(f.prompts.messages().isEmpty());
        org.sort(ChannelOrganizer::Source, ChannelSortKey::Description); // B1 B10 B11 ...
        const QString sorted = descs(org.channels(ChannelOrganizer::Source));
        QVERIFY(sorted.startsWith(u"B1 B10 B11"_s));

        f.prompts.queueAnswer(Answer(answer));
        QCOMPARE(org.selectBank(ChannelOrganizer::Source, 7), switched);
        QCOMPARE(f.prompts.messages().size(), 1);
        const ScriptedPrompts::Message& m = f.prompts.messages().first();
        QCOMPARE(m.text, u"Do You Want to Save the Current Bank First?"_s);
        QCOMPARE(m.title, u"Bank NOT Saved!"_s);
        QCOMPARE(m.icon, Icon::Critical);
        QCOMPARE(m.buttons, Buttons::YesNoCancel);
        QCOMPARE(org.bank(ChannelOrganizer::Source), switched ? 7 : 2);
        QCOMPARE(org.changed(ChannelOrganizer::Source), !switched);
        QCOMPARE(descs(org.channels(ChannelOrganizer::Source)), switched ? names("G1-20") : sorted);
        QCOMPARE(descs(f.ctx.cur().Banks[2].Chans), saved ? sorted : names("B1-20"));
        QCOMPARE(f.ctx.cur().Banks[2].Changed, saved);
    }
};

QTEST_GUILESS_MAIN(TestArrange)
#include "tst_arrange.moc"
