// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl print run as a process: a page range of the channel list, and a refusal that
// leaves no file behind.
#include "printtest.h"
#include "testsupport.h"

#include <QFileInfo>
#include <QTest>

using namespace kestrel;

class TestCliPrint : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString path(const char* name) const { return m_dir.filePath(QString::fromLatin1(name)); }
    test::ProcessResult run(const QStringList& args) {
        return test::runKestrelctl(QStringList{QStringLiteral("--data-dir"), path("data")} + args);
    }

private Q_SLOTS:
    void printsPageRange() {
        test::ProcessResult r =
            run({QStringLiteral("set"), QStringLiteral("--bank"), QStringLiteral("10"),
                 QStringLiteral("--slot"), QStringLiteral("20"),
                 QStringLiteral("162.550000,Weather Radio,False,False,False")});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        const auto before = test::snapshotTree(path("data"));
        r = run({QStringLiteral("print"), QStringLiteral("--all"), QStringLiteral("--pages"),
                 QStringLiteral("3-4"), QStringLiteral("-o"), path("list.pdf")});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        const QStringList pages = test::pdfPages(path("list.pdf"));
        QCOMPARE(pages.size(), 2);
        QVERIFY(pages[0].contains(QStringLiteral("Page: 3 of 4")));
        QVERIFY(pages[1].contains(QStringLiteral("Page: 4 of 4")));
        QVERIFY(pages[1].contains(QStringLiteral("All Channels For Main")));
        QVERIFY(pages[1].contains(
            QRegularExpression(QStringLiteral("200\\s+162\\.550000\\s+Weather Radio"))));
        QCOMPARE(test::snapshotTree(path("data")), before); // printing only reads
    }

    void usageErrorWritesNothing() {
        const test::ProcessResult r =
            run({QStringLiteral("print"), QStringLiteral("--all"), QStringLiteral("--pages"),
                 QStringLiteral("4-5"), QStringLiteral("-o"), path("refused.pdf")});
        QCOMPARE(r.exitCode, 1);
        QVERIFY(r.err.contains("usage: kestrelctl print"));
        QVERIFY(!QFileInfo::exists(path("refused.pdf")));
    }
};

QTEST_GUILESS_MAIN(TestCliPrint)
#include "test_cli_print.moc"
