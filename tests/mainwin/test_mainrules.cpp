// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's rules without a window: the edge cases of a typed frequency and the column
// layout of the service-band text.
#include "core/freq.h"
#include "mainwin/editrules.h"
#include "mainwin/servicebands.h"

#include <QRegularExpression>
#include <QTest>

using namespace kestrel;

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
        rec.Desc = QStringLiteral("Tower");
        QTEST(CommitChannelFreq(rec, typed), "shown");
        QFETCH(QString, shown);
        QCOMPARE(FreqToString(rec.Freq), shown);
        QTEST(rec.Lockout, "wantLockout");
        QTEST(rec.Delay, "wantDelay");
        QVERIFY(rec.Priority && rec.Desc == QStringLiteral("Tower"));
    }

    void serviceBandsLineUp_data() {
        QTest::addColumn<int>("list");
        QTest::addColumn<QString>("heading");
        QTest::newRow("air, marine, ham, weather") << 1 << "Air:";
        QTest::newRow("police and fire") << 2 << "Police / Fire:";
    }
    void serviceBandsLineUp() {
        QFETCH(int, list);
        QFETCH(QString, heading);
        const QStringList lines = ServiceBandLines(list);
        const QList<ServiceBand>& bands = ServiceBandList(list);
        QCOMPARE(lines.size(), bands.size() + 1);
        QVERIFY(lines.first().startsWith(heading) || lines[1].startsWith(heading));
        QVERIFY(lines.first().endsWith(QStringLiteral("Step")));
        const qsizetype stepEnd = lines.first().size();
        const QRegularExpression range(QStringLiteral("(\\d+\\.\\d{4})(?: - +(\\d+\\.\\d{4}))?"));
        qsizetype lowEnd = -1;
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const QString& line = lines[i];
            const ServiceBand& band = bands[i - 1];
            QVERIFY2(line.startsWith(QString::fromLatin1(band.label)), qPrintable(line));
            const QRegularExpressionMatch m = range.match(line);
            QVERIFY2(m.hasMatch(), qPrintable(line));
            QCOMPARE(m.captured(1).toDouble(), band.lowMHz);
            if (band.highMHz > 0)
                QCOMPARE(m.captured(2).toDouble(), band.highMHz);
            // Every lower limit ends in the same column, and so does every step.
            if (lowEnd < 0)
                lowEnd = m.capturedEnd(1);
            QCOMPARE(m.capturedEnd(1), lowEnd);
            if (band.stepKHz > 0) {
                QCOMPARE(line.size(), stepEnd);
                QCOMPARE(line.section(QLatin1Char(' '), -1).toDouble(), band.stepKHz);
            } else {
                QVERIFY(line.size() < stepEnd - 3);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestMainRules)
#include "test_mainrules.moc"
