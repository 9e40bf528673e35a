// SPDX-License-Identifier: GPL-3.0-or-later
// The records the local frequency-database service answers from: read from JSON whose objects
// use the service's own field names (through the records' field tables), or the built-in demo.
#pragma once

#include "webservice/rrrecords.h"

#include <QList>
#include <QString>

namespace kestrel {

struct RRUser {
    QString username;
    QString password;
    QString subExpireDate;
};

// A state with the country it belongs to.
struct RRStateEntry {
    TypState state;
    qint32 coid = 0;
    QString stateEntityType;
};

// An agency; `aType` is the numeric type its summaries carry.
struct RRAgencyEntry {
    TypAgencyInfo info;
    qint32 aType = 0;
};

// A conventional frequency with the subcategory that holds it.
struct RRFreqEntry {
    TypFreq freq;
    qint32 scid = 0;
};

// A trunked system: its details, sites, talk-group categories and talk groups.
struct RRSystem {
    qint32 sid = 0;
    TypTrsDetails details;
    QList<TypSite> sites;
    QList<TypTgCat> tgCats;
    QList<TypTalkgroup> talkgroups;
};

struct RRMetroEntry {
    TypMetroArea area;
    QList<qint32> counties; // ctid
};

// A feed; an empty user name offers it to every user.
struct RRFeedEntry {
    TypFeed feed;
    QString username;
};

class RRDataSet {
public:
    // The small fictional data set built into the program (also in data/rr-demo/).
    static RRDataSet demo();

    // Reads a JSON file, or every "*.json" file of a folder (lists of the same key are joined).
    // False with the reason in *error when a file cannot be read or is not a JSON object.
    bool load(const QString& path, QString* error);
    // Reads one JSON document's lists into this set (appending).
    bool loadJson(const QByteArray& json, QString* error);

    // Where each record lives; null when there is none.
    const RRUser* user(const QString& name) const;
    const TypCountyInfo* county(qint32 ctid) const;
    const RRAgencyEntry* agency(qint32 aid) const;
    const RRStateEntry* state(qint32 stid) const;
    const RRSystem* system(qint32 sid) const;
    // The county or agency whose categories hold the subcategory (ctid, aid; 0 when not found).
    void subcatOwner(qint32 scid, qint32* ctid, qint32* aid) const;
    QString tagDescr(qint32 tagId) const;

    QList<RRUser> users;
    QList<TypCountry> countries;
    QList<RRStateEntry> states;
    QList<TypCountyInfo> counties;
    QList<RRAgencyEntry> agencies;
    QList<RRFreqEntry> freqs;
    QList<RRSystem> systems;
    QList<RRMetroEntry> metros;
    QList<TypZipcode> zipcodes;
    QList<TypFccCallsign> callsigns;
    QList<TypProxCallsign> proxCallsigns;
    QList<TypRadioService> radioServices;
    QList<TypMode> modes;
    QList<TypTag> tags;
    QList<TypTrsType> trsTypes;
    QList<TypTrsFlavor> trsFlavors;
    QList<TypTrsVoice> trsVoices;
    QList<RRFeedEntry> feeds;
};

} // namespace kestrel
