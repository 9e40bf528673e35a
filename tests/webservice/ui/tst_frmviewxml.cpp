// SPDX-License-Identifier: GPL-3.0-or-later
// The XML tree viewer: keys across a whole fill, opening levels on demand, the declaration's
// pseudo-attributes, and a text that does not parse.
#include "core/appcontext.h"
#include "webservice/ui/frmviewxml.h"

#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

using namespace kestrel;

namespace {

QList<QTreeWidgetItem*> allItems(QTreeWidget* tree) {
    QList<QTreeWidgetItem*> out;
    for (QTreeWidgetItemIterator it(tree); *it; ++it)
        out.append(*it);
    return out;
}

QString reply(int items) {
    QString body;
    for (int i = 0; i < items; ++i)
        body += QStringLiteral("<item id=\"%1\"><name>n%1</name><!--x--></item>").arg(i);
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!--reply-->\n"
                          "<s:env a=\"1\" b=\"2\"><body>text<list>%1</list></body><tail/></s:env>")
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
        bool served = false; // the window keeps being served while the reply is read
        QTimer::singleShot(0, &w, [&] { served = true; });
        QVERIFY(w.FillXML(reply(300)));
        QVERIFY(served);
        QTreeWidget* tree = w.TV1();
        // Declaration with 2 pseudo-attributes (5), comment, env with 2 attributes and 2 children.
        QCOMPARE(tree->topLevelItemCount(), 3);
        QCOMPARE(allItems(tree).size(), 5 + 1 + 7);
        QTreeWidgetItem* env = w.itemByKey(QStringLiteral("n2"));
        tree->expandItem(env); // fills what body and tail hold
        QCOMPARE(allItems(tree).size(), 13 + 2);
        tree->collapseItem(env);
        tree->expandItem(env);
        QCOMPARE(allItems(tree).size(), 13 + 2);

        QTreeWidgetItem* list = env->child(2)->child(1);
        tree->expandItem(env->child(2));
        QCOMPARE(list->childCount(), 300);
        QCOMPARE(list->child(0)->childCount(), 0); // the items stay unopened
        tree->expandItem(list);
        QCOMPARE(list->child(299)->childCount(), 1 + 2);

        // Each counter runs 1..count over the whole tree, and a key's letter fits its image.
        const QHash<QChar, QString> images = {{u'n', QStringLiteral("node procinstr")},
                                              {u'a', QStringLiteral("attribute")},
                                              {u't', QStringLiteral("text")},
                                              {u'c', QStringLiteral("comment")}};
        QHash<QChar, QSet<int>> numbers;
        for (QTreeWidgetItem* item : allItems(tree)) {
            const QString key = item->data(0, FrmViewXml::KeyRole).toString();
            const QString image = item->data(0, FrmViewXml::ImageRole).toString();
            QVERIFY2(images.value(key[0]).split(u' ').contains(image), qPrintable(key));
            QVERIFY(!item->icon(0).isNull());
            QVERIFY2(!numbers[key[0]].contains(key.mid(1).toInt()), qPrintable(key));
            numbers[key[0]].insert(key.mid(1).toInt());
        }
        for (const QSet<int>& used : numbers)
            QCOMPARE(*std::max_element(used.begin(), used.end()), used.size());
    }

    void declarationAttributes_data() {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<QStringList>("attributes");
        QTest::newRow("declaration") << "<?xml version=\"1.0\" encoding=\"UTF-8\"?><r/>"
                                     << QStringList{"version=1.0", "encoding=UTF-8"};
        QTest::newRow("other instruction")
            << "<?style href=\"a.css\" type=\"text/css\"?><r/>" << QStringList{};
    }
    void declarationAttributes() {
        QFETCH(QString, xml);
        QFETCH(QStringList, attributes);
        AppContext ctx(m_dir.path());
        FrmViewXml w(ctx);
        QVERIFY(w.FillXML(xml));
        QTreeWidgetItem* first = w.TV1()->topLevelItem(0);
        QCOMPARE(first->data(0, FrmViewXml::ImageRole).toString(), QStringLiteral("procinstr"));
        QStringList shown;
        for (int i = 0; i < first->childCount(); ++i)
            shown << first->child(i)->text(0) + u'=' + first->child(i)->child(0)->text(0);
        QCOMPARE(shown, attributes);
    }

    void badTextLeavesTree_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("unclosed") << QStringLiteral("<a><b></a>");
        QTest::newRow("empty") << QString();
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
        // The kept tree still opens on demand.
        w.TV1()->expandItem(w.itemByKey(QStringLiteral("n2"))->child(2));
        QVERIFY(allItems(w.TV1()).size() > before);
    }
};

QTEST_MAIN(TestFrmViewXml)
#include "tst_frmviewxml.moc"
