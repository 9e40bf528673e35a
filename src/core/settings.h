// SPDX-License-Identifier: GPL-3.0-or-later
// Program-wide settings kept in the settings file of profile 0, window placement in twips, and
// the few values kept in the user's registry.
#pragma once

#include <QList>
#include <QMap>
#include <QSize>
#include <QString>
#include <array>
#include <functional>
#include <optional>

namespace kestrel {

// The windows whose places are remembered, in the order the settings file lists them.
enum class WindowId { Main, COMSet, ImpRR, VerRR, PP, SC, CSV };
inline constexpr int kWindowCount = 7;

struct WindowInfo {
    const char* key;  // settings key, "MainWindowPos"
    int designHeight; // design size in twips (FrmHeight)
    int designWidth;  // (FrmWidth)
};
const WindowInfo& windowInfo(WindowId id);

struct WindowPos {
    qint32 top = 200;
    qint32 left = 200;
    bool operator==(const WindowPos&) const = default;
};

// A remembered window size in twips, stored as "height,width"; zero when none is known.
struct WindowSize {
    qint32 height = 0;
    qint32 width = 0;
    bool isEmpty() const { return height <= 0 || width <= 0; }
    bool operator==(const WindowSize&) const = default;
};

struct ProgramSettings {
    std::array<WindowPos, kWindowCount> positions{};
    WindowSize mainSize;     // the main window's size, beside its position
    qint16 KestrelCable = 2; // 2 two-wire, 3 three-wire
    qint16 CommPort = 1;     // 1..16
    qint16 DBaseVersion = 8;
    qint16 DBaseIndex = 0; // 0 the service, 1 the local address
    QString DBaseEndUsr;
    QString DBaseLocUsr;
    bool DBaseProxyUse = false;
    QString DBaseProxyAdr;
    qint16 DBaseProxyPrt = 8080;
    QString AppKey;         // [RadioRef] AppKey: overrides the built-in application key when set
    QString ServiceAddress; // derived at load from DBaseVersion and DBaseIndex
    QMap<int, QString> PortOverrides; // [Ports] COMn = device path

    WindowPos& pos(WindowId id) { return positions[static_cast<int>(id)]; }
    const WindowPos& pos(WindowId id) const { return positions[static_cast<int>(id)]; }
};

inline constexpr const char* kPublicServiceHost = "https://api.radioreference.com";
QString DefaultEndpoint();      // the public service, "/soap2/"
QString DefaultLocalEndpoint(); // "http://127.0.0.1:9000/soap2/"
QString DeriveServiceAddress(const ProgramSettings& s);

class IniDocument;

// One key of the program-wide part of the settings file: where it is kept, how its text is taken
// in (default and limits) and what is written back. Reading and writing both walk this one table
// in its order, so a key is named once.
struct SettingKey {
    QString section;
    QString key;
    std::function<void(ProgramSettings&, const QString& text, QSize screenTwips)> read;
    std::function<std::optional<QString>(const ProgramSettings&)> write; // none: not written
};
const QList<SettingKey>& ProgramSettingKeys();
// Reads every key of the table (a missing one takes its default) and derives ServiceAddress.
void ReadProgramSettings(ProgramSettings& s, const IniDocument& doc, QSize screenTwips);
void WriteProgramSettings(const ProgramSettings& s, IniDocument& doc);

// Window placement (all values in twips). The stored text is "top,left".
WindowPos Set_FormPos(const QString& value, QSize screen, int designHeight, int designWidth);
qint32 AdjFrmTop(qint32 top, QSize screen);
qint32 AdjFrmleft(qint32 left, QSize screen);

// Values of the user's registry (QSettings in its native format).
struct RegistryValues {
    QString WebName;
    QString WebWord;
    QString ZipCode;
};
inline constexpr const char* kPublisher = "Kestrel";
inline constexpr const char* kProgramKey = "KestrelManager";
QString Get_Setting(const QString& subkey, const QString& valueName);
void Save_Setting(const QString& subkey, const QString& value, const QString& valueName);
// Where the registry values live (a file on systems without a registry).
QString RegistryFilePath();
RegistryValues LoadRegistryValues();
void SaveRegistryValues(const RegistryValues& values);

} // namespace kestrel
