// SPDX-License-Identifier: GPL-3.0-or-later
// The memory records: factory tables, channel numbering, channel and search lines, and the
// setters that act on the shown profile.
#include "core/appcontext.h"
#include "core/freq.h"
#include "core/memory.h"

#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;

class TestRecords : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void factoryChannels_data();
    void factoryChannels();
    void numbering_data();
    void numbering();
    void channelLine_data();
    void channelLine();
    void searchLine_data();
    void searchLine();
    void setChannelActsOnCurrentProfile();
    void badIndexIsReportedNotFatal();
    void editFills();

private:
    QTemporaryDir m_dir;
};

void TestRecords::factoryChannels_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("line");
    QTest::newRow("cleared") << 0 << "0000.000,Edit-Me,False,False,True";
    QTest::newRow("first") << 1 << "0040.5000,Chan #001,False,False,False";
    QTest::newRow("slot 16") << 16 << "0146.5200,Chan #016,False,False,False";
    QTest::newRow("last real") << 150 << "0469.5500,Chan #150,False,False,False";
    QTest::newRow("first empty") << 151 << "0000.000,Chan #151,False,False,True";
    QTest::newRow("last") << 200 << "0000.000,Chan #200,False,False,True";
}

void TestRecords::factoryChannels() {
    QFETCH(int, index);
    QFETCH(QString, line);
    DefChansTable t;
    SetDefChans(t);
    QCOMPARE(t[size_t(index)], line);
}

void TestRecords::numbering_data() {
    QTest::addColumn<int>("channel");
    QTest::addColumn<int>("bank");
    QTest::addColumn<int>("slot");
    QTest::newRow("first") << 1 << 1 << 1;
    QTest::newRow("start of bank 2") << 21 << 2 << 1;
    QTest::newRow("last") << 200 << 10 << 20;
}

void TestRecords::numbering() {
    QFETCH(int, channel);
    QFETCH(int, bank);
    QFETCH(int, slot);
    QCOMPARE(BankOfChannel(channel), bank);
    QCOMPARE(SlotOfChannel(channel), slot);
    QCOMPARE(ChannelNumber(bank, slot), channel);
}

void TestRecords::channelLine_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("stored"); // the line as a file stores it afterwards
    QTest::newRow("priority only") << "146.52,Fire Dispatch,True,False,False"
                                   << "146.520000,Fire Dispatch,True,False,False";
    QTest::newRow("six fields take the factory line") << "146.52,Fire, East,False,False,False"
                                                      << "146.520000,Chan #016,False,False,False";
    QTest::newRow("four fields take the factory line") << "146.52,Fire,True,False"
                                                       << "146.520000,Chan #016,False,False,False";
    QTest::newRow("cleared line") << "0000.000,Edit-Me,False,False,True"
                                  << "000.000000,Edit-Me,False,False,True";
    QTest::newRow("lower-case flags are false") << "146.52,a,true,yes,TRUE"
                                                << "146.520000,a,False,False,False";
    QTest::newRow("T and 1 are true") << "146.52,a,T,1,True"
                                      << "146.520000,a,True,True,True";
    QTest::newRow("out of band empties") << "1000,a,False,False,False"
                                         << "000.000000,a,False,False,False";
    QTest::newRow("description not trimmed") << "146.52,  Fire  ,False,False,False"
                                             << "146.520000,  Fire  ,False,False,False";
    QTest::newRow("empty line") << ""
                                << "146.520000,Chan #016,False,False,False";
}

void TestRecords::channelLine() {
    QFETCH(QString, line);
    QFETCH(QString, stored);
    AppContext ctx(m_dir.path());
    ctx.cur().Banks[1].Chans[16].Mark = 3;
    Set_Channel(ctx, 1, 16, line);
    const ChannelRec& ch = ctx.cur().Banks[1].Chans[16];
    QCOMPARE(ChannelLine(ch), stored);
    QCOMPARE(ch.Mark, quint8(0));
    QCOMPARE(ctx.errors.reportCount(), 0);
}

void TestRecords::searchLine_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("stored");
    QTest::newRow("plain") << 3 << "420,450,UHF"
                           << "420.000000,450.000000,UHF";
    QTest::newRow("two fields take the factory range") << 3 << "420,450"
                                                       << "29.700000,49.995000,Search #3";
    QTest::newRow("lower above upper kept") << 4 << "450,420,Down"
                                            << "450.000000,420.000000,Down";
    QTest::newRow("cleared") << 5 << "000.000,000.000,Edit-Me"
                             << "000.000000,000.000000,Edit-Me";
    QTest::newRow("factory five decimals") << 9 << "450.000,469.99375,Search #9"
                                           << "450.000000,469.993750,Search #9";
}

void TestRecords::searchLine() {
    QFETCH(int, index);
    QFETCH(QString, line);
    QFETCH(QString, stored);
    AppContext ctx(m_dir.path());
    Set_Search(ctx, qint16(index), line);
    QCOMPARE(SearchLine(ctx.cur().Searches[index]), stored);
}

void TestRecords::setChannelActsOnCurrentProfile() {
    AppContext ctx(m_dir.path());
    ctx.CurProfile = 3;
    ChannelRec& ch = ctx.Profiles[3].Banks[2].Chans[1];
    ch.Imported = true;
    ch.Mode = 4;
    Set_Channel(ctx, 2, 1, QStringLiteral("155.16,EMS,False,False,False"));
    Set_Search(ctx, 2, QStringLiteral("30,40,Low"));
    QCOMPARE(ch.Desc, QStringLiteral("EMS"));
    QVERIFY(ch.Imported && ch.Mode == 4); // the import's fields are left alone
    QCOMPARE(ctx.Profiles[3].Searches[2].Desc, QStringLiteral("Low"));
    QVERIFY(ctx.Profiles[0].Banks[2].Chans[1].Desc.isEmpty());
    QVERIFY(ctx.Profiles[0].Searches[2].Desc.isEmpty());
    // Setting from text marks nothing changed; that is the caller's business.
    QVERIFY(!ctx.Profiles[3].Changed && !ctx.Profiles[3].Banks[2].Changed);
}

void TestRecords::badIndexIsReportedNotFatal() {
    AppContext ctx(m_dir.path());
    Set_Channel(ctx, 11, 1, QStringLiteral("146.52,x,False,False,False"));
    Set_Search(ctx, 0, QStringLiteral("30,40,x"));
    QCOMPARE(ctx.errors.reportCount(), 2);
    QCOMPARE(ctx.errors.currentLabel(), QStringLiteral("ModKestrel -> Set_Search"));
}

void TestRecords::editFills() {
    AppContext ctx(m_dir.path());
    ClearAllBanks(ctx);
    FactoryBank(ctx, 8);
    QCOMPARE(ChannelLine(ctx.cur().Banks[8].Chans[1]),
             QStringLiteral("467.662500,Chan #141,False,False,False"));
    QCOMPARE(ChannelLine(ctx.cur().Banks[8].Chans[11]),
             QStringLiteral("000.000000,Chan #151,False,False,True"));
    QCOMPARE(ChannelLine(ctx.cur().Banks[7].Chans[20]),
             QStringLiteral("000.000000,Edit-Me,False,False,True"));
    FactoryAllBanks(ctx);
    ClearBank(ctx, 1);
    QCOMPARE(ctx.cur().Banks[1].Chans[5].Desc, QStringLiteral("Edit-Me"));
    QCOMPARE(ctx.cur().Banks[2].Chans[1].Desc, QStringLiteral("Chan #021"));
    ClearSearchLimits(ctx);
    QCOMPARE(ctx.cur().Searches[10].Desc, QStringLiteral("Edit-Me"));
    DefaultSearchLimits(ctx);
    QCOMPARE(SearchLine(ctx.cur().Searches[1]), QStringLiteral("25.000000,27.995000,Search #1"));
    QVERIFY(!ctx.cur().Changed);
}

QTEST_GUILESS_MAIN(TestRecords)
#include "tst_records.moc"
