// SPDX-License-Identifier: GPL-3.0-or-later
#include "rrrecords.h"

#include <cmath>

namespace kestrel {

using soap::SoapValue;

namespace {

template <class T> qsizetype listSize(const void* l) {
    return static_cast<const QList<T>*>(l)->size();
}
template <class T> void* listAppend(void* l) {
    auto* list = static_cast<QList<T>*>(l);
    list->append(T{});
    return &list->last();
}
template <class T> void* listAt(void* l, qsizetype i) {
    return &(*static_cast<QList<T>*>(l))[i];
}
template <class T> void listClear(void* l) {
    static_cast<QList<T>*>(l)->clear();
}

template <class T, std::size_t N>
constexpr RecordType makeType(const char* name, const char* xsdName, const FieldDef (&f)[N]) {
    return RecordType{name,         xsdName,        std::span<const FieldDef>(f, N),
                      &listSize<T>, &listAppend<T>, &listAt<T>,
                      &listClear<T>};
}

} // namespace

// One line a field: element name, member, kind; lists name their element record type.
#define ACC(T, m) [](void* r) -> void* { return &static_cast<T*>(r)->m; }
#define F(T, m, K)                                                                                 \
    FieldDef {                                                                                     \
#m, #m, FieldKind::K, ACC(T, m)                                                            \
    }
#define FW(T, wire, m, K)                                                                          \
    FieldDef {                                                                                     \
        wire, #m, FieldKind::K, ACC(T, m)                                                          \
    }
#define FL(T, m, E)                                                                                \
    FieldDef {                                                                                     \
#m, #m, FieldKind::RecordList, ACC(T, m), &k##E                                            \
    }
#define FI(T, m, item)                                                                             \
    FieldDef {                                                                                     \
#m, #m, FieldKind::IntList, ACC(T, m), nullptr, item                                       \
    }
#define FS(T, m, item)                                                                             \
    FieldDef {                                                                                     \
#m, #m, FieldKind::StringList, ACC(T, m), nullptr, item                                    \
    }

namespace {
const FieldDef fTag[] = {F(TypTag, tagId, Int), F(TypTag, tagDescr, String)};
const FieldDef fBandplan[] = {F(TypBandplan, base, String), F(TypBandplan, spacing, String),
                              FieldDef{"offset", "offset", FieldKind::String,
                                       ACC(TypBandplan, offset), nullptr, nullptr, "0"}};
const FieldDef fTrsSummary[] = {
    F(TypTrsSummary, sid, Int),           F(TypTrsSummary, sName, String),
    F(TypTrsSummary, sType, Int),         F(TypTrsSummary, sFlavor, Int),
    F(TypTrsSummary, sVoice, Int),        F(TypTrsSummary, sCity, String),
    F(TypTrsSummary, lastUpdated, String)};
const FieldDef fAgencySummary[] = {F(TypAgencySummary, aid, Int),
                                   F(TypAgencySummary, aName, String),
                                   F(TypAgencySummary, aType, Int)};
const FieldDef fCountySummary[] = {F(TypCountySummary, ctid, Int),
                                   F(TypCountySummary, countyName, String),
                                   F(TypCountySummary, countyHeader, String)};
const FieldDef fSubcat[] = {F(TypSubcat, scid, Int), F(TypSubcat, scName, String),
                            F(TypSubcat, lat, Double), F(TypSubcat, lon, Double),
                            F(TypSubcat, range, Double)};
const FieldDef fCat[] = {F(TypCat, cid, Int), F(TypCat, cName, String),
                         FL(TypCat, subcats, TypSubcat)};
const FieldDef fFreq[] = {
    F(TypFreq, fid, Int),         F(TypFreq, out, Double),   F(TypFreq, in, Double),
    F(TypFreq, callsign, String), F(TypFreq, descr, String), F(TypFreq, alpha, String),
    F(TypFreq, tone, String),     F(TypFreq, mode, String),  FW(TypFreq, "class", class_, String),
    FL(TypFreq, tags, TypTag),    F(TypFreq, sort, Int),     F(TypFreq, lastUpdated, String)};
const FieldDef fSearchFreq[] = {
    F(TypSearchFreq, out, Double),      F(TypSearchFreq, in, Double),
    F(TypSearchFreq, callsign, String), F(TypSearchFreq, descr, String),
    F(TypSearchFreq, alpha, String),    F(TypSearchFreq, tone, String),
    F(TypSearchFreq, mode, String),     FW(TypSearchFreq, "class", class_, String),
    FL(TypSearchFreq, tags, TypTag),    F(TypSearchFreq, scid, Int),
    F(TypSearchFreq, sid, Int),         F(TypSearchFreq, aid, Int),
    F(TypSearchFreq, ctid, Int)};
const FieldDef fTalkgroup[] = {
    F(TypTalkgroup, tgId, Int),          F(TypTalkgroup, tgDec, Int),
    F(TypTalkgroup, tgSubfleet, String), F(TypTalkgroup, tgLtr, Boolean),
    F(TypTalkgroup, tgDescr, String),    F(TypTalkgroup, tgAlpha, String),
    F(TypTalkgroup, tgMode, String),     FL(TypTalkgroup, tags, TypTag),
    F(TypTalkgroup, tgCid, Int),         F(TypTalkgroup, tgSort, Int),
    F(TypTalkgroup, tgDate, String)};
const FieldDef fTgCat[] = {
    F(TypTgCat, tgCid, Int),  F(TypTgCat, sid, Int),      F(TypTgCat, tgCname, String),
    F(TypTgCat, tgSort, Int), F(TypTgCat, tgSortBy, Int), F(TypTgCat, lat, Double),
    F(TypTgCat, lon, Double), F(TypTgCat, range, Double), F(TypTgCat, lastUpdated, String)};
const FieldDef fSysid[] = {F(TypSysid, sysid, String), F(TypSysid, wacn, String),
                           F(TypSysid, ct, String)};
struct FleetmapTag {};
const FieldDef fFleetmap[] = {F(TypTrsDetails, b0, String), F(TypTrsDetails, b1, String),
                              F(TypTrsDetails, b2, String), F(TypTrsDetails, b3, String),
                              F(TypTrsDetails, b4, String), F(TypTrsDetails, b5, String),
                              F(TypTrsDetails, b6, String), F(TypTrsDetails, b7, String)};
const FieldDef fTrsDetails[] = {F(TypTrsDetails, sName, String),
                                F(TypTrsDetails, sType, Int),
                                F(TypTrsDetails, sFlavor, Int),
                                F(TypTrsDetails, sVoice, Int),
                                F(TypTrsDetails, sCity, String),
                                FI(TypTrsDetails, sCounty, "ctid"),
                                FI(TypTrsDetails, sState, "stid"),
                                F(TypTrsDetails, sCountry, String),
                                F(TypTrsDetails, lat, Double),
                                F(TypTrsDetails, lon, Double),
                                F(TypTrsDetails, range, Double),
                                F(TypTrsDetails, lastUpdated, String),
                                FL(TypTrsDetails, sysid, TypSysid),
                                FL(TypTrsDetails, bandplan, TypBandplan),
                                FieldDef{"fleetmap", "fleetmap", FieldKind::Group,
                                         ACC(TypTrsDetails, fleetmap), &kTypFleetmap}};
const FieldDef fSiteFreq[] = {F(TypSiteFreq, lcn, Int), F(TypSiteFreq, freq, String),
                              F(TypSiteFreq, use, String)};
const FieldDef fSite[] = {F(TypSite, siteId, Int),
                          F(TypSite, sid, Int),
                          F(TypSite, siteNumber, Int),
                          F(TypSite, siteDescr, String),
                          F(TypSite, zoneNumber, Int),
                          F(TypSite, zoneDescr, String),
                          F(TypSite, siteNeighbors, String),
                          F(TypSite, siteLocation, String),
                          F(TypSite, siteCtid, Int),
                          F(TypSite, siteCt, String),
                          F(TypSite, siteModulation, String),
                          F(TypSite, siteNotes, String),
                          F(TypSite, lat, Double),
                          F(TypSite, lon, Double),
                          F(TypSite, range, Double),
                          F(TypSite, rebanded, Short),
                          F(TypSite, splinter, Short),
                          FS(TypSite, siteLicenses, "license"),
                          FL(TypSite, siteFreqs, TypSiteFreq),
                          FL(TypSite, bandplan, TypBandplan)};
const FieldDef fMode[] = {F(TypMode, mode, Int), F(TypMode, modeName, String)};
const FieldDef fTrsType[] = {F(TypTrsType, sType, Int), F(TypTrsType, sTypeDescr, String)};
const FieldDef fTrsFlavor[] = {F(TypTrsFlavor, sType, Int), F(TypTrsFlavor, sFlavor, Int),
                               F(TypTrsFlavor, sFlavorDescr, String)};
const FieldDef fTrsVoice[] = {F(TypTrsVoice, sType, Int), F(TypTrsVoice, sVoice, Int),
                              F(TypTrsVoice, sVoiceDescr, String)};
const FieldDef fCountry[] = {F(TypCountry, coid, Int), F(TypCountry, countryName, String),
                             F(TypCountry, countryCode, String)};
const FieldDef fState[] = {F(TypState, stid, Int), F(TypState, stateName, String),
                           F(TypState, stateCode, String)};
const FieldDef fStateInfo[] = {F(TypStateInfo, stid, Int),
                               F(TypStateInfo, stateName, String),
                               F(TypStateInfo, stateEntityType, String),
                               FL(TypStateInfo, trsList, TypTrsSummary),
                               FL(TypStateInfo, agencyList, TypAgencySummary),
                               FL(TypStateInfo, countyList, TypCountySummary)};
const FieldDef fCountyInfo[] = {F(TypCountyInfo, ctid, Int),
                                F(TypCountyInfo, countyName, String),
                                F(TypCountyInfo, countyHeader, String),
                                F(TypCountyInfo, stid, Int),
                                F(TypCountyInfo, lat, Double),
                                F(TypCountyInfo, lon, Double),
                                F(TypCountyInfo, range, Double),
                                F(TypCountyInfo, fips, String),
                                F(TypCountyInfo, lastUpdated, String),
                                FL(TypCountyInfo, cats, TypCat),
                                FL(TypCountyInfo, trsList, TypTrsSummary),
                                FL(TypCountyInfo, agencyList, TypAgencySummary)};
const FieldDef fAgencyInfo[] = {F(TypAgencyInfo, aid, Int),
                                F(TypAgencyInfo, agencyName, String),
                                F(TypAgencyInfo, agencyType, String),
                                F(TypAgencyInfo, ctid, Int),
                                F(TypAgencyInfo, stid, Int),
                                F(TypAgencyInfo, lat, Double),
                                F(TypAgencyInfo, lon, Double),
                                F(TypAgencyInfo, range, Double),
                                F(TypAgencyInfo, lastUpdated, String),
                                FL(TypAgencyInfo, cats, TypCat)};
const FieldDef fMetroArea[] = {F(TypMetroArea, mid, Int), F(TypMetroArea, metroName, String)};
const FieldDef fZipcode[] = {F(TypZipcode, zipCode, Int), F(TypZipcode, lat, Double),
                             F(TypZipcode, lon, Double),  F(TypZipcode, city, String),
                             F(TypZipcode, stid, Int),    F(TypZipcode, ctid, Int)};
const FieldDef fFccLocation[] = {F(TypFccLocation, locationNumber, Int),
                                 F(TypFccLocation, towerId, Int),
                                 F(TypFccLocation, type, String),
                                 F(TypFccLocation, antennaHeight, Double),
                                 F(TypFccLocation, structureHeight, Double),
                                 F(TypFccLocation, elevation, Double),
                                 F(TypFccLocation, address, String),
                                 F(TypFccLocation, lat, Double),
                                 F(TypFccLocation, lon, Double),
                                 F(TypFccLocation, city, String),
                                 F(TypFccLocation, county, String),
                                 F(TypFccLocation, State, String)};
const FieldDef fFccFreq[] = {
    F(TypFccFreq, locationNumber, Int), F(TypFccFreq, frequency, Double),
    F(TypFccFreq, emission, String),    FW(TypFccFreq, "class", class_, String),
    F(TypFccFreq, power, Double),       F(TypFccFreq, mobiles, Int),
    F(TypFccFreq, pagers, Int)};
const FieldDef fFccCallsign[] = {F(TypFccCallsign, licensee, String),
                                 F(TypFccCallsign, callsign, String),
                                 F(TypFccCallsign, status, String),
                                 F(TypFccCallsign, grantDate, String),
                                 F(TypFccCallsign, radioService, String),
                                 F(TypFccCallsign, notes, String),
                                 FL(TypFccCallsign, locations, TypFccLocation),
                                 FL(TypFccCallsign, frequencies, TypFccFreq)};
const FieldDef fRadioService[] = {F(TypRadioService, code, String),
                                  F(TypRadioService, description, String)};
const FieldDef fProxCallsign[] = {F(TypProxCallsign, callsign, String),
                                  F(TypProxCallsign, lat, Double), F(TypProxCallsign, lon, Double),
                                  F(TypProxCallsign, distance, Double),
                                  F(TypProxCallsign, licensee, String)};
const FieldDef fUserData[] = {F(TypUserData, username, String),
                              F(TypUserData, subExpireDate, String)};
const FieldDef fFeed[] = {F(TypFeed, feedId, Int),      F(TypFeed, descr, String),
                          F(TypFeed, hostname, String), F(TypFeed, port, String),
                          F(TypFeed, mount, String),    F(TypFeed, password, String)};
} // namespace

#undef ACC
#undef F
#undef FW
#undef FL
#undef FI
#undef FS

#define RECORD(T, xsd, table) const RecordType k##T = makeType<T>(#T, xsd, table);
RECORD(TypTag, "Tag", fTag)
RECORD(TypBandplan, "Bandplan", fBandplan)
RECORD(TypTrsSummary, "TrsSummary", fTrsSummary)
RECORD(TypAgencySummary, "AgencySummary", fAgencySummary)
RECORD(TypCountySummary, "CountySummary", fCountySummary)
RECORD(TypSubcat, "Subcat", fSubcat)
RECORD(TypCat, "Cat", fCat)
RECORD(TypFreq, "Freq", fFreq)
RECORD(TypSearchFreq, "SearchFreq", fSearchFreq)
RECORD(TypTalkgroup, "Talkgroup", fTalkgroup)
RECORD(TypTgCat, "TgCat", fTgCat)
RECORD(TypSysid, "Sysid", fSysid)
RECORD(TypTrsDetails, "TrsDetails", fTrsDetails)
RECORD(TypSiteFreq, "SiteFreq", fSiteFreq)
RECORD(TypSite, "Site", fSite)
RECORD(TypMode, "Mode", fMode)
RECORD(TypTrsType, "TrsType", fTrsType)
RECORD(TypTrsFlavor, "TrsFlavor", fTrsFlavor)
RECORD(TypTrsVoice, "TrsVoice", fTrsVoice)
RECORD(TypCountry, "Country", fCountry)
RECORD(TypState, "State", fState)
RECORD(TypStateInfo, "StateInfo", fStateInfo)
RECORD(TypCountyInfo, "CountyInfo", fCountyInfo)
RECORD(TypAgencyInfo, "AgencyInfo", fAgencyInfo)
RECORD(TypMetroArea, "MetroArea", fMetroArea)
RECORD(TypZipcode, "Zipcode", fZipcode)
RECORD(TypFccLocation, "FccLocation", fFccLocation)
RECORD(TypFccFreq, "FccFreq", fFccFreq)
RECORD(TypFccCallsign, "FccCallsign", fFccCallsign)
RECORD(TypRadioService, "RadioService", fRadioService)
RECORD(TypProxCallsign, "ProxCallsign", fProxCallsign)
RECORD(TypUserData, "UserData", fUserData)
RECORD(TypFeed, "Feed", fFeed)
#undef RECORD
// The fleet-map block is not a record of its own: its fields live in TypTrsDetails, so it has
// no list operations.
const RecordType kTypFleetmap{"TypFleetmap", "Fleetmap", std::span<const FieldDef>(fFleetmap),
                              nullptr,       nullptr,    nullptr,
                              nullptr};

std::span<const RecordType* const> AllRecordTypes() {
    static const RecordType* const all[] = {
        &kTypTag,           &kTypBandplan,    &kTypTrsSummary,   &kTypAgencySummary,
        &kTypCountySummary, &kTypSubcat,      &kTypCat,          &kTypFreq,
        &kTypSearchFreq,    &kTypTalkgroup,   &kTypTgCat,        &kTypSysid,
        &kTypFleetmap,      &kTypTrsDetails,  &kTypSiteFreq,     &kTypSite,
        &kTypMode,          &kTypTrsType,     &kTypTrsFlavor,    &kTypTrsVoice,
        &kTypCountry,       &kTypState,       &kTypStateInfo,    &kTypCountyInfo,
        &kTypAgencyInfo,    &kTypMetroArea,   &kTypZipcode,      &kTypFccLocation,
        &kTypFccFreq,       &kTypFccCallsign, &kTypRadioService, &kTypProxCallsign,
        &kTypUserData,      &kTypFeed};
    return all;
}

const FieldDef* RecordType::field(QStringView fieldName) const {
    for (const FieldDef& f : fields)
        if (fieldName == QLatin1StringView(f.name))
            return &f;
    return nullptr;
}

QString FieldDef::xsdType() const {
    switch (kind) {
    case FieldKind::Int:
    case FieldKind::Short:
        return soap::kXsdInt;
    case FieldKind::Double:
        return soap::kXsdDouble;
    case FieldKind::String:
        return soap::kXsdString;
    case FieldKind::Boolean:
        return soap::kXsdBoolean;
    case FieldKind::Group:
        return QStringLiteral("tns:") + QLatin1StringView(element->xsdName);
    default:
        return QStringLiteral("SOAP-ENC:Array");
    }
}

QString FieldDef::itemTypeName() const {
    return QLatin1StringView(name) + QStringLiteral("Item");
}

QString FieldDef::itemType() const {
    if (kind == FieldKind::RecordList)
        return QStringLiteral("tns:") + QLatin1StringView(element->xsdName);
    if (kind == FieldKind::IntList || kind == FieldKind::StringList)
        return QStringLiteral("tns:") + itemTypeName();
    return {};
}

// ---- reading --------------------------------------------------------------------------------

namespace {

qint32 toInt(const SoapValue& v) {
    if (!v.isScalar())
        return 0;
    bool ok = false;
    const QStringView t = QStringView(v.text).trimmed();
    const qint32 n = t.toInt(&ok);
    if (ok)
        return n;
    const double d = t.toDouble(&ok);
    return ok && std::isfinite(d) && std::abs(d) < 2147483648.0 ? qint32(d) : 0;
}

double toDouble(const SoapValue& v) {
    if (!v.isScalar())
        return 0;
    bool ok = false;
    const double d = QStringView(v.text).trimmed().toDouble(&ok);
    return ok ? d : 0;
}

bool toBool(const SoapValue& v) {
    const QStringView t = QStringView(v.text).trimmed();
    return v.isScalar() && (t.compare(u"true", Qt::CaseInsensitive) == 0 || t == u"1");
}

// The items of a list value: an array's items, or a struct's children (some senders omit the
// array type); anything else has none.
const QList<SoapValue>* itemsOf(const SoapValue& v) {
    return v.isArray() || v.isStruct() ? &v.children : nullptr;
}

void readField(const FieldDef& f, void* record, const SoapValue& v) {
    void* m = f.at(record);
    switch (f.kind) {
    case FieldKind::Int:
        *static_cast<qint32*>(m) = toInt(v);
        break;
    case FieldKind::Short:
        *static_cast<qint16*>(m) = qint16(qBound(-32768, toInt(v), 32767));
        break;
    case FieldKind::Double:
        *static_cast<double*>(m) = toDouble(v);
        break;
    case FieldKind::String: {
        auto* s = static_cast<QString*>(m);
        *s = v.isScalar() ? v.text : QString();
        if (s->isEmpty() && f.emptyAs)
            *s = QString::fromLatin1(f.emptyAs);
        break;
    }
    case FieldKind::Boolean:
        *static_cast<bool*>(m) = toBool(v);
        break;
    case FieldKind::RecordList:
        ReadRecordList(*f.element, m, v);
        break;
    case FieldKind::IntList:
    case FieldKind::StringList: {
        QList<qint32>* ints =
            f.kind == FieldKind::IntList ? static_cast<QList<qint32>*>(m) : nullptr;
        QStringList* texts = ints ? nullptr : static_cast<QStringList*>(m);
        if (ints)
            ints->clear();
        else
            texts->clear();
        const QList<SoapValue>* items = itemsOf(v);
        if (!items)
            break;
        const QString itemField = QString::fromLatin1(f.itemField);
        for (const SoapValue& item : *items) {
            const SoapValue* scalar = item.isStruct() ? item.child(itemField) : &item;
            static const SoapValue empty;
            if (!scalar)
                scalar = &empty;
            if (ints)
                ints->append(toInt(*scalar));
            else
                texts->append(scalar->isScalar() ? scalar->text : QString());
        }
        break;
    }
    case FieldKind::Group: {
        const bool present = v.isStruct();
        *static_cast<bool*>(m) = present;
        if (present)
            ReadRecord(*f.element, record, v);
        break;
    }
    }
}

} // namespace

void ReadRecord(const RecordType& type, void* record, const SoapValue& structValue) {
    qsizetype hint = 0;
    for (const FieldDef& f : type.fields) {
        const SoapValue* v = structValue.child(QLatin1StringView(f.name), &hint);
        if (v)
            readField(f, record, *v);
    }
}

qsizetype ReadRecordList(const RecordType& type, void* list, const SoapValue& arrayValue) {
    type.listClear(list);
    const QList<SoapValue>* items = itemsOf(arrayValue);
    if (!items)
        return 0;
    for (const SoapValue& item : *items) {
        void* rec = type.listAppend(list);
        if (item.isStruct())
            ReadRecord(type, rec, item);
    }
    return type.listSize(list);
}

// ---- writing --------------------------------------------------------------------------------

namespace {

void writeField(const FieldDef& f, const void* record, SoapValue& out) {
    const QString name = QString::fromLatin1(f.name);
    const void* m = f.at(record);
    switch (f.kind) {
    case FieldKind::Int:
        out.add(SoapValue::integer(name, *static_cast<const qint32*>(m)));
        break;
    case FieldKind::Short:
        out.add(SoapValue::integer(name, *static_cast<const qint16*>(m)));
        break;
    case FieldKind::Double:
        out.add(SoapValue::dbl(name, *static_cast<const double*>(m)));
        break;
    case FieldKind::String:
        out.add(SoapValue::string(name, *static_cast<const QString*>(m)));
        break;
    case FieldKind::Boolean:
        out.add(SoapValue::boolean(name, *static_cast<const bool*>(m)));
        break;
    case FieldKind::RecordList:
        out.add(WriteRecordList(*f.element, m, name));
        break;
    case FieldKind::IntList:
    case FieldKind::StringList: {
        SoapValue& arr = out.add(SoapValue::array(name, f.itemType()));
        const QString itemField = QString::fromLatin1(f.itemField);
        const auto addItem = [&](SoapValue scalar) {
            SoapValue& item = arr.add(SoapValue::structure(QStringLiteral("item"), f.itemType()));
            item.add(std::move(scalar));
        };
        if (f.kind == FieldKind::IntList)
            for (qint32 n : *static_cast<const QList<qint32>*>(m))
                addItem(SoapValue::integer(itemField, n));
        else
            for (const QString& s : *static_cast<const QStringList*>(m))
                addItem(SoapValue::string(itemField, s));
        break;
    }
    case FieldKind::Group:
        if (*static_cast<const bool*>(m))
            out.add(WriteRecord(*f.element, record, name));
        else
            out.add(SoapValue::nil(name));
        break;
    }
}

} // namespace

SoapValue WriteRecord(const RecordType& type, const void* record, const QString& name) {
    SoapValue v =
        SoapValue::structure(name, QStringLiteral("tns:") + QLatin1StringView(type.xsdName));
    v.children.reserve(type.fields.size());
    for (const FieldDef& f : type.fields)
        writeField(f, record, v);
    return v;
}

SoapValue WriteRecordList(const RecordType& type, const void* list, const QString& name) {
    SoapValue v = SoapValue::array(name, QStringLiteral("tns:") + QLatin1StringView(type.xsdName));
    const qsizetype n = type.listSize(list);
    v.children.reserve(n);
    for (qsizetype i = 0; i < n; ++i)
        v.children.append(
            WriteRecord(type, type.listAt(const_cast<void*>(list), i), QStringLiteral("item")));
    return v;
}

double FreqToHertz(double value) {
    if (!std::isfinite(value))
        return 0;
    return std::round(std::abs(value) < 100000 ? value * 1000000.0 : value);
}

double FreqToHertz(const QString& text) {
    bool ok = false;
    const double d = QStringView(text).trimmed().toDouble(&ok);
    return ok ? FreqToHertz(d) : 0;
}

} // namespace kestrel
