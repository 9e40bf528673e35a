// SPDX-License-Identifier: GPL-3.0-or-later
// A compact, read-only index of an XML text: one small record a node, linked to its parent, first
// child and next sibling, with names and values kept once in a shared text pool. It is read in one
// pass of a stream reader and never builds a document tree, so a large reply costs little more
// than its own text.
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringView>
#include <atomic>

namespace kestrel {

class XmlIndex {
public:
    enum class Kind : quint8 { Element, Text, Comment, ProcessingInstruction };
    static constexpr int None = -1;

    // Reads the text; gives false (and an empty index) when it is not a well-formed document or
    // when cancel was set while reading. progress, when given, follows the share read (0..1000).
    bool read(const QString& text, const std::atomic_bool* cancel = nullptr,
              std::atomic_int* progress = nullptr);
    void clear();

    int size() const { return int(m_nodes.size()); }
    int firstTopLevel() const { return m_nodes.isEmpty() ? None : 0; }
    Kind kind(int node) const { return m_nodes[node].kind; }
    // An element's tag, an instruction's target; empty for text and comments.
    QStringView name(int node) const { return view(m_nodes[node].name); }
    // The text of a text or comment node, the data of an instruction.
    QStringView value(int node) const { return view(m_nodes[node].value); }
    int parent(int node) const { return m_nodes[node].parent; }
    int firstChild(int node) const { return m_nodes[node].firstChild; }
    int nextSibling(int node) const { return m_nodes[node].nextSibling; }
    // Attributes in the order the text gives them; the XML declaration's version, encoding and
    // standalone are the attributes of its instruction.
    int attributeCount(int node) const { return m_nodes[node].attributeCount; }
    QStringView attributeName(int node, int i) const;
    QStringView attributeValue(int node, int i) const;

private:
    struct Span {
        quint32 offset = 0;
        quint32 length = 0;
    };
    struct Node {
        Span name;
        Span value;
        int parent = None;
        int firstChild = None;
        int nextSibling = None;
        int firstAttribute = 0;
        int attributeCount = 0;
        Kind kind = Kind::Element;
    };
    struct Attribute {
        Span name;
        Span value;
    };

    QStringView view(Span s) const { return QStringView(m_pool).mid(s.offset, s.length); }
    Span keep(QStringView text);
    // Names repeat: one copy of each in the pool.
    Span keepName(QStringView name);
    int append(Kind kind, int parent, int& lastChild, QStringView name, QStringView value);

    QString m_pool;
    QList<Node> m_nodes;
    QList<Attribute> m_attributes;
    QHash<size_t, Span> m_names;
};

} // namespace kestrel
