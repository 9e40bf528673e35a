// SPDX-License-Identifier: GPL-3.0-or-later
#include "soapenvelope.h"

#include <QLocale>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace kestrel::soap {

SoapValue SoapValue::nil(const QString& name) {
    SoapValue v;
    v.name = name;
    return v;
}

SoapValue SoapValue::scalar(const QString& name, const QString& type, const QString& text) {
    SoapValue v;
    v.kind = Kind::Scalar;
    v.name = name;
    v.type = type;
    v.text = text;
    return v;
}

SoapValue SoapValue::integer(const QString& name, qint64 value) {
    return scalar(name, kXsdInt, QString::number(value));
}

SoapValue SoapValue::dbl(const QString& name, double value) {
    return scalar(name, kXsdDouble, DoubleText(value));
}

SoapValue SoapValue::string(const QString& name, const QString& value) {
    return scalar(name, kXsdString, value);
}

SoapValue SoapValue::boolean(const QString& name, bool value) {
    return scalar(name, kXsdBoolean, value ? QStringLiteral("true") : QStringLiteral("false"));
}

SoapValue SoapValue::structure(const QString& name, const QString& type) {
    SoapValue v;
    v.kind = Kind::Struct;
    v.name = name;
    v.type = type;
    return v;
}

SoapValue SoapValue::array(const QString& name, const QString& itemType) {
    SoapValue v;
    v.kind = Kind::Array;
    v.name = name;
    v.type = QStringLiteral("SOAP-ENC:Array");
    v.arrayItemType = itemType;
    return v;
}

SoapValue& SoapValue::add(SoapValue child) {
    children.append(std::move(child));
    return children.last();
}

namespace {
template <class Name>
const SoapValue* findChild(const QList<SoapValue>& children, Name childName, qsizetype* hint) {
    const qsizetype n = children.size();
    qsizetype start = hint ? *hint : 0;
    if (start >= n || start < 0)
        start = 0;
    for (qsizetype k = 0; k < n; ++k) {
        const qsizetype i = (start + k) % n;
        if (children[i].name == childName) {
            if (hint)
                *hint = i + 1;
            return &children[i];
        }
    }
    return nullptr;
}
} // namespace

const SoapValue* SoapValue::child(QStringView childName, qsizetype* hint) const {
    return findChild(children, childName, hint);
}

const SoapValue* SoapValue::child(QLatin1StringView childName, qsizetype* hint) const {
    return findChild(children, childName, hint);
}

SoapValue* SoapValue::child(QStringView childName) {
    for (SoapValue& c : children)
        if (c.name == childName)
            return &c;
    return nullptr;
}

QString DecodeXmlText(const QByteArray& bytes) {
    QByteArray enc;
    if (bytes.startsWith("<?xml")) {
        const QByteArray decl = bytes.left(bytes.indexOf("?>", 0) + 1).left(200);
        static const QRegularExpression re(
            QStringLiteral("encoding\\s*=\\s*[\"']([A-Za-z0-9._-]+)"));
        const auto m = re.match(QString::fromLatin1(decl));
        if (m.hasMatch())
            enc = m.captured(1).toLatin1();
    }
    if (!enc.isEmpty()) {
        QStringDecoder decoder(enc.constData());
        if (decoder.isValid())
            return decoder.decode(bytes);
    }
    return QString::fromUtf8(bytes);
}

QString DoubleText(double value) {
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

// ---- writing --------------------------------------------------------------------------------

namespace {

const QString kEnv = QString::fromLatin1(kEnvelopeNS);
const QString kEnc = QString::fromLatin1(kEncodingNS);
const QString kXsi = QString::fromLatin1(kXsiNS);

void writeValue(QXmlStreamWriter& w, const SoapValue& v) {
    w.writeStartElement(v.name);
    switch (v.kind) {
    case SoapValue::Kind::Nil:
        w.writeAttribute(kXsi, QStringLiteral("nil"), QStringLiteral("true"));
        break;
    case SoapValue::Kind::Scalar:
        if (!v.type.isEmpty())
            w.writeAttribute(kXsi, QStringLiteral("type"), v.type);
        w.writeCharacters(v.text);
        break;
    case SoapValue::Kind::Struct:
        if (!v.type.isEmpty())
            w.writeAttribute(kXsi, QStringLiteral("type"), v.type);
        for (const SoapValue& c : v.children)
            writeValue(w, c);
        break;
    case SoapValue::Kind::Array:
        w.writeAttribute(kXsi, QStringLiteral("type"), QStringLiteral("SOAP-ENC:Array"));
        w.writeAttribute(kEnc, QStringLiteral("arrayType"),
                         v.arrayItemType + QLatin1Char('[') + QString::number(v.children.size()) +
                             QLatin1Char(']'));
        for (const SoapValue& c : v.children) {
            SoapValue item = c;
            item.name = QStringLiteral("item");
            if (item.type.isEmpty() && item.kind != SoapValue::Kind::Nil)
                item.type = v.arrayItemType;
            writeValue(w, item);
        }
        break;
    }
    w.writeEndElement();
}

// Opens the envelope and its body; the caller writes the body's content.
void startEnvelope(QXmlStreamWriter& w, const QString& nsPrefix, const QString& ns) {
    w.writeStartDocument();
    w.writeNamespace(kEnv, QStringLiteral("SOAP-ENV"));
    w.writeNamespace(QString::fromLatin1(kXsdNS), QStringLiteral("xsd"));
    w.writeNamespace(kXsi, QStringLiteral("xsi"));
    w.writeNamespace(kEnc, QStringLiteral("SOAP-ENC"));
    if (!ns.isEmpty() && !nsPrefix.isEmpty())
        w.writeNamespace(ns, nsPrefix);
    w.writeStartElement(kEnv, QStringLiteral("Envelope"));
    w.writeAttribute(kEnv, QStringLiteral("encodingStyle"), kEnc);
    w.writeStartElement(kEnv, QStringLiteral("Body"));
}

} // namespace

QByteArray WriteEnvelope(const SoapMessage& message, const QString& nsPrefix) {
    if (message.isFault)
        return WriteFault(message.fault);
    QByteArray out;
    QXmlStreamWriter w(&out);
    startEnvelope(w, nsPrefix, message.methodNS);
    if (message.methodNS.isEmpty())
        w.writeStartElement(message.method);
    else
        w.writeStartElement(message.methodNS, message.method);
    for (const SoapValue& p : message.params)
        writeValue(w, p);
    w.writeEndDocument();
    return out;
}

QByteArray WriteFault(const SoapFault& fault) {
    QByteArray out;
    QXmlStreamWriter w(&out);
    startEnvelope(w, {}, {});
    w.writeStartElement(kEnv, QStringLiteral("Fault"));
    const std::pair<const char*, const QString*> fields[] = {{"faultcode", &fault.faultcode},
                                                             {"faultactor", &fault.faultactor},
                                                             {"faultstring", &fault.faultstring},
                                                             {"detail", &fault.detail}};
    for (const auto& [name, text] : fields)
        writeValue(w, SoapValue::string(QString::fromLatin1(name), *text));
    w.writeEndDocument();
    return out;
}

// ---- reading --------------------------------------------------------------------------------

namespace {

constexpr int kMaxDepth = 64;

class EnvelopeReader {
public:
    explicit EnvelopeReader(const QByteArray& bytes) : m_r(bytes) {}

    bool read(SoapMessage& m, QString* error) {
        m = SoapMessage{};
        const bool ok = readMessage(m);
        if (!ok && error)
            *error = m_error.isEmpty() ? m_r.errorString() : m_error;
        return ok;
    }

private:
    bool fail(const QString& why) {
        if (m_error.isEmpty())
            m_error = why;
        return false;
    }

    // Advances to the next start element inside the current element; false at its end.
    bool nextChild() {
        while (!m_r.atEnd()) {
            switch (m_r.readNext()) {
            case QXmlStreamReader::StartElement:
                return true;
            case QXmlStreamReader::EndElement:
                return false;
            case QXmlStreamReader::DTD:
                return fail(QStringLiteral("A document type declaration is not allowed"));
            default:
                break;
            }
        }
        return false;
    }

    bool readMessage(SoapMessage& m) {
        if (!nextChild() || m_r.name() != u"Envelope")
            return fail(m_r.hasError() ? m_r.errorString()
                                       : QStringLiteral("The reply is not a SOAP envelope"));
        bool body = false;
        while (nextChild()) {
            if (m_r.name() == u"Body") {
                body = true;
                break;
            }
            m_r.skipCurrentElement();
        }
        if (!body)
            return fail(m_r.hasError() ? m_r.errorString()
                                       : QStringLiteral("The envelope has no body"));
        if (!nextChild())
            return fail(m_r.hasError() ? m_r.errorString()
                                       : QStringLiteral("The envelope body is empty"));
        m.method = m_r.name().toString();
        m.methodNS = m_r.namespaceUri().toString();
        if (m.method == u"Fault") {
            m.isFault = true;
            readFault(m.fault);
        } else {
            while (nextChild()) {
                SoapValue v;
                if (!readValue(v, 1))
                    break;
                m.params.append(std::move(v));
            }
        }
        if (m_r.hasError())
            return fail(m_r.errorString());
        return m_error.isEmpty();
    }

    void readFault(SoapFault& f) {
        while (nextChild()) {
            const auto name = m_r.name();
            QString* target = name == u"faultcode"     ? &f.faultcode
                              : name == u"faultactor"  ? &f.faultactor
                              : name == u"faultstring" ? &f.faultstring
                              : name == u"detail"      ? &f.detail
                                                       : nullptr;
            const QString text =
                m_r.readElementText(QXmlStreamReader::IncludeChildElements).trimmed();
            if (target)
                *target = text;
        }
    }

    // At a start element: reads it and everything under it.
    bool readValue(SoapValue& v, int depth) {
        if (depth > kMaxDepth)
            return fail(QStringLiteral("The reply is nested too deeply"));
        v.name = m_r.name().toString();
        bool nil = false;
        bool array = false;
        for (const QXmlStreamAttribute& a : m_r.attributes()) {
            if (a.namespaceUri().isEmpty())
                continue;
            const auto n = a.name();
            if (n == u"nil")
                nil = a.value() == u"true" || a.value() == u"1";
            else if (n == u"type") {
                v.type = a.value().toString();
                if (v.type.endsWith(u":Array") || v.type == u"Array")
                    array = true;
            } else if (n == u"arrayType") {
                array = true;
                QStringView t = a.value();
                const qsizetype bracket = t.indexOf(u'[');
                v.arrayItemType = (bracket >= 0 ? t.left(bracket) : t).toString();
            }
        }
        bool hasChildren = false;
        while (!m_r.atEnd()) {
            const auto token = m_r.readNext();
            if (token == QXmlStreamReader::Characters) {
                if (!hasChildren)
                    v.text += m_r.text();
            } else if (token == QXmlStreamReader::StartElement) {
                hasChildren = true;
                SoapValue c;
                if (!readValue(c, depth + 1))
                    return false;
                v.children.append(std::move(c));
            } else if (token == QXmlStreamReader::EndElement) {
                break;
            }
        }
        if (m_r.hasError())
            return fail(m_r.errorString());
        if (nil) {
            v.kind = SoapValue::Kind::Nil;
            v.children.clear();
            v.text.clear();
        } else if (array) {
            v.kind = SoapValue::Kind::Array;
            v.text.clear();
        } else if (hasChildren) {
            v.kind = SoapValue::Kind::Struct;
            v.text.clear();
        } else {
            v.kind = SoapValue::Kind::Scalar;
        }
        return true;
    }

    QXmlStreamReader m_r;
    QString m_error;
};

} // namespace

bool ReadEnvelope(const QByteArray& bytes, SoapMessage& message, QString* error) {
    if (bytes.size() > kMaxEnvelopeBytes) {
        message = SoapMessage{};
        if (error)
            *error = QStringLiteral("The reply is larger than %1 bytes").arg(kMaxEnvelopeBytes);
        return false;
    }
    return EnvelopeReader(bytes).read(message, error);
}

} // namespace kestrel::soap
