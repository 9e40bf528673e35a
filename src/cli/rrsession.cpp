// SPDX-License-Identifier: GPL-3.0-or-later
#include "rrsession.h"

#include "core/dbaselocation.h"
#include "core/freq.h"
#include "webservice/webcredentials.h"

#include <QTextStream>
#include <cstdio>

#ifdef Q_OS_UNIX
#include <termios.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace kestrel::cli {

QList<Option> rrFamilyOptions() {
    return {
        {"url", "BASE", "The service's base address for this run (default: from the settings)"},
        {"user", "NAME", "The user name (default: the remembered one)"},
        {"password-stdin", nullptr,
         "Read the password from the first line of standard input (default: the remembered one)"},
        {"remember", nullptr, "Remember the user name and password for later runs"},
        {"xml", nullptr, "Print the last envelope exchanged with the service as well"},
    };
}

namespace {

// The first line of standard input. Typed at a terminal, it is asked for and not echoed.
QString readPassword() {
#ifdef Q_OS_UNIX
    const bool tty = isatty(STDIN_FILENO) != 0;
    termios saved{};
    if (tty && tcgetattr(STDIN_FILENO, &saved) == 0) {
        std::fputs("Password: ", stderr);
        std::fflush(stderr);
        termios quiet = saved;
        quiet.c_lflag &= ~tcflag_t(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
    }
#endif
    QTextStream in(stdin);
    const QString line = in.readLine();
#ifdef Q_OS_UNIX
    if (tty) {
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &saved);
        std::fputs("\n", stderr);
    }
#endif
    return line;
}

} // namespace

RRSession::RRSession(Env& env, const Args& args) : m_env(env), m_args(args) {}

void RRSession::load(bool login, bool writing) {
    QString url = m_args.value(QStringLiteral("url"));
    if (m_args.has(QStringLiteral("url"))) {
        const std::optional<QString> checked = CheckedServiceAddress(url);
        if (!checked)
            throw UsageError(qPrintable(QStringLiteral("--url needs an http:// or https:// "
                                                       "address, not ") +
                                        url));
        url = *checked;
    }
    QString password;
    if (m_args.has(QStringLiteral("password-stdin")))
        password = readPassword();

    m_ctx = writing ? &m_env.loadForWriting() : &m_env.load();
    // The remembered login, as the window reads it at start-up.
    m_ctx->registry = LoadRegistryValues();
    m_reportsAtStart = m_ctx->errors.reportCount();
    WebCredentials& remembered = m_ctx->component<WebCredentials>();
    QString user = m_args.value(QStringLiteral("user"), remembered.userName());
    if (login && user.isEmpty())
        throw UsageError("no user name: give --user NAME (with --remember to keep it)");
    // The secret store is asked only when the password is needed and was not given.
    if (!m_args.has(QStringLiteral("password-stdin")) &&
        (login || m_args.has(QStringLiteral("remember"))))
        password = remembered.password();
    m_password = password;

    m_client = &m_ctx->component<RRClient>();
    if (!url.isEmpty())
        m_client->setBaseUrlOverride(url);
    m_client->setCredentials(user, password);
}

bool RRSession::open(bool login) {
    load(login);
    return connect();
}

bool RRSession::connect() {
    bool ok = m_client->InitSoap();
    // A cached description too short to be whole is removed by the first try: fetch it anew.
    if (!ok && !failed())
        ok = m_client->InitSoap();
    if (ok && !m_client->descriptionLoaded())
        fail(QStringLiteral("no usable service description from ") + m_client->baseUrl() +
             QStringLiteral(" (a cached copy is kept in ") + m_client->WsdlFile +
             QStringLiteral("; delete it to fetch the description again)"));
    else if (!ok && !failed())
        fail(QStringLiteral("could not read the service description of ") + m_client->baseUrl());
    return !failed();
}

bool RRSession::failed() const {
    return m_failed || (m_ctx && m_ctx->errors.reportCount() > m_reportsAtStart);
}

void RRSession::fail(const QString& message) {
    m_failed = true;
    err(QStringLiteral("kestrelctl rr: ") + message);
}

bool RRSession::known(bool answered, const qint32& returned, const char* kind, qint32 id) {
    if (answered && returned == id)
        return true;
    if (!failed())
        fail(QStringLiteral("the service knows no ") + QLatin1StringView(kind) + u' ' +
             QString::number(id) + QStringLiteral("; check the id"));
    return false;
}

bool RRSession::loginRefused() const {
    return m_client && m_client->loginRefused();
}

int RRSession::finish() {
    if (!m_ctx)
        return Failure;
    if (m_args.has(QStringLiteral("xml")) && m_client && !m_client->LastEnvelope.isEmpty())
        out(m_client->LastEnvelope);
    const bool refused = failed() && loginRefused();
    if (m_args.has(QStringLiteral("remember")) && !refused && m_client &&
        !m_client->userName().isEmpty())
        m_ctx->component<WebCredentials>().remember(m_client->userName(), m_password);
    const int status = m_env.finish();
    if (refused)
        return kRRLoginRefused;
    return failed() ? Failure : status;
}

// ---- record lines ---------------------------------------------------------------------------

namespace {

bool isFrequencyField(const char* name) {
    const QLatin1StringView n(name);
    return n == "out"_L1 || n == "in"_L1 || n == "freq"_L1;
}

QString oneLine(QString text) {
    for (QChar& c : text)
        if (c == u'\t' || c == u'\n' || c == u'\r')
            c = u' ';
    return text;
}

} // namespace

QStringList recordCells(const RecordType& type, const void* record) {
    QStringList cells;
    for (const FieldDef& f : type.fields) {
        const void* member = f.at(record);
        switch (f.kind) {
        case FieldKind::Int:
            cells.append(QString::number(*static_cast<const qint32*>(member)));
            break;
        case FieldKind::Short:
            cells.append(QString::number(*static_cast<const qint16*>(member)));
            break;
        case FieldKind::Double: {
            const double v = *static_cast<const double*>(member);
            cells.append(isFrequencyField(f.name) ? FreqToString(FreqToHertz(v))
                                                  : soap::DoubleText(v));
            break;
        }
        case FieldKind::String: {
            const QString& text = *static_cast<const QString*>(member);
            cells.append(isFrequencyField(f.name) ? FreqToString(FreqToHertz(text))
                                                  : oneLine(text));
            break;
        }
        case FieldKind::Boolean:
            cells.append(BoolToString(*static_cast<const bool*>(member)));
            break;
        default:
            break; // lists and nested structs get lines of their own
        }
    }
    return cells;
}

void printCategories(RRSession& rr, const QList<TypCat>& cats) {
    RRClient& c = rr.client();
    for (const TypCat& cat : cats) {
        const QString cid = QString::number(cat.cid);
        out(QStringLiteral("cat\t") + cid + u'\t' + oneLine(cat.cName));
        for (const TypSubcat& sub : cat.subcats) {
            printRecord(sub, {QStringLiteral("subcat"), cid});
            if (c.getSubcatFreqs(sub.scid))
                printRecords(c.SubcatFreqs, {QStringLiteral("freq"), QString::number(sub.scid)});
            if (rr.failed())
                return;
        }
    }
}

qint32 idArgument(const Args& args, int index, const char* what) {
    const QString text = args.positional().value(index);
    bool ok = false;
    const qint32 id = text.toInt(&ok);
    if (!ok || id < 1)
        throw UsageError(qPrintable(QString::fromLatin1(what) +
                                    QStringLiteral(" must be a whole number above 0, not '") +
                                    text + u'\''));
    return id;
}

} // namespace kestrel::cli
