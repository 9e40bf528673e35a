// SPDX-License-Identifier: GPL-3.0-or-later
// The XML tree viewer: keys across a whole fill, opening levels on demand, the declaration's
// pseudo-attributes, and a text that does not parse.
#include "core/appcontext.h"
#include "webservice/ui/frmviewxml.h"

#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

using namespace kestrel;

namespace {

void collect(QTreeWidgetItem* item, QList<QTreeWidgetItem*>& out) {
    out.append(item);
    for (int i = 0; i < item->childCount(); ++i)
        collect(item->child(i), out);
}

QList<QTreeWidgetItem*> allItems(QTreeWidget* tree) {
    QList<QTreeWidgetItem*> out;
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        collect(tree->topLevelItem(i), out);
    return out;
}

QString key(QTreeWidgetItem* item) {
    return item->data(0, FrmViewXml::KeyRole).toString();
}

// "name=value" of each attribute child of an item.
QStringList attributesOf(QTreeWidgetItem* item) {
    QStringList out;
    for (int i = 0; i < item->childCount(); ++i) {
        QTreeWidgetItem* child = item->child(i);
        if (child->data(0, FrmViewXml::ImageRole).toString() == u"attribute")
            out << child->text(0) + u'=' + child->child(0)->text(0);
    }
    return out;
}

QString reply(int items) {
    QString body;
    for (int i = 0; i < items; ++i)
        body += QStringLiteral("<item id=\"%1\"><name>n%1</name><!--x--></item>").arg(i);
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!--reply-->\n"
                          "<env a=\"1\" b=\"2\"><body>text<list>%1</list></body><tail/></env>")
        .arg(body);
}

} // namespace

class TestFrmViewXml : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;

private Q_SLOTS:
    void levelsOpenOnDemandWithUniqueKeys() {
        AppContext ctx(m_dir.path());
        FrmViewXml w(ctx);
        QVERIFY(w.FillXML(reply(300)));
        QTreeWidget* tree = w.TV1();
        // Declaration (2 pseudo-attributes), comment, env with its 2 attributes and 2 children.
        QCOMPARE(tree->topLevelItemCount(), 3);
        QCOMPARE(allItems(tree).size(), 1 + 4 + 1 + 1 + 4 + 2);
        QTreeWidgetItem* env = w.itemByKey(QStringLiteral("n2"));
        QVERIFY(env && env->text(0) == u"env");

        tree->expandItem(env); // fills the children of body and tail
        const int afterFirst = allItems(tree).size();
        QCOMPARE(afterFirst, 13 + 2);
        tree->collapseItem(env);
        tree->expandItem(env);
        QCOMPARE(allItems(tree).size(), afterFirst);

        QTreeWidgetItem* body = env->child(2);
        tree->expandItem(body);
        QTreeWidgetItem* list = body->child(1);
        QCOMPARE(list->childCount(), 300);
        QCOMPARE(list->child(0)->childCount(), 0); // items stay unopened
        tree->expandItem(list);
        QCOMPARE(list->child(299)->childCount(), 1 + 2);

        // Every key is unique, each counter runs 1..count over the whole tree, and its letter
        // matches its image.
        QHash<QChar, QList<int>> numbers;
        QSet<QString> keys;
        const QHash<QChar, QStringList> images = {
            {u'n', {QStringLiteral("node"), QStringLiteral("procinstr")}},
            {u'a', {QStringLiteral("attribute")}},
            {u't', {QStringLiteral("text")}},
            {u'c', {QStringLiteral("comment")}}};
        for (QTreeWidgetItem* item : allItems(tree)) {
            const QString k = key(item);
            QVERIFY2(!keys.contains(k), qPrintable(k));
            keys.insert(k);
            QVERIFY(images.value(k[0]).contains(item->data(0, FrmViewXml::ImageRole).toString()));
            QVERIFY(!item->icon(0).isNull());
            numbers[k[0]].append(k.mid(1).toInt());
        }
        for (auto it = numbers.begin(); it != numbers.end(); ++it) {
            std::sort(it->begin(), it->end());
            QCOMPARE(it->first(), 1);
            QCOMPARE(it->last(), it->size());
        }
    }

    void declarationAttributes_data() {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<QStringList>("attributes");
        QTest::newRow("declaration")
            << QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?><r/>")
            << QStringList{"version=1.0", "encoding=UTF-8"};
        QTest::newRow("standalone") << QStringLiteral("<?xml version='1.0' standalone='yes'?><r/>")
                                    << QStringList{"version=1.0", "standalone=yes"};
        QTest::newRow("other instruction")
            << QStringLiteral("<?style href=\"a.css\" type=\"text/css\"?><r/>") << QStringList{};
    }
    void declarationAttributes() {
        QFETCH(QString, xml);
        QFETCH(QStringList, attributes);
        AppContext ctx(m_dir.path());
        FrmViewXml w(ctx);
        QVERIFY(w.FillXML(xml));
        QTreeWidgetItem* first = w.TV1()->topLevelItem(0);
        QCOMPARE(first->data(0, FrmViewXml::ImageRole).toString(), QStringLiteral("procinstr"));
        QCOMPARE(attributesOf(first), attributes);
    }

    void badTextLeavesTree_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("unclosed") << QStringLiteral("<a><b></a>");
        QTest::newRow("empty") << QString();
        QTest::newRow("not xml") << QStringLiteral("HTTP 500 Internal Server Error");
    }
    void badTextLeavesTree() {
        QFETCH(QString, text);
        AppContext ctx(m_dir.path());
        FrmViewXml w(ctx);
        QVERIFY(w.FillXML(reply(2)));
        w.TV1()->expandItem(w.itemByKey(QStringLiteral("n2")));
        const int before = allItems(w.TV1()).size();
        QVERIFY(!w.FillXML(text));
        QCOMPARE(allItems(w.TV1()).size(), before);
        QCOMPARE(ctx.errors.reportCount(), 0);
        // The kept tree still opens on demand.
        QTreeWidgetItem* body = w.itemByKey(QStringLiteral("n2"))->child(2);
        w.TV1()->expandItem(body);
        QVERIFY(allItems(w.TV1()).size() > before);
    }
};

QTEST_MAIN(TestFrmViewXml)
#include "tst_frmviewxml.moc"
