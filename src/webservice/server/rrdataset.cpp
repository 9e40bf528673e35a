// SPDX-License-Identifier: GPL-3.0-or-later
#include "rrdataset.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace kestrel {

namespace {

qint32 jsonInt(const QJsonValue& v) {
    if (v.isString())
        return v.toString().trimmed().toInt();
    return qint32(v.toDouble());
}

double jsonDouble(const QJsonValue& v) {
    if (v.isString())
        return v.toString().trimmed().toDouble();
    return v.toDouble();
}

// Numbers are allowed where the service sends text ("mode": 2).
QString jsonText(const QJsonValue& v) {
    if (v.isDouble())
        return soap::DoubleText(v.toDouble());
    if (v.isBool())
        return v.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    return v.toString();
}

void readJsonRecord(const RecordType& type, void* record, const QJsonObject& o);

// A list item written as a bare value ("tags": [2, 5]) fills the record's first field.
void readJsonItem(const RecordType& type, void* record, const QJsonValue& v) {
    if (v.isObject()) {
        readJsonRecord(type, record, v.toObject());
        return;
    }
    if (type.fields.empty())
        return;
    const FieldDef& first = type.fields.front();
    readJsonRecord(type, record, QJsonObject{{QString::fromLatin1(first.name), v}});
}

void readJsonRecord(const RecordType& type, void* record, const QJsonObject& o) {
    for (const FieldDef& f : type.fields) {
        const auto it = o.constFind(QLatin1StringView(f.name));
        if (it == o.constEnd())
            continue;
        const QJsonValue v = *it;
        void* m = f.at(record);
        switch (f.kind) {
        case FieldKind::Int:
            *static_cast<qint32*>(m) = jsonInt(v);
            break;
        case FieldKind::Short:
            *static_cast<qint16*>(m) = qint16(jsonInt(v));
            break;
        case FieldKind::Double:
            *static_cast<double*>(m) = jsonDouble(v);
            break;
        case FieldKind::String:
            *static_cast<QString*>(m) = jsonText(v);
            break;
        case FieldKind::Boolean:
            *static_cast<bool*>(m) = v.isBool() ? v.toBool() : jsonInt(v) != 0;
            break;
        case FieldKind::RecordList:
            f.element->listClear(m);
            for (const QJsonValue& item : v.toArray())
                readJsonItem(*f.element, f.element->listAppend(m), item);
            break;
        case FieldKind::IntList: {
            auto* list = static_cast<QList<qint32>*>(m);
            list->clear();
            for (const QJsonValue& item : v.toArray())
                list->append(
                    jsonInt(item.isObject() ? item[QLatin1StringView(f.itemField)] : item));
            break;
        }
        case FieldKind::StringList: {
            auto* list = static_cast<QStringList*>(m);
            list->clear();
            for (const QJsonValue& item : v.toArray())
                list->append(
                    jsonText(item.isObject() ? item[QLatin1StringView(f.itemField)] : item));
            break;
        }
        case FieldKind::Group:
            *static_cast<bool*>(m) = v.isObject();
            if (v.isObject())
                readJsonRecord(*f.element, record, v.toObject());
            break;
        }
    }
}

template <class T> T fromJson(const QJsonValue& v) {
    T record{};
    readJsonRecord(recordType<T>(), &record, v.toObject());
    return record;
}

template <class T> void appendAll(QList<T>& list, const QJsonObject& doc, const char* key) {
    for (const QJsonValue& v : doc[QLatin1StringView(key)].toArray())
        list.append(fromJson<T>(v));
}

void fillTagDescr(const RRDataSet& set, QList<TypTag>& tags) {
    for (TypTag& t : tags)
        if (t.tagDescr.isEmpty())
            t.tagDescr = set.tagDescr(t.tagId);
}

} // namespace

bool RRDataSet::loadJson(const QByteArray& json, QString* error) {
    QJsonParseError parseError;
    const QJsonDocument d = QJsonDocument::fromJson(json, &parseError);
    if (!d.isObject()) {
        if (error)
            *error = parseError.error != QJsonParseError::NoError
                         ? parseError.errorString() + QStringLiteral(" at offset ") +
                               QString::number(parseError.offset)
                         : QStringLiteral("not a JSON object");
        return false;
    }
    const QJsonObject doc = d.object();
    for (const QJsonValue& v : doc[u"users"].toArray())
        users.append(
            {v[u"username"].toString(), v[u"password"].toString(), v[u"subExpireDate"].toString()});
    appendAll(countries, doc, "countries");
    for (const QJsonValue& v : doc[u"states"].toArray())
        states.append(
            {fromJson<TypState>(v), jsonInt(v[u"coid"]), v[u"stateEntityType"].toString()});
    appendAll(counties, doc, "counties");
    for (const QJsonValue& v : doc[u"agencies"].toArray())
        agencies.append({fromJson<TypAgencyInfo>(v), jsonInt(v[u"aType"])});
    for (const QJsonValue& v : doc[u"frequencies"].toArray())
        freqs.append({fromJson<TypFreq>(v), jsonInt(v[u"scid"])});
    for (const QJsonValue& v : doc[u"systems"].toArray()) {
        RRSystem s;
        s.sid = jsonInt(v[u"sid"]);
        s.details = fromJson<TypTrsDetails>(v);
        for (const QJsonValue& site : v[u"sites"].toArray()) {
            s.sites.append(fromJson<TypSite>(site));
            s.sites.last().sid = s.sid;
        }
        for (const QJsonValue& cat : v[u"talkgroupCats"].toArray()) {
            s.tgCats.append(fromJson<TypTgCat>(cat));
            s.tgCats.last().sid = s.sid;
            for (const QJsonValue& tg : cat[u"talkgroups"].toArray()) {
                s.talkgroups.append(fromJson<TypTalkgroup>(tg));
                s.talkgroups.last().tgCid = s.tgCats.last().tgCid;
            }
        }
        systems.append(s);
    }
    for (const QJsonValue& v : doc[u"metroAreas"].toArray()) {
        RRMetroEntry m{fromJson<TypMetroArea>(v), {}};
        for (const QJsonValue& c : v[u"counties"].toArray())
            m.counties.append(jsonInt(c));
        metros.append(m);
    }
    appendAll(zipcodes, doc, "zipcodes");
    appendAll(callsigns, doc, "callsigns");
    appendAll(proxCallsigns, doc, "proxCallsigns");
    appendAll(radioServices, doc, "radioServices");
    appendAll(modes, doc, "modes");
    appendAll(tags, doc, "tags");
    appendAll(trsTypes, doc, "trsTypes");
    appendAll(trsFlavors, doc, "trsFlavors");
    appendAll(trsVoices, doc, "trsVoices");
    for (const QJsonValue& v : doc[u"feeds"].toArray())
        feeds.append({fromJson<TypFeed>(v), v[u"username"].toString()});

    // The service sends each tag with its text; the data names the id only.
    for (RRFreqEntry& f : freqs)
        fillTagDescr(*this, f.freq.tags);
    for (RRSystem& s : systems)
        for (TypTalkgroup& tg : s.talkgroups)
            fillTagDescr(*this, tg.tags);
    return true;
}

bool RRDataSet::load(const QString& path, QString* error) {
    QStringList files;
    const QFileInfo info(path);
    if (info.isDir()) {
        const QDir dir(path);
        for (const QString& name :
             dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name))
            files.append(dir.filePath(name));
        if (files.isEmpty()) {
            if (error)
                *error = path + QStringLiteral(": no .json file in this folder");
            return false;
        }
    } else {
        files.append(path);
    }
    for (const QString& file : files) {
        QFile f(file);
        if (!f.open(QIODevice::ReadOnly)) {
            if (error)
                *error = file + QStringLiteral(": ") + f.errorString();
            return false;
        }
        QString why;
        if (!loadJson(f.readAll(), &why)) {
            if (error)
                *error = file + QStringLiteral(": ") + why;
            return false;
        }
    }
    return true;
}

RRDataSet RRDataSet::demo() {
    RRDataSet set;
    QString error;
    // Built in: a failure here is a build fault, and an empty set still answers every query.
    set.load(QStringLiteral(":/rr-demo/rr-demo.json"), &error);
    return set;
}

const RRUser* RRDataSet::user(const QString& name) const {
    for (const RRUser& u : users)
        if (u.username == name)
            return &u;
    return nullptr;
}

const TypCountyInfo* RRDataSet::county(qint32 ctid) const {
    for (const TypCountyInfo& c : counties)
        if (c.ctid == ctid)
            return &c;
    return nullptr;
}

const RRAgencyEntry* RRDataSet::agency(qint32 aid) const {
    for (const RRAgencyEntry& a : agencies)
        if (a.info.aid == aid)
            return &a;
    return nullptr;
}

const RRStateEntry* RRDataSet::state(qint32 stid) const {
    for (const RRStateEntry& s : states)
        if (s.state.stid == stid)
            return &s;
    return nullptr;
}

const RRSystem* RRDataSet::system(qint32 sid) const {
    for (const RRSystem& s : systems)
        if (s.sid == sid)
            return &s;
    return nullptr;
}

namespace {
bool holdsSubcat(const QList<TypCat>& cats, qint32 scid) {
    for (const TypCat& c : cats)
        for (const TypSubcat& s : c.subcats)
            if (s.scid == scid)
                return true;
    return false;
}
} // namespace

void RRDataSet::subcatOwner(qint32 scid, qint32* ctid, qint32* aid) const {
    *ctid = 0;
    *aid = 0;
    for (const TypCountyInfo& c : counties)
        if (holdsSubcat(c.cats, scid)) {
            *ctid = c.ctid;
            return;
        }
    for (const RRAgencyEntry& a : agencies)
        if (holdsSubcat(a.info.cats, scid)) {
            *aid = a.info.aid;
            *ctid = a.info.ctid;
            return;
        }
}

QString RRDataSet::tagDescr(qint32 tagId) const {
    for (const TypTag& t : tags)
        if (t.tagId == tagId)
            return t.tagDescr;
    return {};
}

} // namespace kestrel
