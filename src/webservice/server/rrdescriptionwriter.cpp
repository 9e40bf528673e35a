// SPDX-License-Identifier: GPL-3.0-or-later
#include "rrdescriptionwriter.h"

#include <QXmlStreamWriter>

namespace kestrel {

namespace {

constexpr const char* kInt = "xsd:int";
constexpr const char* kDouble = "xsd:double";
constexpr const char* kString = "xsd:string";

constexpr RRParam pNone[1] = {{nullptr, nullptr}};
constexpr RRParam pSid[] = {{"sid", kInt}};
constexpr RRParam pTalkgroups[] = {
    {"sid", kInt}, {"tgCid", kInt}, {"tgTag", kInt}, {"tgDec", kInt}};
constexpr RRParam pSysid[] = {{"sysid", kString}};
constexpr RRParam pId[] = {{"id", kInt}};
constexpr RRParam pMode[] = {{"mode", kInt}};
constexpr RRParam pCoid[] = {{"coid", kInt}};
constexpr RRParam pStid[] = {{"stid", kInt}};
constexpr RRParam pCtid[] = {{"ctid", kInt}};
constexpr RRParam pAid[] = {{"aid", kInt}};
constexpr RRParam pScid[] = {{"scid", kInt}};
constexpr RRParam pCountySearch[] = {{"ctid", kInt}, {"freq", kDouble}, {"tone", kString}};
constexpr RRParam pStateSearch[] = {{"stid", kInt}, {"freq", kDouble}, {"tone", kString}};
constexpr RRParam pMetroSearch[] = {{"mid", kInt}, {"freq", kDouble}, {"tone", kString}};
constexpr RRParam pCountyTag[] = {{"ctid", kInt}, {"tag", kInt}};
constexpr RRParam pAgencyTag[] = {{"aid", kInt}, {"tag", kInt}};
constexpr RRParam pMid[] = {{"mid", kInt}};
constexpr RRParam pZip[] = {{"zipcode", kInt}};
constexpr RRParam pCallsign[] = {{"callsign", kString}};
constexpr RRParam pCode[] = {{"code", kString}};
constexpr RRParam pProx[] = {
    {"lat", kDouble}, {"lon", kDouble}, {"range", kDouble}, {"unit", kString}};

constexpr std::span<const RRParam> none(pNone, 0);

const RROperation kOperations[] = {
    {"getTrsTalkgroups", pTalkgroups, &kTypTalkgroup, true, true,
     "Returns the talkgroups of a trunked radio system. A talkgroup category id, a tag id or a "
     "decimal talkgroup id other than 0 narrows the list to the matching talkgroups."},
    {"getTrsTalkgroupCats", pSid, &kTypTgCat, true, true,
     "Returns the talkgroup categories of a trunked radio system with their names, sort order "
     "and coverage (latitude, longitude and range)."},
    {"getTrsDetails", pSid, &kTypTrsDetails, false, true,
     "Returns the details of a trunked radio system: name, type, flavor, voice, city, counties, "
     "states, country, coverage, system ids, band plan and fleet map."},
    {"getTrsBySysid", pSysid, &kTypTrsSummary, true, true,
     "Returns the trunked radio systems whose system id (hexadecimal) matches the one given; an "
     "unknown system id gives an empty list."},
    {"getTrsSites", pSid, &kTypSite, true, true,
     "Returns the sites of a trunked radio system with their numbers, zones, locations, "
     "modulation, licenses, site frequencies (logical channel number and use) and band plan."},
    {"getTag", pId, &kTypTag, true, true,
     "Returns a functional tag by id, or every tag when the id is 0. Tags describe the use of a "
     "frequency or talkgroup (law dispatch, fire dispatch, EMS, public works, ...)."},
    {"getMode", pMode, &kTypMode, true, true,
     "Returns a transmission mode by id, or every mode when the id is 0 (FM, FMN, AM, P25, ...)."},
    {"getTrsType", pId, &kTypTrsType, true, true,
     "Returns a trunked system type by id, or every type when the id is 0."},
    {"getTrsFlavor", pId, &kTypTrsFlavor, true, true,
     "Returns a trunked system flavor by id, or every flavor when the id is 0."},
    {"getTrsVoice", pId, &kTypTrsVoice, true, true,
     "Returns a trunked system voice type by id, or every voice type when the id is 0."},
    {"getCountryList", none, &kTypCountry, true, false,
     "Returns the list of countries with their ids, names and codes. Needs no login."},
    {"getCountryInfo", pCoid, &kTypState, true, true,
     "Returns the states, provinces or territories of a country with their ids, names and "
     "codes."},
    {"getStateInfo", pStid, &kTypStateInfo, false, true,
     "Returns a state with its entity type, its trunked radio systems, its statewide agencies "
     "and its counties."},
    {"getCountyInfo", pCtid, &kTypCountyInfo, false, true,
     "Returns a county with its coverage, FIPS code, conventional categories and "
     "subcategories, the trunked radio systems that serve it and its agencies."},
    {"getAgencyInfo", pAid, &kTypAgencyInfo, false, true,
     "Returns an agency with its type, county, state, coverage, categories and subcategories."},
    {"getSubcatFreqs", pScid, &kTypFreq, true, true,
     "Returns the conventional frequencies of a subcategory with output and input frequency in "
     "megahertz, call sign, description, alpha tag, tone, mode, class and tags."},
    {"searchCountyFreq", pCountySearch, &kTypSearchFreq, true, true,
     "Searches the conventional frequencies of a county for a frequency in megahertz (0: any) "
     "and a tone (empty: any)."},
    {"searchStateFreq", pStateSearch, &kTypSearchFreq, true, true,
     "Searches the conventional frequencies of a state's counties and agencies for a frequency "
     "in megahertz (0: any) and a tone (empty: any)."},
    {"searchMetroFreq", pMetroSearch, &kTypSearchFreq, true, true,
     "Searches the conventional frequencies of a metro area's counties for a frequency in "
     "megahertz (0: any) and a tone (empty: any)."},
    {"getCountyFreqsByTag", pCountyTag, &kTypFreq, true, true,
     "Returns the conventional frequencies of a county that carry a functional tag."},
    {"getAgencyFreqsByTag", pAgencyTag, &kTypFreq, true, true,
     "Returns the conventional frequencies of an agency that carry a functional tag."},
    {"getMetroArea", pMid, &kTypMetroArea, true, true,
     "Returns a metro area by id, or every metro area when the id is 0."},
    {"getZipcodeInfo", pZip, &kTypZipcode, false, true,
     "Returns the location, city, state and county of a postal zip code."},
    {"fccGetCallsign", pCallsign, &kTypFccCallsign, false, true,
     "Returns a licence by call sign: licensee, status, grant date, radio service, locations "
     "and frequencies."},
    {"fccGetRadioServiceCode", pCode, &kTypRadioService, true, true,
     "Returns a radio service code with its description, or every code when the code is empty."},
    {"fccGetProxCallsigns", pProx, &kTypProxCallsign, true, true,
     "Returns the call signs licensed within a range of a point; the unit is \"mi\" (miles) or "
     "\"km\" (kilometres)."},
    {"getUserData", none, &kTypUserData, false, true,
     "Returns the user name and the subscription expiry date of the logged-in user."},
    {"getUserFeedBroadcasts", none, &kTypFeed, true, true,
     "Returns the audio feeds the logged-in user broadcasts, with host, port, mount and "
     "password."},
};

const QString kEncodingStyle = QStringLiteral("http://schemas.xmlsoap.org/soap/encoding/");

class DescriptionWriter {
public:
    DescriptionWriter(QByteArray* out, bool classic) : m_w(out), m_classic(classic) {
        m_w.setAutoFormatting(true);
        m_w.setAutoFormattingIndent(1);
    }

    void write(const QString& location) {
        const QString ns = QString::fromLatin1(kRRServiceNamespace);
        m_w.writeStartDocument();
        m_w.writeStartElement(QStringLiteral("definitions"));
        const std::pair<const char*, QString> decls[] = {
            {"xmlns:SOAP-ENV", QString::fromLatin1(soap::kEnvelopeNS)},
            {"xmlns:xsd", QString::fromLatin1(soap::kXsdNS)},
            {"xmlns:xsi", QString::fromLatin1(soap::kXsiNS)},
            {"xmlns:SOAP-ENC", kEncodingStyle},
            {"xmlns:tns", ns},
            {"xmlns:soap", QStringLiteral("http://schemas.xmlsoap.org/wsdl/soap/")},
            {"xmlns:wsdl", QStringLiteral("http://schemas.xmlsoap.org/wsdl/")},
            {"xmlns", QStringLiteral("http://schemas.xmlsoap.org/wsdl/")},
            {"targetNamespace", ns}};
        for (const auto& [name, value] : decls)
            m_w.writeAttribute(QString::fromLatin1(name), value);

        writeTypes(ns);
        writeMessages();
        writePortType();
        writeBinding(ns);

        m_w.writeStartElement(QStringLiteral("service"));
        m_w.writeAttribute(QStringLiteral("name"), QStringLiteral("RRWebService"));
        m_w.writeStartElement(QStringLiteral("port"));
        m_w.writeAttribute(QStringLiteral("name"), QStringLiteral("RRWebServicePort"));
        m_w.writeAttribute(QStringLiteral("binding"), QStringLiteral("tns:RRWebServiceBinding"));
        m_w.writeEmptyElement(QStringLiteral("soap:address"));
        m_w.writeAttribute(QStringLiteral("location"), location);
        m_w.writeEndDocument();
    }

private:
    QString fieldName(const RecordType& type, const FieldDef& f) const {
        if (m_classic && &type == &kTypSite && qstrcmp(f.name, "siteFreqs") == 0)
            return QStringLiteral("siteFeqs");
        return QString::fromLatin1(f.name);
    }

    // The type a struct field is declared with: scalars by xsd type, lists by their array type.
    static QString fieldType(const FieldDef& f) {
        switch (f.kind) {
        case FieldKind::RecordList:
            return QStringLiteral("tns:") + RRArrayTypeName(*f.element);
        case FieldKind::IntList:
        case FieldKind::StringList:
            return QStringLiteral("tns:") + f.itemTypeName() + QStringLiteral("Array");
        default:
            return f.xsdType();
        }
    }

    void writeStruct(const QString& name, const QList<std::pair<QString, QString>>& elements) {
        m_w.writeStartElement(QStringLiteral("xsd:complexType"));
        m_w.writeAttribute(QStringLiteral("name"), name);
        m_w.writeStartElement(QStringLiteral("xsd:all"));
        for (const auto& [element, type] : elements) {
            m_w.writeEmptyElement(QStringLiteral("xsd:element"));
            m_w.writeAttribute(QStringLiteral("name"), element);
            m_w.writeAttribute(QStringLiteral("type"), type);
        }
        m_w.writeEndElement();
        m_w.writeEndElement();
    }

    void writeArray(const QString& name, const QString& itemType) {
        m_w.writeStartElement(QStringLiteral("xsd:complexType"));
        m_w.writeAttribute(QStringLiteral("name"), name);
        m_w.writeStartElement(QStringLiteral("xsd:complexContent"));
        m_w.writeStartElement(QStringLiteral("xsd:restriction"));
        m_w.writeAttribute(QStringLiteral("base"), QStringLiteral("SOAP-ENC:Array"));
        m_w.writeEmptyElement(QStringLiteral("xsd:attribute"));
        m_w.writeAttribute(QStringLiteral("ref"), QStringLiteral("SOAP-ENC:arrayType"));
        m_w.writeAttribute(QStringLiteral("wsdl:arrayType"), itemType + QStringLiteral("[]"));
        m_w.writeEndElement();
        m_w.writeEndElement();
        m_w.writeEndElement();
    }

    void writeTypes(const QString& ns) {
        m_w.writeStartElement(QStringLiteral("types"));
        m_w.writeStartElement(QStringLiteral("xsd:schema"));
        m_w.writeAttribute(QStringLiteral("targetNamespace"), ns);
        for (const QString& import :
             {kEncodingStyle, QStringLiteral("http://schemas.xmlsoap.org/wsdl/")}) {
            m_w.writeEmptyElement(QStringLiteral("xsd:import"));
            m_w.writeAttribute(QStringLiteral("namespace"), import);
        }
        writeStruct(QStringLiteral("authInfo"), {{QStringLiteral("username"), soap::kXsdString},
                                                 {QStringLiteral("password"), soap::kXsdString},
                                                 {QStringLiteral("appKey"), soap::kXsdString},
                                                 {QStringLiteral("version"), soap::kXsdString},
                                                 {QStringLiteral("style"), soap::kXsdString}});
        for (const RecordType* type : AllRecordTypes()) {
            QList<std::pair<QString, QString>> elements;
            for (const FieldDef& f : type->fields) {
                elements.append({fieldName(*type, f), fieldType(f)});
                // Lists of one value: the item struct and its array, declared beside the owner.
                if (f.kind == FieldKind::IntList || f.kind == FieldKind::StringList) {
                    const QString item = f.itemTypeName();
                    writeStruct(
                        item, {{QString::fromLatin1(f.itemField),
                                f.kind == FieldKind::IntList ? soap::kXsdInt : soap::kXsdString}});
                    writeArray(item + QStringLiteral("Array"), QStringLiteral("tns:") + item);
                }
            }
            writeStruct(QString::fromLatin1(type->xsdName), elements);
            if (type->listSize)
                writeArray(RRArrayTypeName(*type),
                           QStringLiteral("tns:") + QString::fromLatin1(type->xsdName));
        }
        m_w.writeEndElement();
        m_w.writeEndElement();
    }

    void writeMessages() {
        for (const RROperation& op : kOperations) {
            const QString name = QString::fromLatin1(op.name);
            m_w.writeStartElement(QStringLiteral("message"));
            m_w.writeAttribute(QStringLiteral("name"), name + QStringLiteral("Request"));
            for (const RRParam& p : op.params)
                writePart(QString::fromLatin1(p.name), QString::fromLatin1(p.xsdType));
            if (op.needsLogin)
                writePart(QStringLiteral("authInfo"), QStringLiteral("tns:authInfo"));
            m_w.writeEndElement();
            m_w.writeStartElement(QStringLiteral("message"));
            m_w.writeAttribute(QStringLiteral("name"), name + QStringLiteral("Response"));
            const QString result =
                op.list ? RRArrayTypeName(*op.result) : QString::fromLatin1(op.result->xsdName);
            writePart(QStringLiteral("return"), QStringLiteral("tns:") + result);
            m_w.writeEndElement();
        }
    }

    void writePart(const QString& name, const QString& type) {
        m_w.writeEmptyElement(QStringLiteral("part"));
        m_w.writeAttribute(QStringLiteral("name"), name);
        m_w.writeAttribute(QStringLiteral("type"), type);
    }

    void writePortType() {
        m_w.writeStartElement(QStringLiteral("portType"));
        m_w.writeAttribute(QStringLiteral("name"), QStringLiteral("RRWebServicePortType"));
        for (const RROperation& op : kOperations) {
            const QString name = QString::fromLatin1(op.name);
            m_w.writeStartElement(QStringLiteral("operation"));
            m_w.writeAttribute(QStringLiteral("name"), name);
            m_w.writeTextElement(QStringLiteral("documentation"),
                                 QString::fromLatin1(op.documentation));
            m_w.writeEmptyElement(QStringLiteral("input"));
            m_w.writeAttribute(QStringLiteral("message"),
                               QStringLiteral("tns:") + name + QStringLiteral("Request"));
            m_w.writeEmptyElement(QStringLiteral("output"));
            m_w.writeAttribute(QStringLiteral("message"),
                               QStringLiteral("tns:") + name + QStringLiteral("Response"));
            m_w.writeEndElement();
        }
        m_w.writeEndElement();
    }

    void writeBody(const QString& direction, const QString& ns) {
        m_w.writeStartElement(direction);
        m_w.writeEmptyElement(QStringLiteral("soap:body"));
        m_w.writeAttribute(QStringLiteral("use"), QStringLiteral("encoded"));
        m_w.writeAttribute(QStringLiteral("namespace"), ns);
        m_w.writeAttribute(QStringLiteral("encodingStyle"), kEncodingStyle);
        m_w.writeEndElement();
    }

    void writeBinding(const QString& ns) {
        m_w.writeStartElement(QStringLiteral("binding"));
        m_w.writeAttribute(QStringLiteral("name"), QStringLiteral("RRWebServiceBinding"));
        m_w.writeAttribute(QStringLiteral("type"), QStringLiteral("tns:RRWebServicePortType"));
        m_w.writeEmptyElement(QStringLiteral("soap:binding"));
        m_w.writeAttribute(QStringLiteral("style"), QStringLiteral("rpc"));
        m_w.writeAttribute(QStringLiteral("transport"),
                           QStringLiteral("http://schemas.xmlsoap.org/soap/http"));
        for (const RROperation& op : kOperations) {
            const QString name = QString::fromLatin1(op.name);
            m_w.writeStartElement(QStringLiteral("operation"));
            m_w.writeAttribute(QStringLiteral("name"), name);
            m_w.writeEmptyElement(QStringLiteral("soap:operation"));
            m_w.writeAttribute(QStringLiteral("soapAction"), ns + QStringLiteral("#") + name);
            m_w.writeAttribute(QStringLiteral("style"), QStringLiteral("rpc"));
            writeBody(QStringLiteral("input"), ns);
            writeBody(QStringLiteral("output"), ns);
            m_w.writeEndElement();
        }
        m_w.writeEndElement();
    }

    QXmlStreamWriter m_w;
    bool m_classic;
};

} // namespace

std::span<const RROperation> RROperations() {
    return kOperations;
}

const RROperation* FindRROperation(QStringView name) {
    for (const RROperation& op : kOperations)
        if (name == QLatin1StringView(op.name))
            return &op;
    return nullptr;
}

QString RRArrayTypeName(const RecordType& type) {
    return QString::fromLatin1(type.xsdName) + QStringLiteral("Array");
}

QByteArray RRServiceDescription(const QString& location, bool classic) {
    QByteArray out;
    DescriptionWriter(&out, classic).write(location);
    return out;
}

} // namespace kestrel
