// SPDX-License-Identifier: GPL-3.0-or-later
#include "dbaselocation.h"

#include <QUrl>

namespace kestrel {

namespace {

const char* const kLocalHost = "http://127.0.0.1:9000";

bool isAsciiLetter(QChar c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

const char* pathFor(int version) {
    return version == 1 ? "/soap/" : "/soap2/";
}

} // namespace

QString ServiceEndpoint(int version, const ProgramSettings& s) {
    if (version >= 1 && version <= 8)
        return QString::fromLatin1(kPublicServiceHost) + QLatin1String(pathFor(version));
    return s.DBaseEndUsr;
}

QString LocalEndpoint(int version, const ProgramSettings& s) {
    const QString host = QString::fromLatin1(kLocalHost);
    const bool typed = s.DBaseLocUsr != host + QLatin1String(pathFor(1)) &&
                       s.DBaseLocUsr != host + QLatin1String(pathFor(2)) &&
                       !s.DBaseLocUsr.isEmpty();
    if (!typed && version >= 1 && version <= 8)
        return QString::fromLatin1(kLocalHost) + QLatin1String(pathFor(version));
    return s.DBaseLocUsr;
}

QString LocationAddress(int version, int location, const ProgramSettings& s) {
    return location == kLocalLocation ? LocalEndpoint(version, s) : ServiceEndpoint(version, s);
}

bool VersionKeyAllowed(QChar c) {
    return isDigit(c);
}

bool AddressKeyAllowed(QChar c) {
    return !c.isSpace();
}

std::optional<QString> CheckedServiceAddress(const QString& text) {
    QString address = text.trimmed();
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty() ||
        (url.scheme() != u"http" && url.scheme() != u"https"))
        return std::nullopt;
    if (!address.endsWith(u'/'))
        address += u'/';
    return address;
}

bool ProxyAddressKeyAllowed(QChar c) {
    return c == u'-' || c == u'.' || c == u'/' || c == u'_' || c == u'~' || isDigit(c) ||
           isAsciiLetter(c);
}

bool ProxyPortKeyAllowed(QChar c) {
    return isDigit(c);
}

QString CheckedUserVersion(const QString& text) {
    const int v = text.toInt();
    return v < 2 || v > 8 ? QStringLiteral("8") : text;
}

QString CheckedProxyPort(const QString& text) {
    bool ok = false;
    const int port = text.toInt(&ok);
    return !ok || port < 80 || port > 32767 ? QStringLiteral("8080") : text;
}

} // namespace kestrel
