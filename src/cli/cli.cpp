// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli.h"

#include "core/memory.h"
#include "core/profiles.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace kestrel::cli {

Args::Args(const QStringList& args, const QSet<QString>& valued, const QSet<QString>& flags) {
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a.startsWith(QStringLiteral("--")) && a.size() > 2) {
            if (flags.contains(a)) {
                m_options.insert(a, QString());
            } else if (valued.contains(a)) {
                if (i + 1 >= args.size())
                    throw UsageError(qPrintable(a + QStringLiteral(" needs a value")));
                m_options.insert(a, args[++i]);
            } else {
                throw UsageError(qPrintable(QStringLiteral("unknown option ") + a));
            }
        } else if (a.startsWith(QLatin1Char('-')) && a.size() == 2 && valued.contains(a)) {
            if (i + 1 >= args.size())
                throw UsageError(qPrintable(a + QStringLiteral(" needs a value")));
            m_options.insert(a, args[++i]);
        } else {
            m_positional.append(a);
        }
    }
}

int Args::intValue(const QString& name, int min, int max) const {
    bool ok = false;
    const int v = value(name).toInt(&ok);
    if (!ok || v < min || v > max)
        throw UsageError(qPrintable(name + QStringLiteral(" must be a number from ") +
                                    QString::number(min) + QStringLiteral(" to ") +
                                    QString::number(max)));
    return v;
}

AppContext& Env::load() {
    m_prompts.setEcho(true);
    m_ctx = std::make_unique<AppContext>(ResolveAppDir(m_dataDir), &m_prompts);
    Load_Profiles(*m_ctx);
    return *m_ctx;
}

int Env::selectProfile(const Args& args) {
    const QString given = args.value(QStringLiteral("--profile"), QStringLiteral("0"));
    const int p = FindProfile(*m_ctx, given);
    if (p < 0)
        throw UsageError(qPrintable(QStringLiteral("no such profile: ") + given));
    m_ctx->CurProfile = qint16(p);
    return p;
}

int Env::finish() {
    for (const QString& path : m_ctx->failedWrites)
        err(QStringLiteral("kestrelctl: could not write ") + path);
    if (!m_ctx->failedWrites.isEmpty() || m_ctx->errors.reportCount() > 0)
        return Failure;
    return Ok;
}

Target parseTarget(const Args& args, bool allowAll) {
    const int given = int(args.has(QStringLiteral("--bank"))) +
                      int(args.has(QStringLiteral("--search"))) +
                      int(args.has(QStringLiteral("--all")));
    if (given != 1)
        throw UsageError(allowAll ? "give one of --bank N, --search or --all"
                                  : "give one of --bank N or --search");
    Target t;
    if (args.has(QStringLiteral("--bank"))) {
        t.kind = Target::Bank;
        t.bank = args.intValue(QStringLiteral("--bank"), 1, BankCount);
    } else if (args.has(QStringLiteral("--search"))) {
        t.kind = Target::Search;
    } else {
        if (!allowAll)
            throw UsageError("--all is not allowed here");
        t.kind = Target::All;
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

CommandRegistration::CommandRegistration(Command c) {
    QList<Command>& list = registry();
    auto at = std::find_if(list.begin(), list.end(), [&](const Command& other) {
        return std::strcmp(other.name, c.name) > 0;
    });
    list.insert(at, c);
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
