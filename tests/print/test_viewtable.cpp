// SPDX-License-Identifier: GPL-3.0-or-later
// What a list on screen hands to the printer: the visible columns in the order shown, their
// widths and alignment, and each cell's text, colour and boldness.
#include "print/viewtable.h"

#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

using namespace kestrel;

class TestViewTable : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fromTableView() {
        QStandardItemModel model(2, 4);
        model.setHorizontalHeaderLabels({QStringLiteral("Range"), QStringLiteral("Lower"),
                                         QStringLiteral("Upper"), QStringLiteral("Hidden")});
        model.setHeaderData(2, Qt::Horizontal, int(Qt::AlignHCenter), Qt::TextAlignmentRole);
        for (int r = 0; r < 2; ++r)
            for (int c = 0; c < 4; ++c)
                model.setItem(r, c, new QStandardItem(QStringLiteral("%1/%2").arg(r).arg(c)));
        model.item(0, 1)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        model.item(1, 0)->setForeground(QColor(200, 0, 0));
        QFont bold = model.item(1, 0)->font();
        bold.setBold(true);
        model.item(1, 0)->setFont(bold);
        QTableView view;
        view.setModel(&model);
        view.setColumnHidden(3, true);
        view.horizontalHeader()->moveSection(2, 0); // the user dragged "Upper" to the front
        view.setColumnWidth(2, 77);

        const PrintTable t = TableFromView(view);
        QCOMPARE(t.columns.size(), 3);
        QCOMPARE(t.columns[0].caption, QStringLiteral("Upper"));
        QCOMPARE(t.columns[0].width, 77);
        QCOMPARE(t.columns[0].align, Qt::AlignHCenter);
        // The header centres every caption by default; the cells decide then.
        QCOMPARE(t.columns[1].caption, QStringLiteral("Range"));
        QCOMPARE(t.columns[1].align, Qt::AlignLeft);
        QCOMPARE(t.columns[2].align, Qt::AlignRight);
        QCOMPARE(t.rows.size(), 2);
        QCOMPARE(t.rows[1].size(), 3);
        QCOMPARE(t.rows[1][0].text, QStringLiteral("1/2"));
        QCOMPARE(t.rows[1][1].text, QStringLiteral("1/0"));
        QCOMPARE(t.rows[1][1].color, QColor(200, 0, 0));
        QVERIFY(t.rows[1][1].bold);
        QVERIFY(t.rows[0][1].color == QColor(Qt::black) && !t.rows[0][1].bold);
    }
};

QTEST_MAIN(TestViewTable)
#include "test_viewtable.moc"
