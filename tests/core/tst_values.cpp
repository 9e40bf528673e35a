// SPDX-License-Identifier: GPL-3.0-or-later
// Frequencies and their text forms, the lenient validators, and channel and search lines.
#include "core/appcontext.h"
#include "core/freq.h"
#include "core/memory.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <cmath>

using namespace kestrel;
using namespace Qt::StringLiterals;

class TestValues : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;
private Q_SLOTS:
    void freqToDouble_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("hz");
        QTest::newRow("band low") << "25" << 25e6;
        QTest::newRow("below band") << "24.999999" << 0.0;
        QTest::newRow("band high") << "956" << 956e6;
        QTest::newRow("above band") << "956.000001" << 0.0;
        QTest::newRow("not a number") << "abc" << 0.0;
        QTest::newRow("empty") << "" << 0.0;
        QTest::newRow("stops at unit") << "146.52 MHz" << 146.52e6;
        QTest::newRow("blanks skipped") << "\t1\n46 .5\n2" << 146.52e6;
        QTest::newRow("carriage return ends") << "146\r.52" << 146e6;
        QTest::newRow("exponent") << "1.4652E2" << 146.52e6;
        QTest::newRow("comma is no decimal point") << "146,52" << 146e6;
        QTest::newRow("huge exponent") << "1E999999" << 0.0;
    }
    void freqToDouble() {
        QFETCH(QString, text);
        QTEST(FreqToDouble(text), "hz");
    }
    void freqToString_data() {
        QTest::addColumn<double>("hz");
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << 0.0 << "000.000000";
        QTest::newRow("five decimals") << 419993750.0 << "419.993750";
        QTest::newRow("above band") << 957e6 << "000.000000";
        QTest::newRow("below band") << 24999999.0 << "000.000000";
        QTest::newRow("sub-hertz rounds") << 146520000.4 << "146.520000";
    }
    void freqToString() {
        QFETCH(double, hz);
        QFETCH(QString, text);
        QCOMPARE(FreqToString(hz), text);
        if (hz >= 25e6 && hz <= 956e6) // and back, whatever the locale
            QCOMPARE(FreqToDouble(text), std::round(hz));
    }
    void validators_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<double>("result");
        QTest::addColumn<QString>("text");
        QTest::newRow("bool empty takes default") << "bool" << 1.0 << "";
        QTest::newRow("bool True") << "bool" << 1.0 << "True";
        QTest::newRow("bool T") << "bool" << 1.0 << "T";
        QTest::newRow("bool 1") << "bool" << 1.0 << "1";
        QTest::newRow("bool TRUE is case-sensitive") << "bool" << 0.0 << "TRUE";
        // Int: default 7, range 0..10.
        QTest::newRow("int empty takes default") << "int" << 7.0 << "";
        QTest::newRow("int below clamps") << "int" << 0.0 << "-3";
        QTest::newRow("int above clamps") << "int" << 10.0 << "12";
        QTest::newRow("int half to even down") << "int" << 4.0 << "4.5";
        QTest::newRow("int half to even up") << "int" << 4.0 << "3.5";
        QTest::newRow("byte clamps") << "byte" << 255.0 << "300";
        QTest::newRow("byte half to even") << "byte" << 254.0 << "254.5";
        QTest::newRow("long clamps") << "long" << 2147483647.0 << "1E12";
        QTest::newRow("dbl not rounded") << "dbl" << 2.25 << "2.25";
    }
    void validators() {
        QFETCH(QString, kind);
        QFETCH(QString, text);
        const double got = kind == u"bool"   ? Validate_Bool(text, true)
                           : kind == u"int"  ? Validate_Int(text, 7, 0, 10)
                           : kind == u"byte" ? Validate_Byte(text, 9, 0, 255)
                           : kind == u"long" ? Validate_Long(text, 0, 0, 2147483647)
                                             : Validate_Dbl(text, 0, 0, 10);
        QTEST(got, "result");
    }
    void validateFName() {
        QCOMPARE(ValidateFName(u"a\\b/c:d*e?f|g<h>i,j"_s), u"a-b-c-d-e-f-g-h-i-j"_s);
        QCOMPARE(ValidateFName(u"\"Fire\" Air. Band "_s), u"'Fire' Air. Band "_s);
    }
    void delayKeepsEventsFlowing() {
        bool fired = false;
        QTimer::singleShot(20, this, [&] { fired = true; });
        QElapsedTimer t;
        t.start();
        Delay(0.15);
        QVERIFY(fired && t.elapsed() >= 140);
    }
    // Each row: the line given => the line stored.
    void channelLine_data() {
        QTest::addColumn<QString>("row");
        const QString factory = "146.520000,Chan #016,False,False,False";
        QTest::newRow("plain") << "146.52,Fire,True,False,False=>146.520000,Fire,True,False,False";
        QTest::newRow("six fields") << "146.52,Fire, East,False,False,False=>" + factory;
        QTest::newRow("four fields") << "146.52,Fire,True,False=>" + factory;
        QTest::newRow("flags case-sensitive") << "146.52,a,true,1,T=>146.520000,a,False,True,True";
        QTest::newRow("out of band") << "1000,a,False,False,False=>000.000000,a,False,False,False";
        QTest::newRow("desc not trimmed")
            << "146.52, F ,False,False,False=>146.520000, F ,False,False,False";
    }
    void channelLine() {
        QFETCH(QString, row);
        AppContext ctx(m_dir.path());
        ctx.CurProfile = 3;
        ChannelRec& ch = ctx.Profiles[3].Banks[1].Chans[16];
        ch.Mark = 3;
        ch.Mode = 4; // an import's field, left alone
        Set_Channel(ctx, 3, 1, 16, row.section(u"=>"_s, 0, 0));
        QCOMPARE(ChannelLine(ch), row.section(u"=>"_s, 1));
        QVERIFY(ch.Mark == 0 && ch.Mode == 4);
        QVERIFY(ctx.Profiles[0].Banks[1].Chans[16].Desc.isEmpty());
        QVERIFY(!ctx.Profiles[3].Banks[1].Changed);
        QCOMPARE(ctx.errors.reportCount(), 0);
    }
    void searchLine_data() {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("row");
        QTest::newRow("plain") << 3 << "420,450,UHF=>420.000000,450.000000,UHF";
        QTest::newRow("two fields") << 3 << "420,450=>29.700000,49.995000,Search #3";
        QTest::newRow("lower above upper") << 4 << "450,420,D=>450.000000,420.000000,D";
        QTest::newRow("five decimals") << 9 << "450,469.99375,S=>450.000000,469.993750,S";
    }
    void searchLine() {
        QFETCH(int, index);
        QFETCH(QString, row);
        AppContext ctx(m_dir.path());
        Set_Search(ctx, 0, qint16(index), row.section(u"=>"_s, 0, 0));
        QCOMPARE(SearchLine(ctx.cur().Searches[index]), row.section(u"=>"_s, 1));
    }
    void badIndexIsReportedNotFatal() {
        AppContext ctx(m_dir.path());
        Set_Channel(ctx, 0, 11, 1, u"146.52,x,False,False,False"_s);
        Set_Search(ctx, 0, 0, u"30,40,x"_s);
        QCOMPARE(ctx.errors.reportCount(), 2);
    }
    void editFills() {
        AppContext ctx(m_dir.path());
        ClearAllBanks(ctx, 0);
        FactoryBank(ctx, 0, 8);
        const auto& banks = ctx.cur().Banks;
        QCOMPARE(ChannelLine(banks[8].Chans[1]), u"467.662500,Chan #141,False,False,False"_s);
        QCOMPARE(ChannelLine(banks[8].Chans[11]), u"000.000000,Chan #151,False,False,True"_s);
        QCOMPARE(ChannelLine(banks[7].Chans[20]), u"000.000000,Edit-Me,False,False,True"_s);
        DefaultSearchLimits(ctx, 0);
        QCOMPARE(SearchLine(ctx.cur().Searches[1]), u"25.000000,27.995000,Search #1"_s);
    }
};

QTEST_GUILESS_MAIN(TestValues)
#include "tst_values.moc"
