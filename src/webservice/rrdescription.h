// SPDX-License-Identifier: GPL-3.0-or-later
// The tables read from the web service's description (WSDL): namespaces, schema types,
// messages, port-type operations, binding operations and the service address; the parser that
// fills them; the command table of the operations the program uses; and two small text
// routines of the import tree.
#pragma once

#include <QDomDocument>
#include <QList>
#include <QString>
#include <QStringList>

namespace kestrel {

struct WsdlElement {
    QString name;
    QString type;
};

struct WsdlType {
    QString name;
    QList<WsdlElement> elements;
    QString base;      // complexContent restriction base ("SOAP-ENC:Array")
    QString ref;       // attribute ref ("SOAP-ENC:arrayType")
    QString arrayType; // wsdl:arrayType ("tns:Tag[]")
};

struct WsdlPart {
    QString name;
    QString type;
};

struct WsdlMessage {
    QString name;
    QList<WsdlPart> Parts;
    qint16 PartCnt() const { return qint16(Parts.size()); }
};

struct WsdlOperation {
    QString name;
    QString documentation;
    QString input; // message reference as written, prefix included ("tns:getTagRequest")
    QString output;
};

struct WsdlBindingOp {
    QString name;
    QString soapAction;
    QString style;
    QString inUse, inNamespace, inEncodingStyle;
    QString outUse, outNamespace, outEncodingStyle;
};

struct SoapDescription {
    // Definitions (root attributes; empty when absent).
    QString TargetNS;
    QString xmlns, xmlnsSoap, xmlnsSoapEnc, xmlnsSoapEnv, xmlnsWsdl, xmlnsTns, xmlnsXsi;
    // Schema.
    QString SchemaNS;
    QStringList Imports;
    QList<WsdlType> Types;
    QList<WsdlMessage> Messages;
    // Port type.
    QString PortTypeName;
    QList<WsdlOperation> Operations;
    // Binding.
    QString BindingName, BindingType, BindingStyle, BindingTransport;
    QList<WsdlBindingOp> BindingOps;
    // Service.
    QString ServiceName, PortName, PortBinding, Location;
};

// Parses a description into `out` (emptied first) and keeps the document in `doc`. False when the
// text is not XML (tables stay empty), is larger than the reply limit, or carries a document
// type declaration. Element and attribute names are matched by their local part, so any
// prefixes are accepted; paths are searched inside each top-level element only.
bool ParseDescription(const QString& text, SoapDescription& out, QDomDocument& doc);

// The operations, by the numbers the program knows them by.
enum class RRCommands : qint16 {
    getTrsTalkgroups = 0,
    getTrsTalkgroupCats = 1,
    getTrsDetails = 2,
    getTrsBySysid = 3,
    getTrsSites = 4,
    getStatesByList = 5,
    getCountiesByList = 6,
    getTag = 7,
    getMode = 8,
    getTrsType = 9,
    getTrsFlavor = 10,
    getTrsVoice = 11,
    getCountryList = 12,
    getCountryInfo = 13,
    getStateInfo = 14,
    getCountyInfo = 15,
    getAgencyInfo = 16,
    getSubcatFreqs = 17,
    searchCountyFreq = 18,
    searchStateFreq = 19,
    searchMetroFreq = 20,
    getCountyFreqsByTag = 21,
    getAgencyFreqsByTag = 22,
    getMetroArea = 23,
    // 24 has no operation
    getZipcodeInfo = 25,
    fccGetCallsign = 26,
    fccGetRadioServiceCode = 27,
    fccGetProxCallsigns = 28,
    getUserData = 29,
    getUserFeedBroadcasts = 30,
};
// The operation name of a command; empty for 24 and for values outside 0-30.
QString RRCommandName(int cmd);
inline QString RRCommandName(RRCommands cmd) {
    return RRCommandName(int(cmd));
}

// Splits a tree key "c3s12d4" into its numbers, read from the right; a letter that is absent
// leaves its number unchanged.
void BreakDownTV(const QString& key, qint16& c, qint16& s, qint16& d);

} // namespace kestrel
