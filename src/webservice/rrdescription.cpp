// SPDX-License-Identifier: GPL-3.0-or-later
#include "rrdescription.h"

#include "soapenvelope.h"

#include <algorithm>
#include <array>

namespace kestrel {

namespace {

QString localName(const QDomNode& n) {
    const QString full = n.nodeName();
    return full.mid(full.indexOf(u':') + 1);
}

bool is(const QDomNode& n, QStringView name) {
    const QString full = n.nodeName();
    const qsizetype colon = full.indexOf(u':');
    return QStringView(full).mid(colon + 1) == name;
}

// Calls f for each child element of e whose local name is `name`.
template <class F> void eachChild(const QDomElement& e, QStringView name, F&& f) {
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
        if (is(c, name))
            f(c);
}

QDomElement firstChild(const QDomElement& e, QStringView name) {
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
        if (is(c, name))
            return c;
    return {};
}

// The value of the attribute whose local name is `name`, whatever its prefix.
QString attrLocal(const QDomElement& e, QStringView name) {
    const QDomNamedNodeMap attrs = e.attributes();
    for (int i = 0; i < attrs.count(); ++i) {
        const QDomNode a = attrs.item(i);
        if (is(a, name))
            return a.nodeValue();
    }
    return {};
}

void readTypes(const QDomElement& types, SoapDescription& d) {
    const QDomElement schema = firstChild(types, u"schema");
    d.SchemaNS = schema.attribute(QStringLiteral("targetNamespace"));
    for (QDomElement c = schema.firstChildElement(); !c.isNull(); c = c.nextSiblingElement()) {
        if (is(c, u"import")) {
            d.Imports.append(c.attribute(QStringLiteral("namespace")));
        } else if (is(c, u"complexType")) {
            WsdlType t;
            t.name = c.attribute(QStringLiteral("name"));
            for (QDomElement k = c.firstChildElement(); !k.isNull(); k = k.nextSiblingElement()) {
                if (is(k, u"all") || is(k, u"sequence")) {
                    eachChild(k, u"element", [&](const QDomElement& el) {
                        t.elements.append({el.attribute(QStringLiteral("name")),
                                           el.attribute(QStringLiteral("type"))});
                    });
                } else if (is(k, u"complexContent")) {
                    const QDomElement r = firstChild(k, u"restriction");
                    t.base = r.attribute(QStringLiteral("base"));
                    const QDomElement a = firstChild(r, u"attribute");
                    t.ref = a.attribute(QStringLiteral("ref"));
                    t.arrayType = attrLocal(a, u"arrayType");
                }
            }
            d.Types.append(std::move(t));
        }
    }
}

void readBodyUse(const QDomElement& inOut, QString& use, QString& ns, QString& enc) {
    const QDomElement body = firstChild(inOut, u"body");
    use = body.attribute(QStringLiteral("use"));
    ns = body.attribute(QStringLiteral("namespace"));
    enc = body.attribute(QStringLiteral("encodingStyle"));
}

} // namespace

bool ParseDescription(const QString& text, SoapDescription& d, QDomDocument& doc) {
    d = SoapDescription{};
    doc = QDomDocument();
    // A description never needs a document type declaration; refusing one rules out entity
    // expansion of any kind.
    if (text.size() > soap::kMaxEnvelopeBytes || text.contains(u"<!DOCTYPE"))
        return false;
    if (!doc.setContent(text, false))
        return false;
    QDomElement root = doc.documentElement();
    if (!is(root, u"definitions") || !root.hasChildNodes())
        return false;

    const QString N = QStringLiteral("name");
    d.TargetNS = root.attribute(QStringLiteral("targetNamespace"));
    const std::array<std::pair<QString*, const char*>, 7> ns{{{&d.xmlns, "xmlns"},
                                                              {&d.xmlnsSoap, "xmlns:soap"},
                                                              {&d.xmlnsSoapEnc, "xmlns:SOAP-ENC"},
                                                              {&d.xmlnsSoapEnv, "xmlns:SOAP-ENV"},
                                                              {&d.xmlnsWsdl, "xmlns:wsdl"},
                                                              {&d.xmlnsTns, "xmlns:tns"},
                                                              {&d.xmlnsXsi, "xmlns:xsi"}}};
    for (const auto& [target, attr] : ns)
        *target = root.attribute(QString::fromLatin1(attr));

    for (QDomElement top = root.firstChildElement(); !top.isNull();
         top = top.nextSiblingElement()) {
        const QString kind = localName(top);
        if (kind == u"types") {
            readTypes(top, d);
        } else if (kind == u"message") {
            WsdlMessage m;
            m.name = top.attribute(N);
            eachChild(top, u"part", [&](const QDomElement& p) {
                m.Parts.append({p.attribute(N), p.attribute(QStringLiteral("type"))});
            });
            d.Messages.append(std::move(m));
        } else if (kind == u"portType") {
            d.PortTypeName = top.attribute(N);
            eachChild(top, u"operation", [&](const QDomElement& o) {
                const QString msg = QStringLiteral("message");
                d.Operations.append({o.attribute(N), firstChild(o, u"documentation").text(),
                                     firstChild(o, u"input").attribute(msg),
                                     firstChild(o, u"output").attribute(msg)});
            });
        } else if (kind == u"binding") {
            d.BindingName = top.attribute(N);
            d.BindingType = top.attribute(QStringLiteral("type"));
            const QDomElement sb = firstChild(top, u"binding");
            d.BindingStyle = sb.attribute(QStringLiteral("style"));
            d.BindingTransport = sb.attribute(QStringLiteral("transport"));
            eachChild(top, u"operation", [&](const QDomElement& o) {
                WsdlBindingOp b;
                b.name = o.attribute(N);
                const QDomElement so = firstChild(o, u"operation");
                b.soapAction = so.attribute(QStringLiteral("soapAction"));
                b.style = so.attribute(QStringLiteral("style"));
                readBodyUse(firstChild(o, u"input"), b.inUse, b.inNamespace, b.inEncodingStyle);
                readBodyUse(firstChild(o, u"output"), b.outUse, b.outNamespace, b.outEncodingStyle);
                d.BindingOps.append(std::move(b));
            });
        } else if (kind == u"service") {
            d.ServiceName = top.attribute(N);
            const QDomElement port = firstChild(top, u"port");
            d.PortName = port.attribute(N);
            d.PortBinding = port.attribute(QStringLiteral("binding"));
            d.Location = firstChild(port, u"address").attribute(QStringLiteral("location"));
        }
    }
    return true;
}

QString RRCommandName(int cmd) {
    static const char* const names[] = {"getTrsTalkgroups",
                                        "getTrsTalkgroupCats",
                                        "getTrsDetails",
                                        "getTrsBySysid",
                                        "getTrsSites",
                                        "getStatesByList",
                                        "getCountiesByList",
                                        "getTag",
                                        "getMode",
                                        "getTrsType",
                                        "getTrsFlavor",
                                        "getTrsVoice",
                                        "getCountryList",
                                        "getCountryInfo",
                                        "getStateInfo",
                                        "getCountyInfo",
                                        "getAgencyInfo",
                                        "getSubcatFreqs",
                                        "searchCountyFreq",
                                        "searchStateFreq",
                                        "searchMetroFreq",
                                        "getCountyFreqsByTag",
                                        "getAgencyFreqsByTag",
                                        "getMetroArea",
                                        "",
                                        "getZipcodeInfo",
                                        "fccGetCallsign",
                                        "fccGetRadioServiceCode",
                                        "fccGetProxCallsigns",
                                        "getUserData",
                                        "getUserFeedBroadcasts"};
    if (cmd < 0 || cmd >= int(std::size(names)))
        return {};
    return QString::fromLatin1(names[cmd]);
}

namespace {

// The leading number of a text, as a 16-bit value (0 when there is none).
qint16 leadingNumber(QStringView t) {
    t = t.trimmed();
    qsizetype n = 0;
    if (n < t.size() && (t[n] == u'-' || t[n] == u'+'))
        ++n;
    while (n < t.size() && t[n].isDigit())
        ++n;
    bool ok = false;
    const qint64 v = t.left(n).toLongLong(&ok);
    return ok ? qint16(std::clamp<qint64>(v, -32768, 32767)) : 0;
}

} // namespace

void BreakDownTV(const QString& key, qint16& c, qint16& s, qint16& d) {
    QStringView k(key);
    const auto take = [&](QChar letter, qint16& out, bool cut) {
        const qsizetype p = k.indexOf(letter);
        if (p < 0)
            return;
        out = leadingNumber(k.mid(p + 1));
        if (cut)
            k = k.left(p);
    };
    take(u'd', d, true);
    take(u's', s, true);
    take(u'c', c, false);
}

} // namespace kestrel
