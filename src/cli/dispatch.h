// SPDX-License-Identifier: GPL-3.0-or-later
// Reading a kestrelctl command line against the command table: which command runs with which
// options, or which help, version, completion words or usage error to print instead.
#pragma once

#include "cli.h"

#include <optional>

namespace kestrel::cli {

struct Invocation {
    enum Action { Run, Print, Fail } action = Fail;
    const Command* command = nullptr; // Run
    std::optional<Args> args;         // Run
    QString dataDir;                  // Run
    QString text;                     // Print: to stdout, exit 0; Fail: to stderr, exit 1
};

// `words` are the arguments after the program name. Needs no application object, so that the
// caller can choose one by the command found.
Invocation resolve(const QStringList& words);

// The message for a usage error met while running `c`: its line and where to find help.
QString usageFailure(const Command& c, const QString& message);

// Levenshtein distance, for "did you mean" suggestions.
int editDistance(const QString& a, const QString& b);

} // namespace kestrel::cli
