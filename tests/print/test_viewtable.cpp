// SPDX-License-Identifier: GPL-3.0-or-later
// What a list on screen hands to the printer: captions, widths, alignment, texts, colours,
// boldness and font, from a report-style tree view and from a table view.
#include "print/viewtable.h"

#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>

using namespace kestrel;

class TestViewTable : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fromTreeWidget();
    void fromTableViewInVisualOrder();
};

void TestViewTable::fromTreeWidget() {
    QTreeWidget list;
    list.setRootIsDecorated(false);
    list.setHeaderLabels({QStringLiteral("Channel"), QStringLiteral("Frequency"),
                          QStringLiteral("Description"), QStringLiteral("Hidden")});
    list.headerItem()->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    list.header()->setStretchLastSection(false);
    list.setColumnWidth(0, 44);
    list.setColumnWidth(1, 97);
    list.setColumnWidth(2, 180);
    list.setColumnHidden(3, true);
    QFont font(QStringLiteral("DejaVu Sans"), 11);
    list.setFont(font);
    for (int i = 1; i <= 3; ++i) {
        auto* item =
            new QTreeWidgetItem(&list, {QString::number(i), QStringLiteral("146.520000"),
                                        QStringLiteral("Row %1").arg(i), QStringLiteral("secret")});
        if (i == 2) {
            item->setForeground(2, QColor(200, 0, 0));
            QFont bold = item->font(2);
            bold.setBold(true);
            item->setFont(2, bold);
        }
    }

    const PrintTable t = TableFromView(list);
    QCOMPARE(t.columns.size(), 3);
    QCOMPARE(t.columns[0].caption, QStringLiteral("Channel"));
    QCOMPARE(t.columns[1].caption, QStringLiteral("Frequency"));
    QCOMPARE(t.columns[0].width, 44);
    QCOMPARE(t.columns[1].width, 97);
    QCOMPARE(t.columns[2].width, 180);
    QCOMPARE(t.columns[0].align, Qt::AlignLeft);
    QCOMPARE(t.columns[1].align, Qt::AlignRight);
    QCOMPARE(t.font.family(), font.family());
    QCOMPARE(t.font.pointSize(), 11);
    QCOMPARE(t.rows.size(), 3);
    for (const PrintRow& row : t.rows)
        QCOMPARE(row.size(), 3);
    QCOMPARE(t.rows[1][2].text, QStringLiteral("Row 2"));
    QCOMPARE(t.rows[1][2].color, QColor(200, 0, 0));
    QVERIFY(t.rows[1][2].bold);
    QCOMPARE(t.rows[0][2].color, QColor(Qt::black));
    QVERIFY(!t.rows[0][2].bold);
}

void TestViewTable::fromTableViewInVisualOrder() {
    QStandardItemModel model(2, 3);
    model.setHorizontalHeaderLabels(
        {QStringLiteral("Range"), QStringLiteral("Lower"), QStringLiteral("Upper")});
    model.setHeaderData(2, Qt::Horizontal, int(Qt::AlignHCenter), Qt::TextAlignmentRole);
    for (int r = 0; r < 2; ++r)
        for (int c = 0; c < 3; ++c) {
            auto* item = new QStandardItem(QStringLiteral("%1/%2").arg(r).arg(c));
            if (c == 1)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            model.setItem(r, c, item);
        }
    QTableView view;
    view.setModel(&model);
    view.horizontalHeader()->moveSection(2, 0); // the user dragged "Upper" to the front
    view.setColumnWidth(2, 77);

    const PrintTable t = TableFromView(view);
    QCOMPARE(t.columns.size(), 3);
    QCOMPARE(t.columns[0].caption, QStringLiteral("Upper"));
    QCOMPARE(t.columns[0].width, 77);
    QCOMPARE(t.columns[0].align, Qt::AlignHCenter);
    QCOMPARE(t.columns[1].caption, QStringLiteral("Range"));
    // The header centres every caption by default; the cells of "Range" are left-aligned.
    QCOMPARE(t.columns[1].align, Qt::AlignLeft);
    QCOMPARE(t.columns[2].caption, QStringLiteral("Lower"));
    QCOMPARE(t.columns[2].align, Qt::AlignRight);
    QCOMPARE(t.rows[1][0].text, QStringLiteral("1/2"));
    QCOMPARE(t.rows[1][1].text, QStringLiteral("1/0"));
}

QTEST_MAIN(TestViewTable)
#include "test_viewtable.moc"
