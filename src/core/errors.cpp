// SPDX-License-Identifier: GPL-3.0-or-later
#include "errors.h"

#include "prompts.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QThread>

namespace kestrel {

ErrorReporter::ErrorReporter(QString logDir, Prompts* prompts)
    : m_logDir(std::move(logDir)), m_prompts(prompts) {}

QString ErrorReporter::logPath() const {
    return QDir(m_logDir).filePath(QStringLiteral("Error.log"));
}

QString ErrorReporter::dialogText(const QString& label, int line, int number,
                                  const QString& description) {
    return QStringLiteral("An Error Occurred In ") + label + QStringLiteral(" @ Line:") +
           QString::number(line) + QStringLiteral("\n\nError Number: ") + QString::number(number) +
           QStringLiteral("  ") + description +
           QStringLiteral("\n\nSuppress Further Errors If Possible?");
}

void ErrorReporter::ReportError(const QString& label, int line, int number,
                                const QString& description) {
    m_currentLabel = label;
    ++m_reports;
    if (!m_suppress && m_prompts) {
        const Answer a =
            m_prompts->message(dialogText(label, line, number, description),
                               m_title + QStringLiteral(" Error"), Icon::Critical, Buttons::YesNo);
        if (a == Answer::Yes)
            m_suppress = true;
    }
    LogError(label + QStringLiteral(" @ Line:") + QString::number(line), number, description);
}

void ErrorReporter::Tell(const QString& sentence) {
    ++m_reports;
    m_lastFailure = sentence;
    if (m_actions.isEmpty())
        show(sentence);
    else if (m_actions.last().held.isEmpty())
        m_actions.last().held = sentence;
}

void ErrorReporter::enterTrap() {
    const int level = QThread::currentThread()->loopLevel();
    if (m_actions.isEmpty() || m_actions.last().loopLevel != level)
        m_actions.append({level, 1, {}});
    else
        ++m_actions.last().depth;
}

void ErrorReporter::leaveTrap() {
    if (m_actions.isEmpty() || --m_actions.last().depth > 0)
        return;
    const QString sentence = m_actions.takeLast().held;
    if (!sentence.isEmpty())
        show(sentence);
}

void ErrorReporter::show(const QString& sentence) {
    if (m_prompts)
        m_prompts->message(sentence, m_title, Icon::Exclamation, Buttons::Ok);
}

void ErrorReporter::LogError(const QString& where, int number, const QString& description) {
    if (m_logDir.isEmpty())
        return;
    QFile f(logPath());
    if (!f.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
        return; // logging ends without a report, so reporting never recurses
    const QDateTime now = QDateTime::currentDateTime();
    // The user's own short date and time forms, as the rest of the desktop writes them.
    const QLocale locale = QLocale::system();
    const QString entry =
        QStringLiteral("\n-- Error Occured: ") + locale.toString(now.date(), QLocale::ShortFormat) +
        QStringLiteral(" - ") + locale.toString(now.time(), QLocale::ShortFormat) +
        QStringLiteral(" --\n") + where + QStringLiteral(", Error: ") + QString::number(number) +
        QStringLiteral(" -> ") + description + QStringLiteral("\n");
    f.write(entry.toUtf8());
}

namespace detail {

void reportCurrentException(ErrorReporter& reporter, const QString& label, int line) {
    int number = err::InvalidCall;
    QString description = QStringLiteral("Invalid procedure call or argument");
    try {
        throw;
    } catch (const ExpectedFailure& e) {
        reporter.Tell(e.sentence());
        return;
    } catch (const KestrelError& e) {
        number = e.number();
        description = e.description();
    } catch (const std::bad_alloc&) {
        number = err::OutOfMemory;
        description = QStringLiteral("Out of memory");
    } catch (const std::out_of_range&) {
        number = err::SubscriptOutOfRange;
        description = QStringLiteral("Subscript out of range");
    } catch (const std::exception& e) {
        description = QString::fromLocal8Bit(e.what());
    } catch (...) {
    }
    reporter.ReportError(label, line, number, description);
}

} // namespace detail
} // namespace kestrel
