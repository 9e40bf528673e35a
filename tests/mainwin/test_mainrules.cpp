// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's rules without a window: the edge cases of a typed frequency and the
// service-band text.
#include "core/freq.h"
#include "mainwin/editrules.h"
#include "mainwin/servicebands.h"
#include "testsupport.h"

#include <QTest>

using namespace kestrel;
using namespace Qt::StringLiterals;

class TestMainRules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void commitChannelFreq_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("lockout");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("wantLockout");
        QTest::addColumn<bool>("wantDelay");
        QTest::newRow("above the band") << "956.5" << false << "000.000000" << true << false;
        QTest::newRow("no number") << "abc" << false << "000.000000" << true << false;
        QTest::newRow("band edge, locked out") << "956" << true << "956.000000" << false << true;
        QTest::newRow("blanks around") << " 25 " << false << "25.000000" << false << false;
    }
    void commitChannelFreq() {
        QFETCH(QString, typed);
        QFETCH(bool, lockout);
        ChannelRec rec;
        rec.Freq = lockout ? 0.0 : 40500000.0;
        rec.Lockout = lockout;
        rec.Priority = true;
        rec.Desc = u"Tower"_s;
        QTEST(CommitChannelFreq(rec, typed), "shown");
        QFETCH(QString, shown);
        QCOMPARE(FreqToString(rec.Freq), shown);
        QTEST(rec.Lockout, "wantLockout");
        QTEST(rec.Delay, "wantDelay");
        QVERIFY(rec.Priority && rec.Desc == u"Tower"_s);
    }

    // The service-band panels against their reviewed text: labels, ranges and steps lined up in
    // their columns.
    void serviceBands_data() {
        QTest::addColumn<int>("list");
        QTest::newRow("air, marine, ham, weather") << 1;
        QTest::newRow("police and fire") << 2;
    }
    void serviceBands() {
        QFETCH(int, list);
        const QString golden = test::dataPath(u"service-bands-%1.txt"_s.arg(list));
        QCOMPARE(ServiceBandLines(list).join(u'\n') + u'\n',
                 QString::fromUtf8(test::readFile(golden)));
    }
};

QTEST_GUILESS_MAIN(TestMainRules)
#include "test_mainrules.moc"
