// SPDX-License-Identifier: GPL-3.0-or-later
#include "rrconvert.h"

#include "core/freq.h"

#include <cmath>

namespace kestrel {

namespace {

QString noCommas(QString text) {
    return text.replace(u',', u'-');
}

// The next slot of an import; a full bank is refused with the count left at 20.
ChannelRec& nextSlot(BankRec& bank) {
    if (bank.ImportCount < 0)
        bank.ImportCount = 0;
    if (bank.ImportCount >= ChansPerBank)
        throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
    ++bank.ImportCount;
    bank.Changed = true;
    return bank.Chans[size_t(bank.ImportCount)];
}

BankRec& contextBank(AppContext& ctx, int profile, int bank) {
    if (profile < 0 || profile > ProfileCount || bank < 1 || bank > BankCount)
        throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
    return ctx.Profiles[size_t(profile)].Banks[size_t(bank)];
}

// The record's mode as a whole number (half to even), or false when it is not a number.
bool modeNumber(const QString& mode, qint64& m) {
    bool ok = false;
    const double d = mode.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(d) || std::abs(d) > 1e9)
        return false;
    m = qint64(std::nearbyint(d));
    return true;
}

} // namespace

void RR_AddChannel(ErrorReporter& errors, BankRec& bank, const QString& desc, double inFreq,
                   double outFreq, const QString& modeName, const QString& tone) {
    Q_UNUSED(inFreq)
    if (bank.ImportCount >= ChansPerBank)
        return; // a full bank: the caller names what did not fit
    Trap(errors, "ModRRSoap -> RR_AddChannel", [&](Stmt& s) {
        s.at(1);
        ChannelRec& ch = nextSlot(bank);
        s.at(2);
        ch.Desc = noCommas(desc);
        ch.Freq = ValidateFreq(FreqToHertz(outFreq));
        ch.Mode = quint8(CvrtRRMode(errors, modeName));
        ch.ModeAux = ch.Mode == 2 ? 1 : 2;
        ch.Tone = tone.trimmed();
        ch.Imported = true;
    });
}

void RR_AddSiteChannel(ErrorReporter& errors, BankRec& bank, qint32 lcn, double freq,
                       const QString& use) {
    if (bank.ImportCount >= ChansPerBank)
        return; // a full bank: the caller names what did not fit
    Trap(errors, "ModRRSoap -> RR_AddSiteChannel", [&](Stmt& s) {
        s.at(1);
        ChannelRec& ch = nextSlot(bank);
        s.at(2);
        ch.Desc = SiteFreqDesc(lcn, use);
        ch.Freq = ValidateFreq(FreqToHertz(freq));
        ch.Mode = ch.ModeAux = 0; // a site channel has no mode or tone of its own
        ch.Tone.clear();
        ch.Imported = true;
    });
}

void RR_AddChannel(AppContext& ctx, int profile, int bank, const QString& desc, double inFreq,
                   double outFreq, const QString& modeName, const QString& tone) {
    BankRec* b = Trap(ctx.errors, "ModRRSoap -> RR_AddChannel",
                      [&] { return &contextBank(ctx, profile, bank); });
    if (b)
        RR_AddChannel(ctx.errors, *b, desc, inFreq, outFreq, modeName, tone);
}

void RR_AddSiteChannel(AppContext& ctx, int profile, int bank, qint32 lcn, double freq,
                       const QString& use) {
    BankRec* b = Trap(ctx.errors, "ModRRSoap -> RR_AddSiteChannel",
                      [&] { return &contextBank(ctx, profile, bank); });
    if (b)
        RR_AddSiteChannel(ctx.errors, *b, lcn, freq, use);
}

QString ConvFreqDesc(const QString& cName, const QString& scName, const QString& descr) {
    return cName.trimmed() + u'-' + scName.trimmed() + u'-' + descr.trimmed();
}

QString SearchFreqDesc(const QString& alpha, const QString& descr) {
    return alpha.trimmed() + u'-' + descr.trimmed();
}

QString SiteFreqDesc(qint32 lcn, const QString& use) {
    return QStringLiteral("LCN-") + QString::number(lcn) + CvrtSiteUse(use);
}

QString ConvModeName(const QList<TypMode>& modes, const QString& mode) {
    qint64 m = 0;
    if (!modeNumber(mode, m) || m < 1 || m > modes.size())
        m = 1;
    return modes.isEmpty() ? QString() : modes[m - 1].modeName;
}

QString SearchModeName(const QList<TypMode>& modes, const QString& mode) {
    qint64 m = 0;
    if (!modeNumber(mode, m))
        throw KestrelError(err::TypeMismatch, QStringLiteral("Type mismatch"));
    if (m < 1 || m > modes.size())
        throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
    return modes[m - 1].modeName;
}

void AddConvFreq(ErrorReporter& errors, BankRec& bank, const QList<TypMode>& modes,
                 const QString& cName, const QString& scName, const TypFreq& f) {
    RR_AddChannel(errors, bank, ConvFreqDesc(cName, scName, f.descr), f.in, f.out,
                  ConvModeName(modes, f.mode), f.tone);
}

void AddSearchFreq(ErrorReporter& errors, BankRec& bank, const QList<TypMode>& modes,
                   const TypSearchFreq& f) {
    RR_AddChannel(errors, bank, SearchFreqDesc(f.alpha, f.descr), f.in, f.out,
                  SearchModeName(modes, f.mode), f.tone);
}

void AddSearchFreq(ErrorReporter& errors, BankRec& bank, const QList<TypMode>& modes,
                   const TypFreq& f) {
    RR_AddChannel(errors, bank, SearchFreqDesc(f.alpha, f.descr), f.in, f.out,
                  SearchModeName(modes, f.mode), f.tone);
}

void AddSiteFreq(ErrorReporter& errors, BankRec& bank, const TypSiteFreq& f) {
    RR_AddSiteChannel(errors, bank, f.lcn, FreqToHertz(f.freq), f.use);
}

qint16 CvrtRRMode(ErrorReporter& errors, const QString& modeName) {
    return Trap(errors, "ModRRSoap -> CvrtRRMode", [&]() -> qint16 {
        if (modeName == u"AM")
            return 2;
        if (modeName == u"P25")
            return 0;
        return 5; // "NFM", "FM" and every name the scanner does not know
    });
}

QString CvrtSiteUse(const QString& use) {
    if (use == u"d")
        return QStringLiteral(" Control");
    if (use == u"a")
        return QStringLiteral(" Alternate");
    return {};
}

QString CvrtSiteType(ErrorReporter& errors, const QList<TypTrsType>& types, qint32 type) {
    return Trap(errors, "ModRRSoap -> CvrtSiteType", [&]() -> QString {
        for (const TypTrsType& t : types)
            if (t.sType == type)
                return t.sTypeDescr;
        return QStringLiteral("Unknown");
    });
}

QString CvrtSiteFlavor(ErrorReporter& errors, const QList<TypTrsFlavor>& flavors, qint32 type,
                       qint32 flavor) {
    return Trap(errors, "ModRRSoap -> CvrtSiteFlavor", [&]() -> QString {
        for (const TypTrsFlavor& f : flavors)
            if ((f.sType == type || type == 0) && f.sFlavor == flavor)
                return f.sFlavorDescr;
        return QStringLiteral("Unknown");
    });
}

QString CvrtSiteVoice(ErrorReporter& errors, const QList<TypTrsVoice>& voices, qint32 type,
                      qint32 voice) {
    return Trap(errors, "ModRRSoap -> CvrtSiteVoice", [&]() -> QString {
        for (const TypTrsVoice& v : voices)
            if ((v.sType == type || type == 0) && v.sVoice == voice)
                return v.sVoiceDescr;
        return QStringLiteral("Unknown");
    });
}

QString CvrtTag(ErrorReporter& errors, const QList<TypTag>& tags, qint32 id) {
    return Trap(errors, "ModRRSoap -> CvrtTag", [&]() -> QString {
        for (const TypTag& t : tags)
            if (t.tagId == id)
                return t.tagDescr;
        return QStringLiteral("Unknown Tag:") + QString::number(id);
    });
}

QString CvrtRadSvcCode(ErrorReporter& errors, const QList<TypRadioService>& codes,
                       const QString& code) {
    return Trap(errors, "ModRRSoap -> CvrtRadSvcCode", [&]() -> QString {
        for (const TypRadioService& c : codes)
            if (c.code == code)
                return c.description;
        return QStringLiteral("Unknown Code:") + code;
    });
}

void RR_AddGroupID(ErrorReporter& errors, GroupIdList& list, qint32 tgDec, const QString& desc,
                   const QString& alpha, const QString& tag, const QString& mode, qint32 tgId) {
    Trap(errors, "ModRRSoap -> RR_AddGroupID", [&](Stmt& s) {
        s.at(1);
        if (list.GroupIds.isEmpty())
            list.GroupIds.resize(1);
        TypGroupId g;
        g.Tag = noCommas(tag);
        g.Desc = noCommas(desc);
        g.Alpha = noCommas(alpha);
        g.TgDec = tgDec;
        g.Mode = mode;
        g.TgId = tgId;
        s.at(2);
        list.GroupIds.append(g);
    });
}

QString TalkgroupDesc(const QString& tgCname, const QString& tgDescr) {
    return tgCname.trimmed() + u'-' + tgDescr.trimmed();
}

} // namespace kestrel
