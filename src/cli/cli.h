// SPDX-License-Identifier: GPL-3.0-or-later
// What every kestrelctl command shares: the command table each cmd_*.cpp registers in, the
// parsed arguments, the application context, profile and target selection, the exit statuses.
#pragma once

#include "core/appcontext.h"
#include "core/datalock.h"
#include "core/memory.h"

#include <QList>
#include <QStringList>
#include <memory>
#include <stdexcept>

namespace kestrel::cli {

enum Exit { Ok = 0, Usage = 1, Failure = 2 };

// A usage error: the command prints the message and exits 1 without touching any file.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};
// An input file the command cannot use (its lines, its encoding): exits 1 like a usage error,
// touching no file, but prints only the reason, since the command line itself was right.
struct InputError : UsageError {
    using UsageError::UsageError;
};

// One option of a command. A one-letter name is written "-o", a longer one "--bank".
struct Option {
    const char* name;
    const char* valueName; // "N", "FILE"; nullptr for a flag
    const char* description;
};

// One positional argument. A name in brackets ("[ID]") may be left out.
struct Argument {
    const char* name;
    const char* description;
};

// An exit status a command adds to 0, 1 and 2 (upload's 3 when the scanner does not answer).
struct ExitStatus {
    int code;
    const char* meaning;
};

class Args;
class Env;
using CommandFn = int (*)(Env& env, const Args& args);

// One row of the command table. A top-level command leaves `sub` null. A member of a family
// ("kestrelctl rr state 12") names the family in `name` and itself in `sub`; each member is its
// own file. An optional family head (same `name`, null `sub`, null `run`) gives the family's
// summary and options every member accepts.
struct Command {
    const char* name;
    const char* sub;
    const char* summary; // one line for the command list and the top of its help
    QList<Option> options;
    QList<Argument> arguments;
    CommandFn run;
    bool draws = false; // needs fonts and a paint device: runs under an offscreen GUI application
    QList<ExitStatus> exits = {};
};

// Each cmd_*.cpp registers its command with a file-level `const CommandRegistration`.
const QList<Command>& commands();
struct CommandRegistration {
    explicit CommandRegistration(Command c);
};

// The options and arguments a command was given, as its declaration names them.
class Args {
public:
    Args(QStringList declared, QStringList flagsSet, QList<QPair<QString, QString>> values,
         QStringList positional);

    bool has(const QString& name) const;
    QString value(const QString& name, const QString& def = {}) const;
    // Every value of an option that may be given more than once, in the order given.
    QStringList values(const QString& name) const;
    // An integer option within [min, max]; a usage error otherwise.
    int intValue(const QString& name, int min, int max) const;
    const QStringList& positional() const { return m_positional; }

private:
    QStringList m_declared;
    QStringList m_flags;
    QList<QPair<QString, QString>> m_values; // last one given wins
    QStringList m_positional;
};

// "--bank" or "-o", as the user writes the option.
QString optionSpelling(const QString& name);

// Which part of a profile a command addresses: one bank, the search ranges, or everything.
struct Target {
    ProfilePart kind = ProfilePart::Bank;
    int bank = 0; // with ProfilePart::Bank
};
// Reads --bank N | --search | --all (exactly one; --all only when allowAll).
Target parseTarget(const Args& args, bool allowAll);

// The options of the commands that address a part of a profile.
extern const Option kProfileOption;
QList<Option> targetOptions(bool allowAll);

// The environment a command runs in: the data folder and the loaded memory image.
class Env {
public:
    explicit Env(QString dataDir) : m_dataDir(std::move(dataDir)) {}

    // Makes the context and loads every profile (reads only; creates no file). Damaged files
    // are listed on stderr.
    AppContext& load();
    // The same for a command that writes: first takes the data folder's lock, waiting a few
    // seconds for the window or another command (throws, exit 2, naming the holder), then
    // makes the folders and removes what killed saves left.
    AppContext& loadForWriting();
    AppContext& ctx() { return *m_ctx; }
    ScriptedPrompts& prompts() { return m_prompts; }

    // Resolves --profile (index 0-9 or name, default 0) and makes it the current profile.
    int selectProfile(const Args& args);

    // The usual start of a command that addresses a part of a profile: reads the target, loads
    // the memory image and selects the profile.
    struct Selection {
        AppContext& ctx;
        ProfileRec& profile;
        Target target;
    };
    Selection select(const Args& args, bool allowAll);

    // Exit status after a command that wrote files: 2 when a write failed or an error was
    // reported, with the reasons on stderr.
    int finish();

private:
    QString m_dataDir;
    AppContext& loadContext(bool writing);

    ScriptedPrompts m_prompts{Answer::Yes};
    std::unique_ptr<DataLock> m_lock;
    std::unique_ptr<AppContext> m_ctx;
};

// The exit status once the command is done: Failure when its output could not be written.
int checkOutput(int status);

void out(const QString& line); // one line to standard output, UTF-8
void err(const QString& line); // one line to standard error

} // namespace kestrel::cli
