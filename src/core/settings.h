// SPDX-License-Identifier: GPL-3.0-or-later
// Program-wide settings kept in the settings file of profile 0, window placement in twips, and
// the few values kept in the user's registry.
#pragma once

#include <QMap>
#include <QSize>
#include <QString>
#include <array>

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

struct ProgramSettings {
    std::array<WindowPos, kWindowCount> positions{};
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
