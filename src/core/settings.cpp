// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings.h"

#include "class_ini.h"
#include "dbaselocation.h"
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

using Read = std::function<void(ProgramSettings&, const QString&, QSize)>;

const QString kSettingsSec = QStringLiteral("Settings");
const QString kRadioRefSec = QStringLiteral("RadioRef");
const QString kPortsSec = QStringLiteral("Ports");

SettingKey positionKey(WindowId id) {
    const WindowInfo& info = windowInfo(id);
    return {kSettingsSec, QString::fromLatin1(info.key),
            [id, info](ProgramSettings& s, const QString& text, QSize screen) {
                s.pos(id) = Set_FormPos(text, screen, info.designHeight, info.designWidth);
            },
            [id](const ProgramSettings& s) {
                return QString::number(s.pos(id).top) + QLatin1Char(',') +
                       QString::number(s.pos(id).left);
            }};
}

// A number with its default and limits.
SettingKey numberKey(const QString& section, const char* key, qint16 ProgramSettings::*member,
                     qint16 def, qint16 min, qint16 max) {
    return {section, QString::fromLatin1(key),
            [=](ProgramSettings& s, const QString& text, QSize) {
                s.*member = Validate_Int(text, def, min, max);
            },
            [member](const ProgramSettings& s) { return QString::number(s.*member); }};
}

// A text that takes `fallback` when empty.
SettingKey textKey(const QString& section, const char* key, QString ProgramSettings::*member,
                   QString (*fallback)()) {
    return {section, QString::fromLatin1(key),
            [=](ProgramSettings& s, const QString& text, QSize) {
                s.*member = text.isEmpty() ? fallback() : text;
            },
            [member](const ProgramSettings& s) { return s.*member; }};
}

QList<SettingKey> buildKeys() {
    QList<SettingKey> keys;
    // The value read has no effect: the program writes its own version.
    keys.append({kSettingsSec, QStringLiteral("Version"),
                 [](ProgramSettings&, const QString&, QSize) {},
                 [](const ProgramSettings&) { return QStringLiteral(KESTREL_VERSION); }});
    keys.append(positionKey(WindowId::Main));
    keys.append({kSettingsSec, QStringLiteral("MainWindowSize"),
                 [](ProgramSettings& s, const QString& text, QSize) {
                     const QStringList parts = text.split(QLatin1Char(','));
                     s.mainSize = {};
                     if (parts.size() == 2)
                         s.mainSize = {Validate_Long(parts[0], 0, 0, 1 << 24),
                                       Validate_Long(parts[1], 0, 0, 1 << 24)};
                 },
                 [](const ProgramSettings& s) -> std::optional<QString> {
                     if (s.mainSize.isEmpty())
                         return std::nullopt;
                     return QString::number(s.mainSize.height) + QLatin1Char(',') +
                            QString::number(s.mainSize.width);
                 }});
    for (int w = 1; w < kWindowCount; ++w)
        keys.append(positionKey(WindowId(w)));
    keys.append(numberKey(kSettingsSec, "KestrelCable", &ProgramSettings::KestrelCable, 2, 2, 3));
    keys.append(numberKey(kSettingsSec, "CommPort", &ProgramSettings::CommPort, 1, 1, 16));
    keys.append(numberKey(kRadioRefSec, "DBaseVersion", &ProgramSettings::DBaseVersion, 8, 1, 999));
    keys.append(numberKey(kRadioRefSec, "DBaseIndex", &ProgramSettings::DBaseIndex, 0, 0, 1));
    keys.append(
        textKey(kRadioRefSec, "DBaseEndUsr", &ProgramSettings::DBaseEndUsr, DefaultEndpoint));
    keys.append(
        textKey(kRadioRefSec, "DBaseLocUsr", &ProgramSettings::DBaseLocUsr, DefaultLocalEndpoint));
    keys.append({kRadioRefSec, QStringLiteral("DBaseProxyUse"),
                 [](ProgramSettings& s, const QString& text, QSize) {
                     s.DBaseProxyUse = Validate_Bool(text, false);
                 },
                 [](const ProgramSettings& s) { return BoolToString(s.DBaseProxyUse); }});
    keys.append(textKey(kRadioRefSec, "DBaseProxyAdr", &ProgramSettings::DBaseProxyAdr,
                        [] { return QStringLiteral("127.0.0.1"); }));
    keys.append(
        numberKey(kRadioRefSec, "DBaseProxyPrt", &ProgramSettings::DBaseProxyPrt, 8080, 80, 32767));
    // Only a key the user or a distribution put there is kept; none is added.
    keys.append({kRadioRefSec, QStringLiteral("AppKey"),
                 [](ProgramSettings& s, const QString& text, QSize) { s.AppKey = text.trimmed(); },
                 [](const ProgramSettings& s) -> std::optional<QString> {
                     if (s.AppKey.isEmpty())
                         return std::nullopt;
                     return s.AppKey;
                 }});
    // Device paths that stand in for COM port numbers; written back only where one is set.
    for (int n = 1; n <= 16; ++n)
        keys.append({kPortsSec, QStringLiteral("COM") + QString::number(n),
                     [n](ProgramSettings& s, const QString& text, QSize) {
                         if (text.isEmpty())
                             s.PortOverrides.remove(n);
                         else
                             s.PortOverrides.insert(n, text);
                     },
                     [n](const ProgramSettings& s) -> std::optional<QString> {
                         if (!s.PortOverrides.contains(n))
                             return std::nullopt;
                         return s.PortOverrides.value(n);
                     }});
    return keys;
}

} // namespace

const QList<SettingKey>& ProgramSettingKeys() {
    static const QList<SettingKey> keys = buildKeys();
    return keys;
}

void ReadProgramSettings(ProgramSettings& s, const IniDocument& doc, QSize screenTwips) {
    for (const SettingKey& k : ProgramSettingKeys())
        k.read(s, doc.ReadKey(k.section, k.key), screenTwips);
    s.ServiceAddress = DeriveServiceAddress(s);
}

void WriteProgramSettings(const ProgramSettings& s, IniDocument& doc) {
    for (const SettingKey& k : ProgramSettingKeys()) {
        if (const std::optional<QString> text = k.write(s))
            doc.WriteKey(k.section, k.key, *text);
        else if (!doc.ReadKey(k.section, k.key).isEmpty())
            doc.WriteKey(k.section, k.key, QString()); // given up since it was read: emptied
    }
}

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
    return LocationAddress(s.DBaseVersion, s.DBaseIndex, s);
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
