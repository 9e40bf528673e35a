// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmviewxml.h"

#include "core/appcontext.h"
#include "ui/windowplace.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QHash>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QThread>
#include <QTreeWidget>
#include <QXmlStreamReader>
#include <functional>
#include <memory>

namespace kestrel {

namespace {

const QString kFilledTag = QStringLiteral("[-]");

// Small drawn icons for the image keys: a coloured badge with a letter.
QIcon drawIcon(QColor colour, QChar letter) {
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(colour.darker(140));
    p.setBrush(colour);
    p.drawRoundedRect(QRectF(1.5, 1.5, 13, 13), 3, 3);
    QFont font = p.font();
    font.setPixelSize(10);
    font.setBold(true);
    p.setFont(font);
    p.setPen(Qt::white);
    p.drawText(QRect(0, 0, 16, 16), Qt::AlignCenter, QString(letter));
    return QIcon(pixmap);
}

const QIcon& iconFor(const QString& image) {
    static const QHash<QString, QIcon> icons = {
        {QStringLiteral("node"), drawIcon(QColor(0x2f, 0x6f, 0xb5), u'E')},
        {QStringLiteral("procinstr"), drawIcon(QColor(0x7a, 0x4f, 0xa8), u'?')},
        {QStringLiteral("comment"), drawIcon(QColor(0x4b, 0x8f, 0x3a), u'!')},
        {QStringLiteral("text"), drawIcon(QColor(0x70, 0x70, 0x70), u'T')},
        {QStringLiteral("attribute"), drawIcon(QColor(0xc0, 0x6a, 0x10), u'@')},
    };
    static const QIcon none;
    const auto it = icons.constFind(image);
    return it == icons.constEnd() ? none : *it;
}

// Runs work on a thread of its own and waits for it with the window still painted; the user's
// input waits until the work is done. An exception of the work is raised here.
void runAside(const std::function<void()>& work) {
    std::exception_ptr failure;
    QEventLoop loop;
    std::unique_ptr<QThread> thread(QThread::create([&] {
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
    }));
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    thread->start();
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    thread->wait();
    if (failure)
        std::rethrow_exception(failure);
}

int twipsToPixels(int twips, int dpi) {
    return twips * dpi / 1440; // 15 twips to a pixel at 96 dpi
}

} // namespace

bool IsWellFormedXml(const QString& text) {
    QXmlStreamReader reader(text);
    // Like the document itself: a prefix the reply does not declare is only a part of a name.
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd())
        reader.readNext();
    return !reader.hasError();
}

FrmViewXml::FrmViewXml(AppContext& ctx, QWidget* parent) : QWidget(parent, Qt::Window), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmViewXml"));
    setWindowTitle(QStringLiteral("View XML Tree"));
    m_tree = new QTreeWidget(this);
    m_tree->setObjectName(QStringLiteral("TV1"));
    m_tree->setHeaderHidden(true);
    m_tree->setUniformRowHeights(true);
    connect(m_tree, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
        Trap(m_ctx.errors, "FrmViewXml -> TV1_Expand", [&] { TV1_Expand(item); });
    });
    resize(600, 500);
    placeWindow(this);
}

QString FrmViewXml::nextKey(char kind) {
    int& counter = kind == 'n'   ? m_nodeCount
                   : kind == 'a' ? m_attrCount
                   : kind == 't' ? m_textCount
                                 : m_commentCount;
    return QLatin1Char(kind) + QString::number(++counter);
}

QTreeWidgetItem* FrmViewXml::makeItem(const QString& key, const QString& text, const char* image) {
    auto* item = new QTreeWidgetItem(QStringList{text});
    const QString imageKey = QString::fromLatin1(image);
    item->setData(0, KeyRole, key);
    item->setData(0, ImageRole, imageKey);
    item->setIcon(0, iconFor(imageKey));
    if (key.startsWith(u'n') || key.startsWith(u'a'))
        m_items.insert(key, item);
    return item;
}

bool FrmViewXml::FillXML(const QString& xmlText) {
    if (m_filling)
        return false; // a reply is being read; the window takes one at a time
    m_filling = true;
    const QPointer<FrmViewXml> self(this);
    const bool filled = Trap(m_ctx.errors, "FrmViewXml -> FillXML", [&](Stmt& s) {
        s.at(1);
        // A large reply takes a while to read: the reading runs aside while the window keeps
        // painting. A text that does not parse leaves the tree and its index as they were.
        XmlIndex index;
        bool parsed = false;
        m_tree->setEnabled(false);
        runAside([&] { parsed = index.read(xmlText); });
        if (!self)
            return false;
        m_tree->setEnabled(true);
        if (!parsed)
            return false;
        s.at(2);
        m_tree->clear();
        m_nodes.clear();
        m_items.clear();
        m_nodeCount = m_attrCount = m_textCount = m_commentCount = 0;
        m_index = std::move(index);
        s.at(3);
        QList<QTreeWidgetItem*> top;
        for (int node = m_index.firstTopLevel(); node != XmlIndex::None;
             node = m_index.nextSibling(node)) {
            if (m_index.kind(node) == XmlIndex::Kind::Comment) {
                top.append(makeItem(nextKey('c'), m_index.value(node).toString(), "comment"));
                continue;
            }
            const QString key = nextKey('n');
            m_nodes.insert(key, node);
            const bool instruction = m_index.kind(node) == XmlIndex::Kind::ProcessingInstruction;
            top.append(
                makeItem(key, m_index.name(node).toString(), instruction ? "procinstr" : "node"));
            AddAttributes(key);
            AddChildren(key);
        }
        m_tree->addTopLevelItems(top);
        return true;
    });
    if (self)
        m_filling = false;
    return filled;
}

void FrmViewXml::AddAttributes(const QString& key) {
    Trap(m_ctx.errors, "FrmViewXml -> AddAttributes", [&] {
        const int node = m_nodes.value(key, XmlIndex::None);
        QTreeWidgetItem* parent = m_items.value(key);
        if (node == XmlIndex::None || !parent)
            return;
        // Of the instructions, only the document's own declaration has attributes.
        QList<QTreeWidgetItem*> items;
        for (int i = 0; i < m_index.attributeCount(node); ++i) {
            QTreeWidgetItem* item =
                makeItem(nextKey('a'), m_index.attributeName(node, i).toString(), "attribute");
            item->addChild(
                makeItem(nextKey('t'), m_index.attributeValue(node, i).toString(), "text"));
            items.append(item);
        }
        parent->addChildren(items);
    });
}

void FrmViewXml::AddChildren(const QString& key) {
    Trap(m_ctx.errors, "FrmViewXml -> AddChildren", [&] {
        const int node = m_nodes.value(key, XmlIndex::None);
        QTreeWidgetItem* parent = m_items.value(key);
        if (node == XmlIndex::None || !parent)
            return;
        QList<QTreeWidgetItem*> items;
        for (int child = m_index.firstChild(node); child != XmlIndex::None;
             child = m_index.nextSibling(child)) {
            switch (m_index.kind(child)) {
            case XmlIndex::Kind::Text:
                items.append(makeItem(nextKey('t'), m_index.value(child).toString(), "text"));
                break;
            case XmlIndex::Kind::Comment:
                items.append(makeItem(nextKey('c'), m_index.value(child).toString(), "comment"));
                break;
            default: {
                const QString childKey = nextKey('n');
                m_nodes.insert(childKey, child);
                items.append(makeItem(childKey, m_index.name(child).toString(), "node"));
            }
            }
        }
        parent->addChildren(items);
    });
}

void FrmViewXml::TV1_Expand(QTreeWidgetItem* item) {
    if (item->data(0, TagRole).toString() == kFilledTag)
        return;
    m_tree->setUpdatesEnabled(false);
    for (int i = 0; i < item->childCount(); ++i) {
        const QString childKey = item->child(i)->data(0, KeyRole).toString();
        if (childKey.startsWith(u'n')) {
            AddAttributes(childKey);
            AddChildren(childKey);
        }
    }
    item->setData(0, TagRole, kFilledTag);
    m_tree->setUpdatesEnabled(true);
}

void FrmViewXml::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Trap(m_ctx.errors, "FrmViewXml -> Resize", [&] {
        const int dpi = logicalDpiY();
        const int left = twipsToPixels(60, dpi);
        const int top = twipsToPixels(120, dpi);
        m_tree->setGeometry(left, top, qMax(0, width() - twipsToPixels(195, dpi)),
                            qMax(0, height() - twipsToPixels(450, dpi)));
    });
}

void FrmViewXml::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    Q_EMIT closed();
}

} // namespace kestrel
