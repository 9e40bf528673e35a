// SPDX-License-Identifier: GPL-3.0-or-later
#include "xmlindex.h"

#include <QXmlStreamReader>
#include <limits>

namespace kestrel {

void XmlIndex::clear() {
    m_pool.clear();
    m_nodes.clear();
    m_attributes.clear();
    m_names.clear();
}

QStringView XmlIndex::attributeName(int node, int i) const {
    return view(m_attributes[m_nodes[node].firstAttribute + i].name);
}

QStringView XmlIndex::attributeValue(int node, int i) const {
    return view(m_attributes[m_nodes[node].firstAttribute + i].value);
}

XmlIndex::Span XmlIndex::keep(QStringView text) {
    const Span span{quint32(m_pool.size()), quint32(text.size())};
    m_pool.append(text);
    return span;
}

XmlIndex::Span XmlIndex::keepName(QStringView name) {
    const size_t hash = qHash(name);
    const auto it = m_names.constFind(hash);
    if (it != m_names.constEnd() && view(*it) == name)
        return *it;
    const Span span = keep(name);
    m_names.insert(hash, span);
    return span;
}

int XmlIndex::append(Kind kind, int parent, int& lastChild, QStringView name, QStringView value) {
    Node node;
    node.kind = kind;
    node.parent = parent;
    node.name = keepName(name);
    node.value = keep(value);
    node.firstAttribute = int(m_attributes.size());
    const int index = int(m_nodes.size());
    m_nodes.append(node);
    if (lastChild != None)
        m_nodes[lastChild].nextSibling = index;
    else if (parent != None)
        m_nodes[parent].firstChild = index;
    lastChild = index;
    return index;
}

bool XmlIndex::read(const QString& text, const std::atomic_bool* cancel,
                    std::atomic_int* progress) {
    clear();
    QXmlStreamReader reader(text);
    // A prefix the reply does not declare is only a part of a name.
    reader.setNamespaceProcessing(false);
    // The last child made so far at each open level; the first entry is the document's.
    QList<int> lastChild{None};
    int open = None;
    const qint64 total = qMax<qint64>(1, text.size());
    for (int step = 0; !reader.atEnd(); ++step) {
        reader.readNext();
        if ((step & 0xfff) == 0) {
            if (cancel && cancel->load(std::memory_order_relaxed)) {
                clear();
                return false;
            }
            if (progress)
                progress->store(int(reader.characterOffset() * 1000 / total));
        }
        switch (reader.tokenType()) {
        case QXmlStreamReader::StartDocument: {
            if (reader.documentVersion().isEmpty())
                break;
            const int node =
                append(Kind::ProcessingInstruction, open, lastChild.last(), u"xml", {});
            const auto add = [&](QStringView name, QStringView value) {
                m_attributes.append({keep(name), keep(value)});
                ++m_nodes[node].attributeCount;
            };
            add(u"version", reader.documentVersion());
            if (!reader.documentEncoding().isEmpty())
                add(u"encoding", reader.documentEncoding());
            if (reader.isStandaloneDocument())
                add(u"standalone", u"yes");
            break;
        }
        case QXmlStreamReader::StartElement: {
            const int node =
                append(Kind::Element, open, lastChild.last(), reader.qualifiedName(), {});
            for (const QXmlStreamAttribute& a : reader.attributes())
                m_attributes.append({keepName(a.qualifiedName()), keep(a.value())});
            m_nodes[node].attributeCount = int(m_attributes.size()) - m_nodes[node].firstAttribute;
            open = node;
            lastChild.append(None);
            break;
        }
        case QXmlStreamReader::EndElement:
            lastChild.removeLast();
            open = m_nodes[open].parent;
            break;
        case QXmlStreamReader::Characters:
            // Runs of white space between elements are layout, not content.
            if (!reader.isWhitespace())
                append(Kind::Text, open, lastChild.last(), {}, reader.text());
            break;
        case QXmlStreamReader::Comment:
            append(Kind::Comment, open, lastChild.last(), {}, reader.text());
            break;
        case QXmlStreamReader::ProcessingInstruction:
            append(Kind::ProcessingInstruction, open, lastChild.last(),
                   reader.processingInstructionTarget(), reader.processingInstructionData());
            break;
        default:
            break;
        }
    }
    if (reader.hasError() || m_nodes.isEmpty()) {
        clear();
        return false;
    }
    // The pool's text is indexed by 32-bit offsets.
    if (m_pool.size() > qsizetype(std::numeric_limits<quint32>::max())) {
        clear();
        return false;
    }
    m_names.clear();
    return true;
}

} // namespace kestrel
