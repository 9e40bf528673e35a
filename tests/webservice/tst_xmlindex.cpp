// SPDX-License-Identifier: GPL-3.0-or-later
// The node index of an XML text: each node's links, kind, name and value, the declaration's
// attributes, and texts that are refused or cancelled.
#include "webservice/xmlindex.h"

#include <QTest>

using namespace kestrel;

namespace {

// One line a node in document order: depth, kind letter, name, value and attributes.
QStringList outline(const XmlIndex& index, int node, int depth = 0) {
    QStringList out;
    for (; node != XmlIndex::None; node = index.nextSibling(node)) {
        QString line = QString(depth, u' ') + QStringLiteral("ETCP")[int(index.kind(node))] +
                       index.name(node).toString() + u'|' + index.value(node).toString();
        for (int i = 0; i < index.attributeCount(node); ++i)
            line += u' ' + index.attributeName(node, i).toString() + u'=' +
                    index.attributeValue(node, i).toString();
        const int child = index.firstChild(node);
        // A child's parent link leads back; a broken one shows as a marked line.
        if (child != XmlIndex::None && index.parent(child) != node)
            line += QStringLiteral(" !parent");
        out << line;
        out << outline(index, child, depth + 1);
    }
    return out;
}

} // namespace

class TestXmlIndex : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void nodes_data() {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("reply") << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!--c-->\n"
                                  "<s:e b=\"2\" a=\"&lt;1\"><x>t&amp;u<!--d--><y/></x>\n <z/></s:e>"
                               << QStringList{"Pxml| version=1.0 encoding=UTF-8",
                                              "C|c",
                                              "Es:e| b=2 a=<1",
                                              " Ex|",
                                              "  T|t&u",
                                              "  C|d",
                                              "  Ey|",
                                              " Ez|"};
        QTest::newRow("no declaration, standalone instruction")
            << "<?style href='a'?><r><![CDATA[<b>]]><?p q?></r>"
            << QStringList{"Pstyle|href='a'", "Er|", " T|<b>", " Pp|q"};
        QTest::newRow("standalone") << "<?xml version='1.0' standalone='yes'?><r/>"
                                    << QStringList{"Pxml| version=1.0 standalone=yes", "Er|"};
    }
    void nodes() {
        QFETCH(QString, xml);
        QFETCH(QStringList, expected);
        XmlIndex index;
        QVERIFY(index.read(xml));
        QCOMPARE(outline(index, index.firstTopLevel()), expected);
        QCOMPARE(index.size(), expected.size());
    }

    void refused_data() {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<bool>("cancel");
        QTest::newRow("unclosed") << "<a><b></a>" << false;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("two roots") << "<a/><b/>" << false;
        QTest::newRow("cancelled") << "<a/>" << true;
    }
    void refused() {
        QFETCH(QString, xml);
        QFETCH(bool, cancel);
        XmlIndex index;
        QVERIFY(index.read(QStringLiteral("<old/>")));
        const std::atomic_bool stop{cancel};
        QVERIFY(!index.read(xml, &stop));
        QCOMPARE(index.size(), 0);
        QCOMPARE(index.firstTopLevel(), XmlIndex::None);
    }
};

QTEST_MAIN(TestXmlIndex)
#include "tst_xmlindex.moc"
