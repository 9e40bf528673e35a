// SPDX-License-Identifier: GPL-3.0-or-later
// Turning frequency-database records into scanner channels: the description of each kind of
// record, the mode code, the slot it fills in a bank, and the lookups that turn the database's
// numeric codes into text. Shared by the import window and the command line.
#pragma once

#include "core/appcontext.h"
#include "webservice/rrrecords.h"

#include <QList>
#include <QString>

namespace kestrel {

// ---- channels -------------------------------------------------------------------------------

// Appends one channel to `bank`: ImportCount grows by one and names the slot. The description
// has its commas turned into hyphens (it is not shortened: the verify window does that). The
// output frequency may be given in megahertz or hertz (below 100,000 is megahertz); the input
// frequency and the tone are accepted and not stored. A 21st channel is refused: nothing is
// stored, ImportCount stays at 20 and the refusal is reported through the trap.
void RR_AddChannel(ErrorReporter& errors, BankRec& bank, const QString& desc, double inFreq,
                   double outFreq, const QString& modeName, const QString& tone);
// Appends one trunked-site frequency as "LCN-<lcn><use suffix>"; same slot and full-bank rule.
void RR_AddSiteChannel(ErrorReporter& errors, BankRec& bank, qint32 lcn, double freq,
                       const QString& use);

// The same on Profiles[profile].Banks[bank] of a context (bank 1..10); an invalid profile or
// bank is reported and nothing changes.
void RR_AddChannel(AppContext& ctx, int profile, int bank, const QString& desc, double inFreq,
                   double outFreq, const QString& modeName, const QString& tone);
void RR_AddSiteChannel(AppContext& ctx, int profile, int bank, qint32 lcn, double freq,
                       const QString& use);

// ---- descriptions of the three sources ------------------------------------------------------

// A county's or an agency's conventional frequency: "<category>-<subcategory>-<descr>", each
// part trimmed.
QString ConvFreqDesc(const QString& cName, const QString& scName, const QString& descr);
// A frequency or tag search result: "<alpha>-<descr>", each part trimmed.
QString SearchFreqDesc(const QString& alpha, const QString& descr);
// A trunked site frequency: "LCN-<lcn>" and " Control" / " Alternate" for use "d" / "a".
QString SiteFreqDesc(qint32 lcn, const QString& use);

// The mode name of a conventional record: Modes[m-1] where m is the record's mode rounded; an m
// outside the store counts as 1. Empty when the store is empty.
QString ConvModeName(const QList<TypMode>& modes, const QString& mode);
// The mode name of a search result: a mode that is not a number or lies outside the store
// throws (the import stops there and reports it).
QString SearchModeName(const QList<TypMode>& modes, const QString& mode);

// Whole records into a bank, as the import command adds them.
void AddConvFreq(ErrorReporter& errors, BankRec& bank, const QList<TypMode>& modes,
                 const QString& cName, const QString& scName, const TypFreq& f);
// Search results (TypSearchFreq) and tag search results (TypFreq): throws on a bad mode, like
// SearchModeName, before anything is stored for that record.
void AddSearchFreq(ErrorReporter& errors, BankRec& bank, const QList<TypMode>& modes,
                   const TypSearchFreq& f);
void AddSearchFreq(ErrorReporter& errors, BankRec& bank, const QList<TypMode>& modes,
                   const TypFreq& f);
void AddSiteFreq(ErrorReporter& errors, BankRec& bank, const TypSiteFreq& f);

// ---- codes into text ------------------------------------------------------------------------

// "NFM", "FM" and any unknown name give 5, "AM" gives 2, "P25" gives 0 (case-sensitive).
qint16 CvrtRRMode(ErrorReporter& errors, const QString& modeName);
// "d" gives " Control", "a" gives " Alternate", anything else "" (case-sensitive).
QString CvrtSiteUse(const QString& use);

// Linear scans, first match wins; a type of 0 matches every type in the flavor and voice
// lookups. Not found: "Unknown", "Unknown Tag:<id>", "Unknown Code:<code>".
QString CvrtSiteType(ErrorReporter& errors, const QList<TypTrsType>& types, qint32 type);
QString CvrtSiteFlavor(ErrorReporter& errors, const QList<TypTrsFlavor>& flavors, qint32 type,
                       qint32 flavor);
QString CvrtSiteVoice(ErrorReporter& errors, const QList<TypTrsVoice>& voices, qint32 type,
                      qint32 voice);
QString CvrtTag(ErrorReporter& errors, const QList<TypTag>& tags, qint32 id);
QString CvrtRadSvcCode(ErrorReporter& errors, const QList<TypRadioService>& codes,
                       const QString& code);

// ---- talk-group list ------------------------------------------------------------------------

struct TypGroupId {
    QString Tag;
    qint32 Reserved = 0; // kept empty
    QString Desc;
    QString Alpha;
    qint32 TgDec = 0;
    QString Mode;
    qint32 TgId = 0;
};

// The talk groups the Compare command collected; entry 0 is never filled. Lives in the
// context for the whole run: `ctx.component<GroupIdList>()`.
class GroupIdList : public Component {
public:
    explicit GroupIdList(AppContext&) {}
    GroupIdList() = default;
    qint16 GroupIdCnt() const { return qint16(GroupIds.size() - 1); }
    void Clear() { GroupIds = QList<TypGroupId>(1); }

    QList<TypGroupId> GroupIds = QList<TypGroupId>(1);
};

// Appends one talk group: Tag, Desc and Alpha with commas turned into hyphens.
void RR_AddGroupID(ErrorReporter& errors, GroupIdList& list, qint32 tgDec, const QString& desc,
                   const QString& alpha, const QString& tag, const QString& mode, qint32 tgId);
// The description Compare gives a talk group: "<category>-<descr>", each part trimmed.
QString TalkgroupDesc(const QString& tgCname, const QString& tgDescr);

} // namespace kestrel
