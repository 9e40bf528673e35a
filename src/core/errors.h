// SPDX-License-Identifier: GPL-3.0-or-later
// The one error-reporting routine, the error log, and the trap every procedure runs under.
#pragma once

#include <QList>
#include <QString>
#include <exception>
#include <functional>
#include <new>
#include <type_traits>
#include <utility>

namespace kestrel {

class Prompts;

// A run-time error with the number and description the report shows.
class KestrelError : public std::exception {
public:
    KestrelError(int number, QString description)
        : m_number(number), m_description(std::move(description)), m_what(m_description.toUtf8()) {}
    int number() const { return m_number; }
    const QString& description() const { return m_description; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_description;
    QByteArray m_what;
};

// A failure the user can act on (the service cannot be reached or refuses the login, an id it
// does not know, a full bank), not a fault of the program: it reaches the user as one plain
// sentence saying what happened and what to do, never as the fault dialog, and is not logged.
class ExpectedFailure : public std::exception {
public:
    explicit ExpectedFailure(QString sentence)
        : m_sentence(std::move(sentence)), m_what(m_sentence.toUtf8()) {}
    const QString& sentence() const { return m_sentence; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QString m_sentence;
    QByteArray m_what;
};

// Well-known error numbers, as the reports show them.
namespace err {
inline constexpr int InvalidCall = 5;
inline constexpr int OutOfMemory = 7;
inline constexpr int SubscriptOutOfRange = 9;
inline constexpr int TypeMismatch = 13;
inline constexpr int FileNotFound = 53;
inline constexpr int FileIO = 75;
inline constexpr int PathNotFound = 76;
inline constexpr int BadFileFormat = 321;
} // namespace err

class ErrorReporter {
public:
    // logDir: the folder of "Error.log". prompts may be null (no dialog, log only).
    ErrorReporter(QString logDir = {}, Prompts* prompts = nullptr);

    void setLogDir(const QString& dir) { m_logDir = dir; }
    QString logPath() const;
    void setPrompts(Prompts* prompts) { m_prompts = prompts; }
    void setTitle(const QString& title) { m_title = title; }

    bool suppressed() const { return m_suppress; }
    // Faults reported and failures told, together: "did anything go wrong since".
    int reportCount() const { return m_reports; }
    const QString& currentLabel() const { return m_currentLabel; }

    // Shows the dialog unless suppressed, then appends the log entry.
    void ReportError(const QString& label, int line, int number, const QString& description);
    // Appends one entry to Error.log; failures end the logging silently.
    void LogError(const QString& where, int number, const QString& description);

    // Tells an expected failure. Inside a trapped procedure the sentence waits until the
    // outermost one ends, and only the first of a burst is shown: one user action that runs
    // many queries against a service that has gone gives one message.
    void Tell(const QString& sentence);
    // True while the running action has told a failure: further queries need not be sent.
    bool failedInAction() const { return !m_actions.isEmpty() && !m_actions.last().held.isEmpty(); }
    const QString& lastFailure() const { return m_lastFailure; }

    // Kept by Trap. A trapped procedure entered from an event loop that runs inside another
    // (a user's click while an upload waits) is an action of its own.
    void enterTrap();
    void leaveTrap();

    static QString dialogText(const QString& label, int line, int number,
                              const QString& description);

private:
    QString m_logDir;
    Prompts* m_prompts;
    QString m_title = QStringLiteral("Kestrel Manager");
    QString m_currentLabel;
    struct Action {
        int loopLevel;
        int depth;
        QString held;
    };
    QList<Action> m_actions;
    QString m_lastFailure;
    bool m_suppress = false;
    int m_reports = 0;
    void show(const QString& sentence);
};

// Statement counter of a trapped procedure: the body advances it (`at(3)`) so the report names
// the last statement started.
class Stmt {
public:
    void at(int n) { m_n = n; }
    int current() const { return m_n; }

private:
    int m_n = 0;
};

namespace detail {
void reportCurrentException(ErrorReporter& reporter, const QString& label, int line);
}

// Runs a procedure's body under the program-wide trap: an exception is reported with the label
// and the statement reached, and the procedure returns its result type's zero value.
// The body takes a Stmt& when it numbers its statements, or nothing.
template <typename F> auto Trap(ErrorReporter& reporter, const char* label, F&& body) {
    Stmt stmt;
    reporter.enterTrap();
    struct Leave {
        ErrorReporter& r;
        ~Leave() { r.leaveTrap(); }
    } leave{reporter};
    using R =
        typename std::conditional_t<std::is_invocable_v<F, Stmt&>, std::invoke_result<F, Stmt&>,
                                    std::invoke_result<F>>::type;
    try {
        if constexpr (std::is_invocable_v<F, Stmt&>)
            return body(stmt);
        else
            return body();
    } catch (...) {
        detail::reportCurrentException(reporter, QString::fromUtf8(label), stmt.current());
    }
    if constexpr (!std::is_void_v<R>)
        return R{};
}

} // namespace kestrel
