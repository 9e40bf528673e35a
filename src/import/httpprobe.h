// SPDX-License-Identifier: GPL-3.0-or-later
// The reachability test of a local database address: one HTTP request, answered in time or not.
#pragma once

#include <QString>

namespace kestrel {

// True when the address gives any HTTP answer (whatever its status) within timeoutMs; a refused
// connection, a failed name lookup or silence is false. Waits on the reply's signals.
bool ProbeHttp(const QString& url, int timeoutMs);

} // namespace kestrel
