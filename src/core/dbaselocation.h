// SPDX-License-Identifier: GPL-3.0-or-later
// Where the frequency database is reached for a version and a location, and the input rules of
// the boxes in which the user changes location, version and proxy.
#pragma once

#include "settings.h"

#include <QChar>
#include <QString>
#include <optional>

namespace kestrel {

// Location index: 0 the public service, 1 an address on the user's machine.
inline constexpr int kServiceLocation = 0;
inline constexpr int kLocalLocation = 1;
inline constexpr int kLatestVersion = 999;

// The service's own endpoint for a version: "/soap/" for version 1, "/soap2/" for 2 to 8, the
// user's DBaseEndUsr for any other.
QString ServiceEndpoint(int version, const ProgramSettings& s);
// The local endpoint: an address the user typed (DBaseLocUsr unless it is one of the standard
// two) whatever the version; otherwise "http://127.0.0.1:9000/soap/" for 1, ".../soap2/" for 2
// to 8, DBaseLocUsr for any other.
QString LocalEndpoint(int version, const ProgramSettings& s);
QString LocationAddress(int version, int location, const ProgramSettings& s);

// Characters each box takes from the keyboard (editing keys are always taken).
bool VersionKeyAllowed(QChar c);      // digits
bool AddressKeyAllowed(QChar c);      // anything but blanks: a URL may be typed or pasted
bool ProxyAddressKeyAllowed(QChar c); // "-", ".", "/", digits, ASCII letters, "_", "~"
bool ProxyPortKeyAllowed(QChar c);    // digits

// A typed service address as it is saved and used (blanks trimmed, a "/" added at the end, as
// the operations are posted to the address + "index.php"); nothing when it is not an http:// or
// https:// URL with a host.
std::optional<QString> CheckedServiceAddress(const QString& text);

// A user-defined version outside 2..8 falls back to "8".
QString CheckedUserVersion(const QString& text);
// An empty proxy port, or one outside 80..32767, falls back to "8080".
QString CheckedProxyPort(const QString& text);

} // namespace kestrel
