// SPDX-License-Identifier: GPL-3.0-or-later
// The scanner memory image: channels, search ranges, banks and profiles as plain values, their
// text forms (the channel line and the search line), and the factory tables.
#pragma once

#include <QString>
#include <QStringList>
#include <array>

namespace kestrel {

inline constexpr int ProfileCount = 10;
inline constexpr int BankCount = 10;
inline constexpr int ChansPerBank = 20;
inline constexpr int SearchCount = 10;
inline constexpr int ChannelCount = BankCount * ChansPerBank; // 200
inline constexpr int SearchTab = 11;                          // CurBank value of the search tab

// Which part of a profile an upload or a command addresses.
enum class ProfilePart { AllBanks, Bank, Search };

struct ChannelRec {
    double Freq = 0; // Hz, 0 = empty
    QString Desc;
    bool Delay = false;
    bool Lockout = false;
    bool Priority = false;
    quint8 Mark = 0;
    bool Imported = false;
    quint8 Mode = 0;
    quint8 ModeAux = 0;
    QString Tone; // the imported record's tone ("CSQ", "100.0 PL"); in memory only, as Mode

    bool operator==(const ChannelRec&) const = default;
};

struct SearchRec {
    double Lower = 0;
    double Upper = 0;
    QString Desc;
    quint8 Mark = 0;

    bool operator==(const SearchRec&) const = default;
};

struct BankRec {
    QString ImportName;
    std::array<ChannelRec, ChansPerBank + 1> Chans{}; // slots 1..20
    qint16 ImportCount = 0;
    quint8 Revision = 0;
    QString FileName;
    bool Changed = false;
};

struct ProfileRec {
    bool Changed = false;
    QString Name;
    QString SrchName;
    std::array<BankRec, BankCount + 1> Banks{};        // slots 1..10
    std::array<SearchRec, SearchCount + 1> Searches{}; // slots 1..10
};

using DefChansTable = std::array<QString, ChannelCount + 1>; // index 0 = cleared line
using DefSearchTable = std::array<QString, SearchCount + 1>;

void SetDefChans(DefChansTable& table);
void SetDefSearch(DefSearchTable& table);

// Channel number 1..200 <-> bank 1..10 and slot 1..20.
inline int ChannelNumber(int bank, int slot) {
    return (bank - 1) * ChansPerBank + slot;
}
inline int BankOfChannel(int n) {
    return (n - 1) / ChansPerBank + 1;
}
inline int SlotOfChannel(int n) {
    return (n - 1) % ChansPerBank + 1;
}

// Sets a record from its text form. A line that does not split into the right number of fields
// is replaced whole by the fallback line (the slot's factory line). Imported, Mode, ModeAux and
// Tone are left as they were.
void ParseChannelLine(ChannelRec& rec, QStringView line, QStringView fallback);
void ParseSearchLine(SearchRec& rec, QStringView line, QStringView fallback);
inline void ParseChannelLine(ChannelRec& rec, const QString& line, const QString& fallback) {
    ParseChannelLine(rec, QStringView(line), QStringView(fallback));
}
inline void ParseSearchLine(SearchRec& rec, const QString& line, const QString& fallback) {
    ParseSearchLine(rec, QStringView(line), QStringView(fallback));
}

// Text forms as the files store them: "146.520000,Fire,False,True,False" (Priority, Delay,
// Lockout) and "25.000000,27.995000,Search #1".
QString ChannelLine(const ChannelRec& rec);
QString SearchLine(const SearchRec& rec);

} // namespace kestrel
