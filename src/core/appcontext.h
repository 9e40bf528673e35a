// SPDX-License-Identifier: GPL-3.0-or-later
// The application context: the one object that owns the memory image (Profiles, CurProfile,
// CurBank), the factory tables, the settings, the registry values and the error reporter. The
// GUI and the command line each make one and pass it by reference.
#pragma once

#include "errors.h"
#include "prompts.h"
#include "records.h"
#include "safefile.h"
#include "settings.h"

#include <QMap>
#include <QSize>
#include <QString>
#include <QStringList>
#include <array>
#include <map>
#include <memory>
#include <typeindex>

namespace kestrel {

// A part of the program that lives as long as the context and is created on first use
// (the web-service client, ...). Libraries above the core register theirs without the core
// knowing them: `ctx.component<RRClient>()` makes one RRClient(AppContext&) and keeps it.
class Component {
public:
    virtual ~Component() = default;
};

class AppContext {
public:
    // appDir: the application folder (settings files, "Banks", "Error.log"). Builds the factory
    // tables. prompts may be null: questions are then answered by their default, silently.
    explicit AppContext(const QString& appDir, Prompts* prompts = nullptr);
    AppContext(const AppContext&) = delete;
    AppContext& operator=(const AppContext&) = delete;

    const QString& appDir() const { return m_appDir; }
    QString banksDir() const;                          // appDir + "/Banks"
    QString settingsPath(const QString& name) const;   // appDir + "/" + name + ".ini"
    QString bankPath(const QString& baseName) const;   // Banks/ + base + ".BKE"
    QString searchPath(const QString& baseName) const; // Banks/ + base + ".SKE"
    QString profileListPath() const;                   // appDir + "/Profiles.ini"

    Prompts& prompts() { return *m_prompts; }
    void setPrompts(Prompts* prompts);

    ProfileRec& cur() { return Profiles[CurProfile]; }
    const ProfileRec& cur() const { return Profiles[CurProfile]; }

    std::array<ProfileRec, ProfileCount + 1> Profiles{};
    qint16 CurProfile = 0;
    quint8 CurBank = 1; // 1..10, SearchTab (11) for the search ranges

    // Moves on whenever Changed flags are cleared by a save or set outside an undo step (a
    // settings change): a step undone or redone across such a move leaves its records Changed
    // instead of putting back the flags it saw, since the files no longer hold what it left.
    quint32 flagEpoch = 0;
    // A program setting changed: the settings file of profile 0 is written at closing.
    void markSettingsChanged() {
        Profiles[0].Changed = true;
        ++flagEpoch;
    }

    DefChansTable DefChans;
    DefSearchTable DefSearch;

    ProgramSettings settings;
    RegistryValues registry;
    ErrorReporter errors;

    // Number format of the user's locale (set at start-up).
    bool decimalComma = false;
    QChar decimalSep = QLatin1Char('.');
    QChar listSep = QLatin1Char(',');

    // Files whose write failed during this run, in order; the window tells the user (see
    // ReportWriteFailures), the command line exits 2. noteWriteFailure also keeps the reason.
    QStringList failedWrites;
    void noteWriteFailure(const QString& path, const QString& reason);
    QString writeFailureReason(const QString& path) const;

    // Files read during a load that were damaged: the file and what could not be read in it.
    // Reported once per load (ReportLoadProblems); a damaged file is copied aside before a save
    // first writes over it.
    struct Damage {
        QString path;
        QStringList details;
    };
    QList<Damage> loadProblems;
    QStringList keepBeforeWrite; // absolute paths still to be copied aside

    // Every whole-file write goes through this writer; tests put in one that fails.
    FileWriter& writer() { return *m_writer; }
    void setWriter(FileWriter* writer) { m_writer = writer ? writer : &m_plainWriter; }

    // Screen size in twips, for window placement. The GUI sets the real one.
    QSize screenTwips{1920 * 15, 1080 * 15};

    // The component of type T (derived from Component, constructible from AppContext&),
    // created on first use and destroyed with the context, before its other members.
    template <class T> T& component() {
        static_assert(std::is_base_of_v<Component, T>);
        auto it = m_components.find(std::type_index(typeid(T)));
        if (it == m_components.end())
            it = m_components.emplace(std::type_index(typeid(T)), std::make_unique<T>(*this)).first;
        return static_cast<T&>(*it->second);
    }
    template <class T> bool hasComponent() const {
        return m_components.count(std::type_index(typeid(T))) != 0;
    }

private:
    QString m_appDir;
    ScriptedPrompts m_silent;
    Prompts* m_prompts;
    FileWriter m_plainWriter;
    FileWriter* m_writer = &m_plainWriter;
    QMap<QString, QString> m_writeReasons;
    // Last member: components go first, while everything they may use still exists.
    std::map<std::type_index, std::unique_ptr<Component>> m_components;
};

// The application folder: the executable's folder when it is writable, otherwise the per-user
// data folder. An explicit override (--data-dir) wins.
QString ResolveAppDir(const QString& overrideDir = {});

// Sets the decimal-comma flag and separators from the user's number format.
void DetectNumberFormat(AppContext& ctx);

} // namespace kestrel
