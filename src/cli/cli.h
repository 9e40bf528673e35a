// SPDX-License-Identifier: GPL-3.0-or-later
// What every kestrelctl command shares: argument parsing, the application context, profile
// selection, and the exit statuses.
#pragma once

#include "core/appcontext.h"

#include <QMap>
#include <QSet>
#include <QStringList>
#include <memory>
#include <stdexcept>

namespace kestrel::cli {

enum Exit { Ok = 0, Usage = 1, Failure = 2 };

// A usage error: the command prints the message and exits 1 without touching any file.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Parsed arguments of one command. Options given as "--name value"; flags as "--name".
class Args {
public:
    // valued: options that take a value; flags: options that do not.
    Args(const QStringList& args, const QSet<QString>& valued, const QSet<QString>& flags = {});

    bool has(const QString& name) const { return m_options.contains(name); }
    QString value(const QString& name, const QString& def = {}) const {
        return m_options.value(name, def);
    }
    // An integer option within [min, max]; a usage error otherwise.
    int intValue(const QString& name, int min, int max) const;
    const QStringList& positional() const { return m_positional; }

private:
    QMap<QString, QString> m_options;
    QStringList m_positional;
};

// The environment a command runs in: the data folder and the loaded memory image.
class Env {
public:
    explicit Env(QString dataDir) : m_dataDir(std::move(dataDir)) {}

    // Makes the context and loads every profile (reads only; creates no file).
    AppContext& load();
    AppContext& ctx() { return *m_ctx; }
    ScriptedPrompts& prompts() { return m_prompts; }

    // Resolves --profile (index 0-9 or name, default 0) and makes it the current profile.
    int selectProfile(const Args& args);

    // Exit status after a command that wrote files: 2 when a write failed or an error was
    // reported, with the reasons on stderr.
    int finish();

private:
    QString m_dataDir;
    ScriptedPrompts m_prompts{Answer::Yes};
    std::unique_ptr<AppContext> m_ctx;
};

// Which part of a profile a command addresses: one bank, the search ranges, or everything.
struct Target {
    enum Kind { Bank, Search, All } kind = Bank;
    int bank = 0;
};
// Reads --bank N | --search | --all (exactly one; --all only when allowAll).
Target parseTarget(const Args& args, bool allowAll);

void out(const QString& line); // one line to standard output, UTF-8
void err(const QString& line); // one line to standard error

using CommandFn = int (*)(Env& env, const QStringList& args);

struct Command {
    const char* name;
    const char* usage; // "show [--profile P] (--bank N | --search | --all)"
    CommandFn run;
    bool draws = false; // needs fonts and a paint device: runs under an offscreen GUI application
};

// Each cmd_*.cpp registers its command with a file-level `const CommandRegistration`.
const QList<Command>& commands();
struct CommandRegistration {
    explicit CommandRegistration(Command c);
};

} // namespace kestrel::cli
