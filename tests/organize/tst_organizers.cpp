// SPDX-License-Identifier: GPL-3.0-or-later
// Organizing banks and channels of a profile loaded from real files: drops, sorts, the question
// on switching banks with unsaved changes, and saving into the profile.
#include "organize/bankorganizer.h"
#include "organize/chnlorganizer.h"

#include "core/files.h"
#include "core/profiles.h"
#include "testsupport.h"

#include <QTest>

using namespace kestrel;

namespace {

struct Fixture {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Yes};
    AppContext ctx{dir.path(), &prompts};
    Fixture() {
        Load_Profiles(ctx);
        MakeBanksDir(ctx);
    }
    // Banks 1..10 named after the letters, each file holding channels "<letter>1".."<letter>20".
    void letterBanks(const QString& letters = QStringLiteral("ABCDEFGHIJ")) {
        for (int b = 1; b <= BankCount; ++b) {
            BankRec& bank = ctx.cur().Banks[b];
            bank.FileName = letters.mid(b - 1, 1);
            for (int c = 1; c <= ChansPerBank; ++c) {
                bank.Chans[c] = ChannelRec{};
                bank.Chans[c].Freq = (100 + b) * 1e6 + c * 12500;
                bank.Chans[c].Desc = bank.FileName + QString::number(c);
            }
            Save_BankInfo(ctx, ctx.CurProfile, b, ctx.bankPath(bank.FileName));
        }
    }
    QString firstDescs() const {
        QString s;
        for (int b = 1; b <= BankCount; ++b)
            s += ctx.cur().Banks[b].Chans[1].Desc.left(1);
        return s;
    }
};

QString descsOf(const BankChannels& chans) {
    QStringList s;
    for (int c = 1; c <= ChansPerBank; ++c)
        s.append(chans[c].Desc);
    return s.join(QLatin1Char(' '));
}

QString descsOf(const BankRec& bank) {
    return descsOf(bank.Chans);
}

// "B1 B2 ..." for the given slot numbers of bank letter L.
QString labels(const QString& letter, const QList<int>& list) {
    QStringList s;
    for (int c : list)
        s.append(c == 0 ? QString() : letter + QString::number(c));
    return s.join(QLatin1Char(' '));
}

QList<int> range(int from, int to) {
    QList<int> r;
    for (int i = from; i <= to; ++i)
        r.append(i);
    return r;
}

} // namespace

class TestOrganizers : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bankDropsAndSave_data();
    void bankDropsAndSave();
    void bankDropsRefused_data();
    void bankDropsRefused();
    void bankSaveWithoutChange();
    void bankSortByName();
    void unnamedBankKeepsItsChannels();

    void moveBetweenBanks();
    void reorderWithinBank4();
    void dropsFromAnotherBankRefused();
    void sameBankOnBothSides();
    void switchingWithUnsavedChanges_data();
    void switchingWithUnsavedChanges();
    void sortIsPrivateUntilSaved();
};

void TestOrganizers::bankDropsAndSave_data() {
    QTest::addColumn<QString>("payload");
    QTest::addColumn<int>("target");
    QTest::addColumn<QString>("order");
    QTest::newRow("05,06 onto 02") << "XFR,05,06" << 2 << "AEFBCDGHIJ";
    QTest::newRow("02,03 onto 06") << "XFR,02,03" << 6 << "ADEFBCGHIJ";
    QTest::newRow("10 onto 01") << "XFR,10" << 1 << "JABCDEFGHI";
}

void TestOrganizers::bankDropsAndSave() {
    QFETCH(QString, payload);
    QFETCH(int, target);
    QFETCH(QString, order);
    Fixture f;
    f.letterBanks();
    // Unsaved edits: positions that keep their bank are not reloaded, so theirs survive.
    for (int b = 1; b <= BankCount; ++b)
        f.ctx.cur().Banks[b].Chans[2].Desc = QStringLiteral("edited");
    f.ctx.cur().Changed = false;

    BankOrganizer org(f.ctx);
    org.load();
    QVERIFY(org.drop(payload, target));
    QVERIFY(org.changed());
    QCOMPARE(org.names().join(QString()), order);
    QCOMPARE(f.firstDescs(), QStringLiteral("ABCDEFGHIJ")); // nothing applied yet

    QVERIFY(org.save());
    QVERIFY(!org.changed());
    QCOMPARE(f.firstDescs(), order);
    for (int b = 1; b <= BankCount; ++b) {
        const BankRec& bank = f.ctx.cur().Banks[b];
        QCOMPARE(bank.FileName, order.mid(b - 1, 1));
        QCOMPARE(bank.Chans[20].Desc, bank.FileName + QStringLiteral("20"));
        const bool moved = order[b - 1] != QLatin1Char(char('A' + b - 1));
        QCOMPARE(bank.Changed, moved);
        QCOMPARE(bank.Chans[2].Desc, moved ? bank.FileName + QStringLiteral("2") : "edited");
    }
    QVERIFY(f.ctx.cur().Changed);
    QCOMPARE(f.ctx.errors.reportCount(), 0);
}

void TestOrganizers::bankDropsRefused_data() {
    QTest::addColumn<QString>("payload");
    QTest::addColumn<int>("target");
    QTest::newRow("plain text") << "Air Band" << 3;
    QTest::newRow("wrong prefix") << "XFER,05" << 3;
    QTest::newRow("prefix only") << "XFR" << 3;
    QTest::newRow("onto a dragged row") << "XFR,05,06" << 6;
    QTest::newRow("no row hit") << "XFR,05" << 0;
    QTest::newRow("unknown position") << "XFR,12" << 3;
}

void TestOrganizers::bankDropsRefused() {
    QFETCH(QString, payload);
    QFETCH(int, target);
    Fixture f;
    f.letterBanks();
    BankOrganizer org(f.ctx);
    org.load();
    QVERIFY(!org.drop(payload, target));
    QVERIFY(!org.changed());
    QCOMPARE(org.names().join(QString()), QStringLiteral("ABCDEFGHIJ"));
    QVERIFY(!org.save());
    QCOMPARE(f.firstDescs(), QStringLiteral("ABCDEFGHIJ"));
}

void TestOrganizers::bankSaveWithoutChange() {
    Fixture f;
    f.letterBanks();
    f.ctx.cur().Banks[3].Chans[1].Desc = QStringLiteral("unsaved");
    BankOrganizer org(f.ctx);
    org.load();
    QVERIFY(!org.save());
    QCOMPARE(f.ctx.cur().Banks[3].Chans[1].Desc, QStringLiteral("unsaved"));
    // A drop and the drop back: the names are as before, so nothing is reloaded.
    QVERIFY(org.drop(QStringLiteral("XFR,03"), 5));
    QVERIFY(org.drop(QStringLiteral("XFR,05"), 3));
    QCOMPARE(org.names().join(QString()), QStringLiteral("ABCDEFGHIJ"));
    QVERIFY(!org.save());
    QCOMPARE(f.ctx.cur().Banks[3].Chans[1].Desc, QStringLiteral("unsaved"));
}

void TestOrganizers::bankSortByName() {
    Fixture f;
    f.letterBanks(QStringLiteral("dCbaBADcEe"));
    BankOrganizer org(f.ctx);
    org.load();
    org.sort();
    QVERIFY(org.changed());
    QCOMPARE(org.names().join(QString()), QStringLiteral("ABCDEabcde"));
    QVERIFY(org.save());
    QCOMPARE(f.firstDescs(), QStringLiteral("ABCDEabcde"));
}

void TestOrganizers::unnamedBankKeepsItsChannels() {
    Fixture f;
    f.letterBanks();
    BankRec& unnamed = f.ctx.cur().Banks[4];
    unnamed.FileName.clear();
    unnamed.Chans[1].Desc = QStringLiteral("only in memory");
    BankOrganizer org(f.ctx);
    org.load();
    QVERIFY(org.drop(QStringLiteral("XFR,04"), 1));
    QVERIFY(org.save());
    QCOMPARE(f.ctx.cur().Banks[1].FileName, QString());
    QCOMPARE(f.ctx.cur().Banks[1].Chans[1].Desc, QStringLiteral("only in memory"));
    QCOMPARE(f.ctx.cur().Banks[2].Chans[1].Desc, QStringLiteral("A1"));
    QCOMPARE(f.ctx.cur().Banks[4].Chans[1].Desc, QStringLiteral("C1"));
}

void TestOrganizers::moveBetweenBanks() {
    Fixture f;
    f.letterBanks();
    ChannelOrganizer org(f.ctx);
    org.load();
    QVERIFY(org.selectBank(ChannelOrganizer::Source, 2));
    QVERIFY(org.selectBank(ChannelOrganizer::Destination, 5));
    // Channels 23, 24, 25 are slots 3..5 of bank 2.
    QVERIFY(org.dropOnDestination(QStringLiteral("XFR,23,24,25"), 5));
    QVERIFY(org.changed(ChannelOrganizer::Source));
    QVERIFY(org.changed(ChannelOrganizer::Destination));
    QCOMPARE(descsOf(f.ctx.cur().Banks[5]), labels("E", range(1, 20))); // private until saved

    org.saveCurrent();
    QVERIFY(!org.anyChanged());
    const QString bank5 =
        labels("E", range(1, 4)) + ' ' + labels("B", {3, 4, 5}) + ' ' + labels("E", range(5, 17));
    QCOMPARE(descsOf(f.ctx.cur().Banks[5]), bank5);
    const QString bank2 = labels("B", QList<int>{1, 2} + range(6, 20)) + QStringLiteral("   ");
    QCOMPARE(descsOf(f.ctx.cur().Banks[2]), bank2);
    QCOMPARE(f.ctx.cur().Banks[2].Chans[20], ChannelRec{});
    QCOMPARE(f.ctx.cur().Banks[5].Chans[5].Freq, 102 * 1e6 + 3 * 12500);
    QVERIFY(f.ctx.cur().Banks[2].Changed);
    QVERIFY(f.ctx.cur().Banks[5].Changed);
    QVERIFY(!f.ctx.cur().Banks[1].Changed);
}

void TestOrganizers::reorderWithinBank4() {
    Fixture f;
    f.letterBanks();
    ChannelOrganizer org(f.ctx);
    org.load();
    QVERIFY(org.selectBank(ChannelOrganizer::Source, 4));
    // Rows 65 and 66 (slots 5, 6) onto slot 2, as rows 05,06 onto 02 of bank 1 would go.
    QVERIFY(org.dropOnSource(QStringLiteral("XFR,65,66"), 2));
    const QString expected = labels("D", QList<int>{1, 5, 6, 2, 3, 4} + range(7, 20));
    QCOMPARE(descsOf(org.channels(ChannelOrganizer::Source)), expected);
    QVERIFY(!org.changed(ChannelOrganizer::Destination));
    // Onto a dragged row: refused.
    QVERIFY(!org.dropOnSource(QStringLiteral("XFR,61,62"), 2));
    org.saveCurrent();
    QCOMPARE(descsOf(f.ctx.cur().Banks[4]), expected);
}

void TestOrganizers::dropsFromAnotherBankRefused() {
    Fixture f;
    f.letterBanks();
    ChannelOrganizer org(f.ctx);
    org.load();
    QVERIFY(org.selectBank(ChannelOrganizer::Destination, 3));
    // The source shows bank 1: channel 41 is not one of its rows.
    QVERIFY(!org.dropOnSource(QStringLiteral("XFR,41"), 3));
    QVERIFY(!org.dropOnDestination(QStringLiteral("XFR,41"), 3));
    QVERIFY(!org.dropOnDestination(QStringLiteral("146.52,Fire"), 3));
    // Three channels onto slot 19 would not fit.
    QVERIFY(!org.dropOnDestination(QStringLiteral("XFR,1,2,3"), 19));
    QVERIFY(!org.anyChanged());
    QCOMPARE(descsOf(org.channels(ChannelOrganizer::Destination)), labels("C", range(1, 20)));
}

void TestOrganizers::sameBankOnBothSides() {
    Fixture f;
    f.letterBanks();
    ChannelOrganizer org(f.ctx);
    org.load();
    QVERIFY(org.dropOnDestination(QStringLiteral("XFR,2,3"), 6));
    const QString expected = labels("A", QList<int>{1, 4, 5, 6, 2, 3} + range(7, 20));
    QCOMPARE(descsOf(org.channels(ChannelOrganizer::Source)), expected);
    QCOMPARE(descsOf(org.channels(ChannelOrganizer::Destination)), expected);
    org.saveCurrent();
    QVERIFY(!org.anyChanged());
    QCOMPARE(descsOf(f.ctx.cur().Banks[1]), expected);
    // Dropping on a dragged row of the same bank is refused on the destination too.
    QVERIFY(!org.dropOnDestination(QStringLiteral("XFR,4"), 4));
}

void TestOrganizers::switchingWithUnsavedChanges_data() {
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("switched");
    QTest::addColumn<bool>("savedToProfile");
    QTest::newRow("Yes saves, then switches") << int(Answer::Yes) << true << true;
    QTest::newRow("No drops the changes") << int(Answer::No) << true << false;
    QTest::newRow("Cancel keeps bank and changes") << int(Answer::Cancel) << false << false;
}

void TestOrganizers::switchingWithUnsavedChanges() {
    QFETCH(int, answer);
    QFETCH(bool, switched);
    QFETCH(bool, savedToProfile);
    Fixture f;
    f.letterBanks();
    ChannelOrganizer org(f.ctx);
    org.load();
    QVERIFY(org.selectBank(ChannelOrganizer::Source, 2)); // no changes: no question
    QVERIFY(f.prompts.messages().isEmpty());
    org.sort(ChannelOrganizer::Source, ChannelSortKey::Description); // B1 B10 B11 ...
    const QString sorted = descsOf(org.channels(ChannelOrganizer::Source));
    QVERIFY(sorted.startsWith(QStringLiteral("B1 B10 B11")));

    f.prompts.queueAnswer(Answer(answer));
    QCOMPARE(org.selectBank(ChannelOrganizer::Source, 7), switched);
    QCOMPARE(f.prompts.messages().size(), 1);
    const ScriptedPrompts::Message& m = f.prompts.messages().first();
    QCOMPARE(m.text, QStringLiteral("Do You Want to Save the Current Bank First?"));
    QCOMPARE(m.title, QStringLiteral("Bank NOT Saved!"));
    QCOMPARE(m.icon, Icon::Critical);
    QCOMPARE(m.buttons, Buttons::YesNoCancel);

    QCOMPARE(org.bank(ChannelOrganizer::Source), switched ? 7 : 2);
    QCOMPARE(org.changed(ChannelOrganizer::Source), !switched);
    QCOMPARE(descsOf(org.channels(ChannelOrganizer::Source)),
             switched ? labels("G", range(1, 20)) : sorted);
    QCOMPARE(descsOf(f.ctx.cur().Banks[2]), savedToProfile ? sorted : labels("B", range(1, 20)));
}

void TestOrganizers::sortIsPrivateUntilSaved() {
    Fixture f;
    f.letterBanks();
    ChannelOrganizer org(f.ctx);
    org.load();
    QVERIFY(org.selectBank(ChannelOrganizer::Destination, 9));
    org.sort(ChannelOrganizer::Destination, ChannelSortKey::Description);
    QVERIFY(org.changed(ChannelOrganizer::Destination));
    QVERIFY(!f.ctx.cur().Banks[9].Changed);
    org.saveCurrent();
    QVERIFY(f.ctx.cur().Banks[9].Changed);
    QVERIFY(!f.ctx.cur().Banks[1].Changed);
    QCOMPARE(f.ctx.cur().Banks[9].Chans[2].Desc, QStringLiteral("I10"));
}

QTEST_GUILESS_MAIN(TestOrganizers)
#include "tst_organizers.moc"
