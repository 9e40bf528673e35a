// SPDX-License-Identifier: GPL-3.0-or-later
// The records the frequency database's queries return (TypTag, TypFreq, TypSite, ...), and one
// field table per record type that maps the service's element names to the members, both ways.
//
// How to walk the tables: `RecordTraits<TypX>::type()` (or `recordType<TypX>()`) gives the
// `RecordType` of a record: its name, its xsd complex-type name, and `fields`, the fields in the
// order the service sends them. Each `FieldDef` has the element name (`name`), the member's
// name (`member`, differing only where the element name is a C++ keyword: `class` -> `class_`),
// its `kind`, its xsd type (`xsdType()`), and for lists the element record type (`element`) or,
// for lists of one-field structs, the item field name (`itemField`). `field.at(rec)` gives the
// member's address inside a record passed as void*; a `RecordType` also knows how to size, grow
// and index a QList of its records (`listSize`, `listAppend`, `listAt`, `listClear`).
// `ReadRecord` / `ReadRecordList` map a reply struct / array into records; `WriteRecord` /
// `WriteRecordList` turn records into SOAP values. A field absent from the struct keeps its value.
//
// Frequencies: `out`, `in` (TypFreq, TypSearchFreq) and `freq` (TypSiteFreq) are kept as the
// service sent them, megahertz ("154.815") or hertz; `FreqToHertz` converts (below 100,000 is
// megahertz). The importer converts when it makes channels.
#pragma once

#include "soapenvelope.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <span>

namespace kestrel {

struct TypTag {
    qint32 tagId = 0;
    QString tagDescr;
};

struct TypBandplan {
    QString base;
    QString spacing;
    QString offset; // an empty offset is stored as "0"
};

struct TypTrsSummary {
    qint32 sid = 0;
    QString sName;
    qint32 sType = 0;
    qint32 sFlavor = 0;
    qint32 sVoice = 0;
    QString sCity;
    QString lastUpdated;
};

struct TypAgencySummary {
    qint32 aid = 0;
    QString aName;
    qint32 aType = 0;
};

struct TypCountySummary {
    qint32 ctid = 0;
    QString countyName;
    QString countyHeader;
};

struct TypSubcat {
    qint32 scid = 0;
    QString scName;
    double lat = 0;
    double lon = 0;
    double range = 0;
};

struct TypCat {
    qint32 cid = 0;
    QString cName;
    QList<TypSubcat> subcats;
};

struct TypFreq {
    qint32 fid = 0;
    double out = 0; // as sent: megahertz or hertz (FreqToHertz)
    double in = 0;
    QString callsign;
    QString descr;
    QString alpha;
    QString tone;
    QString mode;
    QString class_; // element "class"
    QList<TypTag> tags;
    qint32 sort = 0;
    QString lastUpdated;
};

struct TypSearchFreq {
    double out = 0;
    double in = 0;
    QString callsign;
    QString descr;
    QString alpha;
    QString tone;
    QString mode;
    QString class_;
    QList<TypTag> tags;
    qint32 scid = 0;
    qint32 sid = 0;
    qint32 aid = 0;
    qint32 ctid = 0;
};

struct TypTalkgroup {
    qint32 tgId = 0;
    qint32 tgDec = 0;
    QString tgSubfleet;
    bool tgLtr = false;
    QString tgDescr;
    QString tgAlpha;
    QString tgMode;
    QList<TypTag> tags;
    qint32 tgCid = 0;
    qint32 tgSort = 0;
    QString tgDate;
};

struct TypTgCat {
    qint32 tgCid = 0;
    qint32 sid = 0;
    QString tgCname;
    qint32 tgSort = 0;
    qint32 tgSortBy = 0;
    double lat = 0;
    double lon = 0;
    double range = 0;
    QString lastUpdated;
    // Filled by getTrsTalkgroups, not part of the category reply (not in the field table).
    QList<TypTalkgroup> Talkgroups;
    qint16 TalkgroupCnt() const { return qint16(Talkgroups.size()); }
};

struct TypSysid {
    QString sysid;
    QString wacn;
    QString ct;
};

struct TypTrsDetails {
    QString sName;
    qint32 sType = 0;
    qint32 sFlavor = 0;
    qint32 sVoice = 0;
    QString sCity;
    QList<qint32> sCounty; // items are structs with one field "ctid"
    QList<qint32> sState;  // items with one field "stid"
    QString sCountry;
    double lat = 0;
    double lon = 0;
    double range = 0;
    QString lastUpdated;
    QList<TypSysid> sysid;
    QList<TypBandplan> bandplan;
    bool fleetmap = false; // true when the reply's "fleetmap" struct was there (b0..b7 read)
    QString b0, b1, b2, b3, b4, b5, b6, b7;
};

struct TypSiteFreq {
    qint32 lcn = 0;
    QString freq; // as sent: megahertz or hertz (FreqToHertz)
    QString use;
};

struct TypSite {
    qint32 siteId = 0;
    qint32 sid = 0;
    qint32 siteNumber = 0;
    QString siteDescr;
    qint32 zoneNumber = 0;
    QString zoneDescr;
    QString siteNeighbors;
    QString siteLocation;
    qint32 siteCtid = 0;
    QString siteCt;
    QString siteModulation;
    QString siteNotes;
    double lat = 0;
    double lon = 0;
    double range = 0;
    qint16 rebanded = 0;
    qint16 splinter = 0;
    QStringList siteLicenses; // items with one field "license"
    QList<TypSiteFreq> siteFreqs;
    QList<TypBandplan> bandplan;
};

struct TypMode {
    qint32 mode = 0;
    QString modeName;
};

struct TypTrsType {
    qint32 sType = 0;
    QString sTypeDescr;
};

struct TypTrsFlavor {
    qint32 sType = 0;
    qint32 sFlavor = 0;
    QString sFlavorDescr;
};

struct TypTrsVoice {
    qint32 sType = 0;
    qint32 sVoice = 0;
    QString sVoiceDescr;
};

struct TypCountry {
    qint32 coid = 0;
    QString countryName;
    QString countryCode;
};

struct TypState {
    qint32 stid = 0;
    QString stateName;
    QString stateCode;
};

struct TypStateInfo {
    qint32 stid = 0;
    QString stateName;
    QString stateEntityType;
    QList<TypTrsSummary> trsList;
    QList<TypAgencySummary> agencyList;
    QList<TypCountySummary> countyList;
};

struct TypCountyInfo {
    qint32 ctid = 0;
    QString countyName;
    QString countyHeader;
    qint32 stid = 0;
    double lat = 0;
    double lon = 0;
    double range = 0;
    QString fips;
    QString lastUpdated;
    QList<TypCat> cats;
    QList<TypTrsSummary> trsList;
    QList<TypAgencySummary> agencyList;
};

struct TypAgencyInfo {
    qint32 aid = 0;
    QString agencyName;
    QString agencyType;
    qint32 ctid = 0;
    qint32 stid = 0;
    double lat = 0;
    double lon = 0;
    double range = 0;
    QString lastUpdated;
    QList<TypCat> cats;
};

struct TypMetroArea {
    qint32 mid = 0;
    QString metroName;
};

struct TypZipcode {
    qint32 zipCode = 0;
    double lat = 0;
    double lon = 0;
    QString city;
    qint32 stid = 0;
    qint32 ctid = 0;
};

struct TypFccLocation {
    qint32 locationNumber = 0;
    qint32 towerId = 0;
    QString type;
    double antennaHeight = 0;
    double structureHeight = 0;
    double elevation = 0;
    QString address;
    double lat = 0;
    double lon = 0;
    QString city;
    QString county;
    QString State;
};

struct TypFccFreq {
    qint32 locationNumber = 0;
    double frequency = 0;
    QString emission;
    QString class_; // element "class"
    double power = 0;
    qint32 mobiles = 0;
    qint32 pagers = 0;
};

struct TypFccCallsign {
    QString licensee;
    QString callsign;
    QString status;
    QString grantDate;
    QString radioService;
    QString notes;
    QList<TypFccLocation> locations;
    QList<TypFccFreq> frequencies;
};

struct TypRadioService {
    QString code;
    QString description;
};

struct TypProxCallsign {
    QString callsign;
    double lat = 0;
    double lon = 0;
    double distance = 0;
    QString licensee;
};

struct TypUserData {
    QString username;
    QString subExpireDate;
};

struct TypFeed {
    qint32 feedId = 0;
    QString descr;
    QString hostname;
    QString port;
    QString mount;
    QString password;
};

// ---- field tables ---------------------------------------------------------------------------

enum class FieldKind {
    Int,        // qint32, xsd:int
    Short,      // qint16, xsd:int
    Double,     // double, xsd:double
    String,     // QString, xsd:string
    Boolean,    // bool, xsd:boolean
    RecordList, // QList<element record>, SOAP-ENC:Array of tns:<element->xsdName>
    IntList,    // QList<qint32>, array of one-field structs {itemField: xsd:int}
    StringList, // QStringList, array of one-field structs {itemField: xsd:string}
    Group,      // a struct on the wire whose fields (element's table) live in this record; the
                // member is a bool telling whether the struct came (nil or absent: false)
};

struct RecordType;

struct FieldDef {
    const char* name;   // element name on the wire
    const char* member; // member name in the record
    FieldKind kind;
    void* (*access)(void* record);       // address of the member
    const RecordType* element = nullptr; // RecordList, Group
    const char* itemField = nullptr;     // IntList, StringList: the items' field name
    const char* emptyAs = nullptr;       // String: stored instead of an empty text

    void* at(void* record) const { return access(record); }
    const void* at(const void* record) const { return access(const_cast<void*>(record)); }
    // "xsd:int", "xsd:double", "xsd:string", "xsd:boolean", or "SOAP-ENC:Array" for lists and
    // "tns:" + element->xsdName for a Group.
    QString xsdType() const;
    // Lists: the item type ("tns:Tag", or for IntList/StringList the one-field item struct's
    // name, see itemTypeName()).
    QString itemType() const;
    // IntList/StringList: the name of the one-field item struct ("sCountyItem").
    QString itemTypeName() const;
};

struct RecordType {
    const char* name;    // "TypTag"
    const char* xsdName; // complex type name in the service description ("Tag")
    std::span<const FieldDef> fields;
    // Operations on a QList of this record, passed as void*.
    qsizetype (*listSize)(const void* list);
    void* (*listAppend)(void* list); // appends a default record, returns it
    void* (*listAt)(void* list, qsizetype i);
    void (*listClear)(void* list);

    const FieldDef* field(QStringView fieldName) const;
};

template <class T> struct RecordTraits; // RecordTraits<TypTag>::type() -> const RecordType&

#define KESTREL_RECORD(T)                                                                          \
    extern const RecordType k##T;                                                                  \
    template <> struct RecordTraits<T> {                                                           \
        static const RecordType& type() { return k##T; }                                           \
    };
KESTREL_RECORD(TypTag)
KESTREL_RECORD(TypBandplan)
KESTREL_RECORD(TypTrsSummary)
KESTREL_RECORD(TypAgencySummary)
KESTREL_RECORD(TypCountySummary)
KESTREL_RECORD(TypSubcat)
KESTREL_RECORD(TypCat)
KESTREL_RECORD(TypFreq)
KESTREL_RECORD(TypSearchFreq)
KESTREL_RECORD(TypTalkgroup)
KESTREL_RECORD(TypTgCat)
KESTREL_RECORD(TypSysid)
KESTREL_RECORD(TypTrsDetails)
KESTREL_RECORD(TypSiteFreq)
KESTREL_RECORD(TypSite)
KESTREL_RECORD(TypMode)
KESTREL_RECORD(TypTrsType)
KESTREL_RECORD(TypTrsFlavor)
KESTREL_RECORD(TypTrsVoice)
KESTREL_RECORD(TypCountry)
KESTREL_RECORD(TypState)
KESTREL_RECORD(TypStateInfo)
KESTREL_RECORD(TypCountyInfo)
KESTREL_RECORD(TypAgencyInfo)
KESTREL_RECORD(TypMetroArea)
KESTREL_RECORD(TypZipcode)
KESTREL_RECORD(TypFccLocation)
KESTREL_RECORD(TypFccFreq)
KESTREL_RECORD(TypFccCallsign)
KESTREL_RECORD(TypRadioService)
KESTREL_RECORD(TypProxCallsign)
KESTREL_RECORD(TypUserData)
KESTREL_RECORD(TypFeed)
#undef KESTREL_RECORD

// The fleet-map block of TypTrsDetails (b0..b7 on the wire inside "fleetmap").
extern const RecordType kTypFleetmap;

template <class T> const RecordType& recordType() {
    return RecordTraits<T>::type();
}

// Every record type, nested ones included, in a fixed order (for generating a description).
std::span<const RecordType* const> AllRecordTypes();

// ---- mapping --------------------------------------------------------------------------------

// Reads a struct value into a record: every field of the table present in the struct is
// converted to its member's type; absent fields keep their value. Lists present in the struct
// are replaced (nil or a non-array: emptied). Numbers that do not parse become 0.
void ReadRecord(const RecordType& type, void* record, const soap::SoapValue& structValue);
// Reads an array of structs into a list of records (replacing it); returns the item count.
qsizetype ReadRecordList(const RecordType& type, void* list, const soap::SoapValue& arrayValue);

// Writes a record as a struct value named `name` with xsi:type "tns:" + xsdName.
soap::SoapValue WriteRecord(const RecordType& type, const void* record, const QString& name);
// Writes a list of records as an array named `name` of "tns:" + xsdName items.
soap::SoapValue WriteRecordList(const RecordType& type, const void* list, const QString& name);

template <class T> void ReadRecord(const soap::SoapValue& v, T& record) {
    ReadRecord(recordType<T>(), &record, v);
}
template <class T> qsizetype ReadRecordList(const soap::SoapValue& v, QList<T>& list) {
    return ReadRecordList(recordType<T>(), &list, v);
}
template <class T> soap::SoapValue WriteRecord(const T& record, const QString& name) {
    return WriteRecord(recordType<T>(), &record, name);
}
template <class T> soap::SoapValue WriteRecordList(const QList<T>& list, const QString& name) {
    return WriteRecordList(recordType<T>(), &list, name);
}

// A record frequency in hertz: values below 100,000 are megahertz. Rounded to whole hertz.
double FreqToHertz(double value);
double FreqToHertz(const QString& text);

} // namespace kestrel
