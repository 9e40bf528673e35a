// SPDX-License-Identifier: GPL-3.0-or-later
// Rows as clipboard text: what other programs paste is read as typed values are, and what is
// copied reads back into the same records.
#include "core/cliprows.h"

#include <QTest>

using namespace kestrel;
using namespace Qt::StringLiterals;

namespace {

// A record as "freq|desc|delay priority lockout" (flags as D/P/L or -).
QString show(const ChannelRec& r) {
    return u"%1|%2|%3%4%5"_s.arg(r.Freq, 0, 'f', 0)
        .arg(r.Desc)
        .arg(r.Delay ? 'D' : '-')
        .arg(r.Priority ? 'P' : '-')
        .arg(r.Lockout ? 'L' : '-');
}

} // namespace

class TestClipRows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // Each pasted line applied to a locked-out empty channel named "Old" and a scanned one. Full
    // rows as copied are read in roundTrip.
    void channelRows_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("onEmpty");
        QTest::addColumn<QStringList>("onScanned");
        QTest::newRow("frequency only: typing rules")
            << u"155.34"_s << QStringList{u"155340000|Old|D--"_s}
            << QStringList{u"155340000|Old|-P-"_s};
        QTest::newRow("zero empties and locks out")
            << u"0,Gone"_s << QStringList{u"0|Gone|--L"_s} << QStringList{u"0|Gone|-PL"_s};
        QTest::newRow("header, quotes, CRLF, blank lines, decimal comma")
            << u"Frequency\tDescription\r\n\r\n\"462,5625\"\t\"Park\"\r\n453.1,Ops,T,F,F\r\n"_s
            << QStringList{u"462562500|Park|D--"_s, u"453100000|Ops|D--"_s}
            << QStringList{u"462562500|Park|-P-"_s, u"453100000|Ops|D--"_s};
    }
    void channelRows() {
        QFETCH(QString, text);
        QFETCH(QStringList, onEmpty);
        QFETCH(QStringList, onScanned);
        QString reason;
        const auto rows = ParseChannelRows(text, &reason);
        QVERIFY2(rows, qPrintable(reason));
        QCOMPARE(rows->size(), onEmpty.size());
        for (qsizetype k = 0; k < rows->size(); ++k) {
            ChannelRec empty{0, u"Old"_s, false, true, false, 3, true, 2, 1};
            ChannelRec scanned{160'000'000, u"Old"_s, false, false, true};
            ApplyChannelRow(empty, (*rows)[k]);
            ApplyChannelRow(scanned, (*rows)[k]);
            QCOMPARE(show(empty), onEmpty[k]);
            QCOMPARE(show(scanned), onScanned[k]);
            QVERIFY(!empty.Imported && empty.Mark == 0 && empty.Mode == 0);
        }
    }

    void refused_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("search");
        QTest::addColumn<QString>("reason");
        QTest::newRow("out of band") << u"146.52\n957"_s << false << u"Line 2: \"957\""_s;
        QTest::newRow("comma in description")
            << u"146.52\tA, B"_s << false << u"cannot hold a comma"_s;
        QTest::newRow("too long") << u"146.52\t%1"_s.arg(QString(201, 'x')) << false
                                  << u"at most 200"_s;
        QTest::newRow("flag") << u"146.52,A,yes,maybe"_s << false << u"Priority must be"_s;
        QTest::newRow("empty") << u"\n \n"_s << false << u"no channel rows"_s;
        QTest::newRow("search upper out of band") << u"25\t1000\tX"_s << true << u"\"1000\""_s;
    }
    void refused() {
        QFETCH(QString, text);
        QFETCH(bool, search);
        QFETCH(QString, reason);
        QString why;
        const bool parsed = search ? ParseSearchRows(text, &why).has_value()
                                   : ParseChannelRows(text, &why).has_value();
        QVERIFY(!parsed);
        QVERIFY2(why.contains(reason), qPrintable(why));
    }

    // Copied rows read back into the very records, on the 6.25 kHz raster and across the band.
    void roundTrip() {
        QList<ChannelRec> chans;
        QList<SearchRec> ranges;
        for (int n = 0; n < 8; ++n) {
            chans << ChannelRec{n == 3 ? 0 : 25'000'000 + n * 116'006'250.0, u"Ch %1"_s.arg(n),
                                bool(n & 1), bool(n & 2), bool(n & 4)};
            ranges << SearchRec{25'000'000 + n * 6'250.0, 956'000'000 - n * 12'500.0,
                                u"R %1"_s.arg(n)};
        }
        const auto rows = ParseChannelRows(ChannelRowsText(chans), nullptr);
        const auto back = ParseSearchRows(SearchRowsText(ranges), nullptr);
        QVERIFY(rows && back);
        for (qsizetype k = 0; k < chans.size(); ++k) {
            ChannelRec c{123'000'000, u"x"_s, true, true, true, 1, true};
            ApplyChannelRow(c, (*rows)[k]);
            QCOMPARE(c, chans[k]);
            SearchRec s;
            ApplySearchRow(s, (*back)[k]);
            QCOMPARE(s, ranges[k]);
        }
    }
};

QTEST_GUILESS_MAIN(TestClipRows)
#include "tst_cliprows.moc"
