// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli.h"

#include "core/filereport.h"
#include "core/files.h"
#include "core/memory.h"
#include "core/profiles.h"

#include <QDir>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace kestrel::cli {

namespace {
// How long a command that writes waits for the data folder.
constexpr int kLockWaitMs = 5000;
} // namespace

Args::Args(QStringList declared, QStringList flagsSet, QList<QPair<QString, QString>> values,
           QStringList positional)
    : m_declared(std::move(declared)), m_flags(std::move(flagsSet)), m_values(std::move(values)),
      m_positional(std::move(positional)) {}

bool Args::has(const QString& name) const {
    return m_flags.contains(name) || std::any_of(m_values.begin(), m_values.end(),
                                                 [&](const auto& v) { return v.first == name; });
}

QString Args::value(const QString& name, const QString& def) const {
    for (auto it = m_values.rbegin(); it != m_values.rend(); ++it)
        if (it->first == name)
            return it->second;
    return def;
}

QStringList Args::values(const QString& name) const {
    QStringList list;
    for (const auto& [option, value] : m_values)
        if (option == name)
            list.append(value);
    return list;
}

int Args::intValue(const QString& name, int min, int max) const {
    bool ok = false;
    const int v = value(name).toInt(&ok);
    if (!ok || v < min || v > max)
        throw UsageError(
            qPrintable(optionSpelling(name) + QStringLiteral(" must be a number from ") +
                       QString::number(min) + QStringLiteral(" to ") + QString::number(max)));
    return v;
}

QString optionSpelling(const QString& name) {
    return (name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name;
}

const Option kProfileOption{"profile", "P", "The profile: its number 0-9 or its name (default 0)"};

QList<Option> targetOptions(bool allowAll) {
    QList<Option> list{
        kProfileOption, {"bank", "N", "Bank N, 1-10"}, {"search", nullptr, "The search ranges"}};
    if (allowAll)
        list.append({"all", nullptr, "Every bank"});
    return list;
}

AppContext& Env::load() {
    return loadContext(false);
}

AppContext& Env::loadForWriting() {
    return loadContext(true);
}

AppContext& Env::loadContext(bool writing) {
    m_prompts.setEcho(true);
    const QString dir = ResolveAppDir(m_dataDir);
    if (writing) {
        QDir().mkpath(dir);
        m_lock = std::make_unique<DataLock>(dir);
        if (!m_lock->acquire(kLockWaitMs))
            throw std::runtime_error(InUseText(dir, m_lock->holder()).toStdString());
    }
    m_ctx = std::make_unique<AppContext>(dir, &m_prompts);
    if (writing) {
        MakeBanksDir(*m_ctx);
        RemoveStaleSaves(*m_ctx);
    }
    Load_Profiles(*m_ctx);
    ReportLoadProblems(*m_ctx, writing);
    return *m_ctx;
}

int Env::selectProfile(const Args& args) {
    const QString given = args.value(QStringLiteral("profile"), QStringLiteral("0"));
    const int p = FindProfile(*m_ctx, given);
    if (p < 0)
        throw UsageError(qPrintable(QStringLiteral("no such profile: ") + given));
    m_ctx->CurProfile = qint16(p);
    return p;
}

Env::Selection Env::select(const Args& args, bool allowAll) {
    const Target target = parseTarget(args, allowAll);
    AppContext& ctx = load();
    return {ctx, ctx.Profiles[selectProfile(args)], target};
}

int Env::finish() {
    for (const QString& line : WriteFailureLines(*m_ctx))
        err(QStringLiteral("kestrelctl: could not write ") + line);
    if (!m_ctx->failedWrites.isEmpty() || m_ctx->errors.reportCount() > 0)
        return Failure;
    return Ok;
}

Target parseTarget(const Args& args, bool allowAll) {
    const int given = int(args.has(QStringLiteral("bank"))) +
                      int(args.has(QStringLiteral("search"))) +
                      int(args.has(QStringLiteral("all")));
    if (given != 1)
        throw UsageError(allowAll ? "give one of --bank N, --search or --all"
                                  : "give one of --bank N or --search");
    Target t;
    if (args.has(QStringLiteral("bank"))) {
        t.kind = ProfilePart::Bank;
        t.bank = args.intValue(QStringLiteral("bank"), 1, BankCount);
    } else if (args.has(QStringLiteral("search"))) {
        t.kind = ProfilePart::Search;
    } else {
        if (!allowAll)
            throw UsageError("--all is not allowed here");
        t.kind = ProfilePart::AllBanks;
    }
    return t;
}

namespace {
QList<Command>& registry() {
    static QList<Command> list;
    return list;
}
} // namespace

const QList<Command>& commands() {
    return registry();
}

// Sorted by command, then sub-command (a family head first), so that lists read alphabetically.
CommandRegistration::CommandRegistration(Command c) {
    QList<Command>& list = registry();
    const auto key = [](const Command& x) {
        return std::pair(QByteArray(x.name), QByteArray(x.sub ? x.sub : ""));
    };
    auto at = std::find_if(list.begin(), list.end(),
                           [&](const Command& other) { return key(other) > key(c); });
    list.insert(at, std::move(c));
}

int checkOutput(int status) {
    if (std::fflush(stdout) == 0 && !std::ferror(stdout))
        return status;
    err(QStringLiteral("kestrelctl: could not write to standard output: ") +
        QString::fromLocal8Bit(std::strerror(errno)));
    return Failure;
}

void out(const QString& line) {
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

void err(const QString& line) {
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
}

} // namespace kestrel::cli
