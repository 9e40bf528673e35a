// SPDX-License-Identifier: GPL-3.0-or-later
// The one error-reporting routine, the error log, and the trap every procedure runs under.
#pragma once

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
    int reportCount() const { return m_reports; }
    const QString& currentLabel() const { return m_currentLabel; }

    // Shows the dialog unless suppressed, then appends the log entry.
    void ReportError(const QString& label, int line, int number, const QString& description);
    // Appends one entry to Error.log; failures end the logging silently.
    void LogError(const QString& where, int number, const QString& description);

    static QString dialogText(const QString& label, int line, int number,
                              const QString& description);

private:
    QString m_logDir;
    Prompts* m_prompts;
    QString m_title = QStringLiteral("Kestrel Manager");
    QString m_currentLabel;
    bool m_suppress = false;
    int m_reports = 0;
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
