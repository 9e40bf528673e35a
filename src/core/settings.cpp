// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings.h"

#include "freq.h"

#include <QFile>
#include <QSettings>
#include <cmath>
#include <memory>

namespace kestrel {

namespace {

// Design sizes in twips (15 twips to a pixel at 100 % scaling).
constexpr WindowInfo kWindows[kWindowCount] = {
    {"MainWindowPos", 8400, 10500},  {"COMSetWindowPos", 3600, 4800},
    {"ImpRRWindowPos", 8400, 12000}, {"VerRRWindowPos", 7200, 9600},
    {"PPWindowPos", 9000, 12000},    {"SCWindowPos", 2400, 4200},
    {"CSVWindowPos", 6000, 7200},
};

std::unique_ptr<QSettings> registry() {
    return std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                       QString::fromLatin1(kPublisher),
                                       QString::fromLatin1(kProgramKey));
}

QString registryKey(const QString& subkey, const QString& valueName) {
    return subkey.isEmpty() ? valueName : subkey + QLatin1Char('/') + valueName;
}

} // namespace

const WindowInfo& windowInfo(WindowId id) {
    return kWindows[static_cast<int>(id)];
}

QString DefaultEndpoint() {
    return QString::fromLatin1(kPublicServiceHost) + QStringLiteral("/soap2/");
}

QString DefaultLocalEndpoint() {
    return QStringLiteral("http://127.0.0.1:9000/soap2/");
}

QString DeriveServiceAddress(const ProgramSettings& s) {
    const QString host = QString::fromLatin1(kPublicServiceHost);
    const QString local = QStringLiteral("http://127.0.0.1:9000");
    if (s.DBaseVersion <= 1)
        return (s.DBaseIndex == 0 ? host : local) + QStringLiteral("/soap/");
    if (s.DBaseVersion <= 8)
        return (s.DBaseIndex == 0 ? host : local) + QStringLiteral("/soap2/");
    return s.DBaseIndex == 0 ? s.DBaseEndUsr : s.DBaseLocUsr;
}

WindowPos Set_FormPos(const QString& value, QSize screen, int designHeight, int designWidth) {
    QStringList parts = value.split(QLatin1Char(','));
    if (parts.size() != 2)
        parts = QStringList{QStringLiteral("200"), QStringLiteral("200")};
    const qint32 maxTop = qMax(0, screen.height() - designHeight);
    const qint32 maxLeft = qMax(0, screen.width() - designWidth);
    WindowPos pos;
    pos.top = Validate_Long(parts[0], qint32(std::nearbyint(maxTop / 2.0)), 0, maxTop);
    pos.left = Validate_Long(parts[1], qint32(std::nearbyint(maxLeft / 2.0)), 0, maxLeft);
    return pos;
}

qint32 AdjFrmTop(qint32 top, QSize screen) {
    return top <= screen.height() ? top : screen.height() - 200;
}

qint32 AdjFrmleft(qint32 left, QSize screen) {
    return left <= screen.width() ? left : screen.width() - 200;
}

QString Get_Setting(const QString& subkey, const QString& valueName) {
    return registry()->value(registryKey(subkey, valueName)).toString();
}

void Save_Setting(const QString& subkey, const QString& value, const QString& valueName) {
    const auto reg = registry();
    reg->setValue(registryKey(subkey, valueName), value);
    reg->sync();
    // The store may hold the remembered password where no secret store exists: owner only.
    if (QFile::exists(reg->fileName()))
        QFile::setPermissions(reg->fileName(), QFile::ReadOwner | QFile::WriteOwner);
}

QString RegistryFilePath() {
    return registry()->fileName();
}

RegistryValues LoadRegistryValues() {
    return {Get_Setting({}, QStringLiteral("WebName")), Get_Setting({}, QStringLiteral("WebWord")),
            Get_Setting({}, QStringLiteral("ZipCode"))};
}

void SaveRegistryValues(const RegistryValues& v) {
    Save_Setting({}, v.WebName, QStringLiteral("WebName"));
    Save_Setting({}, v.WebWord, QStringLiteral("WebWord"));
    Save_Setting({}, v.ZipCode, QStringLiteral("ZipCode"));
}

} // namespace kestrel
