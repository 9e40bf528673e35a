// SPDX-License-Identifier: GPL-3.0-or-later
// The XML tree viewer: shows a reply of the web service as an expandable tree. A level of the
// document becomes tree items only when its parent is opened, so a very large reply shows its
// top at once.
#pragma once

#include "webservice/xmlindex.h"

#include <QHash>
#include <QWidget>

class QTreeWidget;
class QTreeWidgetItem;

namespace kestrel {

class AppContext;

class FrmViewXml : public QWidget {
    Q_OBJECT
public:
    // Item data: the key ("n1", "a2", "t3", "c4"), the tag ("[-]" once filled) and the image key
    // ("node", "procinstr", "comment", "text", "attribute").
    static constexpr int KeyRole = Qt::UserRole;
    static constexpr int TagRole = Qt::UserRole + 1;
    static constexpr int ImageRole = Qt::UserRole + 2;

    explicit FrmViewXml(AppContext& ctx, QWidget* parent = nullptr);

    // Loads the text and fills the top of the tree; a text that does not parse leaves the tree
    // as it was and gives false.
    bool FillXML(const QString& xmlText);
    // The attributes, and the direct children, of the node stored under key.
    void AddAttributes(const QString& key);
    void AddChildren(const QString& key);

    QTreeWidget* TV1() const { return m_tree; }
    QTreeWidgetItem* itemByKey(const QString& key) const { return m_items.value(key); }

Q_SIGNALS:
    void closed();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void TV1_Expand(QTreeWidgetItem* item);
    QTreeWidgetItem* makeItem(const QString& key, const QString& text, const char* image);
    QString nextKey(char kind);

    AppContext& m_ctx;
    QTreeWidget* m_tree;
    XmlIndex m_index;
    QHash<QString, int> m_nodes; // key -> node of the index
    QHash<QString, QTreeWidgetItem*> m_items;
    int m_nodeCount = 0;
    int m_attrCount = 0;
    int m_textCount = 0;
    int m_commentCount = 0;
    bool m_filling = false;
};

// True when the text is a well-formed XML document.
bool IsWellFormedXml(const QString& text);

} // namespace kestrel
