// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl print run as a process: the PDF's pages, titles and rows, the page range, and the
// refusals that leave no file behind.
#include "pdftext.h"
#include "testsupport.h"

#include "core/appcontext.h"
#include "core/profiles.h"

#include <QFileInfo>
#include <QTest>

using namespace kestrel;

class TestCliPrint : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void printsTargets_data();
    void printsTargets();
    void editedChannelAppears();
    void refusals_data();
    void refusals();
    void unwritableOutput();
};

void TestCliPrint::printsTargets_data() {
    QTest::addColumn<QStringList>("target");
    QTest::addColumn<int>("pages");
    QTest::addColumn<int>("firstPage");
    QTest::addColumn<QString>("rowOnLastPage");
    QTest::newRow("all channels") << QStringList{QStringLiteral("--all")} << 4 << 1
                                  << QStringLiteral("200");
    QTest::newRow("all channels, pages 2-3")
        << QStringList{QStringLiteral("--all"), QStringLiteral("--pages"), QStringLiteral("2-3")}
        << 2 << 2 << QStringLiteral("150");
    QTest::newRow("one page") << QStringList{QStringLiteral("--all"), QStringLiteral("--pages"),
                                             QStringLiteral("4")}
                              << 1 << 4 << QStringLiteral("151");
    QTest::newRow("bank 3") << QStringList{QStringLiteral("--bank"), QStringLiteral("3")} << 1 << 1
                            << QStringLiteral("060");
    QTest::newRow("search ranges")
        << QStringList{QStringLiteral("--search")} << 1 << 1 << QStringLiteral("10");
    QTest::newRow("second profile by index")
        << QStringList{QStringLiteral("--profile"), QStringLiteral("1"), QStringLiteral("--bank"),
                       QStringLiteral("10")}
        << 1 << 1 << QStringLiteral("200");
}

void TestCliPrint::printsTargets() {
    QFETCH(QStringList, target);
    QFETCH(int, pages);
    QFETCH(int, firstPage);
    QFETCH(QString, rowOnLastPage);
    QTemporaryDir dir;
    const QString data = dir.filePath(QStringLiteral("data"));
    const QString pdf = dir.filePath(QStringLiteral("list.pdf"));
    const test::ProcessResult r = test::runKestrelctl(
        QStringList{QStringLiteral("--data-dir"), data, QStringLiteral("print")} + target +
        QStringList{QStringLiteral("-o"), pdf});
    QVERIFY2(r.exitCode == 0, r.err.constData());

    // The titles the preview would show, from the same data folder.
    AppContext ctx(data);
    Load_Profiles(ctx);
    const int profile = target.contains(QStringLiteral("--profile")) ? 1 : 0;
    const ProfileRec& prof = ctx.Profiles[profile];
    QString title = QStringLiteral("All Channels For ") + prof.Name;
    int total = 4;
    if (target.contains(QStringLiteral("--bank"))) {
        title = prof.Banks[target.last().toInt()].FileName;
        total = 1;
    } else if (target.contains(QStringLiteral("--search"))) {
        title = prof.SrchName;
        total = 1;
    }

    const QStringList text = test::pdfPages(pdf);
    QCOMPARE(text.size(), pages);
    for (int i = 0; i < pages; ++i) {
        QVERIFY(text[i].contains(title));
        QVERIFY(text[i].contains(QStringLiteral("Page: %1 of %2").arg(firstPage + i).arg(total)));
    }
    static const QRegularExpression rowStart(QStringLiteral("(?m)^\\s*(\\d{2,3})\\s"));
    QStringList rowNumbers;
    for (auto it = rowStart.globalMatch(text.last()); it.hasNext();)
        rowNumbers.append(it.next().captured(1));
    QVERIFY2(rowNumbers.contains(rowOnLastPage), qPrintable(rowNumbers.join(QLatin1Char(' '))));
    // Printing reads only: the data folder gains no file.
    QVERIFY(test::snapshotTree(data).isEmpty());
}

void TestCliPrint::editedChannelAppears() {
    QTemporaryDir dir;
    const QString data = dir.filePath(QStringLiteral("data"));
    const QString pdf = dir.filePath(QStringLiteral("list.pdf"));
    test::ProcessResult r = test::runKestrelctl(
        {QStringLiteral("--data-dir"), data, QStringLiteral("set"), QStringLiteral("--bank"),
         QStringLiteral("10"), QStringLiteral("--slot"), QStringLiteral("20"),
         QStringLiteral("162.550000,Weather Radio,False,False,False")});
    QVERIFY2(r.exitCode == 0, r.err.constData());
    r = test::runKestrelctl({QStringLiteral("--data-dir"), data, QStringLiteral("print"),
                             QStringLiteral("--all"), QStringLiteral("-o"), pdf});
    QVERIFY2(r.exitCode == 0, r.err.constData());
    const QStringList pages = test::pdfPages(pdf);
    QCOMPARE(pages.size(), 4);
    static const QRegularExpression row(QStringLiteral("200\\s+162\\.550000\\s+Weather Radio"));
    QVERIFY(row.match(pages[3]).hasMatch());
    QVERIFY(pages[3].contains(QStringLiteral("Page: 4 of 4")));
}

void TestCliPrint::refusals_data() {
    QTest::addColumn<QStringList>("args");
    QTest::newRow("no output") << QStringList{QStringLiteral("--all")};
    QTest::newRow("no target") << QStringList{QStringLiteral("-o"), QStringLiteral("OUT")};
    QTest::newRow("two targets") << QStringList{QStringLiteral("--all"), QStringLiteral("--search"),
                                                QStringLiteral("-o"), QStringLiteral("OUT")};
    QTest::newRow("bank 11") << QStringList{QStringLiteral("--bank"), QStringLiteral("11"),
                                            QStringLiteral("-o"), QStringLiteral("OUT")};
    QTest::newRow("pages past the end")
        << QStringList{QStringLiteral("--all"), QStringLiteral("--pages"), QStringLiteral("4-5"),
                       QStringLiteral("-o"), QStringLiteral("OUT")};
    QTest::newRow("pages backwards")
        << QStringList{QStringLiteral("--all"), QStringLiteral("--pages"), QStringLiteral("3-2"),
                       QStringLiteral("-o"), QStringLiteral("OUT")};
    QTest::newRow("page zero") << QStringList{QStringLiteral("--search"), QStringLiteral("--pages"),
                                              QStringLiteral("0"), QStringLiteral("-o"),
                                              QStringLiteral("OUT")};
    QTest::newRow("pages not a range")
        << QStringList{QStringLiteral("--all"), QStringLiteral("--pages"), QStringLiteral("two"),
                       QStringLiteral("-o"), QStringLiteral("OUT")};
    QTest::newRow("unknown profile")
        << QStringList{QStringLiteral("--profile"), QStringLiteral("Nobody"),
                       QStringLiteral("--all"), QStringLiteral("-o"), QStringLiteral("OUT")};
}

void TestCliPrint::refusals() {
    QFETCH(QStringList, args);
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("list.pdf"));
    args.replaceInStrings(QStringLiteral("OUT"), pdf);
    const test::ProcessResult r = test::runKestrelctl(
        QStringList{QStringLiteral("--data-dir"), dir.filePath(QStringLiteral("data")),
                    QStringLiteral("print")} +
        args);
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.contains("usage: kestrelctl print"));
    QVERIFY(!QFileInfo::exists(pdf));
}

void TestCliPrint::unwritableOutput() {
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("missing/folder/list.pdf"));
    const test::ProcessResult r = test::runKestrelctl(
        {QStringLiteral("--data-dir"), dir.filePath(QStringLiteral("data")),
         QStringLiteral("print"), QStringLiteral("--all"), QStringLiteral("-o"), pdf});
    QCOMPARE(r.exitCode, 2);
    QVERIFY(r.err.contains("cannot write"));
    QVERIFY(!QFileInfo::exists(pdf));
}

QTEST_GUILESS_MAIN(TestCliPrint)
#include "test_cli_print.moc"
